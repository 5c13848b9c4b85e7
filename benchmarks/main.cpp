// quor_bench: runs the benchmarks, prints one table, writes the same figures as JSON.
// A suite with a figure above its limit runs twice more, and the lowest of such a figure's three medians counts.
// Exit code 0: every figure keeps its limit; 1: one does not, or a timed result was wrong; 2: a bad command line.
#include "benchmarks/Bench.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iterator>

namespace {

struct Suite {
    const char* name;
    void (*run)(Figures&);
};
const Suite suites[] = {
    {"grid", benchGrid},
    {"expression", benchExpression},
    {"custom", benchCustomColumn},
    {"settings", benchSettings},
    {"black76", benchBlack76},
    {"listsort", benchListSort},
    {"watch", benchWatch},
    {"flip", benchFlip},
    {"liveflip", benchGridFlip},
    {"gridsort", benchGridSort},
    {"filter", benchFilter},
    {"pick", benchFilterPick},
    {"fit", benchFit},
    {"dialog", benchDialog},
    {"fontcombo", benchFontCombo},
    {"trend", benchTrend},
    {"keywords", benchKeywords},
    {"bricks", benchBricks},
    {"tabs", benchTabs},
};
constexpr int kFurtherRuns = 2;

double valueOf(const Figures& figures, const std::string& key) {
    const auto found = std::find_if(figures.begin(), figures.end(), [&](const Figure& f) { return f.key == key; });
    return found == figures.end() ? throw std::runtime_error("a second run has no " + key) : found->value;
}

std::string list(const std::vector<double>& values) {
    std::string text;
    char value[32];
    for (const double one : values) {
        std::snprintf(value, sizeof value, "%s%.3f", text.empty() ? "" : ", ", one);
        text += value;
    }
    return text;
}

// The machine's neighbours make a figure worse, never better.
void runAgainIfMissed(const Suite& suite, Figures& figures) {
    const auto missed = [](const Figure& figure) { return figure.missed(); };
    if (std::none_of(figures.begin(), figures.end(), missed)) return;
    std::vector<Figures> further(kFurtherRuns);
    for (Figures& run : further) suite.run(run);
    for (Figure& figure : figures) {
        if (!missed(figure)) continue;
        std::vector<double> medians{figure.value};
        for (const Figures& run : further) medians.push_back(valueOf(run, figure.key));
        figure.value = *std::min_element(medians.begin(), medians.end());
        figure.note = "lowest of " + list(medians) + "; " + figure.note;
    }
}

Figures runSuites(const std::vector<Suite>& asked) {
    std::vector<Figures> figures(asked.size());
    for (std::size_t i = 0; i < asked.size(); ++i) asked[i].run(figures[i]);
    Figures all;
    for (std::size_t i = 0; i < asked.size(); ++i) {
        runAgainIfMissed(asked[i], figures[i]);
        all.insert(all.end(), figures[i].begin(), figures[i].end());
    }
    return all;
}

void printTable(const Figures& figures) {
    std::printf("\n%-24s %10s %-6s %8s %8s  %s\n", "figure", "median", "unit", "must", "goal", "note");
    for (const Figure& figure : figures) {
        std::printf("%-24s %10.3f %-6s ", figure.key.c_str(), figure.value, figure.unit.c_str());
        if (figure.must > 0)
            std::printf("%8.4g %8.4g  ", figure.must, figure.goal);
        else
            std::printf("%8s %8s  ", "-", "-");
        std::printf("%s%s\n", figure.missed() ? "MISSED " : "", figure.note.c_str());
    }
}

bool writeJson(const Figures& figures, const char* path) {
    std::FILE* file = std::fopen(path, "wb");
    if (file == nullptr) return false;
    std::fputs("{\n", file);
    for (std::size_t i = 0; i < figures.size(); ++i)
        std::fprintf(file, "  \"%s\": %.4f%s\n", figures[i].key.c_str(), figures[i].value,
                     i + 1 < figures.size() ? "," : "");
    std::fputs("}\n", file);
    return std::fclose(file) == 0;
}

int fail(const char* what, const char* detail) {
    std::fprintf(stderr, "quor_bench: %s %s\n", what, detail);
    return 2;
}

}  // namespace

int main(int count, char** arguments) {
    const char* json = nullptr;
    const char* only = "";
    for (int i = 1; i < count; ++i) {
        const bool isJson = std::strcmp(arguments[i], "--json") == 0;
        if (!isJson && std::strcmp(arguments[i], "--only") != 0)
            return fail("expected --json FILE or --only SUITE, found", arguments[i]);
        if (i + 1 == count) return fail("a value is missing after", arguments[i]);
        (isJson ? json : only) = arguments[++i];
    }
    std::vector<Suite> asked;
    std::copy_if(std::begin(suites), std::end(suites), std::back_inserter(asked),
                 [only](const Suite& suite) { return std::strncmp(suite.name, only, std::strlen(only)) == 0; });
    if (asked.empty()) {
        std::string expected = "--only expects the name of a suite or its beginning (";
        for (const Suite& suite : suites)
            expected.append(suite.name).append(&suite == &suites[std::size(suites) - 1] ? ")" : ", ");
        return fail((expected + ", found").c_str(), only);
    }
    Figures figures;
    try {
        figures = runSuites(asked);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quor_bench: a timed result is wrong: %s\n", error.what());
        return 1;
    }
    printTable(figures);
    if (json != nullptr && !writeJson(figures, json)) return fail("the figures could not be written to", json);
    int bad = 0;
    for (const Figure& figure : figures) bad += figure.missed() ? 1 : 0;
    if (bad != 0) std::printf("\n%d of %d figures miss their limit\n", bad, static_cast<int>(figures.size()));
    return bad != 0 ? 1 : 0;
}

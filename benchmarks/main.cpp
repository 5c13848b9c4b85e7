// quor_bench: runs the benchmarks, prints one table, writes the same figures as JSON.
// Exit code 0: every figure keeps its limit; 1: one does not, or a timed result was wrong; 2: a bad command line.
#include "benchmarks/Bench.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>

namespace {

struct Suite {
    const char* name;
    void (*run)(Figures&);
};
const Suite suites[] = {
    {"grid", benchGrid},           {"expression", benchExpression},
    {"custom", benchCustomColumn}, {"settings", benchSettings},
    {"black76", benchBlack76},     {"listsort", benchListSort},
    {"watch", benchWatch},         {"flip", benchFlip},
    {"liveflip", benchGridFlip},   {"gridsort", benchGridSort},
    {"filter", benchFilter},       {"commands", benchCommands},
};

bool missed(const Figure& figure) { return figure.must > 0 && figure.value > figure.must; }

void printTable(const Figures& figures) {
    std::printf("\n%-24s %10s %-6s %8s %8s  %s\n", "figure", "median", "unit", "must", "goal", "note");
    for (const Figure& figure : figures) {
        std::printf("%-24s %10.3f %-6s ", figure.key.c_str(), figure.value, figure.unit.c_str());
        if (figure.must > 0)
            std::printf("%8.4g %8.4g  ", figure.must, figure.goal);
        else
            std::printf("%8s %8s  ", "-", "-");
        std::printf("%s%s\n", missed(figure) ? "MISSED " : "", figure.note.c_str());
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
    const auto isAsked = [only](const Suite& suite) { return std::strncmp(suite.name, only, std::strlen(only)) == 0; };
    if (std::none_of(std::begin(suites), std::end(suites), isAsked)) {
        std::string expected = "--only expects the name of a suite or its beginning (";
        for (const Suite& suite : suites)
            expected.append(suite.name).append(&suite == &suites[std::size(suites) - 1] ? ")" : ", ");
        return fail((expected + ", found").c_str(), only);
    }
    Figures figures;
    try {
        for (const Suite& suite : suites)
            if (isAsked(suite)) suite.run(figures);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quor_bench: a timed result is wrong: %s\n", error.what());
        return 1;
    }
    printTable(figures);
    if (json != nullptr && !writeJson(figures, json)) return fail("the figures could not be written to", json);
    int bad = 0;
    for (const Figure& figure : figures) bad += missed(figure) ? 1 : 0;
    if (bad != 0) std::printf("\n%d of %d figures miss their limit\n", bad, static_cast<int>(figures.size()));
    return bad != 0 ? 1 : 0;
}

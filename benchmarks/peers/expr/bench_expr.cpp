// W6: a million different texts of arithmetic, each parsed and evaluated once. The texts are made before the clock
// starts, and every result is checked against the same arithmetic done here. Built once for each peer.
#include "../common/clock.h"
#include "../common/workload.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>

#if defined(USE_MUPARSER)

#include <muParser.h>

static const char* const peer = "muParser";
static double evaluate(const std::string& text) {
    static mu::Parser parser;
    parser.SetExpr(text);
    return parser.Eval();
}

#elif defined(USE_LUAJIT)

#include <lua.hpp>

static const char* const peer = "LuaJIT";
static double evaluate(const std::string& text) {
    static lua_State* const state = [] {
        lua_State* made = luaL_newstate();
        luaL_openlibs(made);
        return made;
    }();
    static std::string chunk;
    chunk.assign("return ").append(text);
    if (luaL_loadbuffer(state, chunk.data(), chunk.size(), "=e") || lua_pcall(state, 0, 1, 0))
        workload::wrong(peer, "a text does not evaluate");
    const double value = lua_tonumber(state, -1);
    lua_pop(state, 1);
    return value;
}

#else

// The bound: one pass of precedence climbing over the bytes, no allocation, no names, no errors.
static const char* const peer = "floor";
struct OnePass {
    const char* at;
    const char* end;
    void skipBlanks() {
        while (at < end && *at == ' ') ++at;
    }
    double primary() {
        skipBlanks();
        double value = 0;
        if (at < end && *at == '(') {
            ++at;
            value = sum();
            skipBlanks();
            ++at;
        } else {
            at = std::from_chars(at, end, value).ptr;
        }
        return value;
    }
    double product() {
        double value = primary();
        for (skipBlanks(); at < end && (*at == '*' || *at == '/'); skipBlanks()) {
            if (*at++ == '*')
                value *= primary();
            else
                value /= primary();
        }
        return value;
    }
    double sum() {
        double value = product();
        for (skipBlanks(); at < end && (*at == '+' || *at == '-'); skipBlanks()) {
            if (*at++ == '+')
                value += product();
            else
                value -= product();
        }
        return value;
    }
};
static double evaluate(const std::string& text) { return OnePass{text.data(), text.data() + text.size()}.sum(); }

#endif

namespace {

constexpr std::uint32_t texts = 1'000'000;
constexpr int repeats = 5;
constexpr double mostSeconds = 12;  // a repeat that takes longer is cut, and scaled

struct Text {
    std::string text;
    double value;
};

double operand(workload::Random& random) { return (1 + random.below(99'999)) / 100.0; }

Text shortText(workload::Random& random) {
    const double last = operand(random), close = operand(random);
    char text[200];
    std::snprintf(text, sizeof text, "(%.2f - %.2f) / %.2f * 100", last, close, close);
    return {text, (last - close) / close * 100};
}

Text longText(workload::Random& random) {
    double a[8];
    for (double& value : a) value = operand(random);
    char text[200];
    std::snprintf(text, sizeof text, "((%.2f + %.2f) / 2 - %.2f) * %.2f / (%.2f + %.2f) + %.2f * 0.5 - %.2f", a[0],
                  a[1], a[2], a[3], a[4], a[5], a[6], a[7]);
    return {text, ((a[0] + a[1]) / 2 - a[2]) * a[3] / (a[4] + a[5]) + a[6] * 0.5 - a[7]};
}

workload::Sample evaluateAll(const std::vector<Text>& all) {
    std::uint32_t done = 0;
    bool good = true;
    const workload::Timer timer;
    for (const Text& one : all) {
        good &= std::fabs(evaluate(one.text) - one.value) <= 1e-9 * (1 + std::fabs(one.value));
        if (++done % 1'024 == 0 && timer.wall() > mostSeconds) break;
    }
    const workload::Sample sample = timer.stop();
    if (!good) workload::wrong(peer, "W6: a result is wrong");
    return {sample.wall * texts / done, sample.cpu * texts / done};
}

void run(const char* variant, Text (*make)(workload::Random&)) {
    workload::Random random(workload::dataSeed);
    std::vector<Text> all;
    for (std::uint32_t i = 0; i < texts; ++i) all.push_back(make(random));
    std::vector<workload::Sample> samples;
    for (int i = 0; i < repeats; ++i) samples.push_back(evaluateAll(all));
    workload::report({peer, "W6", texts, variant}, texts, samples);
}

}  // namespace

int main() {
    run("fresh text (last-close)/close*100", shortText);
    run("fresh text, 10 operands", longText);
}

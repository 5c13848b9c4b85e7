// One fresh text in, one double out: what a user-defined column costs a cell. The same texts as the peers get: an
// xorshift stream, seed 42, a million of each kind, built before the clock starts.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "quor/expression/core/ExpressionEvaluator.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <stdexcept>

namespace {

constexpr int kTexts = 1'000'000;
constexpr int kRepeats = 5;

struct Texts {
    std::vector<CString> texts;
    std::vector<double> expected;
};

class Prices {
public:
    double next() {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 17;
        m_state ^= m_state << 5;
        return (1 + m_state % 99999) / 100.0;
    }

private:
    std::uint32_t m_state = 42;
};

Texts shortTexts() {
    Texts made;
    Prices prices;
    char text[200];
    for (int i = 0; i < kTexts; ++i) {
        const double last = prices.next(), close = prices.next();
        std::snprintf(text, sizeof text, "(%.2f - %.2f) / %.2f * 100", last, close, close);
        made.texts.emplace_back(text);
        made.expected.push_back((last - close) / close * 100);
    }
    return made;
}

Texts tenOperandTexts() {
    Texts made;
    Prices prices;
    char text[200];
    for (int i = 0; i < kTexts; ++i) {
        double p[8];
        for (double& price : p) price = prices.next();
        std::snprintf(text, sizeof text, "((%.2f + %.2f) / 2 - %.2f) * %.2f / (%.2f + %.2f) + %.2f * 0.5 - %.2f", p[0],
                      p[1], p[2], p[3], p[4], p[5], p[6], p[7]);
        made.texts.emplace_back(text);
        made.expected.push_back(((p[0] + p[1]) / 2 - p[2]) * p[3] / (p[4] + p[5]) + p[6] * 0.5 - p[7]);
    }
    return made;
}

double microsecondsEach(const Texts& work) {
    std::size_t wrong = 0;
    const double seconds = medianSeconds(kRepeats, [&] {
        for (std::size_t i = 0; i < work.texts.size(); ++i) {
            double value = 0;
            const ExpressionResult code = EvaluateExpression(work.texts[i], &value);
            const double expected = work.expected[i];
            wrong += code != EXPR_OK || !(std::fabs(value - expected) <= 1e-9 * (1 + std::fabs(expected)));
        }
    });
    if (wrong) throw std::runtime_error("expressions gave wrong values");
    return seconds * 1e6 / kTexts;
}

}  // namespace

void benchExpression(Figures& figures) {
    figures.push_back({"w6_short_us", microsecondsEach(shortTexts()), "us",
                       "one fresh text (last - close) / close * 100; 1M texts, median of 5", 0.5, 0.15});
    figures.push_back({"w6_ten_us", microsecondsEach(tenOperandTexts()), "us",
                       "one fresh text of 10 operands; 1M texts, median of 5", 1.1, 0.35});
}

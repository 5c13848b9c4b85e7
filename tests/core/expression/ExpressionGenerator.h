// Texts for holding the fused evaluator to its two stages: made by a grammar, mutated, or of random bytes.
#pragma once

#include "quor/expression/core/ExpressionEvaluator.h"

#include <bit>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>

namespace expression_test {

class Generator {
public:
    explicit Generator(std::uint64_t seed) : m_random(seed) {}

    std::string next() {
        std::string text = sum(0);
        for (std::uint32_t edits = below(2) * below(5); edits > 0; --edits) edit(text);
        return text;
    }

private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(m_random() % limit); }
    template <std::size_t N>
    const char* any(const char* const (&texts)[N]) {
        return texts[below(N)];
    }

    std::string blank() { return below(3) ? "" : any({" ", "  ", "\t", "\n", " \v\f\r"}); }

    std::string number() {
        switch (below(8)) {
            case 0:
                return std::to_string(below(10));
            case 1:
                return std::to_string(below(100000)) + "." + std::to_string(below(100));
            case 2:
                if (below(5) == 0)
                    return any({"2147483647", "2147483648", "4294967296", "9007199254740993", "12345678901234567890",
                                "123456789012345678901234567890.5", "0.0000000000000000000000001"});
                return any({"0",       "1",    ".5",   "5.",       "0.1",   "00", "1e5", "1E3",  "0x10",
                            "0x1.8p3", "inf",  "nan",  "infinity", "1e400", "1e", "0x",  ".",    "1.2.3",
                            "abc",     "nan0", "1e5x", "$",        "!",     "=",  "#5",  "\200", "\2471"});
            case 3:
                return any({"-", "+"}) + number();
            default:
                return std::to_string(below(1000));
        }
    }

    std::string factor(int depth) {
        if (depth < 6 && below(4) == 0) return "(" + blank() + sum(depth + 1) + blank() + ")";
        return number();
    }

    std::string sum(int depth) {
        std::string text = factor(depth);
        for (std::uint32_t terms = below(5); terms > 0; --terms)
            text += blank() +
                    any({"*", "^",  "/",  "\\", "%", "<<", ">>", "-",  "+",  "&",  "|",  "&&", "||", "==", "<",
                         ">", ">=", "<=", "-",  "+", "*",  "/",  "!=", "!|", "!&", "<>", "=",  "^-", "--"}) +
                    blank() + factor(depth);
        return text;
    }

    // A character of the grammar, or any byte, comes, goes or takes another's place.
    void edit(std::string& text) {
        static constexpr std::string_view kAlphabet = "0123456789..ee()()()  \t*^/\\%<<>>-+-+&&||==!!<>x$aif";
        const std::uint32_t drawn = below(256), length = static_cast<std::uint32_t>(text.size());
        const char c = drawn && below(8) == 0 ? static_cast<char>(drawn) : kAlphabet[drawn % kAlphabet.size()];
        const std::size_t at = below(length + 1);
        const std::uint32_t kind = below(3);
        if (kind == 0)
            text.insert(at, 1, c);
        else
            text.replace(at, 1, kind == 1 ? "" : std::string(1, c));
    }

    std::mt19937_64 m_random;
};

// Runs a text down both roads; empty, or what differs. The result is compared to the bit (any NaN equals any NaN), and
// a marker value shows whether it was written at all.
inline std::string difference(const std::string& text) {
    const double marker = -123456.789;
    double fused = marker, staged = marker;
    const ExpressionResult fusedCode = EvaluateExpression(text.c_str(), &fused);
    CString postfix("left from before");
    ExpressionResult stagedCode = ConvertToPostfix(text.c_str(), postfix);
    if (stagedCode == EXPR_OK) stagedCode = EvaluatePostfix(postfix, &staged);
    const bool sameValue = std::bit_cast<std::uint64_t>(fused) == std::bit_cast<std::uint64_t>(staged) ||
                           (fused != fused && staged != staged);
    if (fusedCode == stagedCode && sameValue) return {};
    std::ostringstream told;
    told << "text \"" << text << "\" postfix \"" << postfix.GetString() << "\": fused " << fusedCode << " " << fused
         << ", two stages " << stagedCode << " " << staged;
    return std::move(told).str();
}

}  // namespace expression_test

#include "tests/core/expression/ExpressionGenerator.h"
#include "tests/fuzz/Fuzz.h"

#include <cstdio>
#include <cstdlib>

void fuzzExpression(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string told = expression_test::difference(text);
    if (told.empty()) return;
    std::fprintf(stderr, "%s\n", told.c_str());
    std::abort();
}

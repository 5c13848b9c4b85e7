// Counts what goes through operator new while an expression is evaluated.
#include "quor/expression/core/ExpressionEvaluator.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>

namespace {
std::size_t g_allocations = 0;
}

// The compiler sees through the replaced pair and takes it for a mismatch.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

void* operator new(std::size_t size) {
    ++g_allocations;
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

TEST(ExpressionAllocation, NoneUpToSixtyFourTokens) {
    std::string chain = "1.25";
    while (chain.size() < 31 * 7) chain += " + 2.5 ";
    const std::string texts[] = {
        chain, std::string(21, '(') + "0x10" + std::string(21, ')') + "* 1234567890.12345678901234567890",
        std::string(64, '('), "abc - 10%0"};
    for (const std::string& text : texts) {
        CString argument(text.c_str());
        double value = 0;
        const std::size_t before = g_allocations;
        EvaluateExpression(argument, &value);
        EXPECT_EQ(g_allocations, before) << text;
    }
}

}  // namespace

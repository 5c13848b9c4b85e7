#include "src/grid/core/FilterStore.h"

#include <gtest/gtest.h>

#include <string>

using namespace quor::grid;

namespace {

std::string shown(const FilterStore& store) {
    std::string text;
    for (int i = 0; i < store.count(); ++i)
        text += std::to_string(store.columnAt(i)) + "=" + store.textAt(i).GetString() + " ";
    return text;
}

bool passes(FilterStore& store, int i, const char* cell, bool exact = false) {
    return store.tokensAt(i, exact).passes(CString(cell));
}

TEST(FilterStore, KeepsTheOrderOfFirstEntry) {
    FilterStore store;
    store.set(7, "a");
    store.set(2, "b");
    store.set(-1, "c");
    store.set(7, "d");
    EXPECT_EQ(shown(store), "7=d 2=b -1=c ");
    store.set(2, "");
    store.set(3, "");
    EXPECT_EQ(shown(store), "7=d -1=c ");
    store.set(2, "e");
    EXPECT_EQ(shown(store), "7=d -1=c 2=e ");
    store.clear();
    EXPECT_TRUE(store.isEmpty());
}

TEST(FilterStore, CompiledTextsFollowTheirColumn) {
    FilterStore store;
    store.set(1, "a");
    store.set(2, "b");
    store.set(3, "c");
    EXPECT_TRUE(passes(store, 0, "ax") && passes(store, 1, "bx") && passes(store, 2, "cx"));
    store.set(1, "");
    EXPECT_TRUE(passes(store, 0, "bx") && passes(store, 1, "cx"));
    store.set(3, "d");
    EXPECT_TRUE(passes(store, 0, "bx") && passes(store, 1, "dx"));
    EXPECT_FALSE(passes(store, 1, "cx"));
    store.set(4, "e");
    EXPECT_TRUE(passes(store, 2, "ex"));
}

TEST(FilterStore, AChangeOfTheModeCompilesAnew) {
    FilterStore store;
    store.set(1, "a");
    EXPECT_TRUE(passes(store, 0, "ab"));
    EXPECT_FALSE(passes(store, 0, "ab", true));
    EXPECT_TRUE(passes(store, 0, "A", true));
    EXPECT_TRUE(passes(store, 0, "ab"));
}

}  // namespace

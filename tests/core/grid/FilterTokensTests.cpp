#include "quor/grid/core/FilterStore.h"
#include "tests/core/grid/NaiveFilter.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using namespace quor::grid;

namespace {

bool passes(const std::string& filter, const CString& cell, bool exact = false) {
    return FilterTokens(filter, exact).passes(cell);
}

// What the random texts of the literal reading cannot have.
TEST(FilterTokens, Grammar) {
    static const struct {
        const char* filter;
        const char* cell;
        bool passes;
        bool passesExact;
    } cases[] = {
        {"", "abc", true, true},
        {"~", "abc", false, false},
        {"=5", "5", false, false},
        {"\xC4", "\xE4", false, false},  // case is A to Z
        // Numbers, as the text says them.
        {">5", "1,234", false, false},
        {"> 5", "  6", true, false},
        {">5", "0x10", true, false},
        {">5", "inf", true, false},
        {">5", "nan", false, false},
        {"<nan", "5", false, false},
        {">=5", "6", false, false},
        {"a~b~c~d~e~f~longer", "LONGER", true, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(passes(c.filter, c.cell), c.passes) << c.filter << " on " << c.cell;
        EXPECT_EQ(passes(c.filter, c.cell, true), c.passesExact) << c.filter << " = " << c.cell;
    }
}

// A cell is taken at its full length; a filter text ends at its NUL.
TEST(FilterStore, FiltersMoveWithTheirColumnsOrEndWithThem) {
    FilterStore store;
    const auto shown = [&] {
        std::string text;
        for (int i = 0; i < store.count(); ++i)
            text += std::to_string(store.columnAt(i)) + store.textAt(i).GetString() +
                    (store.tokensAt(i, false).passes(store.textAt(i)) ? " " : "! ");
        return text;
    };
    for (const auto& [column, text] : {std::pair{0, "a"}, {2, "b"}, {3, "c"}, {9, "d"}}) store.set(column, text);
    EXPECT_EQ(shown(), "0a 2b 3c 9d ");
    EXPECT_TRUE(store.moveColumns({1, 0, -1, 2}, 4));
    EXPECT_EQ(shown(), "1a 2c 9d ") << "9 was never a column";
    EXPECT_FALSE(store.moveColumns({0, 1, 2, 3}, 4));
    EXPECT_TRUE(store.moveColumns({0, 1, 2, 3}, 10)) << "another column has that number now";
    EXPECT_EQ(shown(), "1a 2c ");
}

TEST(FilterTokens, NulBytes) {
    const CString cell("ab\0cd", 5);
    EXPECT_TRUE(passes("ab", cell));
    EXPECT_TRUE(passes("*cd", cell));
    EXPECT_TRUE(passes("*c*", cell));
    EXPECT_FALSE(passes("ab", cell, true));
    const std::string cut("x\0~ab", 5);
    EXPECT_TRUE(passes(cut, "xyz"));
    EXPECT_FALSE(passes(cut, cell));
}

TEST(FilterTokens, AgreeWithTheLiteralReading) {
    std::mt19937 random(20);
    const auto pick = [&](unsigned below) { return static_cast<unsigned>(random() % below); };
    const auto text = [&](unsigned longest) {
        static constexpr std::string_view kLetters = "aAbB*~<>1.2e- x@[`{\xC1\xE1";
        std::string result;
        for (unsigned i = pick(longest + 1); i > 0; --i) result += kLetters[pick(kLetters.size())];
        return result;
    };
    for (int round = 0; round < 4000; ++round) {
        std::string filter;
        for (unsigned tokens = pick(4) == 0 ? pick(40) : pick(5); tokens > 0; --tokens) {
            static const char* const forms[] = {"", "", "*", ">", "<", "~"};
            filter += forms[pick(std::size(forms))] + text(4);
            if (pick(8) != 0) filter += '~';
        }
        for (const bool exact : {false, true}) {
            const FilterTokens compiled(filter, exact);
            for (int i = 0; i < 25; ++i) {
                const CString cell = text(pick(3) == 0 ? 20 : 5).c_str();
                ASSERT_EQ(compiled.passes(cell), naive_filter::passes(cell, filter.c_str(), exact))
                    << "'" << filter << "' on '" << cell.GetString() << "', exact " << exact;
            }
        }
    }
}

TEST(FilterTokens, ManyValuesFindTheirRows) {
    std::string filter;
    for (int i = 0; i < 20000; i += 2) filter += "V" + std::to_string(i) + ".~";
    const FilterTokens plain(filter, false), exact(filter, true);
    for (int i = 0; i < 20000; ++i) {
        const std::string name = "v" + std::to_string(i) + ".";
        ASSERT_EQ(plain.passes(CString((name + "tail").c_str())), i % 2 == 0) << name;
        ASSERT_EQ(exact.passes(CString(name.c_str())), i % 2 == 0) << name;
        ASSERT_FALSE(exact.passes(CString((name + "t").c_str()))) << name;
    }
}

}  // namespace

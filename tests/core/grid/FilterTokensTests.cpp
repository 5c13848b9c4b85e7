#include "quor/grid/core/FilterTokens.h"
#include "tests/core/grid/NaiveFilter.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using namespace quor::grid;

namespace {

struct Case {
    const char* filter;
    const char* cell;
    bool passes;
    bool passesExact;
};

TEST(FilterTokens, Grammar) {
    static const Case cases[] = {
        {"", "", true, true},
        {"", "abc", true, true},
        {"~", "abc", false, false},
        {"~~~", "", false, false},
        // Beginnings.
        {"ab", "ABC", true, false},
        {"ab", "XAB", false, false},
        {"AB", "ab", true, true},
        {"abcd", "abc", false, false},
        {"ab", "", false, false},
        {"=5", "5", false, false},
        {"=5", "=50", true, false},
        {" ab", "ab", false, false},
        {"\xC4", "\xE4", false, false},  // case is A to Z
        // Stars. In exact mode a star is a character.
        {"*", "", true, false},
        {"*", "abc", true, false},
        {"**", "", true, false},
        {"*", "*", true, true},
        {"*b*", "aBc", true, false},
        {"*b*", "*B*", true, true},
        {"*d*", "abc", false, false},
        {"*AB", "", false, false},
        {"*AB", "xxab", true, false},
        {"*AB", "abx", false, false},
        {"*AB", "b", false, false},
        {"***", "a*b", true, false},
        {"***", "ab", false, false},
        {"*a*b", "xa*b", true, false},
        {"a*", "a*c", true, false},
        {"a*", "abc", false, false},
        // Numbers, as the text says them.
        {">5", "12abc", true, false},
        {">5", "abc", false, false},
        {">5", "", false, false},
        {">5", "5", false, false},
        {">5", ">5", false, true},
        {">5", "1,234", false, false},
        {">5", "-6", false, false},
        {"> 5", "  6", true, false},
        {">5", "0x10", true, false},
        {">5", "inf", true, false},
        {">5", "nan", false, false},
        {">nan", "5", false, false},
        {"<nan", "5", false, false},
        {">abc", "5", false, false},
        {">", "5", false, false},
        {"<-1e2", "-101", true, false},
        {">=5", "6", false, false},
        // Any token is enough.
        {"<5~>10", "3", true, false},
        {"<5~>10", "12", true, false},
        {"<5~>10", "7", false, false},
        {">9~>5", "7", true, false},
        {"<5~<9", "7", true, false},
        {">x~>5", "7", true, false},
        {"~ab~~cd~", "CDE", true, false},
        {"~ab~~cd~", "cd", true, true},
        {"ab~*", "", true, false},
        {"a~b~c~d~e~f~longer", "Folder", true, false},
        {"a~b~c~d~e~f~longer", "long", false, false},
        {"a~b~c~d~e~f~longer", "LONGER", true, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FilterTokens(c.filter, false).passes(CString(c.cell)), c.passes) << c.filter << " on " << c.cell;
        EXPECT_EQ(FilterTokens(c.filter, true).passes(CString(c.cell)), c.passesExact) << c.filter << " = " << c.cell;
    }
}

// Bytes beside the letters, and with a top bit, around the eight that are compared at once.
TEST(FilterTokens, BeginningsOfEveryLength) {
    const std::string letters = "aZ@[`{\xC1\xDAmQ0z";
    for (std::size_t cellLength = 0; cellLength <= letters.size(); ++cellLength) {
        const CString cell(letters.c_str(), static_cast<int>(cellLength));
        for (std::size_t length = 1; length <= letters.size(); ++length)
            for (std::size_t changed = 0; changed < length; ++changed) {
                std::string token = letters.substr(0, length);
                token[changed] = static_cast<char>(token[changed] ^ 0x20);
                for (const std::string& filter : {token, "q~" + token}) {
                    ASSERT_EQ(FilterTokens(filter, false).passes(cell),
                              naive_filter::passes(cell, filter.c_str(), false))
                        << filter << " on " << cell.GetString();
                }
            }
    }
}

// A cell is taken at its full length; a filter text ends at its NUL.
TEST(FilterTokens, NulBytes) {
    const CString cell("ab\0cd", 5);
    EXPECT_TRUE(FilterTokens("ab", false).passes(cell));
    EXPECT_TRUE(FilterTokens("*cd", false).passes(cell));
    EXPECT_TRUE(FilterTokens("*c*", false).passes(cell));
    EXPECT_FALSE(FilterTokens("ab", true).passes(cell));
    EXPECT_TRUE(FilterTokens(std::string_view("x\0~ab", 5), false).passes(CString("xyz")));
    EXPECT_FALSE(FilterTokens(std::string_view("x\0~ab", 5), false).passes(cell));
}

class FilterTexts {
public:
    explicit FilterTexts(unsigned seed) : m_random(seed) {}

    unsigned pick(unsigned count) { return static_cast<unsigned>(m_random() % count); }
    std::string text(const char* letters, unsigned most) {
        const std::string set = letters;
        std::string result;
        for (unsigned i = pick(most + 1); i > 0; --i) result += set[pick(static_cast<unsigned>(set.size()))];
        return result;
    }
    std::string filter() {
        std::string result;
        for (unsigned tokens = pick(4) == 0 ? pick(40) : pick(5); tokens > 0; --tokens) {
            static const char* const forms[] = {"", "", "*", ">", "<", "~"};
            result += forms[pick(6)] + text("aAbB*~<>1.2e- x", 4);
            if (pick(8) != 0) result += '~';
        }
        return result;
    }

private:
    std::mt19937 m_random;
};

TEST(FilterTokens, AgreeWithTheLiteralReading) {
    for (unsigned seed = 0; seed < 4000; ++seed) {
        FilterTexts texts(seed);
        const std::string filter = texts.filter();
        const FilterTokens plain(filter, false), exact(filter, true);
        for (int i = 0; i < 25; ++i) {
            const CString cell = texts.text("aAbB*~<>1.2e- x", 5).c_str();
            ASSERT_EQ(plain.passes(cell), naive_filter::passes(cell, filter.c_str(), false))
                << "'" << filter << "' on '" << cell.GetString() << "'";
            ASSERT_EQ(exact.passes(cell), naive_filter::passes(cell, filter.c_str(), true))
                << "'" << filter << "' = '" << cell.GetString() << "'";
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

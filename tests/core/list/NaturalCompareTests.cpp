#include "src/list/core/NaturalCompare.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace quor::list;

namespace {

struct NaturalCase {
    const char* x;
    const char* y;
    int result;
    int mode = 0;
};

TEST(NaturalCompare, Cases) {
    const NaturalCase cases[] = {
        {"", "", 0},
        {"", "a", -1},
        {"a", "", 1},
        {"a", "b", -1},
        {"a", "a1", -1},
        {"a9", "a10", -1},
        {"a2b", "a2c", -1},
        {"a2b3", "a2b20", -1},
        {"1", "a", -1},
        {"a", "1", 1},
        {"-1", "1", 1},  // the sign is no digit
        {"-5", "-10", -1},
        // Equal values: more leading zeros first, whatever follows.
        {"a01", "a1", -1},
        {"1", "001", 1},
        {"01b", "1a", -1},
        {"0", "00", 1},
        // Signed bytes: above 127 stands before all letters.
        {"\xE9", "a", -1},
        {"B", "a", -1},
        // Folding.
        {"A", "a", -1},
        {"A", "a", 0, 1},
        {"b", "A", 1, 1},
        {"\xC9", "\xE9", -1, 1},
        {"Z10", "z9", 1, 1},
        {"a", "b", 0, 2},
        {"a", "b", 0, -1},
        // Around the mark only the first digits count, and they end the comparison.
        {"2147483647", "2", 0},
        {"2147483647", "20", 0},
        {"2147483647", "3", -1},
        {"1", "2147483647", -1},
        {"9", "2147483647", 1},
        {"2147483647b", "2147483647a", 0},
        {"02147483647", "5", -1},
        {"2147483646", "2", 1},
        {"2147483648", "2", 1},
        {"4294967296", "5", 1},  // 64 bits
        {"x2147483647", "x200", 0},
        // Saturated values are equal: then the longer run is first.
        {"9223372036854775808", "9223372036854775807", 0},
        {"99999999999999999999", "9999999999999999999", -1},
    };
    for (const NaturalCase& c : cases) {
        EXPECT_EQ(naturalCompare(c.x, c.y, c.mode), c.result) << c.x << " | " << c.y << " | " << c.mode;
    }
    EXPECT_EQ(naturalCompare(nullptr, "a"), -1);
    EXPECT_EQ(naturalCompare(nullptr, nullptr), 0);
}

// All texts of up to four characters of a small alphabet.
std::vector<std::string> shortTexts() {
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; texts[i].size() < 4; ++i) {
        for (const char c : {'0', '1', '9', 'a'}) texts.push_back(texts[i] + c);
    }
    return texts;
}

TEST(NaturalCompare, IsAntisymmetricEverywhere) {
    std::vector<std::string> texts = shortTexts();
    for (const char* marked : {"2147483647", "x2147483647", "02147483647", "2", "20", "3", "x200"}) {
        texts.push_back(marked);
    }
    for (const std::string& x : texts) {
        for (const std::string& y : texts) {
            ASSERT_EQ(naturalCompare(x.c_str(), y.c_str()), -naturalCompare(y.c_str(), x.c_str())) << x << " | " << y;
        }
    }
}

TEST(NaturalCompare, IsTransitiveWithoutTheMark) {
    std::vector<std::string> texts = shortTexts();
    texts.resize(150);
    for (const std::string& x : texts) {
        for (const std::string& y : texts) {
            if (naturalCompare(x.c_str(), y.c_str()) > 0) continue;
            for (const std::string& z : texts) {
                if (naturalCompare(y.c_str(), z.c_str()) > 0) continue;
                ASSERT_LE(naturalCompare(x.c_str(), z.c_str()), 0) << x << " | " << y << " | " << z;
            }
        }
    }
}

TEST(NaturalCompare, TheMarkBreaksTransitivity) {
    EXPECT_EQ(naturalCompare("20", "2147483647"), 0);
    EXPECT_EQ(naturalCompare("2147483647", "2"), 0);
    EXPECT_EQ(naturalCompare("20", "2"), 1);
    EXPECT_EQ(naturalCompare("100", "2147483647"), -1);
    EXPECT_EQ(naturalCompare("2147483647", "30"), -1);
    EXPECT_EQ(naturalCompare("100", "30"), 1);
}

}  // namespace

// The small controls' parts that need no window.
#include "quor/edits/core/ButtonLayout.h"
#include "quor/edits/core/CheckCell.h"
#include "quor/edits/core/Colours.h"
#include "quor/edits/core/DigitGroups.h"
#include "quor/edits/core/FontNames.h"

#include <array>
#include <gtest/gtest.h>

using namespace quor::edits;

namespace {

TEST(Colours, ATextIsReadableOnEveryGround) {
    EXPECT_NEAR(contrast(RGB(119, 119, 119), 0xFFFFFF), 4.48, 0.01);  // the guidelines' own example
    constexpr COLORREF kGrey = RGB(128, 128, 128);
    EXPECT_EQ(between(RGB(0, 160, 16), RGB(160, 0, 16), 8), RGB(80, 80, 16));
    EXPECT_EQ(readableOn(0xFFFFFF, kGrey, 3), kGrey) << "a colour that can be read stays";
    for (int ground = 0; ground < 0x1000; ground += 7) {
        const COLORREF color = RGB((ground & 0xF) * 17, (ground >> 4 & 0xF) * 17, (ground >> 8) * 17);
        EXPECT_GE(contrast(color, readableOn(color, kGrey, 3)), 3) << ground;
    }
}

TEST(Colours, TextsAndColours) {
    const std::pair<const char*, COLORREF> cases[] = {
        {"#000000", 0},       {"#FF8001", RGB(255, 128, 1)}, {"#ff8001", RGB(255, 128, 1)}, {"", kNoColour},
        {"#FF80", kNoColour}, {"#FF80010", kNoColour},       {"#GG0000", kNoColour},        {"#-10000", kNoColour}};
    for (const auto& [text, color] : cases) {
        EXPECT_EQ(parseColour(text), color) << text;
        EXPECT_EQ(parseColour(formatColour(color)), color) << text;
    }
    EXPECT_EQ(formatColour(RGB(255, 128, 1)), "#FF8001");
}

bool within(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom && inner.left <= inner.right && inner.top <= inner.bottom;
}

// What the list control gives for a cell that was never written.
#ifndef I_IMAGECALLBACK
constexpr int I_IMAGECALLBACK = -1, I_IMAGENONE = -2;
#endif

bool empty(const RECT& rect) { return rect.left == rect.right || rect.top == rect.bottom; }

TEST(ButtonLayout, AnArrowStandsInTheMiddle) {
    for (int width = 0; width < 40; ++width) {
        for (int height = 0; height < 40; height += 3) {
            const ArrowPlace arrow = arrowIn({5, 7, 5 + width, 7 + height}, 7);
            EXPECT_EQ(arrow.rows == 0, width < 3 || height < 3);
            if (arrow.rows == 0) continue;
            const int right = arrow.left + 2 * arrow.rows - 1, bottom = arrow.top + arrow.rows;
            EXPECT_LE(std::abs((arrow.left - 5) - (5 + width - right)), 1);
            EXPECT_LE(std::abs((arrow.top - 7) - (7 + height - bottom)), 1);
            EXPECT_TRUE(arrow.left > 5 && 2 * arrow.rows - 1 <= 7);
        }
    }
}

TEST(ButtonLayout, TextsAndPartsStayInside) {
    const RECT inside = {10, 0, 60, 20};
    const int lefts[][2] = {{20, 14}, {42, 14}, {44, 13}, {50, 10}, {90, 10}};  // width of the text, left edge
    for (const auto& [width, left] : lefts) {
        const RECT place = textPlace(inside, width, 4);
        EXPECT_EQ(place.left, left) << width;
        EXPECT_EQ(place.left - 10, 60 - place.right) << width;
    }
    const int edges[][2] = {{16, 44}, {50, 10}, {99, 10}, {-3, 60}};  // width of the strip, its left edge
    for (const auto& [width, edge] : edges) {
        const auto [main, strip] = splitParts(inside, width);
        EXPECT_TRUE(main.right == edge && strip.left == edge) << width;
        EXPECT_TRUE(within(main, inside) && within(strip, inside)) << width;
    }
}

TEST(CheckCell, EveryCellHasItsNumberAndItsPlaces) {
    for (const int fresh : {0, I_IMAGECALLBACK, I_IMAGENONE}) EXPECT_EQ(unpackCell(fresh), CheckCell{});
    for (int kind = 0; kind < 12; ++kind) {
        const int check = std::array{kNoCheck, kUnchecked, kChecked}[static_cast<std::size_t>(kind % 3)];
        const CheckCell cell = {check, kind / 3 % 2 != 0, kind / 6 != 0};
        EXPECT_EQ(unpackCell(packCell(cell)), cell);
        for (int width = 0; width < 60; ++width) {
            const RECT area = {3, 4, 3 + width, 4 + width / 2};
            const auto [box, field, text] = cellPlaces(cell, area, {4, 13});
            EXPECT_TRUE(empty(box) || within(box, area));
            for (const RECT& right : {field, text})
                EXPECT_TRUE(empty(right) || (within(right, area) && right.left >= box.right));
            EXPECT_EQ(empty(box), check == kNoCheck || width < 9 || width / 2 < 3) << width;
            EXPECT_TRUE(empty(kind / 3 % 2 ? text : field));
        }
    }
}

TEST(CheckCell, AColumnIsTheSumOfItsBoxes) {
    const struct {
        std::vector<int> boxes;
        int column, afterClick;
    } cases[] = {{{kNoCheck}, kNoCheck, kChecked},
                 {{kUnchecked, kNoCheck, kUnchecked}, kUnchecked, kChecked},
                 {{kChecked, kChecked}, kChecked, kUnchecked},
                 {{kChecked, kUnchecked, kChecked}, kMixed, kChecked}};
    for (const auto& [boxes, column, afterClick] : cases) {
        int sum = kNoCheck;
        for (const int box : boxes) sum = joined(sum, box);
        EXPECT_EQ(sum, column);
        EXPECT_EQ(toggled(sum), afterClick);
    }
}

TEST(FontNames, FacesAreTidied) {
    std::vector<FontFace> faces = {{"Zeta"},       {"@Zeta"},      {"alpha"}, {"Beta", true}, {"beta"},
                                   {"Dots", true}, {"Dots", true}, {""},      {"Alpha Two"},  {"ALPHA"}};
    tidyFaces(faces);
    std::string told;
    for (const FontFace& face : faces) told += face.name + (face.symbol ? "*," : ",");
    EXPECT_EQ(told, "ALPHA,Alpha Two,beta,Dots*,Zeta,");
}

TEST(FontNames, ASizeIsAWholeNumberFrom4To72) {
    const std::pair<const char*, int> cases[] = {{"4", 4},   {"72", 72}, {" 008 ", 8}, {"3", 0},
                                                 {"73", 0},  {"", 0},    {"8.0", 0},   {"-8", 0},
                                                 {"8pt", 0}, {"1 0", 0}, {"0x8", 0},   {"4294967304", 0}};
    for (const auto& [text, points] : cases) EXPECT_EQ(pointsOf(text), points) << '"' << text << '"';
}

TEST(FontNames, TheNewestFiveAreKept) {
    const std::pair<const char*, const char*> cases[] = {{"A", "A"},   {"", "A"},     {"B", "BA"},    {"a", "aB"},
                                                         {"C", "CaB"}, {"D", "DCaB"}, {"E", "EDCaB"}, {"F", "FEDCa"}};
    RecentNames recent;
    for (const auto& [used, names] : cases) {
        recent.use(used);
        std::string told;
        for (const std::string& name : recent.names()) told += name;
        EXPECT_EQ(told, names) << used;
    }
}

TEST(FontNames, QuickLettersAreOneBeginning) {
    const struct {
        char letter;
        unsigned time;
        const char* text;
    } cases[] = {{'a', 500, "a"}, {'r', 1500, "ar"}, {'i', 2501, "i"}, {'x', 0xFFFFFF00u, "x"}, {'y', 0x10u, "xy"}};
    TypeAhead typed;
    for (const auto& [letter, time, text] : cases) EXPECT_EQ(typed.type(letter, time), text) << time;
}

TEST(DigitGroups, OfTheIntegerPartOnly) {
    const char* const cases[][2] = {
        {"-1234567.50", "-1,234,567.50"},
        {"+324473.75", "+324,473.75"},
        {"+1234", "+1,234"},
        {"999", "999"},
        {"--12345", "-12,345"},
        {"1,23,456.12", "123,456.12"},
        {".5", ".5"},
        {"", ""},
        {"1234.5678.9", "123,4.5,678.9"},
        {"-.5", "-.5"},
        {"-", "-"},
    };
    for (const auto& c : cases) EXPECT_EQ(groupedNumber(c[0]), c[1]) << c[0];
}

}  // namespace

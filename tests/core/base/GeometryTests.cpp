#include "quor/platform/Base.h"

#include <gtest/gtest.h>
#include <ostream>

std::ostream& operator<<(std::ostream& out, const CRect& rect) {
    return out << '(' << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom << ')';
}

namespace {

TEST(Geometry, UnionIntersectionAndDifference) {
    const CRect none, whole(0, 0, 10, 10);
    const struct {
        CRect first, second, both, around, without;
    } cases[] = {
        {whole, {5, 5, 20, 20}, {5, 5, 10, 10}, {0, 0, 20, 20}, whole},
        {whole, {10, 0, 20, 10}, none, {0, 0, 20, 10}, whole},   // they only touch
        {{5, 5, 5, 9}, {1, 2, 3, 4}, none, {1, 2, 3, 4}, none},  // no width
        {{9, 9, 2, 2}, none, none, none, none},                  // the wrong way round counts as empty
        {whole, {-1, -1, 11, 4}, {0, 0, 10, 4}, {-1, -1, 11, 10}, {0, 4, 10, 10}},
        {whole, {-1, 4, 11, 12}, {0, 4, 10, 10}, {-1, 0, 11, 12}, {0, 0, 10, 4}},
        {whole, {0, 0, 4, 10}, {0, 0, 4, 10}, whole, {4, 0, 10, 10}},
        {whole, {4, 0, 10, 10}, {4, 0, 10, 10}, whole, {0, 0, 4, 10}},
        {whole, {2, 0, 4, 10}, {2, 0, 4, 10}, whole, whole},  // would leave two
        {whole, {-5, -5, 15, 15}, whole, {-5, -5, 15, 15}, none},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(one.second & one.first, one.both) << one.first << one.second;
        EXPECT_EQ(one.second | one.first, one.around) << one.first << one.second;
        CRect both = one.first, around = one.first, rest = one.first;  // each into itself
        EXPECT_EQ(both.IntersectRect(both, one.second) != FALSE, !one.both.IsRectEmpty());
        EXPECT_EQ(around.UnionRect(around, one.second) != FALSE, !one.around.IsRectEmpty());
        EXPECT_EQ(rest.SubtractRect(rest, one.second) != FALSE, !one.without.IsRectEmpty());
        EXPECT_EQ(both, one.both) << one.first << one.second;
        EXPECT_EQ(around, one.around) << one.first << one.second;
        EXPECT_EQ(rest, one.without) << one.first << one.second;
    }
}

TEST(Geometry, EdgesMoveAsToldAndHoldLeftAndTopOnly) {
    CRect rect(CPoint(10, 20), CSize(5, 6));
    for (const CPoint& inside : {CPoint(10, 20), CPoint(14, 25)}) EXPECT_TRUE(rect.PtInRect(inside));
    for (const CPoint& outside : {CPoint(15, 25), CPoint(14, 26), CPoint(9, 20), CPoint(10, 19)})
        EXPECT_FALSE(rect.PtInRect(outside));
    rect.InflateRect(1, 2, 3, 4);
    EXPECT_EQ(rect, CRect(9, 18, 18, 30));
    rect.DeflateRect(CRect(1, 2, 3, 4));
    rect.DeflateRect(3, 1);
    EXPECT_EQ(rect, CRect(13, 21, 12, 25));
    rect.NormalizeRect();
    EXPECT_EQ(rect, CRect(12, 21, 13, 25));
    rect.MoveToXY(0, 1);
    rect += CPoint(10, 10);
    rect.OffsetRect(CSize(-1, 1));
    EXPECT_EQ(rect, CRect(9, 12, 10, 16));
    EXPECT_EQ(CRect(0, 0, 11, 7).CenterPoint(), CPoint(5, 3));
    EXPECT_EQ(CPoint(static_cast<LPARAM>(0xFFFE0003)), CPoint(3, -2)) << "a mouse point has signed halves";
    EXPECT_EQ(CPoint(5, 6) - CPoint(1, 9), CSize(4, -3));
}

}  // namespace

// CSize, CPoint and CRect: the API's plain records with arithmetic. No system calls, the same in both builds. Pixels,
// y downwards; a rectangle holds its left and top edges and not its right and bottom ones. They add no member to their
// bases and may be passed wherever those are wanted. Coordinates are small enough that sums fit in 32 bits.
#pragma once

#include "quor/platform/base/WinTypes.h"

#include <algorithm>

class CSize : public tagSIZE {
public:
    CSize() : tagSIZE{0, 0} {}
    CSize(int width, int height) : tagSIZE{width, height} {}
    CSize(const SIZE& size) : tagSIZE(size) {}
    explicit CSize(const POINT& point) : tagSIZE{point.x, point.y} {}

    void SetSize(int width, int height) { *this = CSize(width, height); }
    bool operator==(const SIZE& other) const { return cx == other.cx && cy == other.cy; }
    CSize& operator+=(const SIZE& other) { return *this = *this + other; }
    CSize& operator-=(const SIZE& other) { return *this = *this - other; }
    CSize operator+(const SIZE& other) const { return CSize(cx + other.cx, cy + other.cy); }
    CSize operator-(const SIZE& other) const { return CSize(cx - other.cx, cy - other.cy); }
    CSize operator-() const { return CSize(-cx, -cy); }
};

class CPoint : public tagPOINT {
public:
    CPoint() : tagPOINT{0, 0} {}
    CPoint(int horizontal, int vertical) : tagPOINT{horizontal, vertical} {}
    CPoint(const POINT& point) : tagPOINT(point) {}
    explicit CPoint(const SIZE& size) : tagPOINT{size.cx, size.cy} {}
    // The two signed 16-bit halves of a mouse message's lParam.
    explicit CPoint(LPARAM halves)
        : tagPOINT{static_cast<SHORT>(halves & 0xFFFF), static_cast<SHORT>((halves >> 16) & 0xFFFF)} {}

    void SetPoint(int horizontal, int vertical) { *this = CPoint(horizontal, vertical); }
    void Offset(int horizontal, int vertical) { *this = CPoint(x + horizontal, y + vertical); }
    void Offset(const POINT& by) { Offset(by.x, by.y); }
    void Offset(const SIZE& by) { Offset(by.cx, by.cy); }
    bool operator==(const POINT& other) const { return x == other.x && y == other.y; }
    CPoint& operator+=(const SIZE& by) { return *this = *this + by; }
    CPoint& operator-=(const SIZE& by) { return *this = *this - by; }
    CPoint& operator+=(const POINT& by) { return *this = *this + by; }
    CPoint& operator-=(const POINT& by) { return *this = CPoint(x - by.x, y - by.y); }
    CPoint operator+(const SIZE& by) const { return CPoint(x + by.cx, y + by.cy); }
    CPoint operator-(const SIZE& by) const { return CPoint(x - by.cx, y - by.cy); }
    CPoint operator+(const POINT& by) const { return CPoint(x + by.x, y + by.y); }
    CSize operator-(const POINT& other) const { return CSize(x - other.x, y - other.y); }
    CPoint operator-() const { return CPoint(-x, -y); }
};

class CRect : public tagRECT {
public:
    CRect() : tagRECT{0, 0, 0, 0} {}
    CRect(int leftEdge, int topEdge, int rightEdge, int bottomEdge)
        : tagRECT{leftEdge, topEdge, rightEdge, bottomEdge} {}
    CRect(const RECT& rect) : tagRECT(rect) {}
    explicit CRect(LPCRECT rect) : tagRECT(*rect) {}
    CRect(const POINT& topLeft, const SIZE& size)
        : tagRECT{topLeft.x, topLeft.y, topLeft.x + size.cx, topLeft.y + size.cy} {}
    CRect(const POINT& topLeft, const POINT& bottomRight)
        : tagRECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint BottomRight() const { return CPoint(right, bottom); }
    CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }
    // No area: a width or height of 0 or below.
    BOOL IsRectEmpty() const { return left >= right || top >= bottom; }
    BOOL IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    BOOL PtInRect(const POINT& point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    BOOL EqualRect(const RECT& other) const { return *this == other; }
    bool operator==(const RECT& other) const {
        return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
    }

    void SetRect(int leftEdge, int topEdge, int rightEdge, int bottomEdge) {
        *this = CRect(leftEdge, topEdge, rightEdge, bottomEdge);
    }
    void SetRectEmpty() { *this = CRect(); }
    void CopyRect(LPCRECT source) { *this = CRect(source); }
    // Swaps edges that stand the wrong way round.
    void NormalizeRect() {
        if (left > right) std::swap(left, right);
        if (top > bottom) std::swap(top, bottom);
    }

    void OffsetRect(int horizontal, int vertical) {
        SetRect(left + horizontal, top + vertical, right + horizontal, bottom + vertical);
    }
    void OffsetRect(const POINT& by) { OffsetRect(by.x, by.y); }
    void OffsetRect(const SIZE& by) { OffsetRect(by.cx, by.cy); }
    void MoveToX(int x) { OffsetRect(x - left, 0); }
    void MoveToY(int y) { OffsetRect(0, y - top); }
    void MoveToXY(int x, int y) { OffsetRect(x - left, y - top); }
    void MoveToXY(const POINT& topLeft) { MoveToXY(topLeft.x, topLeft.y); }

    void InflateRect(int leftBy, int topBy, int rightBy, int bottomBy) {
        SetRect(left - leftBy, top - topBy, right + rightBy, bottom + bottomBy);
    }
    void InflateRect(int horizontal, int vertical) { InflateRect(horizontal, vertical, horizontal, vertical); }
    void InflateRect(const SIZE& by) { InflateRect(by.cx, by.cy); }
    void InflateRect(LPCRECT by) { InflateRect(by->left, by->top, by->right, by->bottom); }
    void DeflateRect(int leftBy, int topBy, int rightBy, int bottomBy) {
        InflateRect(-leftBy, -topBy, -rightBy, -bottomBy);
    }
    void DeflateRect(int horizontal, int vertical) { InflateRect(-horizontal, -vertical); }
    void DeflateRect(const SIZE& by) { InflateRect(-by.cx, -by.cy); }
    void DeflateRect(LPCRECT by) { DeflateRect(by->left, by->top, by->right, by->bottom); }

    // The common part; FALSE and all zero if there is none. Either argument may be this rectangle.
    BOOL IntersectRect(LPCRECT first, LPCRECT second) {
        const CRect common(std::max(first->left, second->left), std::max(first->top, second->top),
                           std::min(first->right, second->right), std::min(first->bottom, second->bottom));
        const bool none = CRect(first).IsRectEmpty() || CRect(second).IsRectEmpty() || common.IsRectEmpty();
        *this = none ? CRect() : common;
        return !none;
    }
    // The smallest rectangle around both, an empty one not counted; FALSE and all zero if both are empty.
    BOOL UnionRect(LPCRECT first, LPCRECT second) {
        const CRect one(first);
        const CRect two(second);
        if (one.IsRectEmpty() || two.IsRectEmpty()) {
            *this = !one.IsRectEmpty() ? one : !two.IsRectEmpty() ? two : CRect();
        } else {
            SetRect(std::min(one.left, two.left), std::min(one.top, two.top), std::max(one.right, two.right),
                    std::max(one.bottom, two.bottom));
        }
        return !IsRectEmpty();
    }
    // `first` without `second`, where what is left is a rectangle; else `first`. FALSE if nothing is left.
    BOOL SubtractRect(LPCRECT first, LPCRECT second) {
        CRect common;
        CRect rest(first);
        if (rest.IsRectEmpty()) {
            SetRectEmpty();
            return FALSE;
        }
        if (common.IntersectRect(first, second)) {
            if (common.top == rest.top && common.bottom == rest.bottom) {
                if (common.left == rest.left)
                    rest.left = common.right;
                else if (common.right == rest.right)
                    rest.right = common.left;
            } else if (common.left == rest.left && common.right == rest.right) {
                if (common.top == rest.top)
                    rest.top = common.bottom;
                else if (common.bottom == rest.bottom)
                    rest.bottom = common.top;
            }
        }
        *this = rest.IsRectEmpty() ? CRect() : rest;
        return !IsRectEmpty();
    }

    CRect& operator+=(const POINT& by) { return *this = *this + by; }
    CRect& operator-=(const POINT& by) { return *this = *this - by; }
    CRect& operator+=(const SIZE& by) { return *this = *this + by; }
    CRect& operator-=(const SIZE& by) { return *this = *this - by; }
    CRect& operator&=(const RECT& other) { return *this = *this & other; }
    CRect& operator|=(const RECT& other) { return *this = *this | other; }
    CRect operator+(const POINT& by) const { return moved(by.x, by.y); }
    CRect operator-(const POINT& by) const { return moved(-by.x, -by.y); }
    CRect operator+(const SIZE& by) const { return moved(by.cx, by.cy); }
    CRect operator-(const SIZE& by) const { return moved(-by.cx, -by.cy); }
    CRect operator&(const RECT& other) const {
        CRect result;
        result.IntersectRect(this, &other);
        return result;
    }
    CRect operator|(const RECT& other) const {
        CRect result;
        result.UnionRect(this, &other);
        return result;
    }

private:
    CRect moved(int horizontal, int vertical) const {
        CRect result(*this);
        result.OffsetRect(horizontal, vertical);
        return result;
    }
};

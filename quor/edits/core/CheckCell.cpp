#include "quor/edits/core/CheckCell.h"

#include <algorithm>

namespace quor::edits {

namespace {

constexpr int kCheckMask = 3, kColourBit = 4, kDisabledBit = 8;  // the check is kept one higher, so that 0 is none

}  // namespace

int packCell(const CheckCell& cell) {
    return (cell.check + 1) | (cell.colour ? kColourBit : 0) | (cell.enabled ? 0 : kDisabledBit);
}

// A fresh cell behind the first may have one of the control's own numbers, below 0.
CheckCell unpackCell(int number) {
    if (number < 0) return {};
    const int check = (number & kCheckMask) - 1;
    return {std::min(check, kChecked), (number & kColourBit) != 0, (number & kDisabledBit) == 0};
}

int joined(int column, int check) {
    if (column == kNoCheck || check == kNoCheck) return std::max(column, check);
    return column == check ? column : kMixed;
}

CellPlaces cellPlaces(const CheckCell& cell, const RECT& area, const CellMetrics& metrics) {
    CellPlaces places;
    const LONG right = std::max(area.right - metrics.margin, area.left), height = area.bottom - area.top;
    LONG left = std::min(area.left + metrics.margin, right);
    if (cell.check != kNoCheck) {
        const LONG size = std::max<LONG>(std::min<LONG>(metrics.boxSize, height - 2), 0);
        const LONG top = area.top + (height - size) / 2;
        places.check = {left, top, std::min(left + size, right), top + size};
        left = std::min(places.check.right + metrics.margin, right);
    }
    const RECT rest = {left, area.top, right, area.bottom};
    if (cell.colour)
        places.colour = {left, std::min(area.top + 1, area.bottom), right, std::max(area.bottom - 1, area.top)};
    else
        places.text = rest;
    return places;
}

}  // namespace quor::edits

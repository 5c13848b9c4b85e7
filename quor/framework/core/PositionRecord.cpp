#include "quor/framework/core/PositionRecord.h"

#include "quor/foundation/core/StoredFields.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace quor::framework {

namespace {

constexpr std::size_t kNumbers = 9;
constexpr std::size_t kFewestNumbers = 8;

bool isNumber(const CString& piece) {
    const char* const text = piece.GetString();
    return std::all_of(text + (*text == '-' ? 1 : 0), text + piece.GetLength(),
                       [](char letter) { return letter >= '0' && letter <= '9'; });
}

int saturated(std::int64_t value) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

// strtoll saturates too, and gives 0 for "-".
int numberOf(const CString& piece) { return saturated(std::strtoll(piece.GetString(), nullptr, 10)); }

CRect movedTo(const CRect& rect, int left, int top) {
    const auto width = static_cast<std::int64_t>(rect.right) - rect.left;
    const auto height = static_cast<std::int64_t>(rect.bottom) - rect.top;
    return {left, top, saturated(left + width), saturated(top + height)};
}

}  // namespace

RecordFault applyPositionRecord(const CString& record, bool sizable, DialogPlacement& placement) {
    std::array<int, kNumbers> numbers{};
    std::size_t count = 0;
    foundation::StoredFields pieces(record);
    while (count < kNumbers) {
        const auto piece = pieces.next();
        if (!piece) break;
        if (!isNumber(*piece)) return RecordFault::badCharacter;
        numbers[count++] = numberOf(*piece);
    }
    if (count < kFewestNumbers) return RecordFault::tooShort;
    const auto [top, left, bottom, right, maxX, maxY, minX, minY, showCmd] = numbers;
    placement.normal = sizable ? CRect(left, top, right, bottom) : movedTo(placement.normal, left, top);
    placement.maximized = CPoint(maxX, maxY);
    placement.minimized = CPoint(minX, minY);
    if (count == kNumbers)
        placement.showCmd = showCmd >= kShowNormal && showCmd <= kShowMaximized ? showCmd : kShowNormal;
    return RecordFault::none;
}

CString positionRecord(const DialogPlacement& placement) {
    CString record;
    record.Format("%d,%d,%d,%d,%d,%d,%d,%d,%d", static_cast<int>(placement.normal.top),
                  static_cast<int>(placement.normal.left), static_cast<int>(placement.normal.bottom),
                  static_cast<int>(placement.normal.right), static_cast<int>(placement.maximized.x),
                  static_cast<int>(placement.maximized.y), static_cast<int>(placement.minimized.x),
                  static_cast<int>(placement.minimized.y), placement.showCmd);
    return record;
}

}  // namespace quor::framework

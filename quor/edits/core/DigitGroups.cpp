#include "quor/edits/core/DigitGroups.h"

namespace quor::edits {

namespace {

constexpr int kGroup = 3;

}  // namespace

CString groupedWhole(CString whole) {
    whole.Remove(',');
    const int length = whole.GetLength();
    const int first = length > 0 && (whole[0] == '-' || whole[0] == '+') ? 1 : 0;
    CString grouped;
    grouped.Preallocate(length + length / kGroup);
    for (int i = 0; i < length; ++i) {
        if (i > first && (length - i) % kGroup == 0) grouped.AppendChar(',');
        grouped.AppendChar(whole[i]);
    }
    return grouped;
}

CString groupedNumber(const CString& number) {
    const int point = number.ReverseFind('.');
    CString whole = point < 0 ? number : number.Left(point);
    whole.Remove(',');
    if (!whole.IsEmpty() && whole[0] == '-') whole = '-' + whole.TrimLeft('-');
    return point < 0 ? groupedWhole(whole) : groupedWhole(whole) + number.Mid(point);
}

}  // namespace quor::edits

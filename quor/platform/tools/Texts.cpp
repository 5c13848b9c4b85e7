#include "quor/platform/tools/QuorTools.h"

#include <algorithm>
#include <cstring>

std::size_t strlcpy(char* destination, const char* source, std::size_t size) noexcept {
    const std::size_t length = source != nullptr ? std::strlen(source) : 0;
    if (size == 0) return length;
    const std::size_t copied = std::min(length, size - 1);
    if (copied > 0) std::memcpy(destination, source, copied);
    destination[copied] = '\0';
    return length;
}

void getIntegerAndDecimal(CString value, CString& integerPart, CString& decimalPart) {
    const int point = value.Find('.');
    integerPart = point < 0 ? value : value.Left(point);
    decimalPart = point < 0 ? CString() : value.Mid(point + 1);
}

int CompareDateTime(char* first, char* second, int order) {
    const auto comparison = quor::readDateTime(first) <=> quor::readDateTime(second);
    return (comparison > 0 ? 1 : comparison < 0 ? -1 : 0) * order;
}

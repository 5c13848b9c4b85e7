// The filter grammar read literally, cell by cell and token by token, with the framework's string: the oracle of the
// compiled form. Slow and plain on purpose.
#pragma once

#include "quor/platform/base/Numbers.h"
#include "quor/platform/base/Strings.h"

namespace naive_filter {

inline bool readNumber(LPCSTR text, double& value) {
    const char* end = text;
    value = quor::strtod(text, &end);
    return end != text;
}

// strnicmp over `count` bytes: a NUL in both ends the comparison.
inline bool sameBeginning(LPCSTR token, LPCSTR cell, int count) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    for (int i = 0; i < count; ++i) {
        if (lower(token[i]) != lower(cell[i])) return false;
        if (token[i] == 0) return true;
    }
    return true;
}

inline bool tokenPasses(const CString& cell, const CString& token, bool exact) {
    if (exact) return cell.CompareNoCase(token) == 0;
    const int length = token.GetLength();
    if (token.GetAt(0) == '*') {
        if (token.GetAt(length - 1) == '*') {
            CString lowerCell = cell, text = token.Mid(1, length - 2);
            return lowerCell.MakeLower().Find(text.MakeLower()) != -1;
        }
        const CString text = token.Mid(1);
        return cell.Right(length - 1).CompareNoCase(text) == 0;
    }
    if (token.GetAt(0) == '>' || token.GetAt(0) == '<') {
        double value, limit;
        if (!readNumber(cell, value) || !readNumber(token.Mid(1), limit)) return false;
        return token.GetAt(0) == '>' ? value > limit : value < limit;
    }
    return sameBeginning(token, cell, length);
}

inline bool passes(const CString& cell, const CString& filter, bool exact) {
    if (filter.IsEmpty()) return true;
    int at = 0;
    for (CString token = filter.Tokenize("~", at); at != -1; token = filter.Tokenize("~", at))
        if (tokenPasses(cell, token, exact)) return true;
    return false;
}

}  // namespace naive_filter

#include "quor/framework/core/TitleTexts.h"

#include <algorithm>
#include <string_view>

namespace quor::framework {

namespace {

constexpr int kLongestName = 30;
constexpr int kBlanksBeforeSelection = 21;
// A selection that is longer gets the short name. Capitals are wide: with many of them the limit is lower.
constexpr int kLongestSelection = 18;
constexpr int kLongestInCapitals = 15;
constexpr int kManyCapitals = 15;

// Every text has an empty one in it.
bool has(const CString& text, const CString& part) {
    const std::string_view whole(text.GetString());
    return whole.find(part.GetString()) != std::string_view::npos;
}

int selectionLimit(const CString& selection) {
    const char* const text = selection.GetString();
    const auto capitals =
        std::count_if(text, text + selection.GetLength(), [](char letter) { return letter >= 'A' && letter <= 'Z'; });
    return capitals > kManyCapitals ? kLongestInCapitals : kLongestSelection;
}

}  // namespace

CString shortClientName(const CString& name) {
    return name.GetLength() <= kLongestName ? name : name.Left(kLongestName) + "..";
}

CString titleWithDetails(const CString& title, const CString& clientName, const CString& details) {
    const CString shortName = shortClientName(clientName);
    if (has(title, clientName) || has(title, shortName) || has(title, "Modifying")) return title;
    CString whole = title + " - " + shortName;
    if (!has(whole, details)) whole += "( " + details + " )";
    return whole;
}

CString titleWithSelection(const CString& title, const CString& clientName, const CString& selection) {
    CString named = clientName.IsEmpty() ? title : title + " - " + clientName;
    if (selection.IsEmpty()) return named;
    const CString behind = CString(' ', kBlanksBeforeSelection) + selection;
    // The dash stands before an empty name too here.
    if (selection.GetLength() > selectionLimit(selection)) return title + " - " + shortClientName(clientName) + behind;
    return named + behind;
}

}  // namespace quor::framework

// Whether a header class has a filter bar, found out by asking: the style may be known to the class and still do
// nothing.
#include "quor/platform/win/FilterBar.h"
#include "quor/platform/win/FilterTextItem.h"
#include "quor/platform/win/core/FilterBarLayout.h"

namespace quor {

namespace {

int askedHeight(HWND header) {
    RECT room = {0, 0, 400, 400};
    WINDOWPOS place{};
    HDLAYOUT layout = {&room, &place};
    return ::SendMessageA(header, HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(&layout)) ? place.cy : 0;
}

constexpr int kLongestAnswer = 16;

CString filterOf(HWND header) {
    char text[kLongestAnswer] = "";
    NarrowFilterItem(text, kLongestAnswer).send(header, HDM_GETITEMA, 0);
    return text;
}

BarAnswer ask(HWND header) {
    HDITEMA column{};
    column.mask = HDI_WIDTH;
    column.cxy = 60;
    if (::SendMessageA(header, HDM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&column)) < 0) return BarAnswer::unknown;
    HeaderAnswers answers;
    answers.plainHeight = askedHeight(header);
    ::SetWindowLongPtrA(header, GWL_STYLE, ::GetWindowLongPtrA(header, GWL_STYLE) | HDS_FILTERBAR);
    answers.barHeight = askedHeight(header);
    char text[] = "probe";
    NarrowFilterItem(text, kLongestAnswer).send(header, HDM_SETITEMA, 0);
    answers.keepsFilter = filterOf(header) == text;
    ::SendMessageA(header, HDM_CLEARFILTER, 0, 0);
    answers.clearsFilter = filterOf(header).IsEmpty();
    return hasOwnFilterBar(answers) ? BarAnswer::own : BarAnswer::none;
}

}  // namespace

BarAnswer probeFilterBar(LPCSTR headerClass) {
    const HWND header =
        ::CreateWindowExA(0, headerClass, "", WS_CHILD, 0, 0, 100, 50, HWND_MESSAGE, nullptr, nullptr, nullptr);
    if (!header) return BarAnswer::unknown;
    const BarAnswer answer = ask(header);
    ::DestroyWindow(header);
    return answer;
}

}  // namespace quor

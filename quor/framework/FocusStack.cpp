#include "quor/framework/FocusStackInternal.h"
#include "quor/framework/core/FocusRecords.h"

namespace {

using quor::framework::FocusRecord;

quor::framework::FocusRecords& records() {
    static quor::framework::FocusRecords stack;
    return stack;
}

// Asked of the system by the handle: the object may be gone, or stand for another window by now.
bool lives(const FocusRecord& record) {
    const auto window = static_cast<HWND>(const_cast<void*>(record.handle));
    return record.window && window && ::IsWindow(window) && CWnd::FromHandle(window) == record.window;
}

CWnd* windowOf(const FocusRecord* record) {
    return record ? CWnd::FromHandle(static_cast<HWND>(const_cast<void*>(record->handle))) : nullptr;
}

}  // namespace

void AddToFocusWnd(CWnd* pWnd, int flag) { records().push({pWnd, pWnd ? pWnd->m_hWnd : nullptr, flag}); }

CWnd* GetFocusWnd(int& flag) {
    const FocusRecord* const record = records().top(lives);
    if (record) flag = record->flag;
    return windowOf(record);
}

CWnd* GetPreviousFocusWnd() { return windowOf(records().previous(lives)); }

void RemoveFocusWnd(CWnd* pWnd) { records().remove(pWnd); }

void quor::framework::forgetFocusWindow(CWnd* window) { records().removeAll(window); }

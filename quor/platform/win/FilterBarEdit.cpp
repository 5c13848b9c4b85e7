// The open field: one edit control that wanders from column to column, so that the focus does not leave the bar.
#include "quor/platform/win/FilterBarInternal.h"

namespace quor {

namespace {

constexpr int kEditId = 1;
constexpr UINT_PTR kTypingTimer = 0x0F19;  // on the edit, so that it ends with it

std::wstring textOf(HWND edit) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(edit)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(edit, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool isOwnKey(WPARAM key) { return key == VK_RETURN || key == VK_ESCAPE || key == VK_TAB; }

// Enter and Esc are for the field, not for a dialog's default and cancel buttons; Tab stays with the owner.
bool isWanted(const MSG* message) { return message && (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE); }

}  // namespace

LRESULT CALLBACK FilterBar::editProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<FilterBar> bar = of(::GetParent(edit));
    return bar ? bar->handleEdit(edit, message, wParam, lParam) : ::DefWindowProcW(edit, message, wParam, lParam);
}

LRESULT FilterBar::handleEdit(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto pass = [&] { return ::CallWindowProcW(m_editFormer, edit, message, wParam, lParam); };
    switch (message) {
        case WM_TIMER:
            if (wParam != kTypingTimer) break;
            finishTyping(false);
            return 0;
        case WM_KEYDOWN:
            if (isOwnKey(wParam)) return onEditKey(wParam);
            break;
        case WM_CHAR:
            if (isOwnKey(wParam)) return 0;
            break;
        case WM_GETDLGCODE: {
            const LRESULT code = pass();
            return isWanted(reinterpret_cast<const MSG*>(lParam)) ? code | DLGC_WANTMESSAGE : code;
        }
        case WM_KILLFOCUS: {
            const LRESULT result = pass();
            if (edit == m_edit) closeField(false);
            return result;
        }
        case WM_NCCALCSIZE:  // the line of text stands in the middle of the field
            reinterpret_cast<RECT*>(lParam)->top += textTop(*reinterpret_cast<RECT*>(lParam));
            return 0;
        case WM_NCPAINT:
            paintAbove(edit);
            return 0;
        default:
            break;
    }
    return pass();
}

int FilterBar::textTop(const RECT& field) const {
    return std::max<int>(0, (field.bottom - field.top - m_lineHeight) / 2);
}

void FilterBar::paintAbove(HWND edit) const {
    RECT outer;
    ::GetWindowRect(edit, &outer);
    const RECT strip = {0, 0, outer.right - outer.left, textTop(outer)};
    const HDC dc = ::GetWindowDC(edit);
    ::FillRect(dc, &strip, ground(dc, WM_CTLCOLOREDIT).brush);
    ::ReleaseDC(edit, dc);
}

LRESULT FilterBar::onEditKey(WPARAM key) {
    if (key == VK_RETURN) finishTyping(false);
    if (key == VK_ESCAPE) closeField(true);
    return 0;
}

bool FilterBar::createEdit() {
    m_edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | ES_AUTOHSCROLL, 0, 0, 0, 0, m_header,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(kEditId)), nullptr, nullptr);
    if (!m_edit) return false;
    m_editFormer = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(m_edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FilterBar::editProc)));
    ::SendMessageW(m_edit, WM_SETFONT, reinterpret_cast<WPARAM>(font()), FALSE);
    ::SendMessageW(m_edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN,
                   MAKELPARAM(m_metrics.textMargin, m_metrics.textMargin));
    return true;
}

bool FilterBar::openField(int item, bool discard) {
    if (item == -1 && m_edit) {
        closeField(discard);
        return true;
    }
    if (!m_on || !isItem(item)) return false;
    if (m_edit && m_editItem != item) {
        finishTyping(discard);
        if (!isAlive() || !isItem(item)) return false;
        if (m_edit) notifyItem(static_cast<UINT>(HDN_ENDFILTEREDIT), m_editItem);
    } else if (m_edit && discard) {
        finishTyping(true);
    }
    if (!isAlive() || (!m_edit && !createEdit())) return false;
    const bool moved = std::exchange(m_editItem, item) != item;
    placeField();  // first: a text that is marked in a narrower field is scrolled to its end, and stays so
    if (moved) {
        showRecordInField();
        ::SendMessageW(m_edit, EM_SETSEL, 0, -1);
    }
    invalidateBar();
    ::ShowWindow(m_edit, SW_SHOWNA);
    ::SetFocus(m_edit);
    if (moved && m_edit) notifyItem(static_cast<UINT>(HDN_BEGINFILTEREDIT), item);
    return true;
}

void FilterBar::onTyped() {
    if (m_filling) return;
    m_typed = true;
    ::SetTimer(m_edit, kTypingTimer, m_timeout, nullptr);
}

void FilterBar::finishTyping(bool discard) {
    if (!m_edit || !m_typed) return;
    if (discard) return showRecordInField();
    m_typed = false;
    ::KillTimer(m_edit, kTypingTimer);
    const int item = m_editItem;
    record(item).text = textOf(m_edit);
    invalidateBar();
    notifyChange(item);
}

// The focus goes to the header's parent if the field has it. The notification of a change comes last, when the field is
// gone.
void FilterBar::closeField(bool discard) {
    if (!m_edit) return;
    const HWND edit = std::exchange(m_edit, nullptr);
    const int item = std::exchange(m_editItem, -1);
    const bool changed = std::exchange(m_typed, false) && !discard;
    if (changed) record(item).text = textOf(edit);
    if (::GetFocus() == edit) ::SetFocus(::GetParent(m_header));
    ::DestroyWindow(edit);
    if (!isAlive()) return;
    invalidateBar();
    notifyItem(static_cast<UINT>(HDN_ENDFILTEREDIT), item);
    if (changed && isAlive() && isItem(item)) notifyChange(item);
}

void FilterBar::showRecordInField() {
    const FilterRecord& shown = record(m_editItem);
    m_typed = false;
    ::KillTimer(m_edit, kTypingTimer);
    ::SendMessageW(m_edit, EM_SETLIMITTEXT, static_cast<WPARAM>(shown.longest), 0);
    const LONG_PTR style = ::GetWindowLongPtrW(m_edit, GWL_STYLE);
    ::SetWindowLongPtrW(m_edit, GWL_STYLE, shown.isNumber() ? style | ES_NUMBER : style & ~LONG_PTR{ES_NUMBER});
    m_filling = true;
    ::SetWindowTextW(m_edit, shown.text.c_str());
    m_filling = false;
}

void FilterBar::placeField() {
    if (!m_edit) return;
    const RECT field = places(m_editItem).field;
    RECT current;
    ::GetWindowRect(m_edit, &current);
    ::MapWindowPoints(nullptr, m_header, reinterpret_cast<POINT*>(&current), 2);
    if (::EqualRect(&current, &field)) return;
    ::SetWindowPos(m_edit, nullptr, field.left, field.top, field.right - field.left, field.bottom - field.top,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace quor

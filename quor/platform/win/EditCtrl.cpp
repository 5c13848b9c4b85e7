#include "quor/platform/win/ControlsInternal.h"

IMPLEMENT_DYNAMIC(CEdit, CWnd)

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_EDIT, nullptr, style, rect, parent, id);
}

void CEdit::GetSel(int& start, int& end) const {
    DWORD first = 0;
    DWORD last = 0;
    send(this, EM_GETSEL, reinterpret_cast<WPARAM>(&first), pointerParam(&last));
    start = static_cast<int>(first);
    end = static_cast<int>(last);
}

DWORD CEdit::GetSel() const { return static_cast<DWORD>(send(this, EM_GETSEL)); }

void CEdit::SetSel(DWORD selection, BOOL noScroll) {
    SetSel(static_cast<short>(LOWORD(selection)), static_cast<short>(HIWORD(selection)), noScroll);
}

void CEdit::SetSel(int start, int end, BOOL noScroll) {
    send(this, EM_SETSEL, static_cast<WPARAM>(start), end);
    if (!noScroll) send(this, EM_SCROLLCARET);
}

void CEdit::ReplaceSel(LPCTSTR text, BOOL canUndo) {
    send(this, EM_REPLACESEL, static_cast<WPARAM>(canUndo), pointerParam(text));
}

void CEdit::LimitText(int characters) { send(this, EM_LIMITTEXT, static_cast<WPARAM>(characters)); }
UINT CEdit::GetLimitText() const { return static_cast<UINT>(send(this, EM_GETLIMITTEXT)); }
BOOL CEdit::GetModify() const { return static_cast<BOOL>(send(this, EM_GETMODIFY)); }
void CEdit::SetModify(BOOL modified) { send(this, EM_SETMODIFY, static_cast<WPARAM>(modified)); }
BOOL CEdit::SetReadOnly(BOOL readOnly) {
    return static_cast<BOOL>(send(this, EM_SETREADONLY, static_cast<WPARAM>(readOnly)));
}
char CEdit::GetPasswordChar() const { return static_cast<char>(send(this, EM_GETPASSWORDCHAR)); }
void CEdit::SetPasswordChar(char character) {
    send(this, EM_SETPASSWORDCHAR, static_cast<WPARAM>(static_cast<unsigned char>(character)));
}
BOOL CEdit::CanUndo() const { return static_cast<BOOL>(send(this, EM_CANUNDO)); }
BOOL CEdit::Undo() { return static_cast<BOOL>(send(this, EM_UNDO)); }
void CEdit::EmptyUndoBuffer() { send(this, EM_EMPTYUNDOBUFFER); }
void CEdit::Clear() { send(this, WM_CLEAR); }
void CEdit::Copy() { send(this, WM_COPY); }
void CEdit::Cut() { send(this, WM_CUT); }
void CEdit::Paste() { send(this, WM_PASTE); }

int CEdit::GetLineCount() const { return static_cast<int>(send(this, EM_GETLINECOUNT)); }

// The control reads the room from the buffer's first word and writes no terminator.
int CEdit::GetLine(int line, LPTSTR buffer, int maxLength) const {
    const WORD room = static_cast<WORD>(maxLength);
    std::memcpy(buffer, &room, sizeof(room));
    return static_cast<int>(send(this, EM_GETLINE, static_cast<WPARAM>(line), pointerParam(buffer)));
}

int CEdit::LineFromChar(int index) const {
    return static_cast<int>(send(this, EM_LINEFROMCHAR, static_cast<WPARAM>(index)));
}
int CEdit::LineIndex(int line) const { return static_cast<int>(send(this, EM_LINEINDEX, static_cast<WPARAM>(line))); }
// The message takes a character, the call a line; -1 is passed on (what is not selected of the caret's lines).
int CEdit::LineLength(int line) const {
    const int index = line < 0 ? -1 : LineIndex(line);
    return static_cast<int>(send(this, EM_LINELENGTH, static_cast<WPARAM>(index)));
}
void CEdit::LineScroll(int lines, int characters) { send(this, EM_LINESCROLL, static_cast<WPARAM>(characters), lines); }
int CEdit::GetFirstVisibleLine() const { return static_cast<int>(send(this, EM_GETFIRSTVISIBLELINE)); }
void CEdit::GetRect(LPRECT rect) const { send(this, EM_GETRECT, 0, pointerParam(rect)); }
void CEdit::SetRect(LPCRECT rect) { send(this, EM_SETRECT, 0, pointerParam(rect)); }
void CEdit::SetMargins(UINT left, UINT right) {
    send(this, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(left, right));
}
DWORD CEdit::GetMargins() const { return static_cast<DWORD>(send(this, EM_GETMARGINS)); }

CPoint CEdit::PosFromChar(UINT index) const {
    const LRESULT point = send(this, EM_POSFROMCHAR, index);
    return CPoint(static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point)));
}

int CEdit::CharFromPos(CPoint point) const {
    return static_cast<int>(send(this, EM_CHARFROMPOS, 0, MAKELPARAM(point.x, point.y)));
}

BOOL CEdit::SetCueBanner(LPCWSTR text, BOOL drawFocused) {
    return static_cast<BOOL>(send(this, EM_SETCUEBANNER, static_cast<WPARAM>(drawFocused), pointerParam(text)));
}

BOOL CEdit::GetCueBanner(LPWSTR text, int maxLength) const {
    return static_cast<BOOL>(send(this, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(text), maxLength));
}

BOOL CEdit::ShowBalloonTip(PEDITBALLOONTIP tip) {
    return static_cast<BOOL>(send(this, EM_SHOWBALLOONTIP, 0, pointerParam(tip)));
}

BOOL CEdit::ShowBalloonTip(LPCWSTR title, LPCWSTR text, INT icon) {
    EDITBALLOONTIP tip = {sizeof(tip), title, text, icon};
    return ShowBalloonTip(&tip);
}

BOOL CEdit::HideBalloonTip() { return static_cast<BOOL>(send(this, EM_HIDEBALLOONTIP)); }

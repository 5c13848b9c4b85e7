#include "support/DialogTemplate.h"

namespace test {

namespace {
constexpr std::size_t countAt = 8;  // word index of the number of controls
}

DialogTemplate::DialogTemplate(const std::string& title, DWORD style, SIZE size) {
    word(1);
    word(0xFFFF);
    dword(0);  // help id
    dword(0);  // extended style
    dword(style);
    word(0);
    place({10, 10, 10 + size.cx, 10 + size.cy});
    word(0);  // no menu
    word(0);  // the dialog class
    text(title);
}

void DialogTemplate::dword(DWORD value) {
    word(LOWORD(value));
    word(HIWORD(value));
}

void DialogTemplate::text(const std::string& value) {
    for (const char character : value) word(static_cast<BYTE>(character));
    word(0);
}

void DialogTemplate::place(const RECT& rect) {
    for (const LONG value : {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top})
        word(static_cast<UINT>(value));
}

DialogTemplate& DialogTemplate::add(const Control& control) {
    if (m_words.size() % 2) word(0);  // controls begin at double words
    dword(0);                         // help id
    dword(0);                         // extended style
    dword(control.style | WS_CHILD);
    place(control.place);
    dword(control.id);
    text(control.windowClass);
    text(control.text);
    word(0);  // no creation data
    ++m_words[countAt];
    return *this;
}

DialogTemplate& DialogTemplate::addButton(UINT id, const std::string& caption, DWORD style) {
    return add({"BUTTON", id, WS_VISIBLE | WS_TABSTOP | style, caption});
}

DialogTemplate& DialogTemplate::addEdit(UINT id) {
    return add({"EDIT", id, WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL});
}

}  // namespace test

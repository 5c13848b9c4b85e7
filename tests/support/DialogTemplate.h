// A dialog template in memory, built control by control (the extended form, so ids keep all their bits).
#pragma once

#include "quor/platform/Framework.h"

#include <string>
#include <vector>

namespace test {

class DialogTemplate {
public:
    // Sizes are dialog units.
    explicit DialogTemplate(const std::string& title = "Dialog",
                            DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME, SIZE size = {200, 120});

    struct Control {
        std::string windowClass;
        UINT id = 0;
        DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
        std::string text = {};
        RECT place = {5, 5, 60, 20};  // left, top, right, bottom
    };
    DialogTemplate& add(const Control& control);
    DialogTemplate& addButton(UINT id, const std::string& text, DWORD style = BS_PUSHBUTTON);
    DialogTemplate& addEdit(UINT id);

    // Valid until the next add.
    LPCDLGTEMPLATE get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_words.data()); }

private:
    void word(UINT value) { m_words.push_back(static_cast<WORD>(value)); }
    void dword(DWORD value);
    void text(const std::string& value);
    void place(const RECT& rect);

    std::vector<WORD> m_words;
};

}  // namespace test

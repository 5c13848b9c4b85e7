// The last column of a list takes what room the others leave, so that no bare ground lies right of it; in a narrower
// list it has its own width again. Once the user has sized it, its width is the user's, until the columns are fitted.
//
// What is stored of the list's columns is their width on screen; the width of the last one without the room is stored
// beside that.
#pragma once

#include "quor/list/CommonListCtrl.h"

#include <functional>
#include <optional>
#include <string>

namespace terminal {

class ColumnFill {
public:
    // Watches the list, whose window stands and goes before this does. `section` names the settings of the columns that
    // it shows at the time.
    void start(CCommonListCtrl& list, std::function<std::string()> section);
    // The widths of the columns are new, and nobody's choice.
    void begin();
    // The width of the column at a place, without the room that it may have taken.
    int ownWidth(int place);

private:
    static constexpr int kNone = -1;

    LRESULT onMessage(const struct WindowMessage& message, const class PassOn& passOn);
    void onHeader(const NMHDR& news);
    void settleSoon();
    struct Stored {
        int own;
        bool isUsers;
    };
    std::optional<Stored> stored(int column) const;
    void store(int column, const std::string& text);
    void readSection(int last);
    void take(int column, int width);
    void keep();
    void settle();
    void giveBack();
    int columnAtEnd() const;  // its place
    int placeOf(int column) const;
    int roomBeside(int place) const;

    CCommonListCtrl* m_list = nullptr;
    std::function<std::string()> m_section;
    std::string m_read;      // the section that m_column and its widths belong to
    int m_column = kNone;    // that takes the room
    int m_own = 0;           // its width without it
    int m_given = 0;         // and with it
    bool m_isUsers = false;  // its width is
    bool m_waiting = false, m_sizing = false;
};

}  // namespace terminal

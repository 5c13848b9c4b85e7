// What only the sources of CMrktWatchListCtrl share.
#pragma once

#include "quor/expression/core/CustomColumnText.h"
#include "quor/list/ListScopes.h"
#include "quor/lists/MrktWatchListCtrl.h"
#include "quor/lists/core/WatchTexts.h"

#include <memory>
#include <optional>
#include <vector>

struct CMrktWatchListCtrl::Parts {
    explicit Parts(const CMrktWatchListCtrl& list) : m_list(list) {}
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    // Places are those on screen, where the user may have dragged a header item since the columns were built.
    std::vector<quor::watch::WatchColumn> columnsAsTheyStand() const;

    // What this watch knows of the store of user columns.
    struct SharedColumns {
        bool known = false;               // what it holds was read, imported or written here
        CString stored;                   // its text then
        std::optional<CString> own = "";  // this watch's columns then, as it writes them; none: they were imported
    };

    SharedColumns shared;
    // A cell under way may outlive the list, and has to know it.
    std::shared_ptr<quor::expression::CustomColumnText> customText =
        std::make_shared<quor::expression::CustomColumnText>();
    std::shared_ptr<char> alive = std::make_shared<char>();
    CFont listFont;  // of SetListFont or ShowFontDlg

    // Shared with the paint under way: its host may end the list.
    const std::shared_ptr<bool> isPainting = std::make_shared<bool>(false);
    // While the control paints, the data of the row that was asked for last: a row paints many cells.
    int paintedRow = -1;  // -1: none, or something may have changed the rows since
    MrktWatchRowData* paintedData = nullptr;

private:
    const CMrktWatchListCtrl& m_list;
};

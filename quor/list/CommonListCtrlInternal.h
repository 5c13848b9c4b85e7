// What only the sources of CCommonListCtrl share.
#pragma once

#include "quor/list/CommonListCtrl.h"
#include "quor/list/HeaderImages.h"
#include "quor/list/ListScopes.h"

namespace quor::list {

// The width that a header item's text and image need, in the font of `dc`.
int headingWidth(CHeaderCtrl& header, CDC& dc, int item);

// The notification of a click on the header at a place, as the control would send it.
inline NMLISTVIEW headerClick(const CWnd& list, int place) {
    NMLISTVIEW click{};
    click.hdr = {list.m_hWnd, static_cast<UINT_PTR>(list.GetDlgCtrlID()), static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iItem = -1;
    click.iSubItem = place;
    return click;
}

}  // namespace quor::list

// CCommonListToolTip: the base list with tool tips of its cells always on (m_bCellToolTips, see CommonListCtrl.h).
#pragma once

#include "quor/list/CommonListCtrl.h"

class QUOR_CONTROLS_API CCommonListToolTip : public CCommonListCtrl {
    DECLARE_DYNAMIC(CCommonListToolTip)

public:
    CCommonListToolTip() { m_bCellToolTips = 1; }
};

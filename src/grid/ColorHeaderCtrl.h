// CColorHeaderCtrl: the header of a grid. The grid owns one and attaches it before the first column, so that whatever
// the framework's header class brings (the filter bar) is there from the start. Header notifications go to the list.
#pragma once

#include "platform/Framework.h"

class QUOR_CONTROLS_API CColorHeaderCtrl : public CHeaderCtrl {
    DECLARE_DYNAMIC(CColorHeaderCtrl)

public:
    CColorHeaderCtrl() = default;

    // Will tint the header by custom draw: every item once a filter is set, filtered columns in a colour of their own.
};

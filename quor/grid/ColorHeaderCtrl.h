// CColorHeaderCtrl: the header of a grid. The grid owns one and attaches it before the first column, so that whatever
// the framework's header class brings (the filter bar) is there from the start. Header notifications go to the list.
//
// Once a filter is set the whole header is tinted, and filtered columns stand out from it. Tinted captions are painted
// here: a header may ignore the colours of custom draw. So is one whose item has lost its column's alignment, as it
// does with a sort arrow. What lies below a caption stays the header's (platform/win/Platform.h).
#pragma once

#include "quor/platform/Framework.h"

class QUOR_CONTROLS_API CColorHeaderCtrl : public CHeaderCtrl {
    DECLARE_DYNAMIC(CColorHeaderCtrl)

public:
    CColorHeaderCtrl() = default;

    // The ground of a header item: by the parent's filters, COLOR_BTNFACE for a parent without any.
    COLORREF groundOf(int place) const;

protected:
    afx_msg void OnCustomDraw(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    struct Caption;
    Caption captionOf(int place) const;
    void paintCaption(CDC& dc, const Caption& caption, CRect area, bool pressed);
};

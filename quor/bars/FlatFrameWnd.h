// CFlatFrameWnd: a frame without a border, for the inside of other windows: its client area is all of it, whatever
// styles it has. Unlike other frames the object is its owner's, and its window may be made again.
#pragma once

#include "quor/platform/Framework.h"

class QUOR_CONTROLS_API CFlatFrameWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CFlatFrameWnd)

public:
    CFlatFrameWnd();

protected:
    void PostNcDestroy() override;

    afx_msg void OnNcCalcSize(BOOL calculate, NCCALCSIZE_PARAMS* sizes);
    afx_msg void OnNcPaint();
    DECLARE_MESSAGE_MAP()
};

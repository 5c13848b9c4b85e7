#include "quor/bars/FlatFrameWnd.h"

IMPLEMENT_DYNCREATE(CFlatFrameWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CFlatFrameWnd, CFrameWnd)
    ON_WM_NCCALCSIZE()
    ON_WM_NCPAINT()
END_MESSAGE_MAP()

CFlatFrameWnd::CFlatFrameWnd() = default;

void CFlatFrameWnd::PostNcDestroy() {}

// The proposed window rectangle stays the client's.
void CFlatFrameWnd::OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) {}

void CFlatFrameWnd::OnNcPaint() {}

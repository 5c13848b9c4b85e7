#include "quor/edits/ZTFontDlg.h"

IMPLEMENT_DYNAMIC(CZTFontDlg, CFontDialog)

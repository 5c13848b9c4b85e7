// CZTFontDlg: the system's font dialog, on a LOGFONT.
#pragma once

#include "quor/platform/Framework.h"

class QUOR_CONTROLS_API CZTFontDlg : public CFontDialog {
    DECLARE_DYNAMIC(CZTFontDlg)

public:
    // Begins with the font, which is copied; null begins with none. Flags CF_..., passed on as they are.
    explicit CZTFontDlg(LPLOGFONT font = nullptr, DWORD flags = CF_SCREENFONTS | CF_EFFECTS, CDC* printer = nullptr,
                        CWnd* parent = nullptr)
        : CFontDialog(font, flags, printer, parent) {}

    // The chosen font after IDOK; before that, the one that it began with.
    LOGFONT GetLogFont() const {
        LOGFONT font;
        GetCurrentFont(&font);
        return font;
    }
};

// CThemeUtil: the theme of one window class, or none. The theme library is opened late, by the host's loader, and stays
// loaded; where it is missing, themes are off or the class is unknown, every question gets "no": the caller then draws
// by itself. Parts and states are the numbers of the system's theme classes (vsstyle.h).
//
// A window closes its theme at WM_THEMECHANGED; the next Open takes the new one.
#pragma once

#include "quor/platform/Framework.h"

class QUOR_CONTROLS_API CThemeUtil {
public:
    CThemeUtil() = default;
    ~CThemeUtil();
    CThemeUtil(const CThemeUtil&) = delete;
    CThemeUtil& operator=(const CThemeUtil&) = delete;

    // Class names such as L"BUTTON". TRUE if there is a theme now; one that was open is closed first.
    BOOL OpenThemeData(HWND window, LPCWSTR classList);
    // The same for what paints again and again: asks once until the next CloseThemeData.
    BOOL KeepThemeData(HWND window, LPCWSTR classList);
    void CloseThemeData();
    BOOL IsThemed() const { return m_theme != nullptr; }
    // Whether programs are themed at all; needs no open theme.
    static BOOL IsAppThemed();

    // FALSE: nothing was drawn. `clip` may be null.
    BOOL DrawThemeBackground(HDC dc, int part, int state, const RECT& area, const RECT* clip = nullptr) const;
    // What shows through the part's transparent pixels: the parent's ground, in the window's coordinates.
    BOOL DrawThemeParentBackground(HWND window, HDC dc, const RECT& area) const;
    // What the part's frame leaves of `area`; `inside` is untouched without a theme.
    BOOL GetThemeBackgroundContentRect(HDC dc, int part, int state, const RECT& area, RECT& inside) const;
    // In pixels of the screen; `size` is untouched without a theme.
    BOOL GetThemePartSize(HDC dc, int part, int state, SIZE& size) const;
    // A colour property (TMT_...); `color` is untouched where the theme does not say.
    BOOL GetThemeColor(int part, int state, int property, COLORREF& color) const;

private:
    HMODULE m_library = nullptr;
    HANDLE m_theme = nullptr;
    bool m_asked = false;
};

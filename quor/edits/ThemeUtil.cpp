#include "quor/edits/ThemeUtil.h"

#include "quor/foundation/ControlBlock.h"

#include <bit>
#include <uxtheme.h>

namespace {

constexpr char kThemeLibrary[] = "UxTheme.dll";

HMODULE loadThemes() {
    const auto load = g_pControlBlock ? g_pControlBlock->quoru_call_LoadLibrary : nullptr;
    return load ? load(kThemeLibrary) : nullptr;
}

// Null if the library has no such function.
template <class Function>
Function* find(HMODULE library, const char* name) {
    return library ? std::bit_cast<Function*>(::GetProcAddress(library, name)) : nullptr;
}
#define QUOR_THEME_CALL(library, name) find<decltype(::name)>(library, #name)

}  // namespace

CThemeUtil::~CThemeUtil() { CloseThemeData(); }

BOOL CThemeUtil::OpenThemeData(HWND window, LPCWSTR classList) {
    CloseThemeData();
    m_library = loadThemes();
    if (const auto open = QUOR_THEME_CALL(m_library, OpenThemeData)) m_theme = open(window, classList);
    return IsThemed();
}

BOOL CThemeUtil::KeepThemeData(HWND window, LPCWSTR classList) {
    if (!m_asked) OpenThemeData(window, classList);
    m_asked = true;
    return IsThemed();
}

void CThemeUtil::CloseThemeData() {
    m_asked = false;
    if (!m_theme) return;
    const HANDLE theme = m_theme;
    m_theme = nullptr;
    if (const auto close = QUOR_THEME_CALL(m_library, CloseThemeData)) close(theme);
}

BOOL CThemeUtil::IsAppThemed() {
    const auto ask = QUOR_THEME_CALL(loadThemes(), IsAppThemed);
    return ask && ask();
}

BOOL CThemeUtil::DrawThemeBackground(HDC dc, int part, int state, const RECT& area, const RECT* clip) const {
    const auto draw = m_theme ? QUOR_THEME_CALL(m_library, DrawThemeBackground) : nullptr;
    return draw && SUCCEEDED(draw(m_theme, dc, part, state, &area, clip));
}

BOOL CThemeUtil::DrawThemeParentBackground(HWND window, HDC dc, const RECT& area) const {
    const auto draw = m_theme ? QUOR_THEME_CALL(m_library, DrawThemeParentBackground) : nullptr;
    RECT ground = area;
    return draw && SUCCEEDED(draw(window, dc, &ground));
}

BOOL CThemeUtil::GetThemeBackgroundContentRect(HDC dc, int part, int state, const RECT& area, RECT& inside) const {
    const auto ask = m_theme ? QUOR_THEME_CALL(m_library, GetThemeBackgroundContentRect) : nullptr;
    RECT answer;
    if (!ask || FAILED(ask(m_theme, dc, part, state, &area, &answer))) return FALSE;
    inside = answer;
    return TRUE;
}

BOOL CThemeUtil::GetThemePartSize(HDC dc, int part, int state, SIZE& size) const {
    const auto ask = m_theme ? QUOR_THEME_CALL(m_library, GetThemePartSize) : nullptr;
    SIZE answer;
    if (!ask || FAILED(ask(m_theme, dc, part, state, nullptr, TS_DRAW, &answer))) return FALSE;
    size = answer;
    return TRUE;
}

BOOL CThemeUtil::GetThemeColor(int part, int state, int property, COLORREF& color) const {
    const auto ask = m_theme ? QUOR_THEME_CALL(m_library, GetThemeColor) : nullptr;
    COLORREF answer;
    if (!ask || FAILED(ask(m_theme, part, state, property, &answer))) return FALSE;
    color = answer;
    return TRUE;
}

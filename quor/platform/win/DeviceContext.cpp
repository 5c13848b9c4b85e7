#include "quor/platform/Framework.h"
#include "quor/platform/win/HandleMapInternal.h"

IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

namespace {

struct DcMaps {
    PermanentMap<CDC, HDC> owners;
    TemporaryMap<CDC, HDC, &CDC::m_hDC> temporaries;
};

// Never freed: contexts may be held by statics of other modules.
DcMaps& maps() {
    static thread_local DcMaps* const instance = new DcMaps;
    return *instance;
}

HWND handleOf(const CWnd* window) { return window ? window->m_hWnd : nullptr; }

void requireHandle(BOOL attached) {
    if (!attached) AfxThrowResourceException();
}

}  // namespace

CDC::~CDC() { DeleteDC(); }

CDC* CDC::FromHandle(HDC handle) {
    if (!handle) return nullptr;
    if (CDC* owner = maps().owners.find(handle)) return owner;
    return maps().temporaries.get(handle);
}

void CDC::DeleteTempMap() { maps().temporaries.clear(); }

BOOL CDC::Attach(HDC handle) {
    ASSERT(!m_hDC);
    if (!handle) return FALSE;
    m_hDC = handle;
    maps().owners.add(handle, this);
    return TRUE;
}

HDC CDC::Detach() {
    const HDC handle = m_hDC;
    if (handle) maps().owners.remove(handle, this);
    m_hDC = nullptr;
    return handle;
}

BOOL CDC::DeleteDC() { return m_hDC ? ::DeleteDC(Detach()) : FALSE; }

CWnd* CDC::GetWindow() const { return CWnd::FromHandle(::WindowFromDC(m_hDC)); }

CPen* CDC::SelectObject(CPen* pen) {
    return CPen::FromHandle(static_cast<HPEN>(::SelectObject(m_hDC, pen ? pen->m_hObject : nullptr)));
}

CBrush* CDC::SelectObject(CBrush* brush) {
    return CBrush::FromHandle(static_cast<HBRUSH>(::SelectObject(m_hDC, brush ? brush->m_hObject : nullptr)));
}

CFont* CDC::SelectObject(CFont* font) {
    return CFont::FromHandle(static_cast<HFONT>(::SelectObject(m_hDC, font ? font->m_hObject : nullptr)));
}

CBitmap* CDC::SelectObject(CBitmap* bitmap) {
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, bitmap ? bitmap->m_hObject : nullptr)));
}

CGdiObject* CDC::SelectObject(CGdiObject* object) {
    return CGdiObject::FromHandle(::SelectObject(m_hDC, object ? object->m_hObject : nullptr));
}

CGdiObject* CDC::SelectStockObject(int index) {
    return CGdiObject::FromHandle(::SelectObject(m_hDC, ::GetStockObject(index)));
}

CPalette* CDC::SelectPalette(CPalette* palette, BOOL forceBackground) {
    return CPalette::FromHandle(::SelectPalette(m_hDC, palette ? HPALETTE(*palette) : nullptr, forceBackground));
}

CPen* CDC::GetCurrentPen() const { return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hDC, OBJ_PEN))); }

CBrush* CDC::GetCurrentBrush() const {
    return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hDC, OBJ_BRUSH)));
}

CFont* CDC::GetCurrentFont() const {
    return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hDC, OBJ_FONT)));
}

CBitmap* CDC::GetCurrentBitmap() const {
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hDC, OBJ_BITMAP)));
}

CPoint CDC::GetViewportOrg() const {
    CPoint point(0, 0);
    ::GetViewportOrgEx(m_hDC, &point);
    return point;
}

CPoint CDC::SetViewportOrg(int x, int y) {
    CPoint old(0, 0);
    ::SetViewportOrgEx(m_hDC, x, y, &old);
    return old;
}

CPoint CDC::OffsetViewportOrg(int x, int y) {
    CPoint old(0, 0);
    ::OffsetViewportOrgEx(m_hDC, x, y, &old);
    return old;
}

CPoint CDC::GetWindowOrg() const {
    CPoint point(0, 0);
    ::GetWindowOrgEx(m_hDC, &point);
    return point;
}

CPoint CDC::SetWindowOrg(int x, int y) {
    CPoint old(0, 0);
    ::SetWindowOrgEx(m_hDC, x, y, &old);
    return old;
}

CPoint CDC::GetBrushOrg() const {
    CPoint point(0, 0);
    ::GetBrushOrgEx(m_hDC, &point);
    return point;
}

CPoint CDC::SetBrushOrg(int x, int y) {
    CPoint old(0, 0);
    ::SetBrushOrgEx(m_hDC, x, y, &old);
    return old;
}

CPoint CDC::GetCurrentPosition() const {
    CPoint point(0, 0);
    ::GetCurrentPositionEx(m_hDC, &point);
    return point;
}

CPoint CDC::MoveTo(int x, int y) {
    CPoint old(0, 0);
    ::MoveToEx(m_hDC, x, y, &old);
    return old;
}

void CDC::Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight) {
    Draw3dRect(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, topLeft, bottomRight);
}

void CDC::Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight) {
    FillSolidRect(x, y, width - 1, 1, topLeft);
    FillSolidRect(x, y, 1, height - 1, topLeft);
    FillSolidRect(x + width - 1, y, 1, height, bottomRight);
    FillSolidRect(x, y + height - 1, width, 1, bottomRight);
}

CClientDC::CClientDC(CWnd* window) : m_hWnd(handleOf(window)) { requireHandle(Attach(::GetDC(m_hWnd))); }

CClientDC::~CClientDC() {
    if (m_hDC) ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* window) : m_hWnd(handleOf(window)) { requireHandle(Attach(::GetWindowDC(m_hWnd))); }

CWindowDC::~CWindowDC() {
    if (m_hDC) ::ReleaseDC(m_hWnd, Detach());
}

CPaintDC::CPaintDC(CWnd* window) : m_hWnd(handleOf(window)) { requireHandle(Attach(::BeginPaint(m_hWnd, &m_ps))); }

CPaintDC::~CPaintDC() {
    ::EndPaint(m_hWnd, &m_ps);
    Detach();
}

PaintBufferScope::PaintBufferScope(HDC target, const RECT& area)
    : m_target(target),
      m_area(area),
      m_bitmap(::CreateCompatibleBitmap(target, std::max(1, m_area.Width()), std::max(1, m_area.Height()))),
      m_former(nullptr) {
    m_dc.Attach(::CreateCompatibleDC(target));
    m_former = ::SelectObject(m_dc, m_bitmap);
    ::SetViewportOrgEx(m_dc, -m_area.left, -m_area.top, nullptr);
}

PaintBufferScope::~PaintBufferScope() {
    ::BitBlt(m_target, m_area.left, m_area.top, m_area.Width(), m_area.Height(), m_dc, m_area.left, m_area.top,
             SRCCOPY);
    ::SelectObject(m_dc, m_former);
    ::DeleteObject(m_bitmap);
}

// Device contexts: CDC over any context, CClientDC, CWindowDC and CPaintDC for windows, and the two scopes that put
// back what a drawing routine changed.
//
// A CDC that created or was given a handle deletes it; the window contexts release theirs. FromHandle wraps a context
// that somebody else owns (the hDC of a draw-item record) in a temporary object, valid until the pump is idle.
// The window contexts throw the resource exception when the system has no context to give.
// The calls are the system's own, inline and without allocation; "logical" coordinates are pixels unless a mapping mode
// was set. Old objects that SelectObject returns are found as FromHandle finds them: prefer SelectScope, which keeps
// the bare handle and cannot forget to put it back.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/Geometry.h"
#include "quor/platform/base/Object.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/base/WinTypes.h"
#include "quor/platform/win/GdiObjects.h"

class CWnd;

class QUOR_FRAMEWORK_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC() = default;
    ~CDC() override;

    operator HDC() const { return m_hDC; }
    HDC GetSafeHdc() const { return m_hDC; }
    static CDC* FromHandle(HDC handle);
    // Frees this thread's temporary contexts.
    static void DeleteTempMap();

    // Takes ownership: the destructor calls DeleteDC.
    BOOL Attach(HDC handle);
    HDC Detach();
    BOOL CreateDC(LPCTSTR driver, LPCTSTR device, LPCTSTR output, const DEVMODE* mode) {
        return Attach(::CreateDC(driver, device, output, mode));
    }
    // A memory context like the given one (like the screen without one), holding a bitmap of 1 by 1 pixel.
    BOOL CreateCompatibleDC(CDC* like) { return Attach(::CreateCompatibleDC(like ? like->m_hDC : nullptr)); }
    BOOL DeleteDC();
    // The window that the context draws on; null for a memory context.
    CWnd* GetWindow() const;
    int GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }
    BOOL IsPrinting() const { return FALSE; }

    // State. SaveDC returns the level to restore; -1 restores the last one.
    int SaveDC() { return ::SaveDC(m_hDC); }
    BOOL RestoreDC(int level) { return ::RestoreDC(m_hDC, level); }

    // Selection; each returns the object that was selected before, null on failure.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    CBitmap* SelectObject(CBitmap* bitmap);
    CGdiObject* SelectObject(CGdiObject* object);
    // A region becomes the clip region (a copy of it); returns its kind.
    int SelectObject(CRgn* region) { return ::SelectClipRgn(m_hDC, region ? HRGN(*region) : nullptr); }
    CGdiObject* SelectStockObject(int index);
    CPalette* SelectPalette(CPalette* palette, BOOL forceBackground);
    UINT RealizePalette() { return ::RealizePalette(m_hDC); }
    CPen* GetCurrentPen() const;
    CBrush* GetCurrentBrush() const;
    CFont* GetCurrentFont() const;
    CBitmap* GetCurrentBitmap() const;

    // Attributes; the setters return the former value.
    COLORREF GetTextColor() const { return ::GetTextColor(m_hDC); }
    COLORREF SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }
    COLORREF GetBkColor() const { return ::GetBkColor(m_hDC); }
    COLORREF SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }
    int GetBkMode() const { return ::GetBkMode(m_hDC); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    int GetROP2() const { return ::GetROP2(m_hDC); }
    int SetROP2(int mode) { return ::SetROP2(m_hDC, mode); }
    UINT GetTextAlign() const { return ::GetTextAlign(m_hDC); }
    UINT SetTextAlign(UINT flags) { return ::SetTextAlign(m_hDC, flags); }
    int SetPolyFillMode(int mode) { return ::SetPolyFillMode(m_hDC, mode); }
    int SetStretchBltMode(int mode) { return ::SetStretchBltMode(m_hDC, mode); }
    COLORREF SetDCPenColor(COLORREF color) { return ::SetDCPenColor(m_hDC, color); }
    COLORREF SetDCBrushColor(COLORREF color) { return ::SetDCBrushColor(m_hDC, color); }

    // Mapping.
    int GetMapMode() const { return ::GetMapMode(m_hDC); }
    int SetMapMode(int mode) { return ::SetMapMode(m_hDC, mode); }
    CPoint GetViewportOrg() const;
    CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }
    CPoint OffsetViewportOrg(int x, int y);
    CPoint GetWindowOrg() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point) { return SetWindowOrg(point.x, point.y); }
    CPoint GetBrushOrg() const;
    CPoint SetBrushOrg(int x, int y);
    void DPtoLP(LPPOINT points, int count = 1) const { ::DPtoLP(m_hDC, points, count); }
    void DPtoLP(LPRECT rect) const { ::DPtoLP(m_hDC, reinterpret_cast<LPPOINT>(rect), 2); }
    void LPtoDP(LPPOINT points, int count = 1) const { ::LPtoDP(m_hDC, points, count); }
    void LPtoDP(LPRECT rect) const { ::LPtoDP(m_hDC, reinterpret_cast<LPPOINT>(rect), 2); }

    // Clipping; the int results are region kinds (NULLREGION, SIMPLEREGION, COMPLEXREGION, ERROR).
    int GetClipBox(LPRECT rect) const { return ::GetClipBox(m_hDC, rect); }
    int SelectClipRgn(CRgn* region) { return ::SelectClipRgn(m_hDC, region ? HRGN(*region) : nullptr); }
    int SelectClipRgn(CRgn* region, int mode) {
        return ::ExtSelectClipRgn(m_hDC, region ? HRGN(*region) : nullptr, mode);
    }
    int IntersectClipRect(int left, int top, int right, int bottom) {
        return ::IntersectClipRect(m_hDC, left, top, right, bottom);
    }
    int IntersectClipRect(LPCRECT rect) {
        return ::IntersectClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
    }
    int ExcludeClipRect(int left, int top, int right, int bottom) {
        return ::ExcludeClipRect(m_hDC, left, top, right, bottom);
    }
    int ExcludeClipRect(LPCRECT rect) {
        return ::ExcludeClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
    }
    int OffsetClipRgn(int x, int y) { return ::OffsetClipRgn(m_hDC, x, y); }
    BOOL PtVisible(int x, int y) const { return ::PtVisible(m_hDC, x, y); }
    BOOL PtVisible(POINT point) const { return ::PtVisible(m_hDC, point.x, point.y); }
    // Whether any part of the rectangle lies inside the clip region.
    BOOL RectVisible(LPCRECT rect) const { return ::RectVisible(m_hDC, rect); }

    // Lines and shapes, with the selected pen and brush.
    CPoint GetCurrentPosition() const;
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT point) { return ::LineTo(m_hDC, point.x, point.y); }
    BOOL Polyline(const POINT* points, int count) { return ::Polyline(m_hDC, points, count); }
    BOOL Polygon(const POINT* points, int count) { return ::Polygon(m_hDC, points, count); }
    BOOL Rectangle(int left, int top, int right, int bottom) { return ::Rectangle(m_hDC, left, top, right, bottom); }
    BOOL Rectangle(LPCRECT rect) { return ::Rectangle(m_hDC, rect->left, rect->top, rect->right, rect->bottom); }
    BOOL RoundRect(LPCRECT rect, POINT corner) {
        return ::RoundRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom, corner.x, corner.y);
    }
    BOOL Ellipse(int left, int top, int right, int bottom) { return ::Ellipse(m_hDC, left, top, right, bottom); }
    BOOL Ellipse(LPCRECT rect) { return ::Ellipse(m_hDC, rect->left, rect->top, rect->right, rect->bottom); }
    BOOL Arc(LPCRECT rect, POINT start, POINT end) {
        return ::Arc(m_hDC, rect->left, rect->top, rect->right, rect->bottom, start.x, start.y, end.x, end.y);
    }

    // Filling. FillSolidRect leaves the colour as the background colour of the context.
    void FillRect(LPCRECT rect, CBrush* brush) { ::FillRect(m_hDC, rect, *brush); }
    void FrameRect(LPCRECT rect, CBrush* brush) { ::FrameRect(m_hDC, rect, *brush); }
    void InvertRect(LPCRECT rect) { ::InvertRect(m_hDC, rect); }
    void FillSolidRect(LPCRECT rect, COLORREF color) {
        ::SetBkColor(m_hDC, color);
        ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
    }
    void FillSolidRect(int x, int y, int width, int height, COLORREF color) {
        const RECT rect = {x, y, x + width, y + height};
        FillSolidRect(&rect, color);
    }
    BOOL FillRgn(CRgn* region, CBrush* brush) { return ::FillRgn(m_hDC, *region, *brush); }
    BOOL FrameRgn(CRgn* region, CBrush* brush, int width, int height) {
        return ::FrameRgn(m_hDC, *region, *brush, width, height);
    }
    // Mesh: GRADIENT_RECTs or GRADIENT_TRIANGLEs, as the mode (GRADIENT_FILL_...) says.
    BOOL GradientFill(TRIVERTEX* vertices, ULONG vertexCount, void* mesh, ULONG meshCount, DWORD mode) {
        return ::GradientFill(m_hDC, vertices, vertexCount, mesh, meshCount, mode);
    }
    // A frame of one pixel, the first colour left and above, the second right and below.
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    void Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight);
    BOOL DrawEdge(LPRECT rect, UINT edge, UINT flags) { return ::DrawEdge(m_hDC, rect, edge, flags); }
    BOOL DrawFrameControl(LPRECT rect, UINT type, UINT state) { return ::DrawFrameControl(m_hDC, rect, type, state); }
    void DrawFocusRect(LPCRECT rect) { ::DrawFocusRect(m_hDC, rect); }

    // Text. A count of -1 means up to the terminating zero. DrawText returns the height drawn.
    int DrawText(LPCTSTR text, int count, LPRECT rect, UINT format) {
        return ::DrawText(m_hDC, text, count, rect, format);
    }
    int DrawText(const CString& text, LPRECT rect, UINT format) {
        return ::DrawText(m_hDC, text, text.GetLength(), rect, format & ~static_cast<UINT>(DT_MODIFYSTRING));
    }
    // With DT_MODIFYSTRING the caller's buffer takes the shortened text: it needs room for four characters more.
    int DrawTextEx(LPTSTR text, int count, LPRECT rect, UINT format, LPDRAWTEXTPARAMS params) {
        return ::DrawTextEx(m_hDC, text, count, rect, format, params);
    }
    // The string is shared with others and never written: DT_MODIFYSTRING is taken out.
    int DrawTextEx(const CString& text, LPRECT rect, UINT format, LPDRAWTEXTPARAMS params) {
        return ::DrawTextEx(m_hDC, const_cast<LPTSTR>(static_cast<LPCTSTR>(text)), text.GetLength(), rect,
                            format & ~static_cast<UINT>(DT_MODIFYSTRING), params);
    }
    BOOL TextOut(int x, int y, LPCTSTR text, int count) { return ::TextOut(m_hDC, x, y, text, count); }
    BOOL TextOut(int x, int y, const CString& text) { return ::TextOut(m_hDC, x, y, text, text.GetLength()); }
    BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, LPCTSTR text, UINT count, const INT* distances) {
        return ::ExtTextOut(m_hDC, x, y, options, rect, text, count, distances);
    }
    BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, const INT* distances) {
        return ::ExtTextOut(m_hDC, x, y, options, rect, text, static_cast<UINT>(text.GetLength()), distances);
    }
    CSize GetTextExtent(LPCTSTR text, int count) const {
        CSize size(0, 0);
        ::GetTextExtentPoint32(m_hDC, text, count, &size);
        return size;
    }
    CSize GetTextExtent(const CString& text) const { return GetTextExtent(text, text.GetLength()); }
    BOOL GetTextMetrics(LPTEXTMETRIC metrics) const { return ::GetTextMetrics(m_hDC, metrics); }
    int GetTextFace(int count, LPTSTR face) const { return ::GetTextFace(m_hDC, count, face); }

    // Pictures.
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD rop) {
        return ::BitBlt(m_hDC, x, y, width, height, source ? source->m_hDC : nullptr, sourceX, sourceY, rop);
    }
    BOOL StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth,
                    int sourceHeight, DWORD rop) {
        return ::StretchBlt(m_hDC, x, y, width, height, source ? source->m_hDC : nullptr, sourceX, sourceY, sourceWidth,
                            sourceHeight, rop);
    }
    BOOL TransparentBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth,
                        int sourceHeight, UINT transparent) {
        return ::TransparentBlt(m_hDC, x, y, width, height, source->m_hDC, sourceX, sourceY, sourceWidth, sourceHeight,
                                transparent);
    }
    BOOL PatBlt(int x, int y, int width, int height, DWORD rop) { return ::PatBlt(m_hDC, x, y, width, height, rop); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF GetPixel(POINT point) const { return ::GetPixel(m_hDC, point.x, point.y); }
    COLORREF SetPixel(int x, int y, COLORREF color) { return ::SetPixel(m_hDC, x, y, color); }
    BOOL SetPixelV(int x, int y, COLORREF color) { return ::SetPixelV(m_hDC, x, y, color); }
    BOOL DrawIcon(int x, int y, HICON icon) { return ::DrawIcon(m_hDC, x, y, icon); }
    BOOL DrawIcon(POINT point, HICON icon) { return ::DrawIcon(m_hDC, point.x, point.y, icon); }

    HDC m_hDC = nullptr;
};

// The client area, for as long as the object lives. A null window means the whole screen.
class QUOR_FRAMEWORK_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

// The whole window, frame included.
class QUOR_FRAMEWORK_API CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)
public:
    explicit CWindowDC(CWnd* window);
    ~CWindowDC() override;

protected:
    HWND m_hWnd;
};

// BeginPaint and EndPaint; only in answer to WM_PAINT. m_ps.rcPaint is the area to draw.
class QUOR_FRAMEWORK_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps{};

protected:
    HWND m_hWnd;
};

// Selects an object and puts the former one back at the end of the block. Selecting nothing (a null handle) does
// nothing. Scopes on one context must end in the reverse order, as blocks do; the selected object must outlive its
// scope.
class SelectScope {
public:
    SelectScope(HDC dc, HGDIOBJ object) : m_hDC(dc), m_old(object ? ::SelectObject(dc, object) : nullptr) {}
    SelectScope(CDC* dc, CGdiObject* object) : SelectScope(HDC(*dc), object ? object->m_hObject : nullptr) {}
    SelectScope(CDC& dc, CGdiObject& object) : SelectScope(dc.m_hDC, object.m_hObject) {}
    SelectScope(const SelectScope&) = delete;
    SelectScope& operator=(const SelectScope&) = delete;
    ~SelectScope() {
        if (m_old) ::SelectObject(m_hDC, m_old);
    }

private:
    HDC m_hDC;
    HGDIOBJ m_old;
};

// Puts back everything of a context at the end of the block: objects, colours, modes, origins and clip region.
class DcStateScope {
public:
    explicit DcStateScope(HDC dc) : m_hDC(dc), m_level(::SaveDC(dc)) {}
    explicit DcStateScope(CDC* dc) : DcStateScope(HDC(*dc)) {}
    explicit DcStateScope(CDC& dc) : DcStateScope(dc.m_hDC) {}
    DcStateScope(const DcStateScope&) = delete;
    DcStateScope& operator=(const DcStateScope&) = delete;
    ~DcStateScope() {
        if (m_level) ::RestoreDC(m_hDC, m_level);
    }

private:
    HDC m_hDC;
    int m_level;
};

// Draws into memory first, so that nothing flickers: what was drawn on dc() goes to the target at the end of the block.
// `area` is in the target's coordinates, which are those of dc() too; nothing outside it is touched.
class QUOR_FRAMEWORK_API PaintBufferScope {
public:
    PaintBufferScope(HDC target, const RECT& area);
    PaintBufferScope(const PaintBufferScope&) = delete;
    PaintBufferScope& operator=(const PaintBufferScope&) = delete;
    ~PaintBufferScope();

    CDC& dc() { return m_dc; }

private:
    HDC m_target;
    CRect m_area;
    CDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_former;
};

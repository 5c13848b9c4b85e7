// Pens, brushes, fonts, bitmaps, regions and palettes as objects.
//
// An object owns the handle that it created or that was attached to it: its destructor deletes the handle, Detach gives
// it away. FromHandle finds the object that owns a handle; where there is none it makes a temporary one, which owns
// nothing and lives until the pump is next idle: use it at once and do not keep it. Objects and handles belong to the
// thread that made them.
//
// When the system refuses to create a handle, constructors throw the resource exception and Create functions return
// FALSE.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/Object.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/base/WinTypes.h"

class CBitmap;
class CDC;

class QUOR_FRAMEWORK_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;

    operator HGDIOBJ() const { return m_hObject; }
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    // The owner of the handle, else a temporary object; null for a null handle.
    static CGdiObject* FromHandle(HGDIOBJ handle);
    // Frees this thread's temporary objects of all GDI classes.
    static void DeleteTempMap();

    // Takes ownership. FALSE for a null handle; an object that owns a handle already must give it up first.
    BOOL Attach(HGDIOBJ handle);
    // Gives the handle to the caller, who deletes it.
    HGDIOBJ Detach();
    // Deletes the handle now. FALSE if there was none or the system refused (it is selected into a device context).
    BOOL DeleteObject();

    // Copies the handle's description; returns the bytes stored, 0 on failure.
    int GetObject(int size, LPVOID object) const { return ::GetObject(m_hObject, size, object); }
    UINT GetObjectType() const { return ::GetObjectType(m_hObject); }
    BOOL CreateStockObject(int index) { return Attach(::GetStockObject(index)); }
    BOOL UnrealizeObject() { return ::UnrealizeObject(m_hObject); }
    bool operator==(const CGdiObject& other) const { return m_hObject == other.m_hObject; }

    HGDIOBJ m_hObject = nullptr;
};

class QUOR_FRAMEWORK_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    // Style (PS_...), width in logical units (0: one pixel), colour.
    CPen(int style, int width, COLORREF color);
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    static CPen* FromHandle(HPEN handle);

    BOOL CreatePen(int style, int width, COLORREF color) { return Attach(::CreatePen(style, width, color)); }
    BOOL CreatePenIndirect(LPLOGPEN pen) { return Attach(::CreatePenIndirect(pen)); }
    BOOL CreatePen(int style, int width, const LOGBRUSH* brush, int styleCount = 0, const DWORD* styles = nullptr);
    int GetLogPen(LOGPEN* pen) const { return GetObject(sizeof(LOGPEN), pen); }
};

class QUOR_FRAMEWORK_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    explicit CBrush(COLORREF color);
    // Hatch (HS_...) and its colour.
    CBrush(int hatch, COLORREF color);
    // A pattern of 8 by 8 pixels; the bitmap stays the caller's.
    explicit CBrush(CBitmap* bitmap);
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    static CBrush* FromHandle(HBRUSH handle);

    BOOL CreateSolidBrush(COLORREF color) { return Attach(::CreateSolidBrush(color)); }
    BOOL CreateHatchBrush(int hatch, COLORREF color) { return Attach(::CreateHatchBrush(hatch, color)); }
    BOOL CreateBrushIndirect(const LOGBRUSH* brush) { return Attach(::CreateBrushIndirect(brush)); }
    BOOL CreatePatternBrush(CBitmap* bitmap);
    // The brush of a system colour (COLOR_...); it belongs to the system and DeleteObject on it does nothing.
    BOOL CreateSysColorBrush(int index) { return Attach(::GetSysColorBrush(index)); }
    int GetLogBrush(LOGBRUSH* brush) const { return GetObject(sizeof(LOGBRUSH), brush); }
};

class QUOR_FRAMEWORK_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    CFont() = default;
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* FromHandle(HFONT handle);

    BOOL CreateFontIndirect(const LOGFONT* font) { return Attach(::CreateFontIndirect(font)); }
    BOOL CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic, BYTE underline,
                    BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision, BYTE quality,
                    BYTE pitchAndFamily, LPCTSTR faceName);
    // Size in tenths of a point, measured on the context's device (the screen's without one).
    BOOL CreatePointFont(int pointSize, LPCTSTR faceName, CDC* dc = nullptr);
    // The same with all attributes; lfHeight is in tenths of a point.
    BOOL CreatePointFontIndirect(const LOGFONT* font, CDC* dc = nullptr);
    int GetLogFont(LOGFONT* font) const { return GetObject(sizeof(LOGFONT), font); }
};

class QUOR_FRAMEWORK_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap() = default;
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    static CBitmap* FromHandle(HBITMAP handle);

    // From the resources of the program.
    BOOL LoadBitmap(UINT id) { return LoadBitmap(MAKEINTRESOURCE(id)); }
    BOOL LoadBitmap(LPCTSTR name);
    // One of the system's own (OBM_...).
    BOOL LoadOEMBitmap(UINT id) { return Attach(::LoadBitmap(nullptr, MAKEINTRESOURCE(id))); }
    BOOL CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits);
    BOOL CreateBitmapIndirect(LPBITMAP bitmap) { return Attach(::CreateBitmapIndirect(bitmap)); }
    // Fits the context's device; a fresh memory context gives a monochrome one.
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    BOOL CreateDiscardableBitmap(CDC* dc, int width, int height);
    int GetBitmap(BITMAP* bitmap) const { return GetObject(sizeof(BITMAP), bitmap); }
    DWORD SetBitmapBits(DWORD size, const void* bits);
    DWORD GetBitmapBits(DWORD size, LPVOID bits) const;
};

class QUOR_FRAMEWORK_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)
public:
    CRgn() = default;
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    static CRgn* FromHandle(HRGN handle);

    // Right and bottom are outside.
    BOOL CreateRectRgn(int left, int top, int right, int bottom) {
        return Attach(::CreateRectRgn(left, top, right, bottom));
    }
    BOOL CreateRectRgnIndirect(LPCRECT rect) { return Attach(::CreateRectRgnIndirect(rect)); }
    BOOL CreateEllipticRgn(int left, int top, int right, int bottom) {
        return Attach(::CreateEllipticRgn(left, top, right, bottom));
    }
    BOOL CreateRoundRectRgn(int left, int top, int right, int bottom, int cornerWidth, int cornerHeight) {
        return Attach(::CreateRoundRectRgn(left, top, right, bottom, cornerWidth, cornerHeight));
    }
    // Mode: ALTERNATE or WINDING. The polygon is closed by itself.
    BOOL CreatePolygonRgn(const POINT* points, int count, int mode) {
        return Attach(::CreatePolygonRgn(points, count, mode));
    }
    // The operations below change a region that exists and return its kind (NULLREGION, ..., ERROR).
    void SetRectRgn(LPCRECT rect) { ::SetRectRgn(*this, rect->left, rect->top, rect->right, rect->bottom); }
    void SetRectRgn(int left, int top, int right, int bottom) { ::SetRectRgn(*this, left, top, right, bottom); }
    int CombineRgn(const CRgn* first, const CRgn* second, int mode);
    int CopyRgn(const CRgn* source) { return CombineRgn(source, nullptr, RGN_COPY); }
    int OffsetRgn(int x, int y) { return ::OffsetRgn(*this, x, y); }
    int OffsetRgn(POINT offset) { return ::OffsetRgn(*this, offset.x, offset.y); }
    BOOL EqualRgn(const CRgn* other) const { return ::EqualRgn(*this, other ? HRGN(*other) : nullptr); }
    BOOL PtInRegion(int x, int y) const { return ::PtInRegion(*this, x, y); }
    BOOL PtInRegion(POINT point) const { return ::PtInRegion(*this, point.x, point.y); }
    BOOL RectInRegion(LPCRECT rect) const { return ::RectInRegion(*this, rect); }
    int GetRgnBox(LPRECT rect) const { return ::GetRgnBox(*this, rect); }
};

class QUOR_FRAMEWORK_API CPalette : public CGdiObject {
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette() = default;
    operator HPALETTE() const { return static_cast<HPALETTE>(m_hObject); }
    static CPalette* FromHandle(HPALETTE handle);

    BOOL CreatePalette(LPLOGPALETTE palette) { return Attach(::CreatePalette(palette)); }
    BOOL CreateHalftonePalette(CDC* dc);
    int GetEntryCount() const;
    UINT GetPaletteEntries(UINT first, UINT count, LPPALETTEENTRY entries) const {
        return ::GetPaletteEntries(*this, first, count, entries);
    }
};

// Frees this thread's temporary GDI objects, device contexts, menus and image lists. The pump calls it when idle; no
// pointer that a FromHandle, SelectObject or GetSubMenu returned may be used across it unless its object is owned.
QUOR_FRAMEWORK_API void quorFreeTemporaryGdiObjects();

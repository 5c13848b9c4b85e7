#include "quor/platform/win/ControlsInternal.h"
#include "quor/platform/win/HandleMapInternal.h"

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)

namespace {

template <class Object>
using GdiTemporaries = TemporaryMap<Object, HGDIOBJ, &CGdiObject::m_hObject>;

struct GdiMaps {
    PermanentMap<CGdiObject, HGDIOBJ> owners;
    GdiTemporaries<CGdiObject> objects;
    GdiTemporaries<CPen> pens;
    GdiTemporaries<CBrush> brushes;
    GdiTemporaries<CFont> fonts;
    GdiTemporaries<CBitmap> bitmaps;
    GdiTemporaries<CRgn> regions;
    GdiTemporaries<CPalette> palettes;
};

// Never freed: global fonts and brushes are destroyed after every other static of this file.
GdiMaps& maps() {
    static thread_local GdiMaps* const instance = new GdiMaps;
    return *instance;
}

// The owner, if it is of the wanted class; else a temporary of that class.
template <class Object>
Object* fromHandle(HGDIOBJ handle, GdiTemporaries<Object>& temporaries) {
    if (!handle) return nullptr;
    if (auto* owner = dynamic_cast<Object*>(maps().owners.find(handle))) return owner;
    return temporaries.get(handle);
}

}  // namespace

CGdiObject::~CGdiObject() { DeleteObject(); }

CGdiObject* CGdiObject::FromHandle(HGDIOBJ handle) { return fromHandle(handle, maps().objects); }
CPen* CPen::FromHandle(HPEN handle) { return fromHandle(handle, maps().pens); }
CBrush* CBrush::FromHandle(HBRUSH handle) { return fromHandle(handle, maps().brushes); }
CFont* CFont::FromHandle(HFONT handle) { return fromHandle(handle, maps().fonts); }
CBitmap* CBitmap::FromHandle(HBITMAP handle) { return fromHandle(handle, maps().bitmaps); }
CRgn* CRgn::FromHandle(HRGN handle) { return fromHandle(handle, maps().regions); }
CPalette* CPalette::FromHandle(HPALETTE handle) { return fromHandle(handle, maps().palettes); }

void CGdiObject::DeleteTempMap() {
    GdiMaps& all = maps();
    all.objects.clear();
    all.pens.clear();
    all.brushes.clear();
    all.fonts.clear();
    all.bitmaps.clear();
    all.regions.clear();
    all.palettes.clear();
}

BOOL CGdiObject::Attach(HGDIOBJ handle) {
    ASSERT(!m_hObject);
    if (!handle) return FALSE;
    m_hObject = handle;
    maps().owners.add(handle, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() {
    const HGDIOBJ handle = m_hObject;
    if (handle) maps().owners.remove(handle, this);
    m_hObject = nullptr;
    return handle;
}

BOOL CGdiObject::DeleteObject() { return m_hObject ? ::DeleteObject(Detach()) : FALSE; }

namespace {

void requireHandle(BOOL created) {
    if (!created) AfxThrowResourceException();
}

}  // namespace

CPen::CPen(int style, int width, COLORREF color) { requireHandle(CreatePen(style, width, color)); }
CBrush::CBrush(COLORREF color) { requireHandle(CreateSolidBrush(color)); }
CBrush::CBrush(int hatch, COLORREF color) { requireHandle(CreateHatchBrush(hatch, color)); }
CBrush::CBrush(CBitmap* bitmap) { requireHandle(CreatePatternBrush(bitmap)); }

BOOL CPen::CreatePen(int style, int width, const LOGBRUSH* brush, int styleCount, const DWORD* styles) {
    return Attach(::ExtCreatePen(style, width, brush, styleCount, styles));
}

BOOL CBrush::CreatePatternBrush(CBitmap* bitmap) { return Attach(::CreatePatternBrush(*bitmap)); }

BOOL CFont::CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic, BYTE underline,
                       BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision, BYTE quality,
                       BYTE pitchAndFamily, LPCTSTR faceName) {
    return Attach(::CreateFont(height, width, escapement, orientation, weight, italic, underline, strikeOut, charSet,
                               outPrecision, clipPrecision, quality, pitchAndFamily, faceName));
}

BOOL CFont::CreatePointFont(int pointSize, LPCTSTR faceName, CDC* dc) {
    LOGFONT font{};
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfHeight = pointSize;
    ::lstrcpyn(font.lfFaceName, faceName, LF_FACESIZE);
    return CreatePointFontIndirect(&font, dc);
}

// Tenths of a point are 720 to the inch. The mapping mode of the context counts, hence the detour over device points;
// without a context the screen's resolution is used, in pixels.
BOOL CFont::CreatePointFontIndirect(const LOGFONT* font, CDC* dc) {
    const HDC screen = dc ? nullptr : ::GetDC(nullptr);
    const HDC device = dc ? HDC(*dc) : screen;
    POINT points[2] = {{0, ::MulDiv(dotsPerInch(device), font->lfHeight, 720)}, {0, 0}};
    ::DPtoLP(device, points, 2);
    if (screen) ::ReleaseDC(nullptr, screen);
    LOGFONT scaled = *font;
    scaled.lfHeight = -std::abs(points[0].y - points[1].y);
    return CreateFontIndirect(&scaled);
}

BOOL CBitmap::LoadBitmap(LPCTSTR name) { return Attach(::LoadBitmap(AfxFindResourceHandle(name, RT_BITMAP), name)); }

BOOL CBitmap::CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits) {
    return Attach(::CreateBitmap(width, height, planes, bitCount, bits));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height) {
    return Attach(::CreateCompatibleBitmap(*dc, width, height));
}

BOOL CBitmap::CreateDiscardableBitmap(CDC* dc, int width, int height) {
    return Attach(::CreateDiscardableBitmap(*dc, width, height));
}

DWORD CBitmap::SetBitmapBits(DWORD size, const void* bits) {
    return static_cast<DWORD>(::SetBitmapBits(*this, size, bits));
}

DWORD CBitmap::GetBitmapBits(DWORD size, LPVOID bits) const {
    return static_cast<DWORD>(::GetBitmapBits(*this, static_cast<LONG>(size), bits));
}

int CRgn::CombineRgn(const CRgn* first, const CRgn* second, int mode) {
    return ::CombineRgn(*this, first ? HRGN(*first) : nullptr, second ? HRGN(*second) : nullptr, mode);
}

BOOL CPalette::CreateHalftonePalette(CDC* dc) { return Attach(::CreateHalftonePalette(dc ? HDC(*dc) : nullptr)); }

int CPalette::GetEntryCount() const {
    WORD count = 0;
    GetObject(sizeof(count), &count);
    return count;
}

void quorFreeTemporaryGdiObjects() {
    CGdiObject::DeleteTempMap();
    CDC::DeleteTempMap();
    CMenu::DeleteTempMap();
    CImageList::DeleteTempMap();
}

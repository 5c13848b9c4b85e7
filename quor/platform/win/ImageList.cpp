#include "quor/platform/Framework.h"
#include "quor/platform/win/HandleMapInternal.h"

IMPLEMENT_DYNCREATE(CImageList, CObject)

namespace {

struct ImageListMaps {
    PermanentMap<CImageList, HIMAGELIST> owners;
    TemporaryMap<CImageList, HIMAGELIST, &CImageList::m_hImageList> temporaries;
};

// Never freed: lists may be held by statics of other modules.
ImageListMaps& maps() {
    static thread_local ImageListMaps* const instance = new ImageListMaps;
    return *instance;
}

HBITMAP handleOf(const CBitmap* bitmap) { return bitmap ? HBITMAP(*bitmap) : nullptr; }
HWND handleOf(const CWnd* window) { return window ? window->m_hWnd : nullptr; }

}  // namespace

CImageList::~CImageList() { DeleteImageList(); }

CImageList* CImageList::FromHandle(HIMAGELIST handle) {
    if (!handle) return nullptr;
    if (CImageList* owner = maps().owners.find(handle)) return owner;
    return maps().temporaries.get(handle);
}

CImageList* CImageList::FromHandlePermanent(HIMAGELIST handle) { return maps().owners.find(handle); }

void CImageList::DeleteTempMap() { maps().temporaries.clear(); }

BOOL CImageList::Attach(HIMAGELIST handle) {
    ASSERT(!m_hImageList);
    if (!handle) return FALSE;
    m_hImageList = handle;
    maps().owners.add(handle, this);
    return TRUE;
}

HIMAGELIST CImageList::Detach() {
    const HIMAGELIST handle = m_hImageList;
    if (handle) maps().owners.remove(handle, this);
    m_hImageList = nullptr;
    return handle;
}

BOOL CImageList::DeleteImageList() { return m_hImageList ? ::ImageList_Destroy(Detach()) : FALSE; }

BOOL CImageList::Create(int width, int height, UINT flags, int initial, int grow) {
    return Attach(::ImageList_Create(width, height, flags, initial, grow));
}

BOOL CImageList::Create(UINT bitmapId, int width, int grow, COLORREF mask) {
    return Create(MAKEINTRESOURCE(bitmapId), width, grow, mask);
}

BOOL CImageList::Create(LPCTSTR bitmapName, int width, int grow, COLORREF mask) {
    return Attach(::ImageList_LoadBitmap(AfxFindResourceHandle(bitmapName, RT_BITMAP), bitmapName, width, grow, mask));
}

BOOL CImageList::Create(CImageList* source) { return Attach(::ImageList_Duplicate(source->m_hImageList)); }

int CImageList::Add(CBitmap* image, CBitmap* mask) {
    return ::ImageList_Add(m_hImageList, handleOf(image), handleOf(mask));
}

int CImageList::Add(CBitmap* image, COLORREF mask) {
    return ::ImageList_AddMasked(m_hImageList, handleOf(image), mask);
}

BOOL CImageList::Replace(int image, CBitmap* bitmap, CBitmap* mask) {
    return ::ImageList_Replace(m_hImageList, image, handleOf(bitmap), handleOf(mask));
}

BOOL CImageList::Draw(CDC* dc, int image, POINT point, UINT style) {
    return ::ImageList_Draw(m_hImageList, image, *dc, point.x, point.y, style);
}

BOOL CImageList::DrawEx(CDC* dc, int image, POINT point, SIZE size, COLORREF background, COLORREF foreground,
                        UINT style) {
    return ::ImageList_DrawEx(m_hImageList, image, *dc, point.x, point.y, size.cx, size.cy, background, foreground,
                              style);
}

BOOL CImageList::DragEnter(CWnd* lockWindow, POINT point) {
    return ::ImageList_DragEnter(handleOf(lockWindow), point.x, point.y);
}

BOOL CImageList::DragLeave(CWnd* lockWindow) { return ::ImageList_DragLeave(handleOf(lockWindow)); }

CImageList* CImageList::GetDragImage(LPPOINT point, LPPOINT hotSpot) {
    return FromHandle(::ImageList_GetDragImage(point, hotSpot));
}

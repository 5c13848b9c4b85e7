// Lists of equally sized pictures, and the drag image that the system moves over the screen.
//
// An object owns its list and destroys it; Detach gives it away (a list that a control shares, such as LVSIL_SMALL with
// LVS_SHAREIMAGELISTS, must be detached or live longer than the control). FromHandle wraps a list that somebody else
// owns in a temporary object, valid until the pump is idle. Indexes count from 0; adding returns the index of the first
// new picture or -1.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/Geometry.h"
#include "quor/platform/base/Object.h"
#include "quor/platform/base/WinTypes.h"

#include <commctrl.h>

class CBitmap;
class CDC;
class CWnd;

class QUOR_FRAMEWORK_API CImageList : public CObject {
    DECLARE_DYNCREATE(CImageList)
public:
    CImageList() = default;
    ~CImageList() override;

    operator HIMAGELIST() const { return m_hImageList; }
    HIMAGELIST GetSafeHandle() const { return m_hImageList; }
    static CImageList* FromHandle(HIMAGELIST handle);
    // The owner, or null; makes no temporary object.
    static CImageList* FromHandlePermanent(HIMAGELIST handle);
    static void DeleteTempMap();

    BOOL Attach(HIMAGELIST handle);
    HIMAGELIST Detach();
    BOOL DeleteImageList();

    // Pictures of width by height pixels; flags ILC_...; room for `initial`, growing by `grow`.
    BOOL Create(int width, int height, UINT flags, int initial, int grow);
    // From a bitmap resource of pictures side by side, each `width` wide; `mask` is the colour that is transparent.
    BOOL Create(UINT bitmapId, int width, int grow, COLORREF mask);
    BOOL Create(LPCTSTR bitmapName, int width, int grow, COLORREF mask);
    // A copy.
    BOOL Create(CImageList* source);

    int GetImageCount() const { return ::ImageList_GetImageCount(m_hImageList); }
    // Cuts, or appends pictures whose bits are undefined until replaced.
    BOOL SetImageCount(UINT count) { return ::ImageList_SetImageCount(m_hImageList, count); }
    // The bitmaps stay the caller's. A null mask is allowed.
    int Add(CBitmap* image, CBitmap* mask);
    int Add(CBitmap* image, COLORREF mask);
    int Add(HICON icon) { return ::ImageList_AddIcon(m_hImageList, icon); }
    BOOL Remove(int image) { return ::ImageList_Remove(m_hImageList, image); }
    BOOL Replace(int image, CBitmap* bitmap, CBitmap* mask);
    int Replace(int image, HICON icon) { return ::ImageList_ReplaceIcon(m_hImageList, image, icon); }
    // The caller destroys the icon.
    HICON ExtractIcon(int image) { return ::ImageList_GetIcon(m_hImageList, image, ILD_NORMAL); }
    BOOL GetImageInfo(int image, IMAGEINFO* info) const { return ::ImageList_GetImageInfo(m_hImageList, image, info); }
    BOOL GetIconSize(int* width, int* height) const { return ::ImageList_GetIconSize(m_hImageList, width, height); }

    // CLR_NONE draws with transparent ground. Returns the former colour.
    COLORREF SetBkColor(COLORREF color) { return ::ImageList_SetBkColor(m_hImageList, color); }
    COLORREF GetBkColor() const { return ::ImageList_GetBkColor(m_hImageList); }
    BOOL SetOverlayImage(int image, int overlay) { return ::ImageList_SetOverlayImage(m_hImageList, image, overlay); }

    // Style: ILD_...
    BOOL Draw(CDC* dc, int image, POINT point, UINT style);
    // Size (0, 0) means the picture's own; colours may be CLR_NONE or CLR_DEFAULT.
    BOOL DrawEx(CDC* dc, int image, POINT point, SIZE size, COLORREF background, COLORREF foreground, UINT style);

    // Dragging. The hot spot counts from the picture's corner; points are relative to the lock window's corner (its
    // frame included), or to the screen without one. Between DragEnter and DragLeave nothing may paint in the lock
    // window unless DragShowNolock(FALSE) hid the image.
    BOOL BeginDrag(int image, POINT hotSpot) {
        return ::ImageList_BeginDrag(m_hImageList, image, hotSpot.x, hotSpot.y);
    }
    static void EndDrag() { ::ImageList_EndDrag(); }
    static BOOL DragEnter(CWnd* lockWindow, POINT point);
    static BOOL DragMove(POINT point) { return ::ImageList_DragMove(point.x, point.y); }
    static BOOL DragLeave(CWnd* lockWindow);
    static BOOL DragShowNolock(BOOL show) { return ::ImageList_DragShowNolock(show); }
    BOOL SetDragCursorImage(int image, POINT hotSpot) {
        return ::ImageList_SetDragCursorImage(m_hImageList, image, hotSpot.x, hotSpot.y);
    }
    // The image that is being dragged, a temporary object; null without one. Either pointer may be null.
    static CImageList* GetDragImage(LPPOINT point, LPPOINT hotSpot);

    HIMAGELIST m_hImageList = nullptr;
};

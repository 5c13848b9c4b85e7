// What the sources of CCommonListCtrl share.
#pragma once

#include <vector>

#include "src/foundation/RedrawScope.h"
#include "src/list/CommonListCtrl.h"

namespace quor::list {

using foundation::RedrawScope;

// Images of the shared header image list, in this order.
enum HeaderImage { kHeaderImageRising = 0, kHeaderImageFalling = 1, kHeaderImageBlank = 2 };

// Format of a header item with a sort image; with the check box of a first column.
inline constexpr int kHeaderSortFormat = HDF_STRING | HDF_BITMAP_ON_RIGHT | HDF_IMAGE;  // 0x5800
inline constexpr int kHeaderCheckSortFormat = kHeaderSortFormat | HDF_CHECKBOX;         // 0x5840

// The one header image list of the process. It is drawn for the first list and lives as long as a list holds it, so
// that no picture is left when the last window is gone.
std::shared_ptr<CImageList> sharedHeaderImages();

// Gives a header item a sort image; false if there is no such item.
bool setHeaderImage(CHeaderCtrl& header, int item, int format, HeaderImage image);

// The width that a header item's text and image need, in the font of `dc`.
int headingWidth(CHeaderCtrl& header, CDC& dc, int item);

// The notification of a click on the header at a place, as the control would send it.
inline NMLISTVIEW headerClick(const CWnd& list, int place) {
    NMLISTVIEW click{};
    click.hdr = {list.m_hWnd, static_cast<UINT_PTR>(list.GetDlgCtrlID()), static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iItem = -1;
    click.iSubItem = place;
    return click;
}

// Sets a flag for a block and puts the former value back.
template <class Flag>
class FlagScope {
public:
    FlagScope(Flag& flag, Flag value) : m_flag(flag), m_former(flag) { flag = value; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;
    ~FlagScope() { m_flag = m_former; }

private:
    Flag& m_flag;
    Flag m_former;
};

// Copies numbers into a framework array.
inline void assign(CArray<int, int>& target, const std::vector<int>& source) {
    target.RemoveAll();
    for (const int value : source) target.Add(value);
}

inline void assign(CArray<sVisibleColumn, sVisibleColumn>& target, const std::vector<sVisibleColumn>& source) {
    target.RemoveAll();
    for (const sVisibleColumn& value : source) target.Add(value);
}

inline std::vector<int> toVector(const CArray<int, int>& source) {
    return {source.GetData(), source.GetData() + source.GetCount()};
}

inline bool isLive(const CWnd* window) { return window && window->m_hWnd && ::IsWindow(window->m_hWnd); }

}  // namespace quor::list

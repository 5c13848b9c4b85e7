// The sort pictures in the header items of lists and grids.
#pragma once

#include "quor/platform/Framework.h"

#include <memory>

namespace quor::list {

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

}  // namespace quor::list

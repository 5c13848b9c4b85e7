// The pictures of the header: an arrow up for rising values, one down for falling, and nothing. They are drawn here, a
// line at a time, so that no picture file has to be found.
#include "quor/list/HeaderImages.h"

namespace quor::list {

namespace {

constexpr int kImageSize = 16;
constexpr int kArrowHeight = 4;
constexpr int kArrowTop = (kImageSize - kArrowHeight) / 2;
constexpr COLORREF kTransparent = RGB(255, 0, 255);

// An arrow's line number n is 2n + 1 pixels wide.
void drawArrow(CDC& dc, int image, bool up) {
    for (int line = 0; line < kArrowHeight; ++line) {
        const int y = kArrowTop + (up ? line : kArrowHeight - 1 - line);
        const int left = image * kImageSize + kImageSize / 2 - line;
        dc.FillSolidRect(left, y, 2 * line + 1, 1, ::GetSysColor(COLOR_BTNSHADOW));
    }
}

void drawImages(CDC& dc) {
    dc.FillSolidRect(0, 0, 3 * kImageSize, kImageSize, kTransparent);
    drawArrow(dc, kHeaderImageRising, true);
    drawArrow(dc, kHeaderImageFalling, false);
}

std::shared_ptr<CImageList> makeHeaderImages() {
    auto images = std::make_shared<CImageList>();
    images->Create(kImageSize, kImageSize, ILC_COLOR24 | ILC_MASK, 3, 0);
    CClientDC screen(nullptr);
    CBitmap picture;
    picture.CreateCompatibleBitmap(&screen, 3 * kImageSize, kImageSize);
    {
        CDC dc;
        dc.CreateCompatibleDC(&screen);
        const SelectScope drawing(dc, picture);
        drawImages(dc);
    }
    images->Add(&picture, kTransparent);
    return images;
}

}  // namespace

std::shared_ptr<CImageList> sharedHeaderImages() {
    static std::weak_ptr<CImageList> shared;
    std::shared_ptr<CImageList> images = shared.lock();
    if (!images) shared = images = makeHeaderImages();
    return images;
}

bool setHeaderImage(CHeaderCtrl& header, int item, int format, HeaderImage image) {
    HDITEM record{};
    record.mask = HDI_FORMAT | HDI_IMAGE;
    record.fmt = format;
    record.iImage = image;
    return header.SetItem(item, &record);
}

}  // namespace quor::list

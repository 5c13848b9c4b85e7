// Image lists with their drag image, and pictures of windows.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "platform/Framework.h"
#include "platform/proving/WindowCapture.h"
#include "support/WindowFixture.h"

namespace {

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF blue = RGB(0, 0, 255);

// A bitmap of one colour.
void makeBitmap(CBitmap& bitmap, int width, int height, COLORREF color) {
    CClientDC screen(nullptr);
    bitmap.CreateCompatibleBitmap(&screen, width, height);
    CDC memory;
    memory.CreateCompatibleDC(&screen);
    const SelectScope selected(memory, bitmap);
    memory.FillSolidRect(0, 0, width, height, color);
}

class GdiImages : public test::WindowFixture {};

TEST_F(GdiImages, AListTakesReplacesAndDrawsPictures) {
    CImageList images;
    ASSERT_TRUE(images.Create(8, 8, ILC_COLOR32, 1, 1));
    CBitmap redOne;
    CBitmap blueThree;
    makeBitmap(redOne, 8, 8, red);
    makeBitmap(blueThree, 24, 8, blue);
    EXPECT_EQ(images.Add(&redOne, static_cast<CBitmap*>(nullptr)), 0);
    EXPECT_EQ(images.Add(&blueThree, static_cast<CBitmap*>(nullptr)), 1);
    EXPECT_EQ(images.GetImageCount(), 4);
    EXPECT_TRUE(images.Replace(2, &redOne, nullptr));
    EXPECT_TRUE(images.Remove(0));
    EXPECT_FALSE(images.Remove(3));

    CBitmap sheet;
    makeBitmap(sheet, 32, 8, RGB(255, 255, 255));
    CClientDC screen(nullptr);
    CDC memory;
    memory.CreateCompatibleDC(&screen);
    const SelectScope selected(memory, sheet);
    for (int image = 0; image < 3; ++image) EXPECT_TRUE(images.Draw(&memory, image, CPoint(image * 8, 0), ILD_NORMAL));
    EXPECT_TRUE(images.DrawEx(&memory, 1, CPoint(24, 0), CSize(4, 4), CLR_NONE, CLR_NONE, ILD_NORMAL));
    EXPECT_EQ(memory.GetPixel(4, 4), blue);
    EXPECT_EQ(memory.GetPixel(12, 4), red);
    EXPECT_EQ(memory.GetPixel(20, 4), blue);
    EXPECT_EQ(memory.GetPixel(25, 1), red);
    EXPECT_EQ(memory.GetPixel(29, 6), RGB(255, 255, 255)) << "drawn beyond the size asked for";
}

TEST_F(GdiImages, AListBelongsToItsObjectUntilDetached) {
    HIMAGELIST handle = nullptr;
    {
        CImageList images;
        ASSERT_TRUE(images.Create(8, 8, ILC_COLOR32, 1, 1));
        handle = images;
        EXPECT_EQ(CImageList::FromHandle(handle), &images);
        images.Detach();
        EXPECT_EQ(CImageList::FromHandlePermanent(handle), nullptr);
    }
    CImageList* const temporary = CImageList::FromHandle(handle);
    EXPECT_EQ(temporary->GetImageCount(), 0);
    quorFreeTemporaryGdiObjects();
    EXPECT_TRUE(::ImageList_Destroy(handle)) << "destroyed behind its holder's back";
}

TEST_F(GdiImages, TheDragImageFollowsThePointer) {
    CWnd window;
    ASSERT_TRUE(
        window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 100, 100), nullptr, 0));
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR32, 1, 1));
    CBitmap picture;
    makeBitmap(picture, 16, 16, red);
    images.Add(&picture, static_cast<CBitmap*>(nullptr));

    EXPECT_EQ(CImageList::GetDragImage(nullptr, nullptr), nullptr);
    ASSERT_TRUE(images.BeginDrag(0, CPoint(3, 4)));
    EXPECT_TRUE(CImageList::DragEnter(&window, CPoint(10, 10)));
    EXPECT_TRUE(CImageList::DragMove(CPoint(20, 30)));
    EXPECT_TRUE(CImageList::DragShowNolock(FALSE));
    EXPECT_TRUE(CImageList::DragShowNolock(TRUE));
    CPoint point;
    CPoint hotSpot;
    EXPECT_NE(CImageList::GetDragImage(&point, &hotSpot), nullptr);
    EXPECT_EQ(point, CPoint(20, 30));
    EXPECT_EQ(hotSpot, CPoint(3, 4));
    EXPECT_TRUE(CImageList::DragLeave(&window));
    CImageList::EndDrag();
    EXPECT_EQ(CImageList::GetDragImage(nullptr, nullptr), nullptr);
    EXPECT_EQ(images.GetImageCount(), 1);
}

// Left half red, right half blue.
class TwoColours : public CWnd {
protected:
    afx_msg void OnPaint() {
        CPaintDC dc(this);
        CRect client;
        GetClientRect(&client);
        dc.FillSolidRect(client, blue);
        client.right /= 2;
        dc.FillSolidRect(client, red);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TwoColours, CWnd)
    ON_WM_PAINT()
END_MESSAGE_MAP()

TEST_F(GdiImages, APictureOfAWindowHasItsSizeItsColoursAndItsChildren) {
    TwoColours window;
    TwoColours child;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 60, 30), nullptr, 0));
    ASSERT_TRUE(child.Create(AfxRegisterWndClass(0), "", WS_CHILD | WS_VISIBLE, CRect(0, 20, 20, 30), &window, 1));
    window.UpdateWindow();
    child.UpdateWindow();

    const char path[] = "capture-test.png";
    CString error;
    ASSERT_TRUE(quorSaveClientAreaPng(window, path, &error)) << error.GetString();
    WindowPicture picture;
    EXPECT_TRUE(quorReadPng(L"capture-test.png", picture));
    std::remove(path);
    ASSERT_EQ(picture.width, 60);
    ASSERT_EQ(picture.height, 30);
    const auto at = [&](int x, int y) { return picture.pixels[static_cast<std::size_t>(y * 60 + x)]; };
    EXPECT_EQ(at(5, 5), 0xFFFF0000u);
    EXPECT_EQ(at(55, 5), 0xFF0000FFu);
    EXPECT_EQ(at(15, 25), 0xFF0000FFu) << "the child's right half lies over the red of the parent";
}

TEST_F(GdiImages, ACaptureThatFailsSaysWhy) {
    TwoColours window;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, CRect(0, 0, 60, 30), nullptr, 0));
    const struct {
        HWND window;
        const char* path;
        const char* part;
    } cases[] = {{nullptr, "x.png", "no client area"}, {window, "no-such-folder\\x.png", "cannot be opened"}};
    for (const auto& row : cases) {
        CString error;
        EXPECT_FALSE(quorSaveClientAreaPng(row.window, row.path, &error));
        EXPECT_NE(error.Find(row.part), -1) << error.GetString();
    }
}

}  // namespace

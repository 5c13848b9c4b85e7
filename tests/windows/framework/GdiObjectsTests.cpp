// GDI objects, device contexts and their scopes, on memory bitmaps and on a real window.
#include <gtest/gtest.h>

#include <string>

#include "platform/Framework.h"
#include "support/HandleCounts.h"
#include "support/WindowFixture.h"

namespace {

constexpr COLORREF white = RGB(255, 255, 255);
constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF blue = RGB(0, 0, 255);

// A white sheet of 40 by 20 pixels.
class Sheet {
public:
    Sheet() {
        CClientDC screen(nullptr);
        dc.CreateCompatibleDC(&screen);
        m_bitmap.CreateCompatibleBitmap(&screen, 40, 20);
        m_old = ::SelectObject(dc, m_bitmap);
        dc.FillSolidRect(0, 0, 40, 20, white);
    }
    ~Sheet() { ::SelectObject(dc, m_old); }
    CDC dc;

private:
    CBitmap m_bitmap;
    HGDIOBJ m_old;
};

class GdiObjects : public test::WindowFixture {};

TEST_F(GdiObjects, NestedSelectScopesPutBackWhatWasThere) {
    Sheet sheet;
    const CPen* const first = sheet.dc.GetCurrentPen();
    CPen outer(PS_SOLID, 1, red);
    CPen inner(PS_SOLID, 3, blue);
    {
        const SelectScope outerScope(sheet.dc, outer);
        {
            const SelectScope innerScope(&sheet.dc, &inner);
            EXPECT_EQ(sheet.dc.GetCurrentPen(), &inner);
        }
        EXPECT_EQ(sheet.dc.GetCurrentPen(), &outer);
        const SelectScope nothing(&sheet.dc, nullptr);
    }
    EXPECT_EQ(sheet.dc.GetCurrentPen(), first);
    EXPECT_TRUE(outer.DeleteObject()) << "still selected somewhere";
}

TEST_F(GdiObjects, AStateScopePutsBackColoursModesOriginAndClip) {
    Sheet sheet;
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(90, "Arial"));
    const COLORREF color = sheet.dc.GetTextColor();
    const int mode = sheet.dc.GetBkMode();
    {
        const DcStateScope state(sheet.dc);
        sheet.dc.SetTextColor(red);
        sheet.dc.SetBkMode(TRANSPARENT);
        sheet.dc.SetViewportOrg(5, 5);
        sheet.dc.IntersectClipRect(0, 0, 2, 2);
        sheet.dc.SelectObject(&font);
        EXPECT_FALSE(sheet.dc.RectVisible(CRect(10, 10, 20, 15)));
    }
    CRect clip;
    sheet.dc.GetClipBox(&clip);
    EXPECT_EQ(sheet.dc.GetTextColor(), color);
    EXPECT_EQ(sheet.dc.GetBkMode(), mode);
    EXPECT_EQ(sheet.dc.GetViewportOrg(), CPoint(0, 0));
    EXPECT_EQ(clip, CRect(0, 0, 40, 20));
    EXPECT_NE(sheet.dc.GetCurrentFont(), &font);
}

TEST_F(GdiObjects, SelectingReturnsTheFormerObject) {
    Sheet sheet;
    CBrush mine(red);
    CBrush other(blue);
    CBrush* const former = sheet.dc.SelectObject(&mine);
    EXPECT_EQ(sheet.dc.SelectObject(&other), &mine);
    EXPECT_EQ(sheet.dc.SelectObject(former), &other);
    EXPECT_EQ(sheet.dc.SelectStockObject(NULL_BRUSH)->m_hObject, former->m_hObject);
}

TEST_F(GdiObjects, AHandleLeadsToItsOwnerElseToATemporaryThatOwnsNothing) {
    CPen owned(PS_DOT, 1, red);
    EXPECT_EQ(CPen::FromHandle(owned), &owned);
    EXPECT_EQ(CGdiObject::FromHandle(owned), &owned);
    EXPECT_EQ(CPen::FromHandle(nullptr), nullptr);

    const HBRUSH bare = ::CreateSolidBrush(blue);
    CBrush* const temporary = CBrush::FromHandle(bare);
    EXPECT_EQ(CBrush::FromHandle(bare), temporary);
    quorFreeTemporaryGdiObjects();
    EXPECT_EQ(::GetObjectType(bare), static_cast<DWORD>(OBJ_BRUSH)) << "the temporary object deleted it";
    CBrush::FromHandle(bare)->DeleteObject();
    EXPECT_EQ(::GetObjectType(bare), 0u);
    EXPECT_EQ(CBrush::FromHandle(bare)->m_hObject, bare) << "a reused handle must not meet a detached object";
}

TEST_F(GdiObjects, DetachGivesTheHandleAway) {
    HGDIOBJ handle = nullptr;
    {
        CFont font;
        ASSERT_TRUE(font.CreatePointFont(100, "Arial"));
        handle = font.Detach();
        EXPECT_FALSE(font.DeleteObject());
        EXPECT_NE(CFont::FromHandle(static_cast<HFONT>(handle)), &font);
    }
    CFont next;
    EXPECT_TRUE(next.Attach(handle));
    LOGFONT record{};
    EXPECT_NE(next.GetLogFont(&record), 0);
    EXPECT_STREQ(record.lfFaceName, "Arial");
    EXPECT_TRUE(next.DeleteObject());
    EXPECT_EQ(::GetObjectType(handle), 0u);
}

TEST_F(GdiObjects, ConstructorsThrowWhenTheSystemRefuses) {
    CBitmap absent;
    try {
        CBrush brush(&absent);
        FAIL() << "no exception";
    } catch (CResourceException* e) {
        e->Delete();
    }
}

TEST_F(GdiObjects, PointSizesFollowTheDevice) {
    Sheet sheet;
    for (const int size : {80, 120, 240}) {
        CFont font;
        LOGFONT record{};
        ASSERT_TRUE(font.CreatePointFont(size, "Arial", &sheet.dc));
        font.GetLogFont(&record);
        EXPECT_EQ(record.lfHeight, -::MulDiv(sheet.dc.GetDeviceCaps(LOGPIXELSY), size, 720)) << size;
        EXPECT_EQ(record.lfCharSet, DEFAULT_CHARSET);
    }
}

TEST_F(GdiObjects, FillsAndFramesTouchExactlyTheirPixels) {
    Sheet sheet;
    sheet.dc.FillSolidRect(CRect(2, 2, 6, 6), red);
    sheet.dc.Draw3dRect(CRect(10, 2, 20, 10), red, blue);
    CBrush brush(blue);
    sheet.dc.FillRect(CRect(24, 2, 28, 6), &brush);
    const struct {
        int x, y;
        COLORREF color;
    } pixels[] = {{2, 2, red},    {5, 5, red},   {6, 6, white}, {1, 2, white}, {10, 2, red},
                  {18, 2, red},   {19, 2, blue}, {10, 8, red},  {10, 9, blue}, {19, 9, blue},
                  {15, 5, white}, {24, 2, blue}, {27, 5, blue}, {28, 5, white}};
    for (const auto& pixel : pixels)
        EXPECT_EQ(sheet.dc.GetPixel(pixel.x, pixel.y), pixel.color) << pixel.x << ',' << pixel.y;
}

TEST_F(GdiObjects, AGradientRunsFromOneColourToTheOther) {
    Sheet sheet;
    TRIVERTEX corners[2] = {{0, 0, 0xFF00, 0, 0, 0}, {40, 20, 0, 0, 0xFF00, 0}};
    GRADIENT_RECT rect = {0, 1};
    ASSERT_TRUE(sheet.dc.GradientFill(corners, 2, &rect, 1, GRADIENT_FILL_RECT_H));
    EXPECT_GT(GetRValue(sheet.dc.GetPixel(1, 10)), 240);
    EXPECT_GT(GetBValue(sheet.dc.GetPixel(38, 10)), 235);
    EXPECT_LT(GetRValue(sheet.dc.GetPixel(38, 10)), 20);
}

TEST_F(GdiObjects, RegionsCombineAndClip) {
    Sheet sheet;
    CRgn left;
    CRgn both;
    ASSERT_TRUE(left.CreateRectRgn(0, 0, 10, 20));
    ASSERT_TRUE(both.CreateRectRgn(20, 0, 30, 20));
    EXPECT_EQ(both.CombineRgn(&both, &left, RGN_OR), COMPLEXREGION);
    EXPECT_TRUE(both.PtInRegion(5, 5));
    EXPECT_FALSE(both.PtInRegion(15, 5));
    sheet.dc.SelectClipRgn(&both);
    sheet.dc.FillSolidRect(0, 0, 40, 20, red);
    sheet.dc.SelectClipRgn(nullptr);
    EXPECT_EQ(sheet.dc.GetPixel(5, 5), red);
    EXPECT_EQ(sheet.dc.GetPixel(15, 5), white);
    EXPECT_EQ(sheet.dc.GetPixel(25, 5), red);
}

TEST_F(GdiObjects, ShortenedTextComesBackInTheCallersBufferOnly) {
    Sheet sheet;
    const UINT format = DT_NOPREFIX | DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING;
    char buffer[64] = "a text far too long for the sheet";
    CRect rect(0, 0, 40, 20);
    sheet.dc.DrawTextEx(buffer, -1, rect, format, nullptr);
    const std::string shortened = buffer;
    EXPECT_LT(shortened.size(), 20u);
    EXPECT_NE(shortened.find("..."), std::string::npos);

    const CString text = "a text far too long for the sheet";
    const CString shared = text;
    sheet.dc.DrawTextEx(shared, rect, format, nullptr);
    EXPECT_EQ(text, "a text far too long for the sheet");
    EXPECT_EQ(sheet.dc.GetTextExtent("abcabc", 3), sheet.dc.GetTextExtent(CString("abc")));
}

TEST_F(GdiObjects, WindowContextsAreReleased) {
    CWnd window;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE | WS_BORDER, CRect(0, 0, 50, 50),
                                nullptr, 0));
    HDC client = nullptr;
    HDC whole = nullptr;
    {
        CClientDC clientContext(&window);
        CWindowDC windowContext(&window);
        client = clientContext;
        whole = windowContext;
        EXPECT_EQ(clientContext.GetWindow(), &window);
        EXPECT_EQ(CDC::FromHandle(client), &clientContext);
    }
    EXPECT_EQ(::WindowFromDC(client), nullptr);
    EXPECT_EQ(::WindowFromDC(whole), nullptr);
}

// Every kind of object, selected and put back, through owners, temporaries and given-away handles.
TEST_F(GdiObjects, NothingLeaks) {
    const auto round = [] {
        Sheet sheet;
        CPen pen(PS_SOLID, 1, red);
        CBrush brush(blue);
        CFont font;
        font.CreatePointFont(80, "Arial");
        CRgn region;
        region.CreateEllipticRgn(0, 0, 9, 9);
        const DcStateScope state(sheet.dc);
        const SelectScope penScope(sheet.dc, pen);
        const SelectScope brushScope(sheet.dc, brush);
        const SelectScope fontScope(sheet.dc, font);
        sheet.dc.SelectClipRgn(&region);
        sheet.dc.Ellipse(CRect(0, 0, 9, 9));
        sheet.dc.DrawText("x", 1, CRect(0, 0, 9, 9), DT_LEFT);
        CImageList images;
        images.Create(16, 16, ILC_COLOR32 | ILC_MASK, 2, 2);
        CMenu menu;
        menu.CreatePopupMenu();
        menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(::CreatePopupMenu()), "sub");
        ::DeleteObject(CFont::FromHandle(::CreateFontA(8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"))->Detach());
    };
    round();
    quorFreeTemporaryGdiObjects();
    const test::HandleCounts before = test::countHandles();
    for (int i = 0; i < 50; ++i) round();
    quorFreeTemporaryGdiObjects();
    EXPECT_EQ(test::countHandles(), before);
    CPen counted(PS_SOLID, 1, red);
    EXPECT_EQ(test::countHandles().gdi, before.gdi + 1) << "the counter does not count";
}

}  // namespace

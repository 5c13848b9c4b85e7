// Controls of the system and its dialogs, where the wrapper does more than to pass a call on; the controls that lists
// and grids stand on are tested with them.
#include "support/Input.h"
#include "support/WindowFixture.h"

namespace {

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;

using Controls = test::WindowFixture;

TEST_F(Controls, TextsOfAnyLengthComeBackWhole) {
    CListCtrl list;
    ASSERT_TRUE(list.Create(kChild | LVS_REPORT, CRect(0, 0, 400, 300), &frame(), 7));
    list.InsertColumn(0, "column", LVCFMT_LEFT, 60);
    list.InsertItem(0, "");
    for (const int length : {0, 1, 126, 127, 128, 129, 255, 256, 259, 5000}) {
        const CString text('x', length);
        list.SetItemText(0, 0, text);
        EXPECT_EQ(list.GetItemText(0, 0), text) << length;
    }
}

// Where the system puts back black under the picture that is dragged, the whole window is painted again. A display that
// shows nothing at all counts as such a one.
TEST_F(Controls, ADraggedHeadingLeavesTheScreenAsTheWindowsAre) {
    CListCtrl list;
    ASSERT_TRUE(list.Create(kChild | LVS_REPORT, CRect(20, 40, 420, 240), &frame(), 7));
    list.SetExtendedStyle(LVS_EX_HEADERDRAGDROP);
    for (int column = 0; column < 3; ++column) list.InsertColumn(column, "column", LVCFMT_LEFT, 60);
    pumpUntilIdle();
    int painted = 0;
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        painted += message == WM_NCPAINT;
        return false;
    };
    const auto screenIsRight = [&] {
        CWindowDC screen(nullptr), window(&frame());
        CRect place;
        frame().GetWindowRect(place);
        return screen.GetPixel(place.left + 5, place.top + 5) == window.GetPixel(5, 5);
    };
    const HWND header = list.GetHeaderCtrl()->m_hWnd;
    test::sendClick(header, {150, 5});
    pumpUntilIdle();
    EXPECT_EQ(painted, 0);
    test::sendDrag(header, {20, 5}, {230, 5});
    pumpUntilIdle();
    ASSERT_EQ(list.GetHeaderCtrl()->OrderToIndex(0), 1);
    EXPECT_TRUE(painted > 0 || screenIsRight());
    list.DestroyWindow();
}

// ---- Dialogs of the system

// Presses a button of the dialog of this thread as soon as there is one.
class DialogAnswer {
public:
    explicit DialogAnswer(int button) {
        s_button = button;
        m_timer = ::SetTimer(nullptr, 0, 20, &DialogAnswer::tick);
    }
    ~DialogAnswer() { ::KillTimer(nullptr, m_timer); }

private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &DialogAnswer::answer, 0);
    }
    static BOOL CALLBACK answer(HWND window, LPARAM) {
        char name[16] = "";
        ::GetClassNameA(window, name, sizeof(name));
        if (::lstrcmpA(name, "#32770") != 0 || !::IsWindowVisible(window)) return TRUE;
        ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(s_button), 0);
        return FALSE;
    }
    static inline int s_button = 0;
    UINT_PTR m_timer;
};

TEST_F(Controls, AColourIsKeptOrCancelled) {
    for (const int button : {IDOK, IDCANCEL}) {
        CColorDialog dialog(RGB(10, 20, 30), 0, &frame());
        const DialogAnswer answer(button);
        EXPECT_EQ(dialog.DoModal(), button);
        EXPECT_EQ(dialog.GetColor(), RGB(10, 20, 30));
        EXPECT_TRUE(frame().IsWindowEnabled());
    }
}

// The dialog offers installed faces only: any scalable one will do.
int CALLBACK takeScalable(const LOGFONTA* font, const TEXTMETRICA*, DWORD kind, LPARAM face) {
    if (!(kind & TRUETYPE_FONTTYPE) || font->lfFaceName[0] == '@') return 1;
    *reinterpret_cast<CString*>(face) = font->lfFaceName;
    return 0;
}

TEST_F(Controls, AFontComesBackFromItsDialog) {
    LOGFONT font{};
    CString face;
    font.lfCharSet = DEFAULT_CHARSET;
    ::EnumFontFamiliesExA(CClientDC(nullptr), &font, &takeScalable, reinterpret_cast<LPARAM>(&face), 0);
    font.lfHeight = -16;
    ::lstrcpyA(font.lfFaceName, face);
    CFontDialog dialog(&font, CF_SCREENFONTS | CF_EFFECTS, nullptr, &frame());
    const DialogAnswer ok(IDOK);
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetFaceName(), face);
    LOGFONT back{};
    dialog.GetCurrentFont(&back);
    EXPECT_EQ(back.lfHeight, -16);
    EXPECT_EQ(dialog.GetSize(), ::MulDiv(160, 72, ::GetDeviceCaps(CClientDC(nullptr), LOGPIXELSY)));
}

}  // namespace

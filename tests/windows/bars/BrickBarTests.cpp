// Brick bars on real windows: what they show, what their menu changes, what survives them.
#include "quor/bars/ZTBrickBar.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/FakeHost.h"
#include "support/HandleCounts.h"
#include "support/ModalAnswer.h"
#include "support/WindowFixture.h"

#include <algorithm>
#include <optional>

namespace {

constexpr int kWidth = 606;
constexpr COLORREF kRed = RGB(200, 10, 20);

int scaled(int length) { return quor::platform::scaled(nullptr, length); }

class BrickBars : public test::WindowFixture {
protected:
    BrickBars() { resetFakeHost(); }
    void TearDown() override {
        bar.reset();
        WindowFixture::TearDown();
    }
    int create(int panes, std::initializer_list<const char*> captions, const char* name = "", int resizable = 1) {
        if (!bar) bar.emplace();
        bar->m_strBarName = name;
        CArray<CString> texts;
        for (const char* caption : captions) texts.Add(caption);
        CRect place(0, 0, kWidth, scaled(24));
        const int created = bar->CreateBrickBars(&frame(), panes, texts, place, resizable);
        pumpUntilIdle();
        return created;
    }
    // Anew, as after a restart.
    void createAgain(const char* name) {
        bar.reset();
        ASSERT_EQ(create(3, {"A", "B", "C"}, name), 1);
    }
    CHolderView& brick(int number) { return *static_cast<CHolderView*>(bar->GetSplitterWnd()->GetPane(0, number)); }
    std::vector<int> widths() { return bar->GetSplitterWnd()->GetColumnShares(); }
    std::string titles() {
        std::string told;
        CString text;
        for (int number = 0; number < bar->GetPaneCount(); ++number) {
            bar->GetTextWithCaption(number, text);
            told += text + "|";
        }
        return told;
    }
    // Height, weight and face.
    std::string font(int number) {
        LOGFONT font{};
        brick(number).GetTitleFont()->GetLogFont(&font);
        return std::to_string(font.lfHeight) + " " + std::to_string(font.lfWeight) + " " + font.lfFaceName;
    }
    std::string fonts() { return font(0) + ", " + font(1) + ", " + font(2); }
    std::vector<DWORD> colours() {
        std::vector<DWORD> told;
        for (int number = 0; number < 3; ++number) told.push_back(brick(number).GetTitleColor());
        return told;
    }
    static CFont* newFont(int height, const char* face) {
        auto* font = new CFont;
        font->CreateFont(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, FF_SWISS, face);
        return font;
    }
    void command(int number, UINT id) {
        brick(number).SendMessage(WM_COMMAND, id);
        pumpUntilIdle();
    }
    static int writes() { return static_cast<int>(fakeHost().calls.count("UserSetting 1 BRICK_BAR_ticks PANE_0")); }
    // A cell's stored text, "|" for its delimiter.
    static std::string stored(int number) {
        std::string text = fakeHost().settings[key(number)];
        std::replace(text.begin(), text.end(), '\xA7', '|');
        return text;
    }
    static void store(int number, std::string text) {
        std::replace(text.begin(), text.end(), '|', '\xA7');
        fakeHost().settings[key(number)] = text;
    }
    static FakeHost::Key key(int number) { return {"BRICK_BAR_ticks", "PANE_" + std::to_string(number)}; }

    std::optional<CZTBrickBar> bar;
};

using Colours = std::vector<DWORD>;

TEST_F(BrickBars, NeedAPaneForEachCaption) {
    EXPECT_EQ(create(0, {"A"}), 0);
    EXPECT_EQ(create(2, {}), 0);
    EXPECT_EQ(create(2, {"A", "B", "C"}), 0);
    EXPECT_EQ(bar->m_hWnd, nullptr);
    EXPECT_EQ(bar->GetPaneCount(), 0);
    EXPECT_EQ(create(3, {"A", "B"}), 1);
    EXPECT_EQ(titles(), "A : |B : | : |");
    EXPECT_EQ(create(3, {"A"}), 0) << "there is one already";
    const int each = kWidth / 3;
    EXPECT_EQ(widths(), (std::vector<int>{each, each, kWidth - 2 * scaled(3) - 2 * each}));
    EXPECT_EQ(font(2), std::to_string(scaled(18)) + " 400 Trebuchet MS");
    CRect client, splitter;
    bar->GetClientRect(client);
    bar->GetSplitterWnd()->GetClientRect(splitter);
    EXPECT_EQ(client, splitter);
    EXPECT_EQ(client.Width(), kWidth) << "a borderless frame";
}

TEST_F(BrickBars, TextsKeepTheirCaption) {
    ASSERT_EQ(create(2, {"LTP", "Vol"}), 1);
    EXPECT_EQ(bar->SetText(0, "10"), 1);
    CString text = "former", caption;
    EXPECT_TRUE(bar->GetText(0, text) == 1 && text == "LTP10") << text;
    EXPECT_EQ(bar->SetCaption(0, "Last", kRed), 1);
    EXPECT_TRUE(bar->GetCaption(0, caption) == 1 && caption == "Last");
    EXPECT_EQ(titles(), "Last : 10|Vol : |");
    EXPECT_EQ(brick(0).GetTitleColor(), 0u) << "the colour is not used";
    EXPECT_EQ(bar->SetCaptionSeperator("="), 1);
    EXPECT_EQ(titles(), "Last : 10|Vol : |") << "titles that stand keep theirs";
    bar->SetText(0, "11");
    bar->m_bGroupDigits = 1;
    bar->SetText(1, "-1234567.891");
    EXPECT_EQ(titles(), "Last=11|Vol=-1,234,567.891|");
    for (const int unknown : {-1, 2, 3}) {
        EXPECT_EQ(bar->SetText(unknown, "x") + bar->SetCaption(unknown, "x", 0) + bar->SetTextColor(unknown, 0), 0);
        EXPECT_EQ(bar->SetFont(unknown, nullptr), 0);
        EXPECT_TRUE(bar->GetText(unknown, text) == 0 && text.IsEmpty());
        EXPECT_TRUE(bar->GetTextWithCaption(unknown, text) == 0 && bar->GetCaption(unknown, caption) == 0);
    }
    EXPECT_EQ(bar->SetFont(0, nullptr), 0);
    brick(0).DestroyWindow();
    EXPECT_EQ(bar->SetText(0, "x") + bar->GetText(0, text), 0) << "there is no view any more";
    EXPECT_EQ(bar->SetText(1, "12"), 1);
    bar->DestroyWindow();
    EXPECT_EQ(bar->SetText(1, "x"), 0);
}

TEST_F(BrickBars, SurviveARestart) {
    const std::function<void()> ends[] = {
        [&] { bar->DestroyWindow(); },
        [&] { ::DestroyWindow(bar->m_hWnd); },  // as with its parent
        [&] { bar.reset(); },
    };
    for (const auto& end : ends) {
        resetFakeHost();
        createAgain("ticks");
        bar->GetSplitterWnd()->SetColumnInfo(0, 150, 0);
        bar->GetSplitterWnd()->SetColumnInfo(1, 0, 0);
        bar->GetSplitterWnd()->RecalcLayout();
        bar->SetTextColor(1, kRed);
        bar->SetFont(2, newFont(-21, "Arial"));
        const auto [widthsBefore, coloursBefore, fontsBefore] = std::tuple(widths(), colours(), fonts());
        bar->SendMessage(WM_ENDSESSION, FALSE);
        EXPECT_EQ(writes(), 0);
        end();
        EXPECT_EQ(writes(), 1);
        EXPECT_EQ(stored(2).substr(stored(2).find('|')), "|0|-21,0,0,0,400,0,0,0,0,0,0,0,32,Arial");
        createAgain("ticks");
        EXPECT_EQ(widths(), widthsBefore);
        EXPECT_EQ(colours(), coloursBefore);
        EXPECT_EQ(fonts(), fontsBefore);
        bar->SetText(1, "5");
        EXPECT_EQ(brick(1).GetTitleColor(), kRed) << "a tick keeps the colour";
        bar->m_bSaveOnDestroy = 0;
    }
    bar->DestroyWindow();
    EXPECT_EQ(writes(), 1) << "switched off";
    createAgain("ticks");
    bar->SendMessage(WM_ENDSESSION, TRUE);
    EXPECT_EQ(writes(), 2);
}

TEST_F(BrickBars, ReadingStopsWhereAStoredTextEnds) {
    const struct {
        const char* second;  // what is stored for the cell
        int read;
        Colours colours;
    } cases[] = {
        {"Settings not found", 1, {1, 0, 3}},
        {"50|7", 0, {1, 7, 0}},
        {"50|7|", 1, {1, 7, 3}},
    };
    for (const auto& c : cases) {
        resetFakeHost();
        store(0, "60|1|");
        store(1, c.second);
        store(2, "70|3|");
        createAgain("ticks");
        EXPECT_EQ(colours(), c.colours) << c.second;
        EXPECT_EQ(widths()[0], 60) << c.second;
        EXPECT_EQ(bar->ReadFromINI(), c.read) << c.second;
        bar->m_bSaveOnDestroy = 0;
    }
    bar->m_strBarName = "";
    EXPECT_EQ(bar->ReadFromINI() + bar->WriteToINI(), 0);
}

TEST_F(BrickBars, ARefusedWriteIsToldForEachCell) {
    createAgain("ticks");
    fakeHost().refuseWrites = true;
    test::MessageBoxAnswerer answerer;
    EXPECT_EQ(bar->WriteToINI(), 1);
    EXPECT_EQ(answerer.texts(), std::vector<std::string>(3, "Error while saving brick bar information"));
    bar->m_bSaveOnDestroy = 0;
}

// ---- The menu

TEST_F(BrickBars, TheMenuChangesOneBrickOrAll) {
    createAgain("");
    const auto choose = [&](UINT id) {
        const test::ModalAnswer answer(frame(), [](HWND dialog) { test::chooseColor(dialog, kRed); });
        command(1, id);
    };
    choose(kCommandBrickColor);
    EXPECT_EQ(colours(), (Colours{0, kRed, 0}));
    bar->SetText(1, "5");
    EXPECT_EQ(colours(), (Colours{0, kRed, 0})) << "the record has it too";
    choose(kCommandAllBrickColors);
    EXPECT_EQ(colours(), (Colours{kRed, kRed, kRed}));

    bar->SetFont(1, newFont(-21, "Tahoma"));
    const std::string fresh = font(0), chosen = font(1);
    const auto accept = [&](UINT id) {
        const test::ModalAnswer answer(frame(), [](HWND dialog) { ::PostMessageA(dialog, WM_COMMAND, IDOK, 0); });
        command(1, id);
    };
    accept(kCommandBrickFont);
    EXPECT_EQ(font(0), fresh);
    accept(kCommandAllBrickFonts);
    EXPECT_EQ(fonts(), font(1) + ", " + font(1) + ", " + font(1));
    EXPECT_NE(font(0), fresh);

    command(2, kCommandDefaultBricks);
    const std::string standard = std::to_string(scaled(13)) + " 600 Trebuchet MS";
    EXPECT_EQ(fonts(), standard + ", " + standard + ", " + standard);
    EXPECT_EQ(colours(), (Colours{0, 0, 0}));
    bar->SetText(1, "6");
    EXPECT_EQ(colours(), (Colours{0, 0, 0}));

    bar->GetSplitterWnd()->SetColumnInfo(0, 17, 0);
    bar->FitToWindow();
    const int each = kWidth / 3;
    EXPECT_EQ(widths(), (std::vector<int>{each, each, kWidth - 2 * scaled(3) - 2 * each}));
}

// Once a menu is open, chooses its fifth item by keys.
void CALLBACK chooseFit(HWND, UINT, UINT_PTR timer, DWORD) {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    ::GetGUIThreadInfo(::GetCurrentThreadId(), &thread);
    if (!(thread.flags & GUI_INMENUMODE)) return;
    ::KillTimer(nullptr, timer);
    for (int down = 0; down < 5; ++down) ::PostMessageA(thread.hwndMenuOwner, WM_KEYDOWN, VK_DOWN, 0);
    ::PostMessageA(thread.hwndMenuOwner, WM_KEYDOWN, VK_RETURN, 0);
}

TEST_F(BrickBars, KeysReachEachBrickAndItsMenu) {
    createAgain("");
    frame().SetFocus();
    bar->SetFocus();
    EXPECT_EQ(::GetFocus(), brick(0).m_hWnd);
    for (const auto& [key, number] : {std::pair{VK_RIGHT, 1}, {VK_RIGHT, 2}, {VK_LEFT, 1}}) {
        quor::sendKeys({static_cast<WORD>(key)});
        pumpUntilIdle();
        EXPECT_EQ(::GetFocus(), brick(number).m_hWnd);
    }
    bar->GetSplitterWnd()->SetColumnInfo(0, 17, 0);
    bar->GetSplitterWnd()->RecalcLayout();
    ::SetTimer(nullptr, 0, 10, &chooseFit);
    quor::sendKeys({VK_SHIFT, VK_F10});
    EXPECT_TRUE(pumpFor([&] { return widths()[0] == kWidth / 3; }));
}

TEST_F(BrickBars, MayGoWhileADialogOfTheirsIsOpen) {
    for (const UINT id : {kCommandBrickColor, kCommandAllBrickColors, kCommandBrickFont, kCommandAllBrickFonts}) {
        createAgain("ticks");
        const test::ModalAnswer answer(frame(), [&](HWND dialog) {
            bar.reset();
            ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
        });
        ::SendMessageA(brick(1), WM_COMMAND, id, 0);
        pumpUntilIdle();
        EXPECT_FALSE(bar.has_value());
    }
}

// A font that two cells have ends with the last of them.
TEST_F(BrickBars, HandlesReturnToTheirStart) {
    test::expectHandlesReturn(200, [&](int) {
        createAgain("ticks");
        CFont* const both = newFont(-15, "Arial");
        bar->SetFont(0, both);
        bar->SetFont(1, both);
        bar->SetFont(0, newFont(-16, "Arial"));
        EXPECT_EQ(font(1).substr(0, 3), "-15");
        brick(2).SetTitleFont(newFont(-17, "Arial"));
        bar->UpdateUIData();
        frame().RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        brick(1).SendMessage(WM_COMMAND, kCommandDefaultBricks);
        bar.reset();
    });
}

// ---- What shows

// As a picture has it.
std::uint32_t opaque(COLORREF color) {
    return 0xFF000000u | static_cast<std::uint32_t>(GetRValue(color)) << 16 |
           static_cast<std::uint32_t>(GetGValue(color)) << 8 | GetBValue(color);
}

// Pixels of the title's colour as they stand on the screen.
int ink(CWnd& brick, COLORREF color) {
    WindowPicture picture;
    if (!quorCaptureClientArea(brick, picture)) return -1;
    return static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), opaque(color)));
}

TEST_F(BrickBars, EachTickShowsWithTheNextPaint) {
    createAgain("");
    bar->SetTextColor(0, kRed);
    pumpUntilIdle();
    const int caption = ink(brick(0), kRed);
    EXPECT_GT(caption, 0);
    bar->SetText(0, "88888");
    EXPECT_TRUE(brick(0).GetUpdateRect(nullptr));
    bar->SetText(0, "8888888");
    pumpUntilIdle();
    const int value = ink(brick(0), kRed);
    EXPECT_GT(value, caption);
    // Hidden, no paint comes; shown again, everything does.
    bar->ShowWindow(SW_HIDE);
    bar->SetText(0, "");
    bar->SetText(0, "1");
    bar->ShowWindow(SW_SHOW);
    pumpUntilIdle();
    const int one = ink(brick(0), kRed);
    EXPECT_LT(one, value);
    bar->SetText(0, "8888888");
    pumpUntilIdle();
    EXPECT_EQ(ink(brick(0), kRed), value);
}

TEST_F(BrickBars, AValueStandsAtTheRightWhenTold) {
    bar.emplace();
    bar->m_bRightAlignValues = 1;
    ASSERT_EQ(create(1, {"L"}), 1);
    bar->SetTextColor(0, kRed);
    bar->SetText(0, "8");
    pumpUntilIdle();
    WindowPicture picture;
    ASSERT_TRUE(quorCaptureClientArea(brick(0), picture));
    int rightmost = 0;
    for (int i = 0; i < static_cast<int>(picture.pixels.size()); ++i)
        if (picture.pixels[static_cast<std::size_t>(i)] == opaque(kRed))
            rightmost = std::max(rightmost, i % picture.width);
    EXPECT_GT(rightmost, picture.width - scaled(20));
}

TEST_F(BrickBars, AClippedBrickTellsItsWholeText) {
    createAgain("");
    TOOLINFO tool{};
    bar->SetText(0, "1");
    EXPECT_EQ(brick(0).OnToolHitTest({5, 5}, &tool), -1);
    const CString text = CString('8', 60) + " & 9";
    bar->SetText(0, text);
    EXPECT_NE(brick(0).OnToolHitTest({5, 5}, &tool), -1);
    EXPECT_EQ(tool.lpszText, LPSTR_TEXTCALLBACK);
    NMTTDISPINFOA asked{};
    asked.hdr.code = static_cast<UINT>(TTN_NEEDTEXTA);
    brick(0).SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    EXPECT_EQ(CString(asked.lpszText), "A : " + text);
    NMTTDISPINFOW wide{};
    wide.hdr.code = static_cast<UINT>(TTN_NEEDTEXTW);
    brick(0).SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&wide));
    EXPECT_EQ(std::wstring(wide.lpszText).size(), static_cast<std::size_t>(text.GetLength() + 4));
    EXPECT_GT(brick(0).GetFittingSize().cx, widths()[0]) << "a double click on its bar shows it all";
    quor::sendMouseMove(brick(0), {5, 5});
    EXPECT_TRUE(pumpFor([&] {
        const HWND tip = ::FindWindowA(TOOLTIPS_CLASSA, nullptr);
        return tip && ::IsWindowVisible(tip);
    }));
}

}  // namespace

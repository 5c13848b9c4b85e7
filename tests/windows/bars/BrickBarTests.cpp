// Brick bars on real windows: what they show, what their menu changes, what survives them.
#include "quor/bars/ZTBrickBar.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/FakeHost.h"
#include "support/HandleCounts.h"
#include "support/ModalAnswer.h"
#include "support/WindowFixture.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <stdexcept>

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
    int create(int panes, std::initializer_list<const char*> captions, const char* name = "") {
        if (!bar) bar.emplace();
        bar->m_strBarName = name;
        CArray<CString> texts;
        for (const char* caption : captions) texts.Add(caption);
        CRect place(0, 0, kWidth, scaled(24));
        const int created = bar->CreateBrickBars(&frame(), panes, texts, place, 1);
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
    static std::vector<int> equalWidths() {
        return {kWidth / 3, kWidth / 3, kWidth - 2 * scaled(3) - 2 * (kWidth / 3)};
    }
    void setWidth(int number, int width) {
        bar->GetSplitterWnd()->SetColumnInfo(number, width, 0);
        bar->GetSplitterWnd()->RecalcLayout();
    }
    std::string titles() {
        std::string told;
        CString text;
        for (int number = 0; bar->GetTextWithCaption(number, text); ++number) told += text + "|";
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
    // "|" for the delimiter.
    static void store(int number, std::string text) {
        std::replace(text.begin(), text.end(), '|', '\xA7');
        fakeHost().settings[{"BRICK_BAR_ticks", "PANE_" + std::to_string(number)}] = text;
    }

    std::optional<CZTBrickBar> bar;
};

using Colours = std::vector<DWORD>;

TEST_F(BrickBars, NeedAPaneForEachCaption) {
    EXPECT_EQ(create(0, {"A"}) + create(2, {}) + create(2, {"A", "B", "C"}), 0);
    EXPECT_EQ(bar->m_hWnd, nullptr);
    EXPECT_EQ(create(3, {"A", "B"}), 1);
    EXPECT_EQ(titles(), "A : |B : | : |");
    EXPECT_EQ(create(3, {"A"}), 0) << "there is one already";
    EXPECT_EQ(widths(), equalWidths()) << "a borderless frame";
    EXPECT_EQ(font(2), std::to_string(scaled(18)) + " 400 Trebuchet MS");
}

TEST_F(BrickBars, TextsKeepTheirCaption) {
    ASSERT_EQ(create(2, {"LTP", "Vol"}), 1);
    CString text = "former", caption;
    EXPECT_EQ(bar->SetText(0, "10") + bar->GetText(0, text), 2);
    EXPECT_EQ(text, "LTP10");
    EXPECT_EQ(bar->SetCaption(0, "Last", kRed) + bar->GetCaption(0, caption), 2);
    EXPECT_TRUE(caption == "Last" && brick(0).GetTitleColor() == 0u) << "the colour is not used";
    EXPECT_EQ(bar->SetCaptionSeperator("="), 1);
    EXPECT_EQ(titles(), "Last : 10|Vol : |") << "titles that stand keep theirs";
    bar->m_bGroupDigits = 1;
    bar->SetText(1, "-1234567.891");
    EXPECT_EQ(titles(), "Last : 10|Vol=-1,234,567.891|");
    for (const int unknown : {-1, 2, 3}) {
        EXPECT_EQ(bar->SetText(unknown, "x") + bar->SetCaption(unknown, "x", 0) + bar->SetTextColor(unknown, 0), 0);
        EXPECT_EQ(bar->SetFont(unknown, nullptr) + bar->GetCaption(unknown, caption), 0);
        EXPECT_TRUE(bar->GetText(unknown, text) == 0 && text.IsEmpty());
    }
    EXPECT_EQ(bar->SetFont(0, nullptr), 0);
    brick(0).DestroyWindow();
    EXPECT_EQ(bar->SetText(0, "x") + bar->GetText(0, text), 0) << "there is no view any more";
    EXPECT_EQ(bar->SetText(1, "12"), 1);
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
        setWidth(0, 150);
        setWidth(1, 0);
        bar->SetTextColor(1, kRed);
        bar->SetFont(2, newFont(-21, "Arial"));
        const auto before = std::tuple(widths(), colours(), fonts());
        bar->SendMessage(WM_ENDSESSION, FALSE);
        EXPECT_EQ(writes(), 0);
        end();
        EXPECT_EQ(writes(), 1);
        createAgain("ticks");
        EXPECT_EQ(std::tuple(widths(), colours(), fonts()), before);
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
    store(0, "60|1|");
    store(1, "50|7");
    store(2, "70|3|");
    createAgain("ticks");
    EXPECT_EQ(colours(), (Colours{1, 7, 0}));
    EXPECT_EQ(widths()[0], 60);
    EXPECT_EQ(bar->ReadFromINI(), 0);
    bar->m_strBarName = "";
    EXPECT_EQ(bar->ReadFromINI() + bar->WriteToINI(), 0);
}

// The host's store runs anything.
TEST_F(BrickBars, SurviveWhateverTheStoreDoes) {
    const std::function<void()> calls[] = {
        [&] {
            EXPECT_EQ(create(3, {"A", "B", "C"}, "ticks"), 0);
        },
        [&] { bar->WriteToINI(); },
        [&] { bar->DestroyWindow(); },
        [&] { bar->SendMessage(WM_ENDSESSION, TRUE); },
    };
    for (const auto& call : calls) {
        if (&call != calls) createAgain("ticks");
        fakeHost().onStore = [&](int) {
            bar.reset();
            return true;
        };
        call();
        fakeHost().onStore = nullptr;
        EXPECT_FALSE(bar.has_value()) << &call - calls;
    }
    createAgain("ticks");
    fakeHost().onStore = [](int) -> bool { throw std::runtime_error("full"); };
    EXPECT_THROW(bar->CWnd::DestroyWindow(), std::runtime_error);
    EXPECT_EQ(bar->SetText(0, "x"), 0) << "there is no view any more";
    fakeHost().onStore = nullptr;
    createAgain("ticks");
    fakeHost().onStore = [](int) -> bool { throw std::runtime_error("full"); };
    bar.reset();  // there is nobody to tell
    fakeHost().onStore = nullptr;
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
    bar->SetText(1, "5");
    EXPECT_EQ(colours(), (Colours{0, kRed, 0})) << "the record has it too";
    choose(kCommandAllBrickColors);
    EXPECT_EQ(colours(), (Colours{kRed, kRed, kRed}));

    bar->SetFont(1, newFont(-21, "Tahoma"));
    const std::string fresh = font(0);
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
    bar->SetText(1, "6");
    EXPECT_EQ(colours(), (Colours{0, 0, 0}));
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
    setWidth(0, 17);
    ::SetTimer(nullptr, 0, 10, &chooseFit);
    quor::sendKeys({VK_SHIFT, VK_F10});
    EXPECT_TRUE(pumpFor([&] { return widths() == equalWidths(); }));
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

// A brick as it stands on the screen: pixels of the title's colour, and those to the right of them all.
struct Shown : WindowPicture {
    int ink = 0, margin = 0;
    explicit Shown(CWnd& brick) {
        constexpr std::uint32_t kRedPixel = 0xFFC80A14;
        EXPECT_TRUE(quorCaptureClientArea(brick, *this));
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            if (pixels[i] != kRedPixel) continue;
            margin = std::min(ink++ ? margin : width, width - static_cast<int>(i) % width);
        }
    }
};

TEST_F(BrickBars, EachTickShowsWithTheNextPaint) {
    createAgain("");
    bar->SetTextColor(0, kRed);
    bar->SetText(0, "88888");
    EXPECT_TRUE(brick(0).GetUpdateRect(nullptr));
    bar->SetText(0, "8888888");
    pumpUntilIdle();
    const int value = Shown(brick(0)).ink;
    // Hidden, no paint comes; shown again, everything does.
    bar->ShowWindow(SW_HIDE);
    bar->SetText(0, "");
    bar->SetText(0, "1");
    bar->ShowWindow(SW_SHOW);
    pumpUntilIdle();
    const int one = Shown(brick(0)).ink;
    EXPECT_TRUE(0 < one && one < value) << one << " of " << value;
    bar->SetText(0, "8888888");
    pumpUntilIdle();
    EXPECT_EQ(Shown(brick(0)).ink, value);
}

TEST_F(BrickBars, AFittedBrickShowsAllWhereverItsValueStands) {
    std::vector<Shown> shown;  // at the left fitting and wide, at the right so
    for (const int right : {0, 1}) {
        bar.emplace();
        bar->m_bRightAlignValues = right;
        ASSERT_EQ(create(2, {"Last", "B"}), 1);
        bar->SetTextColor(0, kRed);
        bar->SetText(0, "8,765.25");
        const int fitting = brick(0).GetFittingSize().cx;
        for (const int more : {0, 50}) {
            setWidth(0, fitting + more);
            pumpUntilIdle();
            shown.emplace_back(brick(0));
        }
    }
    EXPECT_TRUE(shown[0].pixels == shown[2].pixels);
    EXPECT_EQ(shown[1].margin, shown[0].margin + 50);
    EXPECT_EQ(shown[3].margin, shown[2].margin);
}

TEST_F(BrickBars, AClippedBrickTellsItsWholeText) {
    createAgain("");
    TOOLINFO tool{};
    bar->SetText(0, "1");
    EXPECT_EQ(brick(0).OnToolHitTest({5, 5}, &tool), -1);
    const CString text = CString('8', 60) + " & 9";
    bar->SetText(0, text);
    EXPECT_NE(brick(0).OnToolHitTest({5, 5}, &tool), -1);
    NMTTDISPINFOA asked{};
    asked.hdr = {nullptr, tool.uId, static_cast<UINT>(TTN_NEEDTEXTA)};
    brick(0).SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    EXPECT_EQ(CString(asked.lpszText), "A : " + text);
    quor::sendMouseMove(brick(0), {5, 5});
    EXPECT_TRUE(pumpFor([&] {
        const HWND tip = ::FindWindowA(TOOLTIPS_CLASSA, nullptr);
        return tip && ::IsWindowVisible(tip);
    }));
}

}  // namespace

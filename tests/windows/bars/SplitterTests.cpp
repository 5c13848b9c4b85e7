// Splitters on real windows: bars by mouse and keys, panes that close, fit and keep their shares.
#include "quor/bars/HolderView.h"
#include "quor/platform/proving/UserInput.h"
#include "support/Canvas.h"
#include "support/FakeHost.h"
#include "support/HandleCounts.h"
#include "support/WindowFixture.h"

#include <functional>
#include <optional>
#include <stdexcept>

namespace {

constexpr UINT kSplitterId = 300;
constexpr int kWidth = 606, kHeight = 203;

// Its child, and what it says of its size.
class Fitting : public CWnd, public CFittingPane {
public:
    CSize fitting{0, 0};
    std::function<void()> onAsked;
    CSize GetFittingSize() override {
        if (onAsked) onAsked();
        return fitting;
    }
};

class Splitters : public test::WindowFixture {
protected:
    Splitters() { resetFakeHost(); }
    void TearDown() override {
        splitter.reset();
        WindowFixture::TearDown();
    }
    void make(int rows, int columns) {
        splitter.emplace();
        ASSERT_TRUE(splitter->CreateStatic(&frame(), rows, columns, WS_CHILD | WS_VISIBLE, kSplitterId));
        for (int row = 0; row < rows; ++row)
            for (int col = 0; col < columns; ++col)
                ASSERT_TRUE(splitter->CreateView(row, col, RUNTIME_CLASS(CHolderView), {100, 60}, nullptr));
        splitter->MoveWindow(0, 0, kWidth, kHeight);
        pumpUntilIdle();
    }
    CHolderView& view(int row, int col) { return *static_cast<CHolderView*>(splitter->GetPane(row, col)); }
    CRect placeOf(CWnd& window) {
        CRect place;
        window.GetWindowRect(place);
        splitter->ScreenToClient(place);
        return place;
    }
    // As the panes' windows stand.
    std::vector<int> widths() {
        std::vector<int> told;
        for (int col = 0; col < splitter->GetColumnCount(); ++col) told.push_back(placeOf(view(0, col)).Width());
        return told;
    }
    static void hold(CHolderView& holder, CWnd& child, DWORD style) {
        if (!child.m_hWnd) child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, 10), &holder, 1);
        holder.SetStyleZT(style);
        holder.setWnd(&child);
    }
    void tellSizes(CHolderView& holder) {
        holder.SetStyleZT(HV_PLAIN);
        holder.setNotifyWindow(&frame());
    }
    int bar() const { return quor::platform::scaled(nullptr, 3); }
    CPoint onBar(int number) { return CPoint(placeOf(view(0, number)).right + bar() / 2, 20); }
    void send(UINT message, CPoint point) { splitter->SendMessage(message, MK_LBUTTON, MAKELPARAM(point.x, point.y)); }
    void drag(int number, int by) {
        quor::sendDrag(*splitter, onBar(number), onBar(number) + CSize(by, 0));
        pumpUntilIdle();
    }
    void keys(std::initializer_list<WORD> sent) {
        for (const WORD key : sent) quor::sendKeys({key});
        pumpUntilIdle();
    }

    std::optional<CFlatSplitterWnd> splitter;
};

using Widths = std::vector<int>;

TEST_F(Splitters, TheMouseMovesABarBetweenItsNeighbours) {
    make(1, 3);
    const int rest = kWidth - 2 * bar() - 200;
    EXPECT_EQ(widths(), (Widths{100, 100, rest}));
    drag(0, 30);
    EXPECT_EQ(widths(), (Widths{130, 70, rest}));
    // While it moves, the panes follow; a lost capture gives back what was.
    send(WM_LBUTTONDOWN, onBar(0));
    send(WM_MOUSEMOVE, onBar(0) - CSize(50, 0));
    EXPECT_EQ(widths(), (Widths{80, 120, rest}));
    ::ReleaseCapture();
    EXPECT_EQ(widths(), (Widths{130, 70, rest}));
    splitter->SetResizable(0);
    drag(0, 30);
    EXPECT_EQ(widths(), (Widths{130, 70, rest}));
    EXPECT_FALSE(splitter->DoKeyboardSplit());
}

TEST_F(Splitters, KeysMoveABarAfterTheCommand) {
    make(1, 3);
    const int step = quor::platform::scaled(nullptr, 8), rest = kWidth - 2 * bar() - 200;
    view(0, 0).SetFocus();
    const auto begin = [&] { view(0, 0).SendMessage(WM_COMMAND, ID_WINDOW_SPLIT); };
    begin();
    ASSERT_EQ(::GetFocus(), splitter->m_hWnd);
    keys({VK_RIGHT, VK_RIGHT, VK_UP, VK_TAB, VK_LEFT});
    EXPECT_EQ(widths(), (Widths{100 + 2 * step, 100 - 3 * step, rest + step}));
    keys({VK_ESCAPE});
    EXPECT_EQ(widths(), (Widths{100, 100, rest})) << "both bars go back";
    EXPECT_EQ(::GetFocus(), view(0, 0).m_hWnd);
    begin();
    keys({VK_LEFT, VK_RETURN, VK_LEFT});
    EXPECT_EQ(widths(), (Widths{100 - step, 100 + step, rest}));
    begin();
    keys({VK_LEFT});
    view(0, 2).SetFocus();
    keys({VK_LEFT});
    EXPECT_EQ(widths(), (Widths{100 - 2 * step, 100 + 2 * step, rest})) << "whoever takes the focus ends it";
}

TEST_F(Splitters, PanesKeepTheirSharesWhenTold) {
    make(1, 3);
    splitter->SetColumnInfo(1, 200, 0);
    splitter->RecalcLayout();
    const int bars = 2 * bar();
    const auto resize = [&](int room) { splitter->MoveWindow(0, 0, room + bars, kHeight); };
    resize(600);
    EXPECT_EQ(widths(), (Widths{100, 200, 300}));
    resize(400);
    EXPECT_EQ(widths(), (Widths{100, 200, 100})) << "off, the last one gives";
    resize(600);
    splitter->SetKeepShares(1);
    for (int room = 299; room > 0; --room) resize(room);
    splitter->MoveWindow(0, 0, 0, 0);
    resize(601);
    resize(600);
    EXPECT_EQ(widths(), (Widths{100, 200, 300})) << "no run of sizes drifts";
    drag(0, -50);
    resize(1200);
    EXPECT_EQ(widths(), (Widths{100, 500, 600}));
    EXPECT_FALSE(splitter->SetColumnShares({1, 2}));
    EXPECT_TRUE(splitter->SetColumnShares({1, 0, 2}));
    resize(600);
    EXPECT_EQ(widths(), (Widths{200, 0, 400}));
    // A pane may throw while it gets its share.
    tellSizes(view(0, 0));
    frame().onMessage = [](UINT message, WPARAM, LPARAM, LRESULT&) {
        return message == WM_HOLDER_SIZED ? throw std::runtime_error("sized") : false;
    };
    EXPECT_THROW(splitter->SetColumnShares({3, 1, 2}), std::runtime_error);
    frame().onMessage = nullptr;
    splitter->SetColumnInfo(0, 150, 0);
    splitter->RecalcLayout();
    resize(1200);
    EXPECT_EQ(widths()[0], 300) << "the layout behind it counts";
    resize(600);
    splitter->SetKeepShares(0);
    splitter->SetColumnShares({1, 1, 1});
    drag(0, -50);
    resize(700);
    EXPECT_EQ(widths(), (Widths{150, 250, 300})) << "shares that are not kept count once";
}

// As a host does that brings back a layout.
TEST_F(Splitters, SharesMayBeToldBeforeTheWindowHasASize) {
    for (const int keep : {0, 1}) {
        splitter.emplace();
        splitter->CreateStatic(&frame(), 1, 2, WS_CHILD | WS_VISIBLE, kSplitterId);
        splitter->SetKeepShares(keep);
        splitter->SetColumnShares({1, 3});
        splitter->MoveWindow(0, 0, 400 + bar(), kHeight);
        EXPECT_EQ(splitter->GetColumnShares(), (Widths{100, 300}));
        splitter->MoveWindow(0, 0, 800 + bar(), kHeight);
        EXPECT_EQ(splitter->GetColumnShares(), keep ? (Widths{200, 600}) : (Widths{100, 700}));
        EXPECT_EQ(splitter->GetRowShares(), (Widths{kHeight}));
    }
}

TEST_F(Splitters, ADoubleClickFitsThePaneBeforeTheBar) {
    make(1, 3);
    Fitting child;
    hold(view(0, 1), child, HV_TITLE_CLOSE);
    const int rest = kWidth - 2 * bar() - 200;
    send(WM_LBUTTONDBLCLK, onBar(1));
    EXPECT_EQ(widths(), (Widths{100, 100, rest})) << "the pane does not know";
    child.fitting = CSize(170, 50);
    for (const int number : {1, 0}) {
        send(WM_LBUTTONDBLCLK, onBar(number));
        EXPECT_EQ(widths(), (Widths{100, 170, rest - 70})) << number;
    }
    EXPECT_EQ(view(0, 1).GetFittingSize(), CSize(170, 50 + view(0, 1).GetTopOffset()));
    child.onAsked = [&] { splitter.reset(); };
    send(WM_LBUTTONDBLCLK, onBar(1));
    EXPECT_FALSE(splitter.has_value()) << "or it ends the splitter";
}

TEST_F(Splitters, ACloseBoxClosesItsColumnOrRow) {
    constexpr int kWide = 1000;  // beyond the edges of its parent
    const struct {
        int rows, columns, row, col;
        Widths left;  // -1: the rest
    } cases[] = {{1, 3, 0, 0, {0, 100, -1}}, {1, 3, 0, 1, {100, 0, -1}}, {1, 3, 0, 2, {100, -1, 0}},
                 {3, 1, 0, 0, {0, 60, -1}},  {3, 1, 2, 0, {60, -1, 0}},  {1, 1, 0, 0, {-1}}};
    for (const auto& c : cases) {
        make(c.rows, c.columns);
        splitter->MoveWindow(0, 0, kWide, kHeight);
        CWnd child;
        hold(view(c.row, c.col), child, HV_TITLE_CLOSE);
        view(c.row, c.col).SetFocus();
        view(c.row, c.col).GetDlgItem(kCommandCloseHolder)->SendMessage(BM_CLICK);
        const int count = static_cast<int>(c.left.size());
        int rest = (c.rows > 1 ? kHeight : kWide) - (count - 1) * bar();
        for (const int size : c.left) rest -= std::max(size, 0);
        Widths expected;
        for (const int size : c.left) expected.push_back(size < 0 ? rest : size);
        EXPECT_EQ(c.rows > 1 ? splitter->GetRowShares() : splitter->GetColumnShares(), expected)
            << c.rows << "x" << c.columns << " " << c.row << "," << c.col;
        EXPECT_EQ(::IsChild(view(c.row, c.col), ::GetFocus()), count == 1)
            << "the focus does not stay in a closed pane";
        splitter->DestroyWindow();
    }
}

TEST_F(Splitters, AHolderPlacesItsChildAsItsStyleSays) {
    make(1, 1);
    CHolderView& holder = view(0, 0);
    CWnd child, notified;
    notified.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 10, 10), &frame(), 9);
    const int strip = quor::platform::scaled(nullptr, 17);
    int width = kWidth;
    const auto resize = [&] { splitter->MoveWindow(0, 0, ++width, kHeight); };
    const struct {
        DWORD style;
        int placed, resized, offset;
    } cases[] = {{0, strip, 0, 0},
                 {HV_TITLE, strip, 0, strip},
                 {HV_TITLE_CLOSE, strip, strip, strip},
                 {HV_TITLE_CLOSE | HV_GRADIENT, strip, strip, strip}};
    for (const auto& c : cases) {
        hold(holder, child, c.style);
        EXPECT_EQ(placeOf(child), CRect(0, c.placed, width, kHeight)) << c.style;
        resize();
        EXPECT_EQ(placeOf(child), CRect(0, c.resized, width, kHeight)) << c.style;
        EXPECT_EQ(holder.GetTopOffset(), c.offset) << c.style;
        EXPECT_EQ(holder.GetDlgItem(kCommandCloseHolder) != nullptr, (c.style & HV_TITLE_CLOSE) != 0) << c.style;
    }
    child.DestroyWindow();
    EXPECT_EQ(holder.GetCtrlWnd(), nullptr);
    resize();
    const int two = quor::platform::scaled(nullptr, 2);
    EXPECT_EQ(placeOf(*holder.GetDlgItem(kCommandCloseHolder)),
              CRect(width - quor::platform::scaled(nullptr, 15), -two, width + two, strip))
        << "without a child too";
    // A notify window that went is told nothing.
    holder.SetStyleZT(HV_PLAIN);
    holder.setNotifyWindow(&notified);
    notified.DestroyWindow();
    EXPECT_EQ(holder.GetNotifyWindow(), nullptr);
    resize();
    holder.SendMessage(WM_COMMAND, 77);
    EXPECT_EQ(holder.SendMessage(WM_XLISTCTRL_CHECKBOX_CLICKED), 1);
}

// What a holder hands on, as it was sent.
TEST_F(Splitters, AHolderForwardsWithTheSameArguments) {
    make(1, 1);
    std::vector<std::tuple<UINT, WPARAM, LPARAM>> seen;
    frame().onMessage = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) {
        const bool ours =
            (message >= WM_USER && message < WM_USER + 1200) || message == WM_COMMAND || message == WM_NOTIFY;
        if (ours) seen.emplace_back(message, wParam, lParam);
        answer = 5;
        return ours;
    };
    CHolderView& holder = view(0, 0);
    holder.setNotifyWindow(&frame());
    NMHDR told{frame(), 3, 4};
    const LPARAM notification = reinterpret_cast<LPARAM>(&told);
    holder.SendMessage(WM_USER + 100, 1, 2);
    holder.SendMessage(WM_USER + 200, 3, 4);
    holder.SendMessage(WM_USER + 201, 3, 4);
    holder.SendMessage(WM_COMMAND, 77, 0);
    EXPECT_EQ(holder.SendMessage(WM_NOTIFY, 3, notification), 5);
    NMTTDISPINFOA tip{};  // for a tool of somebody else
    tip.hdr = {frame(), 1, static_cast<UINT>(TTN_NEEDTEXTA)};
    EXPECT_EQ(holder.SendMessage(WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&tip)), 5);
    EXPECT_EQ(holder.SendMessage(WM_XLISTCTRL_CHECKBOX_CLICKED, 6, 7), 1);
    holder.SendMessage(WM_HOLDER_TITLE_COLOR, RGB(1, 2, 3));
    EXPECT_EQ(holder.GetTitleColor(), RGB(1, 2, 3));
    holder.SetStyleZT(HV_PLAIN);
    splitter->MoveWindow(0, 0, 50, 40);
    EXPECT_EQ(seen, (decltype(seen){{WM_USER + 100, 1, 2},
                                    {WM_USER + 200, 3, 4},
                                    {WM_COMMAND, 77, 0},
                                    {WM_NOTIFY, 3, notification},
                                    {WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&tip)},
                                    {WM_USER + 300, 6, 7},
                                    {WM_USER + 1115, 50, 40}}));
}

TEST_F(Splitters, AnybodyMayEndTheSplitterMeanwhile) {
    UINT ending = WM_HOLDER_SIZED;
    const std::function<void()> moves[] = {
        [&] { drag(0, 30); },
        [&] { quor::sendClick(*splitter, onBar(1)), pumpUntilIdle(), splitter->MoveWindow(0, 0, 90, 90); },
        [&] {
            splitter->DoKeyboardSplit(), keys({VK_TAB, VK_RIGHT});
        },
        [&] {
            splitter->SetColumnShares({1, 2, 3});
        },
        [&] { view(0, 1).SendMessage(WM_COMMAND, kCommandFitBricks); },
        [&] { view(0, 1).SendMessage(WM_COMMAND, kCommandCloseHolder); },
        [&] { ending = WM_KILLFOCUS, frame().SetFocus(), splitter->DoKeyboardSplit(); },
        [&] { ending = WM_CAPTURECHANGED, frame().SetCapture(), send(WM_LBUTTONDOWN, onBar(1)); },
    };
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == ending) splitter.reset();
        return false;
    };
    for (const auto& move : moves) {
        make(1, 3);
        tellSizes(view(0, 1));
        move();
        EXPECT_FALSE(splitter.has_value()) << &move - moves;
    }
}

TEST_F(Splitters, HandlesReturnToTheirStart) {
    test::expectHandlesReturn(200, [&](int round) {
        make(1, 2);
        CWnd child;
        hold(view(0, 0), child, HV_TITLE_CLOSE | (round % 2 ? HV_GRADIENT : 0));
        frame().RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        splitter.reset();
    });
}

}  // namespace

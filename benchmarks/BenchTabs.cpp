// A tab control that gets 500 tabs, one layout each, and is then scrolled to its end by clicks on its button, painted
// at the end. Every tab's place is then compared with the plain reading of the layout.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"
#include "core/bars/PlainTabs.h"
#include "quor/bars/CustomTabCtrl.h"

namespace {

constexpr int kTabs = 500;
constexpr int kRepeats = 5;
constexpr int kLength = 900, kHeight = 24;

CString tabText(int number) {
    CString text;
    text.Format("Workspace %d%s", number, number % 7 ? "" : " of many");
    return text;
}

LOGFONT tabFont() {
    LOGFONT font{};
    font.lfHeight = -11;
    ::lstrcpynA(font.lfFaceName, "Tahoma", LF_FACESIZE);
    return font;
}

test::PlainTabs plainTabs() {
    test::PlainTabs plain;
    plain.length = kLength;
    plain.height = kHeight;
    CFont font;
    const LOGFONT description = tabFont();
    font.CreateFontIndirect(&description);
    CClientDC dc(nullptr);
    const SelectScope selected(dc, font);
    for (int i = 0; i < kTabs; ++i) {
        CRect extent;
        dc.DrawText(tabText(i), extent, DT_CALCRECT | DT_SINGLELINE);
        plain.tabs.push_back({extent.Width(), 0});
    }
    return plain;
}

void comparePlaces(const CCustomTabCtrl& tabs, const test::PlainTabs& plain) {
    check(tabs.GetItemCount() == kTabs, "tabs are missing");
    for (int i = 0; i < kTabs; ++i) {
        CRect place;
        check(tabs.GetItemRect(i, place) && place == plain.place(i).shape, "a tab is not where it belongs");
    }
}

// Milliseconds.
double fillAndScroll(CWnd& frame, test::PlainTabs plain) {
    CCustomTabCtrl tabs;
    tabs.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, kLength, kHeight), &frame, 1);
    tabs.SetControlFont(tabFont());
    pumpMessages();
    double taken = -microseconds();
    for (int i = 0; i < kTabs; ++i) tabs.InsertItem(i, tabText(i));
    taken += microseconds();
    comparePlaces(tabs, plain);
    const LPARAM next = MAKELPARAM(plain.side() * 3 / 2, kHeight / 2);
    check(tabs.HitTest(CPoint(next)) == CTS_HIT_NEXT, "the button is not where it belongs");
    taken -= microseconds();
    for (int steps = kTabs; steps > 0; --steps) {
        tabs.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, next);
        tabs.SendMessage(WM_LBUTTONUP, 0, next);
    }
    tabs.UpdateWindow();
    taken += microseconds();
    for (int steps = kTabs; steps > 0; --steps) plain.scroll(CTS_HIT_NEXT);
    check(plain.first > kTabs - 20, "it was not scrolled to the end");
    comparePlaces(tabs, plain);
    return taken / 1000;
}

}  // namespace

void benchTabs(Figures& figures) {
    CWnd frame;
    frame.CreateEx(0, AfxRegisterWndClass(0, nullptr, ::GetSysColorBrush(COLOR_BTNFACE)), "tabs",
                   WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 1000, 200), nullptr, 0);
    const test::PlainTabs plain = plainTabs();
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) times.push_back(fillAndScroll(frame, plain));
    frame.DestroyWindow();
    figures.push_back({"tabs_500_ms", median(times), "ms", "500 tabs, then 500 clicks on the button", 400, 100});
}

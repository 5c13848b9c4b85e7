#include "host/gallery/Exhibits.h"
#include "quor/bars/CustomTabCtrl.h"
#include "quor/foundation/TimerIds.h"

namespace gallery {

namespace {

constexpr int kTabHeight = 24;
constexpr UINT kTabsId = 100;

const CSize kStripSize(320, kTabHeight), kHighStrip(320, 36), kVerticalStrip(kTabHeight, 190);

Exhibit tabStrip(const char* state, DWORD style, const std::function<void(CCustomTabCtrl&)>& change,
                 CSize size = kStripSize) {
    return {"CCustomTabCtrl", state, size, [=](Stage& stage) {
                auto& tabs = stage.add<CCustomTabCtrl>();
                tabs.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, stage.place(size), &stage.window, kTabsId);
                for (const char* text : {"Market", "Orders & trades", "Q", "Positions", "A longer name", "Log"})
                    tabs.InsertItem(tabs.GetItemCount(), text);
                tabs.SetCurSel(1);
                change(tabs);
            }};
}

void scrollOn(CCustomTabCtrl& tabs, int steps) {
    CPoint point;
    for (point.x = 0; tabs.HitTest(point) != CTS_HIT_NEXT; ++point.x) continue;
    for (int step = 0; step < steps; ++step) {
        tabs.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
        tabs.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
    }
}

// Tab 1 to the place of the first.
void drag(CCustomTabCtrl& tabs) {
    tabs.SetDragCursors(::LoadCursorA(nullptr, IDC_SIZEWE), nullptr);
    CRect from, to;
    tabs.GetItemRect(1, from);
    tabs.GetItemRect(0, to);
    const CPoint start = from.CenterPoint(), end = to.CenterPoint();
    tabs.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(start.x, start.y));
    tabs.SendMessage(WM_TIMER, kTabDragTimer);
    tabs.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(end.x, end.y));
}

}  // namespace

std::vector<Exhibit> tabExhibits() {
    const auto nothing = [](CCustomTabCtrl&) {};
    constexpr DWORD kAllButtons = CTS_FOURBUTTONS | CTS_CLOSEBUTTON | CTS_LISTBUTTON;
    return {
        tabStrip("normal", CTS_AUTOHIDEBUTTONS, nothing),
        tabStrip("all fit", CTS_AUTOHIDEBUTTONS | CTS_CLOSEBUTTON,
                 [](CCustomTabCtrl& tabs) {
                     for (int i = 0; i < 3; ++i) tabs.DeleteItem(3);
                 }),
        tabStrip("empty", 0, [](CCustomTabCtrl& tabs) { tabs.DeleteAllItems(); }),
        tabStrip("all buttons", kAllButtons, nothing),
        tabStrip("buttons after", kAllButtons | CTS_BUTTONSAFTER, nothing),
        tabStrip("scrolled", CTS_FOURBUTTONS, [](CCustomTabCtrl& tabs) { scrollOn(tabs, 3); }),
        tabStrip("chosen scrolled out", CTS_FOURBUTTONS, [](CCustomTabCtrl& tabs) { scrollOn(tabs, 2); }),
        tabStrip("fixed width", CTS_FIXEDWIDTH | CTS_BUTTONSAFTER, nothing),
        tabStrip("hanging", CTS_TOP | kAllButtons, [](CCustomTabCtrl& tabs) { scrollOn(tabs, 2); }),
        tabStrip("last chosen", CTS_BUTTONSAFTER | CTS_TOP, [](CCustomTabCtrl& tabs) { tabs.SetCurSel(5); }),
        tabStrip("highlighted", CTS_BUTTONSAFTER | CTS_MULTIHIGHLIGHT,
                 [](CCustomTabCtrl& tabs) {
                     tabs.HighlightItem(1);
                     tabs.HighlightItem(2);
                     tabs.HighlightItem(3);
                 }),
        tabStrip("focused", CTS_BUTTONSAFTER, [](CCustomTabCtrl& tabs) { tabs.SetFocus(); }),
        tabStrip("button pressed", CTS_FOURBUTTONS | CTS_CLOSEBUTTON,
                 [](CCustomTabCtrl& tabs) { tabs.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4)); }),
        tabStrip("dragged", CTS_DRAGMOVE | CTS_BUTTONSAFTER, drag),
        tabStrip("disabled", kAllButtons, [](CCustomTabCtrl& tabs) { tabs.EnableWindow(FALSE); }),
        tabStrip("higher", CTS_LISTBUTTON, nothing, kHighStrip),
        tabStrip("vertical", CTS_VERTICAL | kAllButtons, nothing, kVerticalStrip),
        tabStrip(
            "vertical hanging", CTS_VERTICAL | CTS_TOP | CTS_BUTTONSAFTER,
            [](CCustomTabCtrl& tabs) { tabs.SetFocus(); }, kVerticalStrip),
    };
}

}  // namespace gallery

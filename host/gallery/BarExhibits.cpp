// Brick bars, holders and splitters.
#include "host/gallery/Exhibits.h"
#include "quor/bars/ZTBrickBar.h"

namespace gallery {

namespace {

constexpr UINT kControlId = 100;
constexpr COLORREF kInk = RGB(120, 20, 20);
const CSize kBarSize(320, 24), kPanesSize(320, 120);

Exhibit brickBar(const char* state, const std::function<void(CZTBrickBar&)>& change, bool rightAligned = false) {
    return {"CZTBrickBar", state, kBarSize, [=](Stage& stage) {
                auto& bar = stage.add<CZTBrickBar>();
                bar.m_bRightAlignValues = rightAligned;
                CArray<CString> captions;
                for (const char* caption : {"Index", "Day", "Rate"}) captions.Add(caption);
                CRect place = stage.place(kBarSize);
                bar.CreateBrickBars(&stage.window, 3, captions, place, 1);
                const char* const texts[] = {"22,114.30", "+1,250", "4.1 k"};
                for (int brick = 0; brick < 3; ++brick) bar.SetText(brick, texts[brick]);
                change(bar);
            }};
}

CHolderView& brickOf(CZTBrickBar& bar, int number) {
    return *static_cast<CHolderView*>(bar.GetSplitterWnd()->GetPane(0, number));
}

void widen(CFlatSplitterWnd& splitter, int column, int width) {
    splitter.SetColumnInfo(column, quor::platform::scaled(splitter, width), 0);
    splitter.RecalcLayout();
}

struct HolderKind {
    const char* title;
    DWORD style;
};

// Panes of a kind in columns, each with a child where it has a title; the splitter is what is shown.
Exhibit holders(
    const char* control, const char* state, const std::vector<HolderKind>& kinds,
    const std::function<void(CFlatSplitterWnd&)>& change = [](CFlatSplitterWnd&) {}) {
    return {control, state, kPanesSize, [=](Stage& stage) {
                auto& splitter = stage.add<CFlatSplitterWnd>();
                const int count = static_cast<int>(kinds.size());
                splitter.CreateStatic(&stage.window, 1, count, WS_CHILD | WS_VISIBLE, kControlId);
                const CRect place = stage.place(kPanesSize);
                splitter.MoveWindow(place);
                for (int column = 0; column < count; ++column) {
                    splitter.CreateView(0, column, RUNTIME_CLASS(CHolderView), {place.Width() / count, 0}, nullptr);
                    auto& holder = *static_cast<CHolderView*>(splitter.GetPane(0, column));
                    const HolderKind& kind = kinds[static_cast<std::size_t>(column)];
                    holder.SetStyleZT(kind.style);
                    holder.SetTitle(kind.title, 0);
                    splitter.RecalcLayout();
                    if (!(kind.style & HV_TITLE_CLOSE)) continue;
                    auto& child = stage.add<CEdit>();
                    child.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE, CRect(0, 0, 10, 10), &holder, kControlId);
                    child.SetWindowText("held");
                    holder.setWnd(&child);
                }
                change(splitter);
            }};
}

}  // namespace

std::vector<Exhibit> barExhibits() {
    return {
        brickBar("normal", [](CZTBrickBar&) {}),
        brickBar("coloured", [](CZTBrickBar& bar) { bar.SetTextColor(1, kInk); }),
        brickBar("focused", [](CZTBrickBar& bar) { brickOf(bar, 1).SetFocus(); }),
        brickBar("defaults", [](CZTBrickBar& bar) { brickOf(bar, 0).SendMessage(WM_COMMAND, kCommandDefaultBricks); }),
        brickBar("clipped", [](CZTBrickBar& bar) { widen(*bar.GetSplitterWnd(), 0, 60); }),
        brickBar("closed", [](CZTBrickBar& bar) { widen(*bar.GetSplitterWnd(), 1, 0); }),
        brickBar(
            "values right", [](CZTBrickBar&) {}, true),
        brickBar(
            "values right and clipped", [](CZTBrickBar& bar) { widen(*bar.GetSplitterWnd(), 0, 90); }, true),
        holders("CHolderView", "titles", {{"Orders", HV_TITLE_CLOSE}, {"Trades", HV_TITLE_CLOSE | HV_GRADIENT}}),
        holders("CHolderView", "others", {{"Title", HV_TITLE}, {"", HV_PLAIN}, {"Brick : 12", HV_BRICK}}),
        holders("CHolderView", "narrow", {{"A long title of a pane", HV_TITLE_CLOSE}, {"Trades", HV_TITLE_CLOSE}},
                [](CFlatSplitterWnd& splitter) { widen(splitter, 0, 70); }),
        holders("CFlatSplitterWnd", "moved by keys", {{"Orders", HV_TITLE_CLOSE}, {"Trades", HV_TITLE_CLOSE}},
                [](CFlatSplitterWnd& splitter) { splitter.DoKeyboardSplit(); }),
    };
}

}  // namespace gallery

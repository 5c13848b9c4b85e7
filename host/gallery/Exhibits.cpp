#include "host/gallery/Exhibits.h"

#include "quor/edits/ClrButton.h"
#include "quor/edits/HotFontCombo.h"
#include "quor/edits/QuorSplitButton.h"
#include "quor/edits/XListCtrl.h"
#include "quor/foundation/TimerIds.h"
#include "quor/list/CommonListToolTip.h"
#include "quor/platform/proving/WindowCapture.h"

namespace gallery {

namespace {

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr UINT kControlId = 100;
constexpr COLORREF kInk = RGB(120, 20, 20), kCream = RGB(255, 240, 200), kBlue = RGB(30, 60, 160);

// ---- Buttons

void dress(CWnd& control, const Stage& stage) {
    control.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(stage.font.m_hObject), TRUE);
}

using ColourState = std::function<void(CClrButton&)>;

Exhibit colourButton(const char* state, const ColourState& change, const char* text = "&Colour",
                     CSize size = {110, 26}) {
    return {"CClrButton", state, size, [=](Stage& stage) {
                auto& button = stage.add<CClrButton>();
                button.Create(text, kChild | BS_OWNERDRAW, stage.place(size), &stage.window, kControlId);
                dress(button, stage);
                change(button);
            }};
}

using SplitState = std::function<void(CQuorSplitButton&)>;

Exhibit splitButton(const char* state, const SplitState& change, const char* text = "&Export", bool menu = true) {
    const CSize size(110, 26);
    return {"CQuorSplitButton", state, size, [=](Stage& stage) {
                auto& button = stage.add<CQuorSplitButton>();
                button.Create(text, kChild, stage.place(size), &stage.window, kControlId);
                dress(button, stage);
                if (menu) button.m_menu.AppendMenu(MF_STRING, 200, "First");
                change(button);
            }};
}

void press(CButton& button) { button.SendMessage(BM_SETSTATE, TRUE); }

// ---- The check list

Exhibit checkList(const char* state, const std::function<void(CXListCtrl&)>& change) {
    const CSize size(264, 120);
    return {"CXListCtrl", state, size, [=](Stage& stage) {
                auto& list = stage.add<CXListCtrl>();
                list.Create(kChild | LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER, stage.place(size), &stage.window,
                            kControlId);
                dress(list, stage);
                const char* const headings[] = {"Keyword", "Color", "Both"};
                for (int column = 0; column < 3; ++column)
                    list.InsertColumn(column, headings[column], LVCFMT_LEFT, quor::platform::scaled(list, 80));
                list.SetHeaderCheckbox(0, TRUE);
                change(list);
            }};
}

void fillList(CXListCtrl& list) {
    const char* const words[] = {"abcd", "filled", "rejected", "a word that is too long"};
    for (int row = 0; row < 4; ++row) {
        list.InsertItem(row, words[row]);
        list.SetCheckbox(row, 0, row % 2);
        list.SetColorboxColor(row, 1,
                              row == 2   ? COLORREF{CXListCtrl::kNoColor}
                              : row == 1 ? RGB(0, 0, 0)
                                         : RGB(200, 60 * row, 90));
    }
    list.SetCheckbox(0, 2, 1);
    list.SetItemText(0, 2, "text");
    list.SetCheckbox(1, 2, 0);
    list.SetColorboxColor(1, 2, kBlue);
    list.SetItemText(2, 2, "text only");
    list.SetEnabled(3, 0, FALSE);
}

void chooseRow(CXListCtrl& list) {
    fillList(list);
    list.SetItemState(1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

// ---- Tool tips of cells

// The mouse rests on the first cell. The control paints its rows itself.
Exhibit cellTip(const char* state, const char* text) {
    return {"CCommonListToolTip", state, CSize(300, 120), [=](Stage& stage) {
                auto& list = stage.add<CCommonListToolTip>();
                list.Create(kChild | LVS_REPORT | WS_BORDER, stage.place({300, 120}), &stage.window, kControlId);
                list.ModifyStyle(LVS_OWNERDRAWFIXED, 0);
                auto& font = stage.add<CFont>();
                font.CreatePointFont(90, "Tahoma");
                list.SetFont(&font);
                list.SetTextColor(RGB(0, 0, 0));
                list.SetBkColor(RGB(255, 255, 255));
                list.SetTextBkColor(RGB(255, 255, 255));
                for (const char* const heading : {"Remark", "Name"})
                    list.InsertColumn(0, heading, LVCFMT_LEFT, quor::platform::scaled(list, 96));
                for (int row = 0; row < 4; ++row) list.InsertItem(row, row == 1 ? text : "a text");
                list.UpdateWindow();
                CRect cell;
                list.GetSubItemRect(1, 0, LVIR_LABEL, cell);
                CPoint mouse = cell.CenterPoint();
                list.ClientToScreen(&mouse);
                ::SetCursorPos(mouse.x, mouse.y);
                list.SendMessage(WM_TIMER, kCellTipTimer);
                stage.popup = quorShownToolTip();
            }};
}

// ---- The font choosers

constexpr int kComboHeight = 24, kOpenHeight = 150;

Exhibit fontCombo(const char* state, const std::function<void(CHotFontCombo&)>& change, int height = kComboHeight) {
    const CSize size(220, height);
    return {"CHotFontCombo", state, size, [=](Stage& stage) {
                auto& combo = stage.add<CHotFontCombo>();
                combo.Create(kChild | WS_VSCROLL, stage.place({size.cx, kOpenHeight}), &stage.window, kControlId);
                dress(combo, stage);
                change(combo);
                COMBOBOXINFO info{};
                info.cbSize = sizeof info;
                if (combo.GetDroppedState() && ::GetComboBoxInfo(combo, &info)) stage.popup = info.hwndList;
            }};
}

}  // namespace

CRect Stage::place(CSize size) const {
    const auto pixels = [this](int length) { return quor::platform::scaled(window, length); };
    return CRect(CPoint(pixels(kAir), pixels(kAir)), CSize(pixels(size.cx), pixels(size.cy)));
}

std::vector<Exhibit> controlExhibits() {
    return {
        colourButton("normal", [](CClrButton&) {}),
        colourButton("focused", [](CClrButton& b) { b.SetFocus(); }),
        colourButton("pressed", [](CClrButton& b) { press(b); }),
        colourButton("disabled", [](CClrButton& b) { b.EnableWindow(FALSE); }),
        colourButton("default", [](CClrButton& b) { b.SetButtonStyle(BS_DEFPUSHBUTTON); }),
        colourButton("coloured", [](CClrButton& b) { b.SetColour(kInk, kCream); }),
        colourButton("coloured focused",
                     [](CClrButton& b) {
                         b.SetColour(kInk, kCream);
                         b.SetFocus();
                     }),
        colourButton("coloured pressed",
                     [](CClrButton& b) {
                         b.SetColour(kInk, kCream);
                         press(b);
                     }),
        colourButton("coloured default",
                     [](CClrButton& b) {
                         b.SetColour(kInk, kCream);
                         b.SetButtonStyle(BS_DEFPUSHBUTTON);
                     }),
        colourButton("coloured disabled",
                     [](CClrButton& b) {
                         b.SetColour(kInk, kCream, kBlue);
                         b.EnableWindow(FALSE);
                     }),
        colourButton("colour alone", [](CClrButton& b) { b.SetColour(kBlue, kBlue); }, "", {33, 23}),
        colourButton("font", [](CClrButton& b) { b.DisplayFont("Arial", "10", kFontBold); }, "", {150, 26}),
        colourButton("close box", [](CClrButton&) {}, "x", {15, 15}),
        colourButton("long text", [](CClrButton&) {}, "A text that is too long even for the two lines of a button",
                     {110, 26}),
        colourButton("two lines", [](CClrButton&) {}, "A text that is too long for it", {110, 44}),
        splitButton("normal", [](CQuorSplitButton&) {}),
        splitButton("focused", [](CQuorSplitButton& b) { b.SetFocus(); }),
        splitButton("pressed", [](CQuorSplitButton& b) { b.m_bPushed = 1; }),
        splitButton("menu open", [](CQuorSplitButton& b) { b.m_bMenuPushed = 1; }),
        splitButton("disabled", [](CQuorSplitButton& b) { b.EnableWindow(FALSE); }),
        splitButton("default", [](CQuorSplitButton& b) { b.SetButtonStyle(BS_DEFPUSHBUTTON); }),
        splitButton(
            "no menu", [](CQuorSplitButton&) {}, "&Export", false),
        splitButton(
            "long text", [](CQuorSplitButton&) {}, "Export everything there is to an open worksheet"),
        checkList("empty", [](CXListCtrl&) {}),
        checkList("normal", [](CXListCtrl& list) { fillList(list); }),
        checkList("focused",
                  [](CXListCtrl& list) {
                      list.SetFocus();
                      chooseRow(list);
                  }),
        checkList("chosen elsewhere", [](CXListCtrl& list) { chooseRow(list); }),
        checkList("disabled",
                  [](CXListCtrl& list) {
                      fillList(list);
                      list.EnableWindow(FALSE);
                  }),
        cellTip("clipped cell", "A text that is too long for its cell"),
        cellTip("several lines", "One line\r\nand a second one, which is longer"),
        fontCombo("empty", [](CHotFontCombo&) {}),
        fontCombo("normal", [](CHotFontCombo& combo) { combo.SelectFont("DejaVu Serif"); }),
        fontCombo("focused",
                  [](CHotFontCombo& combo) {
                      combo.SelectFont("DejaVu Serif");
                      combo.SetFocus();
                  }),
        fontCombo("disabled",
                  [](CHotFontCombo& combo) {
                      combo.SelectFont("DejaVu Serif");
                      combo.EnableWindow(FALSE);
                  }),
        fontCombo(
            "open",
            [](CHotFontCombo& combo) {
                combo.SelectFont("DejaVu Serif");
                combo.SetFocus();
                combo.ShowDropDown();
            },
            kOpenHeight),
    };
}

}  // namespace gallery

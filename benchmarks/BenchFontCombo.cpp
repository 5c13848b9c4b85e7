// The font combo's list opened until it is painted, enumeration of 500 invented faces included, a new combo each time.
// All names must then be listed, and those in view drawn once, each in its face.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"
#include "quor/edits/HotFontCombo.h"

#include <cstdio>
#include <set>

namespace {

constexpr int kFaces = 500;
constexpr int kRepeats = 15;

std::string faceName(int number) {
    char name[LF_FACESIZE];
    std::snprintf(name, sizeof name, "Invented %03d", number);
    return name;
}

class InventedCombo : public CHotFontCombo {
public:
    std::set<UINT> drawn;

    void DrawItem(LPDRAWITEMSTRUCT item) override {
        if (!(item->itemState & ODS_COMBOBOXEDIT)) drawn.insert(item->itemID);
        CHotFontCombo::DrawItem(item);
    }

protected:
    void EnumerateFonts(const std::function<void(const LOGFONT&)>& offer) override {
        LOGFONT font{};
        // Backwards: the list has to order them.
        for (int face = kFaces - 1; face >= 0; --face) {
            ::lstrcpynA(font.lfFaceName, faceName(face).c_str(), LF_FACESIZE);
            offer(font);
        }
    }
};

void checkList(InventedCombo& combo, HWND list) {
    check(combo.GetCount() == kFaces, "the list does not have every face");
    CString name;
    for (const int face : {0, kFaces / 2, kFaces - 1}) {
        combo.GetLBText(face, name);
        check(name == faceName(face).c_str(), "the list is not in order");
    }
    CRect client;
    ::GetClientRect(list, client);
    const int rows = client.Height() / combo.GetItemHeight(0);
    check(rows >= 5 && static_cast<int>(combo.drawn.size()) >= rows, "not every name in view was drawn");
    check(static_cast<int>(combo.drawn.size()) <= rows + 2, "names out of view were drawn");
}

double openOnce(CWnd& frame) {
    InventedCombo combo;
    combo.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL, CRect(10, 10, 260, 400), &frame, 1);
    pumpMessages();
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ::GetComboBoxInfo(combo, &info);
    const double start = microseconds();
    combo.ShowDropDown();
    ::UpdateWindow(info.hwndList);
    const double taken = microseconds() - start;
    checkList(combo, info.hwndList);
    combo.ShowDropDown(FALSE);
    return taken / 1000;
}

}  // namespace

void benchFontCombo(Figures& figures) {
    CWnd frame;
    frame.CreateEx(0, AfxRegisterWndClass(0, nullptr, ::GetSysColorBrush(COLOR_BTNFACE)), "fonts",
                   WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 600, 500), nullptr, 0);
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) times.push_back(openOnce(frame));
    frame.DestroyWindow();
    figures.push_back({"font_combo_ms", median(times), "ms", "500 invented faces, a new combo each time", 150, 50});
}

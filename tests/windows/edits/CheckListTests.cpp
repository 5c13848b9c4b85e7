// The check list on both roads to a window: cells, headings, mouse and keys, what it draws.
#include "EditsTestsIds.h"
#include "quor/edits/XListCtrl.h"
#include "quor/foundation/Messages.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/FakeHost.h"
#include "support/PictureOracle.h"
#include "support/WindowFixture.h"

#include <optional>

namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS;
constexpr COLORREF kRed = RGB(255, 0, 1), kBlack = 0;

// Columns 0 to 2 of 100; three rows: boxes, colours, and a mix.
class CheckList : public test::WindowFixture, public testing::WithParamInterface<bool> {
protected:
    CheckList() {
        resetFakeHost();
        if (GetParam()) {
            ::CreateWindowExA(0, WC_LISTVIEWA, "", kStyle, 10, 10, 400, 200, frame(), reinterpret_cast<HMENU>(9),
                              nullptr, nullptr);
            EXPECT_TRUE(list->SubclassDlgItem(9, &frame()));
        } else {
            EXPECT_TRUE(list->Create(kStyle, CRect(10, 10, 410, 210), &frame(), 9));
        }
        for (int column = 0; column < 3; ++column) list->InsertColumn(column, "column", LVCFMT_LEFT, 100);
        for (int row = 0; row < 3; ++row) list->InsertItem(row, ("row " + std::to_string(row)).c_str());
        list->SetCheckbox(0, 0, 1);
        list->SetCheckbox(1, 0, 0);
        list->SetColorboxColor(0, 1, kBlack);
        list->SetColorboxColor(1, 1, kRed);
        list->SetColorboxColor(2, 1, COLORREF{CXListCtrl::kNoColor});
        list->SetCheckbox(1, 2, 1);
        list->SetColorboxColor(1, 2, kRed);
        frame().onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
            const bool check = message == WM_XLISTCTRL_CHECKBOX_CLICKED;
            if (!check && message != WM_XLISTCTRL_COLORBOX_CLICKED) return false;
            told += (check ? "check " : "colour ") + std::to_string(static_cast<int>(wParam)) + "," +
                    std::to_string(lParam) + ";";
            if (onBox) onBox();
            return true;
        };
        pumpUntilIdle();
    }
    void TearDown() override {
        list.reset();
        WindowFixture::TearDown();
    }
    // The first pixels of a cell are its check box, the last ones its colour box.
    CPoint left(int row, int column) {
        const CRect area = list->GetCellRect(row, column);
        return {area.left + area.Height() / 2, area.CenterPoint().y};
    }
    CPoint right(int row, int column) { return {list->GetCellRect(row, column).right - 10, left(row, column).y}; }
    std::string take() { return std::exchange(told, {}); }
    std::string clicked(CPoint point, int times = 1) {
        quor::sendClick(*list, point, quor::MouseButton::left, times);
        pumpUntilIdle();
        return take();
    }
    std::string pressed(std::initializer_list<WORD> keys) {
        for (const WORD key : keys) quor::sendKeys({key});
        pumpUntilIdle();
        return take();
    }
    std::string checks(int column) {
        std::string text;
        for (int row = 0; row < list->GetItemCount(); ++row)
            text += std::to_string(list->GetCheckbox(row, column)) + " ";
        return text;
    }

    std::optional<CXListCtrl> list{std::in_place};
    std::string told;
    std::function<void()> onBox;
};

INSTANTIATE_TEST_SUITE_P(Roads, CheckList, testing::Bool());

TEST_P(CheckList, CellsKeepWhatTheyHold) {
    EXPECT_EQ(checks(0) + checks(2), "1 0 -1 -1 1 -1 ");
    EXPECT_EQ(list->GetColorboxColor(0, 1), kBlack);
    EXPECT_EQ(list->GetColorboxColor(2, 1), COLORREF{CXListCtrl::kNoColor});
    EXPECT_EQ(list->GetItemText(1, 1) + list->GetItemText(2, 1) + list->GetItemText(0, 0), "#FF0001row 0");
    for (const auto& [row, column] : {std::pair(-1, 0), {3, 0}, {0, -1}, {0, 3}}) {
        EXPECT_FALSE(list->SetCheckbox(row, column, 1) || list->SetColorboxColor(row, column, kRed));
        EXPECT_FALSE(list->SetEnabled(row, column, FALSE) || list->GetEnabled(row, column));
        EXPECT_EQ(list->GetCheckbox(row, column), -1);
    }
    // Rows that come, go and are sorted take their cells along; so do columns.
    list->InsertItem(0, "new");
    EXPECT_EQ(checks(0), "-1 1 0 -1 ");
    list->DeleteItem(1);
    for (int row = 0; row < 3; ++row) list->SetItemData(row, static_cast<DWORD_PTR>(row));
    list->SetCheckbox(2, 0, 1);
    list->SortItems([](LPARAM one, LPARAM other, LPARAM) { return static_cast<int>(other - one); }, 0);
    EXPECT_EQ(checks(0), "1 0 -1 ");
    list->DeleteColumn(1);
    EXPECT_EQ(checks(1), "-1 1 -1 ");
    EXPECT_EQ(list->GetColorboxColor(1, 1), kRed);
}

TEST_P(CheckList, BoxesAnswerTheMouse) {
    EXPECT_EQ(clicked(left(0, 0)), "check 0,0;");
    EXPECT_EQ(clicked(left(1, 0), 2), "check 1,0;check 1,0;") << "two quick clicks";
    EXPECT_EQ(checks(0), "0 0 -1 ");
    EXPECT_EQ(clicked(left(2, 1)), "colour 2,1;");
    EXPECT_EQ(list->GetNextItem(-1, LVNI_SELECTED), 2);
    EXPECT_EQ(list->GetSelectedCount(), 1u);
    EXPECT_EQ(clicked(left(1, 2)) + clicked(right(1, 2)), "check 1,2;colour 1,2;") << "both in one cell";
    EXPECT_EQ(clicked(right(0, 0)) + clicked(left(2, 0)) + clicked(left(0, 2)) + clicked({200, 150}), "");
    list->SetEnabled(1, 2, FALSE);
    EXPECT_EQ(clicked(left(1, 2)) + clicked(right(1, 2)), "");
    EXPECT_EQ(checks(2), "-1 0 -1 ");
}

TEST_P(CheckList, KeysMoveBetweenCellsAndPress) {
    list->SetFocus();
    list->SetItemState(1, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
    const int order[] = {2, 0, 1};
    list->SetColumnOrderArray(3, const_cast<int*>(order));
    EXPECT_EQ(pressed({VK_SPACE, VK_RIGHT, VK_SPACE}), "check 1,0;colour 1,1;");
    EXPECT_EQ(list->GetFocusedColumn(), 1);
    EXPECT_EQ(pressed({VK_RIGHT, VK_LEFT, VK_LEFT, VK_LEFT, VK_SPACE}), "check 1,2;") << "the ends hold";
    EXPECT_EQ(pressed({VK_UP, VK_SPACE, VK_RIGHT, VK_SPACE}), "check 0,0;") << "a cell of text has nothing to press";
    list->DeleteColumn(0);
    list->DeleteColumn(0);
    EXPECT_EQ(list->GetFocusedColumn(), 0);
    EXPECT_EQ(pressed({VK_DOWN, VK_SPACE}), "check 1,0;");
}

TEST_P(CheckList, AColumnOutOfViewIsScrolledIn) {
    list->SetColumnWidth(2, 500);
    list->SetFocus();
    list->SetItemState(0, LVIS_FOCUSED, LVIS_FOCUSED);
    pressed({VK_RIGHT, VK_RIGHT});
    EXPECT_EQ(list->GetCellRect(0, 2).left, 0);
    pressed({VK_LEFT, VK_LEFT});
    EXPECT_EQ(list->GetCellRect(0, 0).left, 0);
}

TEST_P(CheckList, AHeadingTurnsItsColumn) {
    const auto clickHeading = [&] {
        quor::sendClick(list->GetHeaderCtrl()->m_hWnd, {50, 6});
        pumpUntilIdle();
        return take() + " " + std::to_string(list->GetHeaderCheckbox(0)) + ": " + checks(0);
    };
    EXPECT_FALSE(list->SetHeaderCheckbox(3, TRUE));
    EXPECT_EQ(clickHeading(), " -1: 1 0 -1 ");
    ASSERT_TRUE(list->SetHeaderCheckbox(0, TRUE));
    EXPECT_EQ(list->GetHeaderCheckbox(0), 2);
    EXPECT_EQ(clickHeading(), "check -1,0; 1: 1 1 -1 ");
    list->SetEnabled(0, 0, FALSE);
    EXPECT_EQ(clickHeading(), "check -1,0; 2: 1 0 -1 ") << "a disabled box stays";
    list->SetEnabled(1, 0, FALSE);
    EXPECT_EQ(clickHeading(), " 2: 1 0 -1 ") << "nothing turned, nothing told";
    list->SetHeaderCheckbox(0, FALSE);
    EXPECT_EQ(list->GetHeaderCheckbox(0), -1);
}

TEST_P(CheckList, TheParentMayEndTheListOrItsRows) {
    onBox = [this] { list->DeleteAllItems(); };
    EXPECT_EQ(clicked(left(0, 0)), "check 0,0;");
    list->SetCheckbox(list->InsertItem(0, "row"), 0, 0);
    onBox = [this] { list->DestroyWindow(); };
    EXPECT_EQ(clicked(left(0, 0)), "check 0,0;");
    EXPECT_EQ(list->m_hWnd, nullptr);
}

// A heading's click changes many cells, and the parent hears of each.
TEST_P(CheckList, TheParentMayEndTheListWhileItsColumnTurns) {
    list->SetHeaderCheckbox(0, TRUE);
    frame().onMessage = [this](UINT message, WPARAM, LPARAM lParam, LRESULT&) {
        const bool changed = message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == LVN_ITEMCHANGED;
        if (changed && list) list.reset();
        return changed;
    };
    quor::sendClick(list->GetHeaderCtrl()->m_hWnd, {50, 6});
    pumpUntilIdle();
    EXPECT_FALSE(list);
}

// What changes is repainted, and nothing else is left behind.
TEST_P(CheckList, ThePictureFollowsTheCells) {
    list->SetHeaderCheckbox(0, TRUE);
    list->SetFocus();
    EXPECT_EQ(test::stalePixels(*list), "");
    const std::function<void()> steps[] = {
        [&] { list->SetCheckbox(1, 0, 1); },    [&] { list->SetColorboxColor(2, 1, kRed); },
        [&] { list->SetEnabled(0, 0, FALSE); }, [&] { clicked(left(1, 2)); },
        [&] { pressed({VK_UP, VK_RIGHT}); },    [&] { list->EnableWindow(FALSE); },
        [&] { list->EnableWindow(); },
    };
    for (const auto& step : steps) {
        step();
        EXPECT_EQ(test::stalePixels(*list), "") << &step - steps;
    }
    WindowPicture picture;
    ASSERT_TRUE(quorCaptureClientArea(*list, picture));
    const CPoint red = list->GetCellRect(2, 1).CenterPoint();
    EXPECT_EQ(picture.pixels[static_cast<std::size_t>(red.y * picture.width + red.x)], 0xFFFF0001u);
    EXPECT_EQ(::GetPixel(CClientDC(&*list), 390, 180), ::GetSysColor(COLOR_WINDOW)) << "nobody coloured it";
}

// Where the dark pixels of an area begin and end, from its left.
std::pair<int, int> inkOf(const WindowPicture& picture, const CRect& area) {
    std::pair<int, int> ink{area.Width(), 0};
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x) {
            if (picture.pixels[static_cast<std::size_t>(y * picture.width + x)] & 0x808080u) continue;
            ink = {std::min(ink.first, x - static_cast<int>(area.left)),
                   std::max(ink.second, x - static_cast<int>(area.left))};
        }
    return ink;
}

TEST_P(CheckList, BoxesHaveRoomAndHeadingsStandOverTheirTexts) {
    EXPECT_GT(list->GetCellRect(0, 0).Height(), quor::platform::scaled(*list, 16));
    list->SetItemText(2, 0, "column");
    pumpUntilIdle();
    WindowPicture picture;
    ASSERT_TRUE(quorCaptureClientArea(*list, picture));
    CRect heading;
    list->GetHeaderCtrl()->GetItemRect(0, &heading);
    EXPECT_EQ(inkOf(picture, heading), inkOf(picture, list->GetCellRect(2, 0)));
}

}  // namespace

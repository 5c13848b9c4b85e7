// The dialog of a grid's trend columns: what it shows, what OK hands over, and that a grid that went is not touched.
#include "quor/grid/ListTrendSetting.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/resource/resource.h"
#include "support/HandleCounts.h"
#include "support/ModalAnswer.h"
#include "windows/grid/GridFixture.h"

using namespace quor::grid;

namespace grid_tests {
namespace {

class TrendDialog : public GridFixture {
protected:
    TrendDialog() {
        createClassic(
            grid,
            {{"name", 60, 0, 8}, {"last", 60, 0, 5}, {"count", 60, 0, 1}, {"when", 60, 0, 6}, {"change", 60, 0, 9}});
        setColumns({4, 0});
        grid.TrendInterval = 3500;
    }
    void TearDown() override {
        if (grid.m_hWnd) grid.DestroyWindow();
        if (dialog && dialog->m_hWnd) dialog->DestroyWindow();
        GridFixture::TearDown();
    }
    void setColumns(std::initializer_list<int> numbers) {
        CArray<int, int> columns;
        for (const int number : numbers) columns.Add(number);
        grid.SetTrendColumns(&columns);
    }
    std::string columns() {
        CArray<int, int> inForce;
        grid.GetTrendColumns(inForce);
        std::string text;
        for (INT_PTR i = 0; i < inForce.GetSize(); ++i) text += std::to_string(inForce.GetAt(i)) + " ";
        return text;
    }
    void open() {
        grid.SendMessage(WM_COMMAND, kCommandSetTrendColumns);
        pumpUntilIdle();
        dialog = CListTrendSetting::shared(grid);
        ASSERT_TRUE(dialog->IsWindowVisible());
    }
    CListBox& box() { return *static_cast<CListBox*>(dialog->GetDlgItem(IDC_TREND_COLUMNS)); }
    // The names, "*" behind those selected; the boxes; the label.
    std::string shown() {
        CString text, all;
        for (int i = 0; i < box().GetCount(); ++i) {
            box().GetText(i, text);
            all += text + (box().GetSel(i) > 0 ? "* " : " ");
        }
        dialog->GetDlgItemText(IDC_TREND_TIME, text);
        all.AppendFormat("%u%u ", dialog->IsDlgButtonChecked(IDC_TREND_BACKGROUND),
                         dialog->IsDlgButtonChecked(IDC_TREND_TEXT));
        return (all + text).GetString();
    }
    void press(int id) { dialog->GetDlgItem(id)->SendMessage(BM_CLICK); }
    DWORD color(int id) { return static_cast<CClrButton*>(dialog->GetDlgItem(id))->GetColor(); }

    CFilterListCtrl grid;
    CListTrendSetting* dialog = nullptr;
};

TEST_F(TrendDialog, ShowsTheGridsTrendsAndHandsOverWhatIsChosen) {
    open();
    EXPECT_EQ(shown(), "change* count last 10 4 Sec");
    CRect thumb, slider;
    dialog->SendDlgItemMessage(IDC_TREND_INTERVAL, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
    dialog->GetDlgItem(IDC_TREND_INTERVAL)->GetClientRect(&slider);
    EXPECT_EQ(thumb & slider, thumb);
    EXPECT_EQ(color(IDC_RISE_COLOR), kDefaultRiseColor);
    EXPECT_EQ(color(IDC_FALL_COLOR), kDefaultFallColor);
    dialog->SetFocus(IDC_TREND_INTERVAL);
    quor::sendKeys({VK_HOME});
    pumpUntilIdle();
    EXPECT_EQ(shown(), "change* count last 10 1 Secs");
    box().SetSel(0, FALSE);
    box().SetSel(1);
    box().SetSel(2);
    press(IDC_TREND_TEXT);
    EXPECT_EQ(shown(), "change count* last* 01 1 Secs");
    {
        const test::ModalAnswer answer(dialog->m_hWnd, [](HWND picker) { test::chooseColor(picker, RGB(1, 2, 3)); });
        press(IDC_FALL_COLOR);
    }
    EXPECT_EQ(columns(), "4 0 ") << "nothing before OK";
    quor::sendKeys({VK_RETURN});
    pumpUntilIdle();
    EXPECT_FALSE(dialog->IsWindowVisible());
    EXPECT_EQ(columns(), "1 2 ");
    EXPECT_EQ(grid.NegColor, RGB(1, 2, 3));
    EXPECT_EQ(grid.PosColor, kDefaultRiseColor);
    EXPECT_EQ(grid.TrendInterval, 0);
    EXPECT_FALSE(grid.TrendBackground);
    open();
    EXPECT_EQ(shown(), "change count* last* 01 1 Sec");
    press(IDC_TREND_TEXT);
    EXPECT_EQ(shown(), "change count* last* 00 1 Sec");
    press(IDOK);
    EXPECT_TRUE(grid.TrendBackground) << "neither box counts as background";
    open();
    box().SetSel(0);
    press(IDCANCEL);
    EXPECT_EQ(columns(), "1 2 ");
}

TEST_F(TrendDialog, SelectedColumnsAreFollowedByTheirNames) {
    open();
    box().SetSel(2);
    sQuorColInfo first;
    setColumnName(first, "another");
    first.iDataType = kTypeInteger;
    grid.m_arrColumns.InsertAt(0, first);
    grid.m_arrColumns.RemoveAt(3);
    CArray<int, int> numbers, widths;
    for (int i = 0; i < 5; ++i) numbers.Add(i), widths.Add(50);
    grid.LoadHeaders(&numbers, &widths);
    EXPECT_EQ(shown(), "another change* last* 10 4 Sec");
    press(IDOK);
    EXPECT_EQ(columns(), "2 4 ");
}

TEST_F(TrendDialog, AGridThatGoesIsForgotten) {
    for (const bool choosing : {false, true}) {
        CFilterListCtrl mortal;
        createClassic(mortal, {{"last", 60, 0, 5}});
        mortal.SendMessage(WM_COMMAND, kCommandSetTrendColumns);
        dialog = CListTrendSetting::shared(mortal);
        if (choosing) {
            const test::ModalAnswer answer(dialog->m_hWnd, [&](HWND picker) {
                mortal.DestroyWindow();
                test::chooseColor(picker, 0x123456);
            });
            press(IDC_RISE_COLOR);
        } else {
            mortal.DestroyWindow();
        }
        pumpUntilIdle();
        EXPECT_FALSE(dialog->IsWindowVisible());
        for (const int id : {IDC_TREND_TEXT, IDC_RISE_COLOR, IDC_FALL_COLOR, IDCANCEL, IDOK}) press(id);
        EXPECT_EQ(mortal.PosColor, kDefaultRiseColor);
    }
}

TEST_F(TrendDialog, HandlesReturnToTheirStart) {
    const auto rounds = [&](int count) {
        for (int round = 0; round < count; ++round) {
            open();
            press(round % 2 ? IDOK : IDCANCEL);
            if (round % 20 == 0) dialog->DestroyWindow();
        }
    };
    rounds(2);
    const test::HandleCounts before = test::countHandles();
    rounds(200);
    EXPECT_EQ(test::countHandles(), before);
}

}  // namespace
}  // namespace grid_tests

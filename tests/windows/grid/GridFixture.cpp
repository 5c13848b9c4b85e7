#include "windows/grid/GridFixture.h"

using namespace quor::grid;

namespace grid_tests {

int Owner::cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor, COLORREF& background,
                    int& icon) {
    ++asked;
    if (!answers) return 0;
    if (const auto comesBack = onText) comesBack(data, columnIndex);
    const Row& row = *rowOf(data);
    const auto cell = row.cells.find(columnIndex);
    if (cell != row.cells.end()) {
        text = cell->second.c_str();
    } else if (columnIndex == 0) {
        text = row.quote().c_str();
    }
    if (row.text != kColorUnset) textColor = row.text;
    if (row.background != kColorUnset) background = row.background;
    icon = row.icon;
    return 1;
}

int Owner::exportText(DWORD_PTR data, int, CString& text, int&) {
    text = ("export " + rowOf(data)->name).c_str();
    return 1;
}

LRESULT Owner::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM && draws) {
        ++drawItems;
        return TRUE;
    }
    if (message == WM_NOTIFY && onNotify) onNotify(*reinterpret_cast<const NMHDR*>(lParam));
    return CWnd::WindowProc(message, wParam, lParam);
}

void clickHeading(CFilterListCtrl& grid, int place) {
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    CRect item;
    header.GetItemRect(place, &item);
    const LPARAM where = MAKELPARAM(item.CenterPoint().x, item.top + 5);
    header.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, where);
    header.SendMessage(WM_LBUTTONUP, 0, where);
}

GridFixture::GridFixture() {
    resetFakeHost();
    ::InitCommonControls();
    const CString windowClass = AfxRegisterWndClass(0);
    EXPECT_TRUE(owner.CreateEx(0, windowClass, "", WS_CHILD | WS_VISIBLE, client(), &frame(), 5));
}

void GridFixture::TearDown() {
    if (owner.m_hWnd) owner.DestroyWindow();
    WindowFixture::TearDown();
}

void GridFixture::create(CFilterListCtrl& grid, std::vector<Column> columns, CRect rect, DWORD style) {
    for (const Column& column : columns) {
        sQuorColInfo record;
        setColumnName(record, column.name);
        record.iWidth = column.width;
        record.iFormat = column.format;
        record.iDataType = column.dataType;
        grid.m_arrColumns.Add(record);
    }
    giveWindow(grid, rect, style);
    ASSERT_TRUE(grid.m_hWnd);
    grid.InsertColumnsForList(nullptr);
    grid.InitColumnTextRtn(memberCallback());
}

void GridFixture::giveWindow(CFilterListCtrl& grid, CRect rect, DWORD style) {
    if (road == test::Road::created) {
        grid.Create(style, rect, &owner, kGridId);
        return;
    }
    const HWND control = ::CreateWindowExA(0, WC_LISTVIEWA, "", style, rect.left, rect.top, rect.Width(), rect.Height(),
                                           owner, reinterpret_cast<HMENU>(INT_PTR{kGridId}), nullptr, nullptr);
    if (onControl) onControl(control);
    grid.SubclassWindow(control);
}

void GridFixture::createClassic(CFilterListCtrl& grid, std::vector<Column> columns) {
    create(grid, std::move(columns));
    grid.SetUseFilter(TRUE);
}

void GridFixture::createOpti(CFilterListCtrl& grid, std::vector<Column> columns) {
    createClassic(grid, std::move(columns));
    grid.SetOptiDataMode(true);
}

void GridFixture::fill(CFilterListCtrl& grid, const std::string& picture) {
    for (const char letter : picture)
        if (letter != '*' && letter != '!') grid.AddRow(row({letter}), false);
    processEndofBatchUpdates();
    for (std::size_t i = 1; i < picture.size(); ++i) {
        if (picture[i] != '*' && picture[i] != '!') continue;
        const std::size_t name = picture[i - 1] == '*' ? i - 2 : i - 1;
        int mapIndex, visual;
        CFilterListCtrl::getRowIndices(row({picture[name]}), &grid, mapIndex, visual);
        const UINT bit = picture[i] == '*' ? LVIS_SELECTED : LVIS_FOCUSED;
        grid.SetItemState(visual, bit, bit);
    }
}

std::string GridFixture::picture(CFilterListCtrl& grid) {
    const auto count = static_cast<int>(grid.SendMessage(LVM_GETITEMCOUNT));
    std::string text;
    for (int visual = 0; visual < count; ++visual) {
        const DWORD_PTR data = grid.GetItemData(visual);
        text += data ? rowOf(data)->name : "_";
        const UINT state = grid.GetItemState(visual, LVIS_SELECTED | LVIS_FOCUSED);
        if (state & LVIS_SELECTED) text += '*';
        if (state & LVIS_FOCUSED) text += '!';
    }
    return text;
}

Row* GridFixture::row(const std::string& name) {
    auto& found = m_rows[name];
    if (!found) found = std::make_unique<Row>(name);
    return found.get();
}

}  // namespace grid_tests

// Random mixes on one real grid in a window: its header is clicked, its fields are written, its owner answers for
// texts. The model drives a second real list view call by call: no count held back, every row deselected, every
// selected row walked for every tombstone. Both must have the same count, selection, focus, mark and page whenever a
// user could look.
#include "core/grid/GridMix.h"
#include "quor/list/HeaderImages.h"
#include "quor/list/ListCommands.h"
#include "quor/resource/resource.h"
#include "windows/grid/GridFixture.h"

namespace grid_tests {
namespace {

using grid_mix::Action;
using grid_mix::Filters;
using grid_mix::GridModel;
using grid_mix::kColumns;
using grid_mix::Places;

CFilterListBaseData* dataOf(grid_mix::Row* row) { return row; }

int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF&, COLORREF&, int&) {
    const auto* row = static_cast<grid_mix::Row*>(reinterpret_cast<CFilterListBaseData*>(data));
    text = row->cells[static_cast<std::size_t>(columnIndex)].c_str();
    return 1;
}

// A list without a store: every call reaches the control.
class RealControl : public NativeControl {
public:
    int rowCount() override { return static_cast<int>(list.SendMessage(LVM_GETITEMCOUNT)); }
    int selectionMark() override { return list.GetSelectionMark(); }
    void setSelectionMark(int visual) override { list.SetSelectionMark(visual); }
    int nextSelected(int after) override { return list.GetNextItem(after, LVNI_SELECTED); }
    void setState(int visual, unsigned state, unsigned mask) override { list.SetItemState(visual, state, mask); }
    void setCount(int count) override { list.SetItemCountEx(count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL); }

    CFilterListCtrl list;
};

class LiveGrid : public grid_mix::Subject {
public:
    explicit LiveGrid(const Places& places) : m_model(places, m_control) {}

    CFilterListCtrl& grid() { return m_grid; }
    CFilterListCtrl& plainList() { return m_control.list; }
    int changes = 0;  // notifications of changed filters

    // The windows exist, without columns on screen.
    void begin(bool barIsOn) {
        CArray<int, int> shown, widths;
        for (int place = 0; place < m_model.visibleColumns(); ++place) {
            shown.Add(m_model.columnAt(place));
            widths.Add(60);
        }
        for (CFilterListCtrl* const list : {&m_grid, &m_control.list}) list->LoadHeaders(&shown, &widths);
        m_grid.InitColumnTextRtn(ColumnTextMemberCallback());
        m_grid.InitColumnTextRtn(&cellText);
        m_grid.m_csListName = "Mix";
        m_grid.m_bLockSortEnabled = 1;
        m_grid.SetUseFilter(TRUE);
        m_grid.SetOptiDataMode(true);
        m_barIsOn = barIsOn;
        if (barIsOn) m_grid.PutListFilter();
    }

    GridModel& model() override { return m_model; }
    int apply(const Action& action) override {
        CString text = action.text.c_str();
        switch (action.kind) {
            case Action::addRow:
                return m_grid.AddRow(dataOf(action.row), action.value != 0);
            case Action::updateRow:
                return m_grid.UpdateRow(dataOf(action.row));
            case Action::deleteRow:
                return m_grid.DeleteRow(dataOf(action.row), action.value != 0);
            case Action::updateVisual:
                return m_grid.RepaintDisplayItem(action.number);
            case Action::updateMap:
                return m_grid.RepaintMapItem(action.number);
            case Action::deleteVisual:
                return m_grid.DeleteItem(action.number);
            case Action::deleteMap:
                return m_grid.DeleteMapItem(action.number);
            case Action::endBatch:
                return processEndofBatchUpdates(), 0;
            case Action::populate:
                return m_grid.PopulateList(), 0;
            case Action::storeFilter:
                return m_grid.AddToFilteredCols(action.number, text), 0;
            case Action::setFilter:
                return m_grid.SetMapColumnFilter(action.number, text, action.value);
            case Action::setFilters:
                return setFilters(action);
            case Action::removeFilter:
                return m_grid.RemoveMapColumnFilter(action.number);
            case Action::removeAllFilters:
                return m_grid.RemoveAllFilters();
            case Action::toggleExact:
                return toggleExact(), 0;
            case Action::click:
                return clickHeading(m_grid, action.number), 0;
            case Action::sortOn:
                return m_grid.SortOn(action.number, action.value);
            case Action::applyLock:
                return m_grid.SortByLastColumnWithLock(), 0;
            case Action::toggleLock:
                return m_grid.SendMessage(WM_COMMAND, kLockSorting), 0;
            case Action::checkVisual:
                return m_grid.SetCheck(action.number, action.value);
            case Action::checkMap:
                return m_grid.SetMapItemCheck(action.number, action.value);
            case Action::resetChecks:
                return m_grid.ResetCheckedItems(), 0;
            case Action::toggleCheckedFirst:
                return m_grid.SortOnCheckedFlag = !m_grid.SortOnCheckedFlag, 0;
            case Action::sortOnChecked:
                return m_grid.SortOnChecked(), 0;
            case Action::toggleReverse:
                return m_grid.SetReverseDisplay(!m_grid.GetReverseDisplay()), 0;
            case Action::deleteAll:
                return m_grid.DeleteAllItems();
            case Action::select:
                return select(action), 0;
            case Action::scroll:
                return scroll((action.number - kRowsOfScroll) * kPixelsOfScroll), 0;
            default:
                return 0;
        }
    }

    int displayCount() override { return m_grid.GetDisplayCount(); }
    int itemCount() override { return m_grid.GetItemCount(); }
    DWORD_PTR dataOfVisual(int visual) override { return m_grid.GetItemData(visual); }
    int mapIndexOfSlot(int slot) override { return m_grid.GetMapIndexFromDisplayIndex(slot); }
    int checkOfVisual(int visual) override { return m_grid.GetCheck(visual); }
    std::pair<int, int> numbersOf(grid_mix::Row& row) override {
        std::pair<int, int> numbers;
        CFilterListCtrl::getRowIndices(&row, &m_grid, numbers.first, numbers.second);
        return numbers;
    }
    Filters filters() override {
        CArray<int, int> columns;
        CArray<CString, CString> texts;
        m_grid.GetFileteredCols(columns, texts);
        Filters all;
        for (INT_PTR i = 0; i < columns.GetSize(); ++i) all.emplace_back(columns.GetAt(i), texts.GetAt(i).GetString());
        return all;
    }
    std::string compareRest() override {
        if (std::string fault = compareNumbers(); !fault.empty()) return fault;
        // The bar takes room of the page.
        if (!m_barIsOn && m_grid.GetTopIndex() != m_control.list.GetTopIndex()) return "the top indices differ";
        for (int visual = 0; visual < m_control.rowCount(); ++visual)
            if (m_grid.GetItemState(visual, LVIS_SELECTED) != m_control.list.GetItemState(visual, LVIS_SELECTED))
                return "visual index " + std::to_string(visual) + " is selected in one control alone";
        for (int place = 0; place < m_model.visibleColumns(); ++place)
            if (std::string fault = compareHeader(place); !fault.empty())
                return fault + " of place " + std::to_string(place);
        return compareTexts();
    }

private:
    int setFilters(const Action& action) {
        CArray<int, int> columns;
        CArray<CString, CString> texts;
        for (const auto& [column, text] : action.filters) {
            columns.Add(column);
            texts.Add(text.c_str());
        }
        return m_grid.SetMapColumnFilter(&columns, &texts, action.value);
    }
    // The model selects on the other control.
    void select(const Action& action) {
        m_grid.SetItemState(action.number, static_cast<UINT>(action.value), LVIS_SELECTED | LVIS_FOCUSED);
        m_grid.SetSelectionMark(action.mark);
    }
    void scroll(int pixels) {
        m_grid.Scroll(CSize(0, pixels));
        m_control.list.Scroll(CSize(0, pixels));
    }
    void toggleExact() {
        MSG command{m_grid.m_hWnd, WM_COMMAND, kCommandMatchExactly, 0, 0, {}};
        m_grid.PreTranslateMessage(&command);
    }

    std::string compareNumbers() {
        const struct {
            const char* what;
            int is, shallBe;
        } table[] = {
            {"native count", static_cast<int>(m_grid.SendMessage(LVM_GETITEMCOUNT)), m_control.rowCount()},
            {"selection mark", m_grid.GetSelectionMark(), m_control.selectionMark()},
            {"focused row", m_grid.GetNextItem(-1, LVNI_FOCUSED), m_control.list.GetNextItem(-1, LVNI_FOCUSED)},
            {"number of checked rows", m_grid.GetCheckedItemCount(), m_model.checkedCount()},
            {"m_nSortCol", m_grid.m_nSortCol, m_model.sortPlace},
            {"m_nLastSortCol", m_grid.m_nLastSortCol, m_model.lastSortPlace},
            {"m_nSortOrder", m_grid.m_nSortOrder, m_model.sortOrder},
            {"m_nLockSortColumn", m_grid.m_nLockSortColumn, m_model.lockColumn},
            {"m_nLockSortOrder", m_grid.m_nLockSortOrder, m_model.lockOrder},
            {"m_bSorted", m_grid.m_bSorted, m_model.sorted},
            {"m_bSortLocked", m_grid.m_bSortLocked, m_model.locked},
            {"notifications of filters", changes, m_model.changes},
        };
        for (const auto& [what, is, shallBe] : table)
            if (is != shallBe)
                return std::string(what) + " is " + std::to_string(is) + ", not " + std::to_string(shallBe);
        return {};
    }
    std::string compareHeader(int place) {
        const auto index = static_cast<std::size_t>(place);
        char caption[100] = "";
        HDITEM item{};
        item.mask = HDI_FORMAT | HDI_IMAGE | HDI_TEXT;
        item.pszText = caption;
        item.cchTextMax = sizeof caption;
        m_grid.GetHeaderCtrl()->GetItem(place, &item);
        const int arrow = m_model.arrows[index], format = arrow == -1 ? HDF_STRING : quor::list::kHeaderSortFormat;
        if ((item.fmt & ~HDF_OWNERDRAW) != format) return "the format differs";
        if (arrow != -1 && item.iImage != arrow) return "the arrow differs";
        if (place == 0 && caption != m_model.firstCaption) return std::string("the caption '") + caption + "' differs";
        CString field;
        m_grid.GetHeaderText(place, field);
        return m_model.fields[index] == field.GetString() ? "" : "the field differs";
    }
    // One column a time; where the control knows the row, by its own request.
    std::string compareTexts() {
        m_textPlace = (m_textPlace + 1) % m_model.visibleColumns();
        const auto column = static_cast<std::size_t>(m_model.columnAt(m_textPlace));
        for (int visual = 0; visual < m_model.grid.count(); ++visual) {
            const grid_mix::Row* const row = m_model.rowAt(m_model.grid.visualOf(visual));
            const CString shown = visual < m_control.rowCount() ? m_grid.CListCtrl::GetItemText(visual, m_textPlace)
                                                                : m_grid.GetItemText(visual, m_textPlace);
            if (shown.GetString() != (row ? row->cells[column] : "")) return "a text differs";
        }
        return {};
    }

    static constexpr int kRowsOfScroll = 20, kPixelsOfScroll = 10;

    RealControl m_control;
    GridModel m_model;
    CFilterListCtrl m_grid;
    bool m_barIsOn = false;
    int m_textPlace = 0;
};

class LiveGridMix : public GridFixture, public ::testing::WithParamInterface<unsigned> {};

TEST_P(LiveGridMix, EndsAsTheModelSays) {
    static constexpr Places kPlaces[] = {{0, 1, 2, 3, 4, 5, 6}, {2, -1, 0, 1, 3, 4, -1}, {-1, 3, 1, 2, 0, -1, 4}};
    std::vector<Column> columns;
    for (int i = 0; i < kColumns; ++i)
        columns.push_back({.name = "", .dataType = grid_mix::kDataTypes[static_cast<std::size_t>(i)]});
    road = GetParam() % 4 < 2 ? test::Road::created : test::Road::subclassed;
    const auto make = [&] {
        auto made = std::make_unique<LiveGrid>(kPlaces[GetParam() % std::size(kPlaces)]);
        const DWORD style = kGridStyle & ~static_cast<DWORD>(LVS_NOSORTHEADER);
        create(made->grid(), columns, CRect(0, 0, 480, 200), style);
        create(made->plainList(), columns, CRect(0, 200, 480, 400), style);
        for (int i = 0; i < kColumns; ++i)
            setColumnName(made->grid().m_arrColumns.ElementAt(i), grid_mix::columnName(i).c_str());
        made->begin(GetParam() % 2 == 0);
        owner.onNotify = [heard = made.get()](const NMHDR& news) {
            heard->changes += news.code == static_cast<UINT>(HDN_FILTERCHANGE);
        };
        return made;
    };
    // Where not each step is looked at, counts are held back over several.
    EXPECT_EQ(grid_mix::runMix(make, GetParam(), 600, {.looks = GetParam() % 3 == 0 ? 4 : 1}), "");
    owner.onNotify = nullptr;
}

INSTANTIATE_TEST_SUITE_P(, LiveGridMix, ::testing::Range(1u, 10u));

}  // namespace
}  // namespace grid_tests

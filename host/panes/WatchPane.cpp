#include "host/panes/WatchPane.h"

#include "host/core/WatchStore.h"
#include "host/panes/DarkFields.h"
#include "host/panes/HeaderPaint.h"
#include "host/panes/HostEntries.h"
#include "host/panes/LevelsMenu.h"
#include "host/panes/PaneHolder.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"
#include "quor/foundation/core/Globals.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace terminal {

namespace {
constexpr int kNamesWidth = 150;

// Looks that the user chose, in the section of the pane's title; none is stored before.
constexpr const char* kBackgroundKey = "Background";
constexpr const char* kTextColourKey = "TextColour";
constexpr const char* kFontKey = "Font";
constexpr int kMostPoints = 100;
constexpr int kBold = 1, kItalic = 2;  // of a font's style; 3 is both

std::string hexText(COLORREF colour) {
    char text[16];
    std::snprintf(text, sizeof text, "%06lX", static_cast<unsigned long>(colour));
    return text;
}

std::optional<COLORREF> colourOfHex(const std::string& text) {
    COLORREF value = 0;
    const char* const end = text.data() + text.size();
    if (text.size() != 6 || std::from_chars(text.data(), end, value, 16).ptr != end) return {};
    return value;
}

// "face,points,style"
std::string shownFont(const CWnd& list) {
    LOGFONT font{};
    const CFont* const present = list.GetFont();
    if (!present || !present->GetLogFont(&font)) return {};
    const HWND window = list.m_hWnd;
    int points = 1;
    while (points < kMostPoints && quor::platform::fontHeight(window, points) > font.lfHeight) ++points;
    const int style = (font.lfWeight >= FW_BOLD ? kBold : 0) + (font.lfItalic ? kItalic : 0);
    return std::string(font.lfFaceName) + "," + std::to_string(points) + "," + std::to_string(style);
}

COLORREF colourOf(const WatchData& data, WatchTone tone, std::string_view text, COLORREF plain) {
    switch (tone) {
        case WatchTone::symbol:
            return palette::kSymbol;
        case WatchTone::dim:
            return palette::kDim;
        case WatchTone::buy:
            return palette::kUp;
        case WatchTone::sell:
            return palette::kDown;
        case WatchTone::direction:
            return data.direction == Move::up ? palette::kUp : data.direction == Move::down ? palette::kDown : plain;
        case WatchTone::sign:
            return text.starts_with('+') ? palette::kUp : text.starts_with('-') ? palette::kDown : plain;
        case WatchTone::plain:
            break;
    }
    return plain;
}
}  // namespace

BEGIN_MESSAGE_MAP(CWatchList, CMrktWatchListCtrl)
    ON_WM_PAINT()
    ON_WM_MEASUREITEM_REFLECT()
END_MESSAGE_MAP()

// Header items may have been dragged and sized: their rectangles are asked for once a paint.
void CWatchList::measureCells() {
    const HWND header = reinterpret_cast<HWND>(SendMessage(LVM_GETHEADER));
    const int count = static_cast<int>(::SendMessageA(header, HDM_GETITEMCOUNT, 0, 0));
    const int scrolled = GetScrollPos(SB_HORZ);
    m_cells.resize(static_cast<std::size_t>((std::max)(0, count)));
    for (int place = 0; place < count; ++place) {
        RECT item{};
        ::SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
        m_cells[static_cast<std::size_t>(place)] = {static_cast<int>(item.left) - scrolled,
                                                    static_cast<int>(item.right - item.left)};
    }
}

void CWatchList::invalidateRow(int row) {
    CRect area, client, seen;
    GetClientRect(&client);
    if (!GetItemRect(row, &area, LVIR_BOUNDS) || !seen.IntersectRect(&area, &client)) return;
    InvalidateRect(&area, FALSE);
    ++m_unpainted;
}

// As the grids measure theirs.
void CWatchList::MeasureItem(LPMEASUREITEMSTRUCT item) {
    constexpr int kRowPadding = 4;
    LOGFONT font{};
    if (const CFont* const own = GetFont()) own->GetLogFont(&font);
    item->itemHeight = static_cast<UINT>(std::abs(font.lfHeight) + kRowPadding);
}

void CWatchList::OnPaint() {
    m_unpainted = 0;
    drawnRows.clear();
    measureCells();
    CMrktWatchListCtrl::OnPaint();
    m_figures.paintEnded(m_figures.now(), drawnRows.size() != 0);
}

BOOL CWatchList::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (paintHeader(*this, reinterpret_cast<NMHDR*>(lParam), result)) return TRUE;
    return CMrktWatchListCtrl::OnNotify(wParam, lParam, result);
}

BEGIN_MESSAGE_MAP(CWatchPane, CListPane)
    ON_WM_DESTROY()
    ON_WM_DRAWITEM()
    ON_CBN_SELCHANGE(IDC_WATCH_NAMES, &CWatchPane::OnChooseWatch)
END_MESSAGE_MAP()

CWatchPane::CWatchPane(PaintFigures& figures) : CListPane("Market Watch"), m_list(figures) {}

BOOL CWatchPane::createList() {
    const CRect none(0, 0, 0, 0);
    CWnd* const holder = CPaneHolder::around(*this);  // its strip has the room
    m_names.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, none, holder ? holder : this, IDC_WATCH_NAMES);
    if (!m_names.GetSafeHwnd()) return FALSE;
    m_comboFont.CreatePointFont(80, "Tahoma");
    m_names.SetFont(&m_comboFont);
    darkenFields(m_names.GetParent()->m_hWnd);
    darkenCombo(m_names);
    for (const WatchList& watch : watchLists()) m_names.AddString(watch.name.c_str());
    m_names.SetCurSel(m_shown);
    SetWindowText(watchLists()[static_cast<std::size_t>(m_shown)].name.c_str());

    std::vector<ColumnSpec> columns;
    std::vector<int> shown;
    for (int i = 0; i < kWatchBuiltInColumns; ++i) {
        const WatchColumnInfo& column = watchColumn(i);
        columns.push_back({column.heading, column.width, column.format, column.dataType});
        if (i < kWatchShownColumns) shown.push_back(i);
    }
    describeColumns(columns.data(), kWatchBuiltInColumns);
    m_list.m_csListName = layoutSection().c_str();
    m_list.SetDefaultCols(kWatchShownColumns, shown.data());
    m_list.SortProfileCombo = &m_names;
    m_list.m_bCustomizeEnabled = 0;  // its looks are its own operations
    m_list.m_bLockSortEnabled = 1;
    m_list.m_bMultiSortEnabled = 1;
    m_list.SetSortOrderChooser(&m_levels);
    m_list.Create(
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | LVS_REPORT | LVS_OWNERDRAWFIXED | LVS_SHOWSELALWAYS,
        none, this, IDC_WATCH);
    if (!m_list.GetSafeHwnd()) return FALSE;
    setLooks();
    readLooks();
    m_list.SetExtendedStyle(m_list.GetExtendedStyle() | LVS_EX_DOUBLEBUFFER);
    m_list.InsertColumnsForList(nullptr);
    readSort();
    return TRUE;
}

// Those of all lists. The ground is the control's own: ListBkColor tells what the user chose, and stripes end there.
void CWatchPane::setLooks() {
    const cCustomizedAppearanceSettings looks = Get_Apperance_setting();
    m_list.SetListFont(looks.csFontName, looks.csFontSize, 0);
    m_list.CListCtrl::SetBkColor(looks.crBackground);
    m_list.CListCtrl::SetTextColor(looks.crText);
}

// What does not read as it was written is passed over.
void CWatchPane::readLooks() {
    if (const auto colour = colourOfHex(setting(title(), kBackgroundKey))) m_list.SetBkColor(*colour);
    if (const auto colour = colourOfHex(setting(title(), kTextColourKey))) m_list.SetTextColor(*colour);
    takeFont(setting(title(), kFontKey));
    m_shownFont = shownFont(m_list);
}

// "face,points,style"
void CWatchPane::takeFont(const std::string& font) {
    const std::size_t style = font.rfind(','), points = style ? font.rfind(',', style - 1) : std::string::npos;
    if (style == std::string::npos || points == std::string::npos) return;
    const std::string size = font.substr(points + 1, style - points - 1);
    if (const int number = std::atoi(size.c_str()); number > 0 && number <= kMostPoints)
        m_list.SetListFont(font.substr(0, points).c_str(), size.c_str(), std::atoi(font.c_str() + style + 1));
}

void CWatchPane::menuClosed() {
    const std::string now = shownFont(m_list);
    if (now != m_shownFont) keepSetting(title(), kFontKey, now);
    m_shownFont = now;
    if (m_list.ListBkColor != CLR_DEFAULT) keepSetting(title(), kBackgroundKey, hexText(m_list.ListBkColor));
    if (m_list.ListTextColor != CLR_DEFAULT) keepSetting(title(), kTextColourKey, hexText(m_list.ListTextColor));
}

std::string CWatchPane::layoutSection() const {
    return "MarketWatchNew_" + watchLists()[static_cast<std::size_t>(m_shown)].name;
}

void CWatchPane::layOut() {
    CListPane::layOut();
    CPaneHolder* const holder = CPaneHolder::around(*this);
    if (holder && m_names.GetSafeHwnd()) holder->putIntoStrip(m_names, kNamesWidth);
}

int CWatchPane::selectedInstrument() const {
    const sMWStruct* const chosen = record(m_list.CListCtrl::GetNextItem(-1, LVNI_SELECTED));
    return chosen ? static_cast<int>(chosen->instrument) : -1;
}

const sMWStruct* CWatchPane::record(int row) const {
    return row < 0 ? nullptr
                   : sMWStruct::of(reinterpret_cast<const void*>(const_cast<CWatchList&>(m_list).GetItemData(row)));
}

void CWatchPane::addRow(InstrumentId id) {
    if (!m_held) m_list.SetRedraw(FALSE);
    m_held = true;
    m_list.InsertItem(LVIF_TEXT | LVIF_PARAM, m_list.GetItemCount(), "", 0, 0, 0,
                      reinterpret_cast<LPARAM>(m_records[id].get()));
}

void CWatchPane::addInstrument(const Instrument& news) {
    if (news.id != m_market.size()) return;  // ids are an index; a feed that breaks this is counted by the tally
    m_market.instrument(news);
    m_records.push_back(std::make_unique<sMWStruct>(m_market[news.id]));
    m_news.push_back(1);
    if (watchLists()[static_cast<std::size_t>(m_shown)].holds(news)) addRow(news.id);
}

void CWatchPane::mark(InstrumentId id) {
    if (id < m_news.size()) m_news[id] = 1;
}

void CWatchPane::quote(const Quote& news) {
    m_market.quote(news);
    mark(news.instrument);
}

void CWatchPane::order(const OrderEvent& news) {
    m_market.order(news);
    mark(news.order.instrument);
}

void CWatchPane::trade(const Trade& news) {
    m_market.trade(news);
    mark(news.instrument);
}

void CWatchPane::level(const BookLevel& news) {
    m_market.level(news);
    mark(news.instrument);
}

void CWatchPane::showChanged() {
    if (m_held) {
        m_held = false;
        m_list.SetRedraw(TRUE);
        m_list.SortByLastColumnWithLock();  // rows came in: a locked list takes them into its order
        showLevels(m_list);
        m_list.Invalidate(FALSE);
        setRemark(countedIn(m_list, m_list.GetItemCount(), "instrument"));
    }
    const int top = m_list.GetTopIndex();
    const int end = (std::min)(m_list.GetItemCount(), top + m_list.GetCountPerPage() + 1);
    for (int row = top; row < end; ++row) {
        const sMWStruct* const shown = record(row);
        if (shown && m_news[shown->instrument]) m_list.invalidateRow(row);
    }
    std::fill(m_news.begin(), m_news.end(), char{0});
}

int CWatchPane::waiting() const { return static_cast<int>(std::count(m_news.begin(), m_news.end(), char{1})); }

// Columns and lock are the list's own to read; the levels name columns and need them.
void CWatchPane::readSort() {
    m_list.ReadMultiSortOrderProfile(watchLists()[static_cast<std::size_t>(m_shown)].name.c_str());
}

// A store that has nothing to say of a watch leaves the list as it is.
void CWatchPane::forgetSort() {
    m_list.KillAutoSortTimer();
    m_list.m_arrSortOrder.RemoveAll();
    m_list.m_bMultiSortActive = m_list.m_bSortLocked = m_list.m_bSorted = 0;
    m_list.m_nSortCol = 0;
    m_list.m_nLastSortCol = m_list.m_nLockSortColumn = -1;
    m_list.m_nSortOrder = -1;
    m_list.m_nLockSortOrder = 0;
}

// The stored place is read again for columns that are numbered as they stand on screen now.
void CWatchPane::saveAutoSort() {
    if (!m_list.ColumnsStand()) return;
    const int place = m_list.m_nSortCol;
    HDITEM item{};
    item.mask = HDI_ORDER;
    if (m_list.GetHeaderCtrl()->GetItem(place, &item)) m_list.m_nSortCol = item.iOrder;
    m_list.SaveAutoSort();
    m_list.m_nSortCol = place;
}

void CWatchPane::saveState() {
    saveAutoSort();
    CListPane::saveState();
}

void CWatchPane::OnDestroy() {
    saveAutoSort();
    CListPane::OnDestroy();
}

void CWatchPane::showWatch(int watch) {
    if (watch == m_shown || watch < 0 || watch >= static_cast<int>(watchLists().size())) return;
    CString former;
    GetWindowText(former);
    m_list.SaveColumnProfile(former);
    saveAutoSort();
    // From here on the columns belong to no watch until the new one's are built.
    m_list.m_arrOrder.RemoveAll();
    m_list.m_arrWidth.RemoveAll();
    m_list.m_arrVisible.RemoveAll();
    forgetSort();
    m_shown = watch;
    m_list.m_csListName = layoutSection().c_str();
    const WatchList& chosen = watchLists()[static_cast<std::size_t>(watch)];
    m_names.SetCurSel(watch);
    SetWindowText(chosen.name.c_str());
    m_list.SetRedraw(FALSE);
    m_list.DeleteAllItems();
    m_list.InsertColumnsForList(nullptr);
    readSort();
    fitNewColumns();
    for (InstrumentId id = 0; id < m_market.size(); ++id)
        if (chosen.holds(m_market[id].instrument)) addRow(id);
    m_held = true;
    showChanged();
}

void CWatchPane::OnChooseWatch() { showWatch(m_names.GetCurSel()); }

void CWatchPane::cellText(const sMWStruct& shown, int columnIndex, CString& text) {
    if (columnIndex >= kWatchBuiltInColumns) {
        m_list.GetCustomColumnText(const_cast<sMWStruct*>(&shown), columnIndex, text);
        if (const std::string_view number = viewOf(text); withoutZeroSign(number) != number) text.Delete(0);
        return;
    }
    TextBuffer buffer;
    assignText(text, watchText(*shown.data, columnIndex, buffer));
}

void CWatchPane::drawCell(CDC& dc, const WatchData& data, int columnIndex, const CString& text, RECT cell,
                          bool selected) {
    const bool own = columnIndex >= kWatchBuiltInColumns;
    const WatchTone tone = own ? userColumnTone(viewOf(text)) : watchColumn(columnIndex).tone;
    const COLORREF plain = m_list.ListTextColor == CLR_DEFAULT ? palette::kText : m_list.ListTextColor;
    dc.SetTextColor(selected ? palette::kSelectedText : colourOf(data, tone, viewOf(text), plain));
    CString shown = text;
    if (own || watchColumn(columnIndex).dataType != kTypeMixed) groupDigits(m_list, shown);
    drawCellText(dc, shown, shown.GetLength(), cell, own ? 1 : watchColumn(columnIndex).format);
}

void CWatchPane::OnDrawItem(int id, LPDRAWITEMSTRUCT item) {
    if (id != IDC_WATCH) return CListPane::OnDrawItem(id, item);
    const int row = static_cast<int>(item->itemID);
    const sMWStruct* const shown = record(row);
    if (!shown) return;
    CDC& dc = *CDC::FromHandle(item->hDC);
    RECT area = item->rcItem;
    area.left = 0;
    RECT client;
    m_list.GetClientRect(&client);
    area.right = client.right;
    const bool selected = (item->itemState & ODS_SELECTED) != 0;
    const COLORREF ground = m_list.ListBkColor != CLR_DEFAULT ? m_list.ListBkColor
                            : row % 2                         ? palette::kStripe
                                                              : palette::kBackground;
    const COLORREF back = selected ? selectionColour(m_list) : ground;
    dc.FillSolidRect(&area, back);
    dc.SetBkMode(TRANSPARENT);
    DrawnRow& drawn = m_list.drawnRows.begin(row, shown);
    for (std::size_t place = 0; place < m_list.cells().size(); ++place) {
        const CWatchList::Cell& cell = m_list.cells()[place];
        if (cell.left >= client.right || cell.left + cell.width <= 0) continue;
        const int columnIndex = m_list.GetOriginalColumnPosition(static_cast<int>(place));
        if (columnIndex < 0) continue;
        const CString text = m_list.GetItemText(row, static_cast<int>(place));
        const RECT box{cell.left, area.top, cell.left + cell.width, area.bottom};
        drawCell(dc, *shown->data, columnIndex, text, box, selected);
        DrawnRows::note(drawn, columnIndex, viewOf(text));
    }
}

}  // namespace terminal

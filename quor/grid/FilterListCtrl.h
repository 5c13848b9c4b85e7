// CFilterListCtrl: the grid for live rows.
//
// With SetUseFilter(TRUE) the native control knows only a row count (the creator gives it LVS_OWNERDATA); the rows live
// in the grid's store and every cell's text is asked of the host when it is painted. Rows come in two ways:
//   - classic mode: InsertItem and SetItemData, one row at a time, RepaintMapItem or RepaintDisplayItem after a change;
//   - opti-data mode (SetOptiDataMode): the host's rows derive from CFilterListBaseData and know their place in every
//     grid. The host calls AddRow, UpdateRow and DeleteRow and closes each batch with processEndofBatchUpdates().
// Row numbers (mapIndex, slot, visual) and the contract of a row: FilterListBaseData.h. Every operation that takes an
// item number takes a visual index, except GetMapIndexFromDisplayIndex, which takes a slot.
//
// A tick (UpdateRow of a displayed row that passes the filters) finds no row, sends no message, allocates nothing: it
// adds the row's rectangle to the dirty rectangle. Under a filter it asks the host for one text a filter and answers at
// once, while the places of rows follow when anybody asks for one, or at the end of the batch. After a batch a timer
// invalidates that rectangle, at most every 200 ms. The native control hears a new row count when something could see
// it (NativeList.h).
//
// Without SetUseFilter the class behaves as CCommonListCtrl. There is no way back out of opti-data mode.
// One thread: that of the windows. Destroy grids before rows.
#pragma once

#include "quor/grid/ColorHeaderCtrl.h"
#include "quor/grid/core/FilterListBaseData.h"
#include "quor/list/CommonListCtrl.h"

#include <cstdlib>
#include <functional>
#include <memory>

// Give the text of a cell, with colours that stay as they are unless set, and an icon (a handle for numeric columns,
// an image number for others; -1 none). Non-zero: the text is valid. Members are called on the owner window, which
// must be a permanent object.
typedef int (*ColumnTextCallback)(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor,
                                  COLORREF& background, int& icon);
typedef int (CWnd::*ColumnTextMemberCallback)(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor,
                                              COLORREF& background, int& icon);
typedef int (CWnd::*ExportTextMemberCallback)(DWORD_PTR data, int columnIndex, CString& text, int& icon);

// The stripes of AlternateRows, by visual row.
inline constexpr COLORREF kDefaultEvenRows = RGB(240, 247, 249);
inline constexpr COLORREF kDefaultOddRows = RGB(230, 230, 250);
// Of trend columns.
inline constexpr COLORREF kDefaultRiseColor = RGB(0, 255, 0);
inline constexpr COLORREF kDefaultFallColor = RGB(255, 0, 0);

class QUOR_CONTROLS_API CFilterListCtrl : public CCommonListCtrl {
    DECLARE_DYNAMIC(CFilterListCtrl)

public:
    CFilterListCtrl();
    // Destroys the window, leaves g_OptiDataFilterLists, and takes its numbers out of all rows, which must still live.
    ~CFilterListCtrl() override;

    // --- Modes

    // Before any row. Off again empties the store.
    void SetUseFilter(int flag);
    int GetUseFilter() const override { return UseFilter; }
    // The first call with true counts, every other does nothing. Joins g_OptiDataFilterLists, paints double buffered.
    void SetOptiDataMode(bool on);
    bool GetOptiDataMode() const;
    // The newest row on top. Only stores the flag: set it before rows, or call PopulateList.
    void SetReverseDisplay(bool on);
    bool GetReverseDisplay() const;
    // While the page is scrolled away from its top, the rows in view stay in view at the end of a batch, and a row that
    // leaves the page keeps the focus. Off at first.
    void AnchorView(bool on);

    // --- Opti-data mode. `row` is the CFilterListBaseData part of the host's row: pass it through a pointer of that
    // class (the overloads), or as the void* of such a pointer, never of another base.

    // Every grid that entered the mode and lives.
    static CArray<CFilterListCtrl*, CFilterListCtrl*> g_OptiDataFilterLists;
    // Room for n rows. Throws std::length_error("vector too long") for an n that no store can hold, below 0 included.
    void reserveForItems(int n);
    // The new map index; -1 for null or in another mode; 0 without a text callback. The native side follows at once
    // with updateNow, else at the end of the batch.
    int AddRow(void* row, bool updateNow);
    int AddRow(CFilterListBaseData* row, bool updateNow);
    // After the host changed the row. 1: it entered the display, -1: it left, 0: neither, or refused.
    int UpdateRow(void* row);
    int UpdateRow(CFilterListBaseData* row);
    // The row's map index; -1 for null, in another mode or for a row that is not here; 0 without a text callback. The
    // row may be freed on return, once every grid that shows it was told.
    int DeleteRow(void* row, bool updateNow);
    int DeleteRow(CFilterListBaseData* row, bool updateNow);
    // The row's map index and visual index in a grid; the latter -1 when filtered out, both -1 when it is not there.
    static void getRowIndices(CFilterListBaseData* row, CFilterListCtrl* list, int& mapIndex, int& displayIndex);
    // Closes this grid's batch: pending adds and deletes show, selected rows stay selected.
    void processPendingOptiUpdates();

    // --- Rows. Without SetUseFilter these go to the native control or the base list.

    // Classic mode: a new row without data. Item 0 appends. The map index; 0 without a text callback, -1 below 0.
    int InsertItem(int item, const char* text, int image = 0);
    // Classic mode: item 0 is the last row while it has no data. 1: shown, 0: refused or filtered out.
    int SetItemData(int item, DWORD_PTR data);
    // 0 when out of range and for a row deleted in an open batch.
    DWORD_PTR GetItemData(int item) override;
    DWORD_PTR GetFilteredItemData(int item) { return GetItemData(item); }
    // No bounds check.
    DWORD_PTR GetMapItemData(unsigned long long mapIndex) const;
    // Takes a display slot, without reversal; -1 when out of range.
    int GetMapIndexFromDisplayIndex(int slot) const;
    int GetDisplayCount() const;
    // With a store: its rows, deleted ones included.
    int GetItemCount() const;
    // With a store the text is the host's: does nothing, 1 (0 without a text callback).
    int SetItemText(int item, int place, const char* text);
    // In opti-data mode DeleteItem and DeleteMapItem delete the row (deferred), the two below update it.
    int DeleteItem(int item);
    int DeleteMapItem(int mapIndex);
    // Re-test a row after a change. -1: it left, 1: it entered (RepaintMapItem), or there is nothing to show; else 0.
    int RepaintMapItem(int mapIndex);
    int RepaintDisplayItem(int item);
    // Repaints the row in view that has this data. 1, or 0 when none has.
    int InvalidateSetItemData(void* data);
    int DeleteAllItems();
    int DeleteAllMapListItems();
    // With a store the host's text; "no data descriptor initialised" without a callback, empty when out of range.
    // Unless mapColumn is set, `place` is a place on screen, else a columnIndex.
    CString GetItemText(int item, int place, bool mapColumn, bool forExport) override;
    CString GetItemText(int item, int place) override { return GetItemText(item, place, false, false); }
    using CCommonListCtrl::GetItemText;

    // --- Texts

    void InitColumnTextRtn(ColumnTextCallback callback) { TextCallback = callback; }
    // Wins over the plain function.
    void InitColumnTextRtn(ColumnTextMemberCallback callback) { TextMemberCallback = callback; }
    void InitColumnTextRtnForExcel(ExportTextMemberCallback callback) { ExportTextCallback = callback; }
    // The callback's result for a built-in column, 1 for a user column, 0 without a callback.
    int GetColumnText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor, COLORREF& background,
                      int& icon, bool forExport);
    // The text of a user column, made anew from the row's other texts; nothing for a built-in column. A formula that
    // refers to no column, or back to its own cell, leaves the text; one whose values run together does so too and
    // shows kInvalidCustomExpression in a message box.
    virtual void GetCustomColumnText(DWORD_PTR data, int columnIndex, CString& text);
    int CallBackForText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor, COLORREF& background,
                        int& icon, bool forExport);

    // --- Filters. A text per column, by the grammar of FilterTokens.h; a row must pass all of them. The user's come
    // from the header's filter bar. The grid does not rebuild itself after a change: the header's HDN_FILTERCHANGE goes
    // on to the owner (GetOwner) with the grid's control id, and the owner calls PopulateList - not at once, since the
    // setters below set the match mode behind the notification, but from a message that it posts itself.
    // `exact` makes the next PopulateList, and only that one, compare whole cells. Longest text: 1,048,575 bytes.

    bool FilterUiEnabled = true;  // off: no filter items in the menu, no Ctrl+F

    // One column. One that is not on screen is stored directly, and an empty text is written to the field at place 0,
    // only to make the header notify: that takes a filter of the column at place 0 away. Always 1.
    int SetMapColumnFilter(int columnIndex, CString& text, int exact);
    // All filters at once, with one notification for the last. 1, or 0, nothing changed, when the sizes differ or a
    // column is negative.
    int SetMapColumnFilter(CArray<int, int>* columns, CArray<CString, CString>* texts, int exact);
    // Writes the field of a header item; the header notifies. 1, or 0 for a negative place.
    int SetVisibleColumnFilter(int place, CString& text, int exact);
    // Clears the column's field. The filter of a column that is not on screen stays: only RemoveAllFilters takes it.
    // Always 1.
    int RemoveMapColumnFilter(int columnIndex);
    int RemoveAllFilters();
    // The same: empties the store and clears every field, each with its notification.
    void ResetFilterStore();
    // Changes the store, and the header's tint with it; an empty text removes. The column is not checked.
    void AddToFilteredCols(int columnIndex, const CString& text);
    // Copies of the filter store: columns and their texts.
    void GetFileteredCols(CArray<int, int>& columns, CArray<CString, CString>& texts);
    int GetFilterCount() const;
    // 0: the header's notifications are swallowed.
    void SetDoFilter(int flag) { DoFilter = flag; }
    int CheckDoFilter() const { return DoFilter; }
    // 1 if the row passes all filters; always while none is set.
    int CheckForFilteredData(DWORD_PTR data);
    // Builds the display anew, in map order; the host is asked for one cell per row and filter, in the order of the
    // filters, up to the first that fails. A locked sort, or checked rows first, is applied afterwards.
    void PopulateList();
    // Shows or hides the filter bar, alternately.
    void PutListFilter();
    // The filter text, not the heading, of a header item. Its length.
    int GetHeaderText(int place, CString& text);
    // Fills a combo box with the texts that the displayed rows show in a column, "--ALL--" first and selected.
    // Always 1.
    int PopulateComboBoxWithUniques(CComboBox* combo, int columnIndex);

    // --- Sort. What is displayed is put in order; filters and new rows do not keep it, unless the sort is locked. The
    // keys are the texts, each asked for once, and taken by the column's data type (SortKeys.h). Equal rows: the newer
    // one first in a rising order, the older one in a falling order. Native selection and scroll position stay where
    // they are on screen. With m_bRowDragEnabled the map order is the user's own: then all rows are sorted, in the map.
    // After a sort every row in opti-data mode knows its slot; earlier versions could leave wrong ones in forward
    // display until the next PopulateList. The grid's batch is closed first. An invalid column throws the framework's
    // invalid-argument exception.

    // As a click on the column's header would, redraw off meanwhile: the column sorted last turns round, any other
    // rises, whatever `order` says. Nothing while the sort is locked, m_nSortOrder included. Without SetUseFilter the
    // base list's. Always 1.
    int SortOn(int columnIndex, int order);
    // A click on a header item. Nothing while the sort is locked; without SetUseFilter the base list sorts.
    afx_msg void OnLvnColumnclick(NMHDR* header, LRESULT* result);
    // An auto-sort step passes through this click and the base list's. The base's leaves the rows alone and turns the
    // order once more: every second step falls, and the arrow shows the order of the next one.
    void OnAutoSortClick(NMHDR* header, LRESULT* result) override;
    // The pending repaint runs by the same number: it is started again.
    void OnAutoSortTimerTaken() override;
    // Applies the locked sort again, m_nLockSortColumn by m_nLockSortOrder. Nothing unless the sort is locked and the
    // column is shown. Integers count as 32 bits here.
    void SortByLastColumnWithLock() override;
    // Checked rows first, both parts by the text of column 0; the first heading tells the counts, and the marked row
    // takes mark, selection and focus to its new place. The check state is that of a visual index, the row that of a
    // slot: in reverse display they speak of different rows.
    void SortOnChecked();

    // Where hosts of an older kind look for the keys of a run. Declared and empty: the keys lie in arrays of the run's
    // own, and what a host put into these goes at the end of every run.
    static CArray<__int64, __int64> g_SortDataLongArr;
    static CArray<double, double> g_SortDataDblArr;
    static CStringArray g_SortDataStrArr;
    static CFilterListCtrl* g_SortingList;  // the one that sorted last; null once that is gone

    // --- Trends. A cell of a trend column whose number differs from the one painted last is painted in a colour, until
    // the interval is over. Painted is compared with painted: what no paint showed is not seen. Only rows that are in
    // the store when the columns are set have trends, and those that classic mode inserts afterwards; a host calls
    // SetTrendColumns, with what GetTrendColumns gives, after it loaded or refilled rows in opti-data mode, and
    // ExtendTrendColumns after a batch that brought some.

    bool TrendEnabled = true;               // off: no colours, nothing read, nothing written
    bool TrendBackground = true;            // fills the cell; off: colours the text
    COLORREF PosColor = kDefaultRiseColor;  // of a rise
    COLORREF NegColor = kDefaultFallColor;  // of a fall
    int TrendInterval = 0;                  // ms; 0: up to the next tick of the fade, every 250 ms
    // The trend columns, by columnIndex; all trends begin anew. Null changes nothing. A column that the list does not
    // have, or above 4095, is only kept for the settings. Always 1.
    int SetTrendColumns(CArray<int, int>* columns);
    // Rows that came in since have trends from here on too; those of the others go on. Only between batches.
    void ExtendTrendColumns();
    // The columns in force, as they were set.
    void GetTrendColumns(CArray<int, int>& columns) const;
    // Opens the process's dialog of the trends on this grid.
    afx_msg void OnSetTrendColumns();
    // Takes the settings stored under a list's name: what is not stored takes its default, the columns stay.
    void ReadTrendSettings(CString name);
    // Writes the trend settings too, if there are trend columns: without any, what is stored stays.
    void SaveColumnProfile() override;
    void InsertColumnsForList(int* unused) override;

    // --- Check states. Item numbers out of range give 0; the getter by map index trusts its caller. No repaint.

    BOOL GetCheck(int item) const;
    int SetCheck(int item, int state);
    int GetMapItemCheck(int mapIndex) const;
    int SetMapItemCheck(int mapIndex, int state);
    int GetCheckedItemCount() const;
    void ResetCheckedItems();

    // --- Columns

    // The columnIndex at a place by the order array, 1 if none stands there.
    int GetOriginalColNo(int place);
    // Attaches the header object to the control's header. 0, or -1 without a header; once per window.
    int SubclassHeader();

    // --- Looks

    bool AlternateRows = false;      // rows in two colours
    bool GreyedOut = false;          // all rows grey
    bool NoRowFill = false;          // no flat fill: the background shows
    bool NoSelectionPaint = false;   // a selected row looks like any other
    bool CustomDrawMode = false;     // paint by custom draw; m_bCustomDraw too, and no LVS_OWNERDRAWFIXED
    bool SortOnCheckedFlag = false;  // checked rows first, on a ground of their own
    COLORREF AlternateColor1 = kDefaultEvenRows;
    COLORREF AlternateColor2 = kDefaultOddRows;
    // Fills run from their colour to white.
    void SetDrawShades(bool on) { DrawShades = on; }
    bool GetDrawShades() const { return DrawShades; }
    // Takes effect when the control measures its rows again (a font, a new size).
    void SetNoOfLinesPerRow(int lines) { LinesPerRow = lines; }

    // --- Keywords of m_Appearance, compared without regard to case (A to Z)

    // The base list's colour routine of a grid (see SetPointerToGetTextColor): the colour of the first keyword that the
    // row's text in the keyword column holds, else `color` stays. Asks for that text alone. Always 1.
    int GetTextColorForItem(DWORD_PTR data, COLORREF& color, int, int);
    // The colours of the first user keyword that equals `key`, else they stay. For hosts, from their text callback.
    // Always 1.
    int GetProperty(COLORREF& textColor, COLORREF& backColor, CString& key);

    // --- The framework's operations

    void DrawItem(LPDRAWITEMSTRUCT item) override;
    // Ctrl+F shows or hides the filter bar, Tab moves through its fields; commands of the grid's menu.
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    // Rows are asked for anew once the columns came from a file.
    void OnColumnsImported() override { PopulateList(); }
    void OnColumnsMoved(const std::vector<int>& moved) override;
    void OnColumnsRebuilt(bool shown) override;
    // A heading that tells counts is read as that of the column under it, so that the column keeps its width.
    CString KnownHeading(int item, const CString& shown) override;
    // Decimals are grouped, and a column of icons shows none.
    CString ShownText(int item, int place) override;
    // How a cell of a data type shows its text. Sort, filters, trends and exports know the text as the host gave it.
    virtual void GroupDigits(int dataType, CString& text);
    bool CellAt(CPoint point, int& item, int& place) override;
    bool LabelRect(int item, int place, CRect& label) override;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PreSubclassWindow() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnDestroy();
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnSetFocus(CWnd* former);
    afx_msg void OnKillFocus(CWnd* next);
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void MeasureItem(LPMEASUREITEMSTRUCT item);
    afx_msg BOOL OnNMCustomdraw(NMHDR* header, LRESULT* result);
    afx_msg void OnLvnGetdispinfo(NMHDR* header, LRESULT* result);
    afx_msg void OnLvnOdfinditem(NMHDR* header, LRESULT* result);
    afx_msg void OnOptionResetFilter();
    void OnHdnEnddragList(LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    friend QUOR_CONTROLS_API void processEndofBatchUpdates();
    struct Parts;       // the windowless parts and the native control
    class Presence;     // whether the grid is still there
    class CellPainter;  // what both paint routes share
    class RowPainter;   // a row of the owner-draw route
    class CustomRow;    // a row for the formulas of user columns
    class SortScope;    // a sort that an exception takes back
    class SortRun;      // a sort of the rows of a walk

    bool hasTextCallback() const { return TextCallback != nullptr || TextMemberCallback != nullptr; }
    bool takesRows() const;
    void startFlushTimer();
    void StartRepaintTimer();
    void flushDirtyRect();
    void repaintWhole();
    void paintDoubleBuffered();
    void beforeMessage(UINT message, WPARAM wParam, LPARAM lParam);

    CFilterListBaseData* liveRow(int mapIndex) const;
    template <class Retest>
    int repaintRetested(Retest retest);
    int showNewRow(int item, int visual);
    bool scrollToNewest(int& item);
    int eraseHiddenRow(DWORD_PTR data);
    void invalidateShownRow(int visual);
    void invalidateToBottom(int visual);
    bool isInView(int visual);
    int refuse(const char* message, int result);
    void FreeFilterStore();
    void setCallbackMask();
    void showFilterBar(bool show);
    void turnHeaderThemeOff();
    void eraseStripes(CDC& dc);
    void eraseOutsideRows(CDC& dc);
    void fillArea(CDC& dc, const RECT& area, COLORREF color);
    LRESULT drawCell(NMLVCUSTOMDRAW& draw);
    bool paintsByCustomDraw() const;

    template <class Function>
    void inWalk(Function function);
    void showRepainted();
    void findSortMapColumn();
    void showSortArrow(int place, bool falling);
    void hideSortArrow(int place);
    void showCheckedCounts(int itemCount);
    void moveMarkTo(DWORD_PTR data);

    int IsItemMatchingFilter(CString& cell, CString& filter);
    bool matchesExactly() const { return MatchExact != 0 || MatchExactSticky != 0; }
    int placeOf(int columnIndex) const;
    char* filterBuffer();
    void showFilters();
    void tellFilterEnded();
    LRESULT forwardToOwner(NMHDR* header);
    void OnFilterChange(NMHDR* header);
    void OnFilterButtonClicked(NMHDR* header, LRESULT* result);
    void offerValues(int place);
    void visitUniqueTexts(int columnIndex, const std::function<void(const CString&)>& visit);
    void toggleMatchExact();
    void toggleFilterBarByKey();
    bool editNextFilter(bool backwards);
    void scrollToFilter(int place);

    // --- Not filled in yet: each says what it will do.
    void ResetDragOperation();
    bool rowDragIsOn() const;

    void startTrendTimer();
    void setTrendColumns(const std::vector<int>& columns);
    void FadeTrends();
    void PaintTrend(CDC& dc, int visual, int columnIndex, int place, const CString& text, COLORREF rowText);

    static UINT_PTR TrendTimerId;  // some grid's; not 0: there may be one to kill
    int SortMapColumn = -1;        // columnIndex being sorted
    CString m_countsCaption;       // as SortOnChecked wrote it last

    int UseFilter = 0;
    ColumnTextCallback TextCallback = nullptr;
    ColumnTextMemberCallback TextMemberCallback = nullptr;
    ExportTextMemberCallback ExportTextCallback = nullptr;
    std::unique_ptr<Parts> m_parts;
    UINT_PTR FlushTimerId = 0;
    UINT FlushDelay = 200;  // ms
    UINT_PTR RepaintTimerId = 0;

    int DoFilter = 1;
    int FilterBarVisible = 0;
    BYTE MatchExact = 0;         // of the next rebuild
    BYTE MatchExactSticky = 0;   // the user's choice in the menu
    bool m_filterEnded = false;  // with its column; the owner was not told
    int FilterEditColumn = 0;    // place of the field that has the keyboard
    std::unique_ptr<char, decltype(&std::free)> FilterTextBuffer{nullptr, &std::free};
    std::size_t FilterTextBytes = 0;  // of the buffer, from its start, that are not zero

    CColorHeaderCtrl m_header;
    bool m_hasFocus = false;
    bool DrawShades = false;
    int LinesPerRow = 1;
};

// Closes the batch of every grid in opti-data mode, in the order in which they entered it, and starts the flush timer
// of those that have something to repaint. A grid without a window is passed over; grids may be destroyed meanwhile.
QUOR_CONTROLS_API void processEndofBatchUpdates();

// CCommonListCtrl: the base of every list of the terminal.
//
// A report-view list whose user can hide, reorder and size columns, saved per list; that sorts, exports, drags rows and
// has an appearance of its own. The rows are items of the control, inserted by the owner with their cell text; derived
// lists bring rows from elsewhere. A cell's text is always asked for through the virtual GetItemText(row, place), and
// the control's items are drawn by the owner window, to which DrawItem forwards.
//
// To put a list on screen:
//   1. construct it; set m_csListName and the flags that shall differ from their defaults;
//   2. fill m_arrColumns with one sQuorColInfo per built-in column; optionally call SetDefaultCols;
//   3. Create, CreateEx or subclass a dialog's control: either ends in CommonInitList on the living control;
//   4. InsertColumnsForList(nullptr);
//   5. insert rows.
//
// The four column arrays are kept in step: the order array is the only map from columnIndex to place (-1 hidden), each
// place from 0 to the number of shown columns less one occurs in it once. A list in reach of a CBCGPDialog, a
// CBCGPFormView or a CBCGPDialogBar enters g_listRegistry (a group list: g_groupListRegistry) and leaves it in its
// destructor. Everything runs on the thread of the window; nothing is locked.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"
#include "quor/list/SortOrderChooser.h"
#include "quor/platform/Framework.h"

#include <memory>
#include <vector>

// Callbacks on the owner window. They run only on a permanent window object of the framework; hosts make them from
// their own members by static_cast.
typedef int (CWnd::*TextColorCallback)(DWORD_PTR rowData, COLORREF& color, int, int);
typedef int (CWnd::*TextColorWithLineCallback)(DWORD_PTR rowData, COLORREF& color, int, int, int line);
// The text of a cell's tool tip. 0, or an empty text: the cell has none.
typedef int (CWnd::*ToolTipTextCallback)(int row, int place, CString& text);

namespace quor::list {
struct ColumnNumbers;
}

class QUOR_CONTROLS_API CCommonListCtrl : public CListCtrl {
    DECLARE_DYNAMIC(CCommonListCtrl)

public:
    CCommonListCtrl();
    CCommonListCtrl(const CCommonListCtrl&) = delete;
    CCommonListCtrl& operator=(const CCommonListCtrl&) = delete;
    // Destroys the window if there is one, leaves the registries, frees the list's keyword arrays and profile map.
    ~CCommonListCtrl() override;

    // --- What derived lists replace. The order of these declarations is part of the interface.

    // Builds the column set from m_arrColumns and the stored profile. The pointer is handed on and not read.
    virtual void InsertColumnsForList(int* unused);
    // The framework's text into a buffer of `size` bytes. Returns its length.
    virtual int GetItemText(int row, int place, char* buffer, int size);
    // Text for exports. The two flags are for derived lists; here they change nothing.
    virtual CString GetItemText(int row, int place, bool mapColumn, bool forExport);
    // Text for everything else: sort, clipboard, drag.
    virtual CString GetItemText(int row, int place);
    // The row's data: during a sort, when the items hold row numbers, what m_arrSavedItemData keeps for the row.
    virtual DWORD_PTR GetItemData(int row);
    // Writes the column profile to the host's store, if profiles are in use: places by the order array, widths by the
    // header (0 for a column that it does not show). Nothing before the columns were built, nor once the header is
    // gone: what is stored stays. A host that refuses is reported in a message box.
    virtual void SaveColumnProfile();
    // Applies the locked sort again: the rows and this column's arrow. Nothing unless the list is locked on a column
    // that shows.
    virtual void SortByLastColumnWithLock();
    // The framework's creation, then the start of the list on the living control. Always 0, whatever happened: ask
    // the window (GetSafeHwnd) whether it exists.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) override;
    BOOL CreateEx(DWORD exStyle, DWORD style, const RECT& rect, CWnd* parent, UINT id) override;
    // Write and read the levels of the multi-column sort. Written are the chooser's names, each with its order from
    // m_mapSortOrderByName; nothing without a chooser. Read levels of a hidden column are told to the user and left
    // out.
    virtual void SaveSortOrderProfile();
    virtual void ReadSortOrderProfile();
    // Runs the multi-column sort; lists that have one override it.
    virtual void SortListOnMultiplelevel();
    // Whether rows come from a filtered store of the list's own.
    virtual int GetUseFilter() const;

    // --- Set-up

    // Puts a list to work on its window: header images, colours, registry, appearance. Once per window.
    void CommonInitList();
    // The columns that show by default, by columnIndex in screen order; call after filling m_arrColumns. Always 1; the
    // second form gives 0 for a count of 0 and changes nothing.
    int SetDefaultCols(CArray<int, int>& columns);
    int SetDefaultCols(int count, const int* columns);
    // Seed the keyword arrays of m_Appearance. Each is created if absent and filled only while it is empty, so that
    // stored settings win; keywordColumn is taken together with the keywords. Null arguments are skipped.
    void SetDefaultAttributes(int keywordColumn, CStringArray* keywords, CArray<DWORD, DWORD>* colors);
    void SetDefaultProperties(CStringArray* keywords, CArray<DWORD, DWORD>* textColors,
                              CArray<DWORD, DWORD>* backColors);
    // The process-wide paths of the recovery settings and of the dialog positions.
    static void SetRecoveryFiles(CString recoveryFile, CString dialogPositionFile);
    void EnableWriteExcel(int enable) { m_bWriteExcel = enable; }
    void SetPointerToGetTextColor(TextColorCallback callback) { m_pfnGetTextColor = callback; }
    void SetPointerToGetTextColorWithLineNo(TextColorWithLineCallback callback) {
        m_pfnGetTextColorWithLine = callback;
    }
    // What the tips of cells say (m_bCellToolTips). Null: the text of a cell that does not show it whole.
    void InitToolTipRetFunc(ToolTipTextCallback callback) { m_pfnToolTipText = callback; }

    // --- Columns

    // Inserts through the framework, adds the header tool tip, and gives one of kFormatHeaderImage a blank header
    // image. Returns the new column's place, -1 on failure.
    int InsertColumn(int place, const char* heading, int format = kFormatLeft, int width = -1, int subItem = -1);
    // Removes the column at a place; the tool tips behind it move down. Non-zero on success.
    BOOL DeleteColumn(int place);
    // Shows exactly these columns, both arguments by place, and tells the parent (WM_LIST_COLUMNS_REBUILT). A place
    // that names no column of the list closes up: the columns behind move down.
    void LoadHeaders(CArray<int, int>* columns, CArray<int, int>* widths);
    // Sizes all columns by a command of ListCommands.h: kFitColumnsToData, kFitColumnsToHeader, kFitColumnsToWindow
    // (evenly); any other takes the wider of data and heading. By heading, the last column takes the rest of the
    // window. An owner-data list's data are the rows in view.
    void AutoSizeColumns(int command);
    void ColFitToContent();
    void ColFitToHeader();
    void ColFitToWindow();
    // The pixels that a column needs for the cells in view as they are painted, padding included. 0 without rows, and
    // if the window goes while its owner is asked for the texts.
    int WidestCellInView(int place);
    // The columnIndex at a place by the visible array, -1 if no column stands there.
    int GetOriginalColumnPosition(int place);
    // Appends; a record for place 0 goes to the front.
    void AddToVisibleArray(sVisibleColumn column);
    // Gives the header item at `place` a tool tip, `text` or its heading if null. 1, or 0 if there is no such header
    // item, no report view, or no heading.
    int AddHeaderToolTip(int place, const char* text);

    // Writes what the list keeps from one run to the next, as the end of its window does: auto-sort, columns and grid
    // lines; a market watch its columns under its parent's title. What it has not read yet it does not write. For an
    // owner whose process may end without an end of its windows (WM_ENDSESSION).
    void SaveState();

    // --- Columns that travel. Files are INI files, bare names in the user's application data; the section is the list.

    // Writes the columns with their headings, if profiles are in use. A failure is not reported.
    void ExportColumnToFile(CString file);
    // Takes the columns of such a file by heading: the user columns of the list (those with a tool tip) go, those of
    // the file come. Then the parent is told (WM_LIST_COLUMNS_REBUILT, 1). If the file cannot be read, or profiles are
    // not in use, the arrays are left at the built-in columns and the control still shows the old ones.
    void ImportColumnsFromFile(CString file);
    // The same for any kind of list; nothing without a list name. A market watch is exported only if its frame's title
    // is `name`; other lists do not use it.
    void ExportColumns(CString name, CString file);
    void ImportColumns(CString file);
    // Imports or exports every registered list. Before an export, frames of group lists get `name` as their title.
    static void RecoverColumnProfile(bool import, CString name, CString file);
    // Shows every list of g_listRegistry as "FactorySetting.ini" beside the executable says. A reading that fails is
    // reported in a message box; that list stays as it is.
    static void ApplyColumnProfile();
    // Whether a column carries this heading: that at *index, else the first of all. If so, *found is set and added to
    // `seen`. An *index that is no column gives false.
    bool DoesColumnExist(const CString& heading, int* index, int* found, CArray<int, int>* seen);

    // --- Deal slip profiles. Names are without prefix; a host that refuses is reported in a message box.

    // Stores a profile of m_mapDealSlipProfiles; an empty text if there is none or profiles are not in use.
    void SaveColumnProfileDealSlipReport(CString name);
    // Empties the stored profile; map and names are the caller's.
    void DeleteProfile(CString name);
    void SaveLastInvokedProfile(CString name);
    void SaveDefaultProfile(CString name);
    void SaveDealSlipReportProfileNames(CStringArray& names);

    // --- Rows

    // Selects and focuses the row, leaves other selections alone, scrolls it into view. Always 1.
    int SetRowFocus(int row);
    // Copies the selected rows: each cell followed by a tab, each row by CR LF.
    void BuildTable();
    // Puts m_csClipboard on the clipboard. 1, or 0 if the clipboard or its memory could not be had.
    int CopyToClipboard();
    // A number's text with a comma before each group of three digits; sign and fraction stay as they are.
    CString GetCommaData(CString& value);

    // --- Sorting. Orders are -1 rising, 1 falling. Rows are sorted by their texts, asked for once per row; how two
    // rows compare stands in core/RowSort.h. Rows that compare equal keep their order.

    // Clicks on a column from code, twice where m_nSortCol is the last sort column (as it normally is), else once. So a
    // new column ends falling whatever `order` says, and the sorted one ends with -order. A column that does not show
    // stands for place 0. Always 1.
    int SortOn(int columnIndex, int order);
    // A step of the auto-sort: sorts by the place, in the order that stood. Nothing while auto-sort is off. `order` is
    // not read. Always 1.
    int SortOnVisibleIndex(int place, int order);
    // Compares two rows by the list's present sort, text by text: the rule that every sort here follows. Without a list
    // -1. The last argument is a CCommonListCtrl*.
    static int CALLBACK CompareRows(LPARAM row1, LPARAM row2, LPARAM list);
    // Sorts `count` elements of `size` bytes, each beginning with a row number as an int, by the list's present sort.
    // Stable; stays inside the array whatever the rows compare to. Nothing if an element is too small for an int.
    void SendInfoForQSort(void* base, size_t count, size_t size);
    // Takes the arrow away and forgets the sort. Nothing while locked, or where lock sort is not available, or
    // unsorted.
    void ClearSortIndicators();
    // Locks or unlocks the present sort and stores it; tells the user if there is no sort to lock.
    void OnLockUnlockSortCheck();
    // Shows the check box of the first header item.
    void SetHeaderCheckbox();

    // Adds a level. 1, also for a heading that no column has (it adds no level); 0, after telling the user, for a
    // column that does not show.
    int BuildSortColumnOrderArray(CString heading, int order);
    // Drops the levels of hidden columns; switches the multi-column sort off if the user agreed to that in the alert
    // below. Whether a level was dropped.
    bool RemoveNonVisibleColumnsFromSortOrder();
    // Before a column is hidden: asks the user if it is sorted by, at most once per `*shown`, which it then sets to 1.
    // False: the user said no.
    bool AlertUserOnRemovalOfSortColumns(CString heading, int* shown);
    // Blanks the images of all header items and, with `show`, gives each level its arrow. Nothing if `draw` is 0.
    void DrawHeaderSortImageForMultiSortMode(int draw, bool show);
    // Where SaveSortOrderProfile gets its names; borrowed. Null, the default: the levels are not written.
    void SetSortOrderChooser(quor::list::SortOrderChooser* chooser);
    // Will show the chooser of the multi-column sort; there is none yet.
    void OnListColumnSortOrder();

    // Whether auto-sort is on; a market watch in the host's optimised mode switches it off.
    int IsAutoSortEnabled();
    // Starts the auto-sort timer, and sorts at once if there are rows; kills the timer if auto-sort is off.
    void InitializeAutoSort();
    // Reads the stored auto-sort: ticked, place, order. 1, or -1 if the place is beyond the columns (then 0 is taken).
    int ReadAutoSort();
    // Writes what ReadAutoSort reads; place and order only while auto-sort is on.
    void SaveAutoSort();
    // Switches auto-sort off.
    void KillAutoSortTimer();

    // --- Appearance

    // Applies the application-wide appearance to every registered list that has none of its own, or to all.
    static void ApplyGeneralSettings(bool force);
    // Gives a list, of this class or a plain one, another face and size (points, as text). Nothing changes if the
    // window is not alive, has no font, or the size comes to a height of -1. `id` is not read.
    static void SetListFontProperty(CWnd* list, int id, CString name, CString size);
    // Turns the grid lines on or off, alternately.
    void GridLines();
    // Takes the stored state of the grid lines; if that is on, the lines are switched over, not on. Saving is silent.
    void ReadGridLineStatus();
    void SaveGridLineStatus();
    // Kept for hosts; cells have no colour of their own.
    int GetItemColor(int row, int place);
    void SetItemColor(int row, int place, COLORREF color);
    // Open the process's dialog of colours, font and keywords on this list, and that of the user's own colours and
    // keywords. Nothing on a market watch.
    afx_msg void OnCustomize();
    afx_msg void OnUserCustomize();
    // The first parent of `list` that has a window and is a CBCGPDialog, CBCGPFormView or CBCGPDialogBar, or null.
    static CWnd* GetListCtrlDlgParent(CWnd* list);

    // --- Process-wide

    static CString m_csGetDialogPosPath;  // file of dialog positions
    static CString m_csGetRecoveryFile;   // file of recovery settings

    static CArray<CCommonListCtrl*, CCommonListCtrl*> g_listRegistry;       // lists with a customisable parent
    static CArray<CCommonListCtrl*, CCommonListCtrl*> g_groupListRegistry;  // lists with m_bGroupList

    // --- State that owners set and read. Ints are flags unless told otherwise.

    // Column state, by columnIndex: see ColumnRecords.h.
    CArray<sQuorColInfo, sQuorColInfo> m_arrColumns;
    CArray<int, int> m_arrOrder;
    CArray<int, int> m_arrWidth;
    CArray<sVisibleColumn, sVisibleColumn> m_arrVisible;
    CArray<sMnmQuorColInfo, sMnmQuorColInfo> m_arrMnmColumns;  // always empty
    CArray<int, int> m_arrDefaultColumns;                      // default places, empty: all columns

    int m_nFirstColumn = 0;       // columnIndex at place 0
    int m_nBaseColumnCount = 0;   // number of built-in columns, taken by InsertColumnsForList
    CString m_csListName;         // section of all settings of this list
    int m_bUseColumnProfile = 1;  // columns are read from and written to the store

    // Sorting. Places, but for m_nLockSortColumn; orders are -1 rising, 1 falling.
    int m_nSortCol = 0;
    int m_nLastSortCol = -1;
    int m_nSortOrder = 1;            // CommonInitList makes it -1
    int m_nSortDataType = 0;         // iDataType of the sorted column
    int m_bSortDisabled = 0;         // clicks on the header do not sort
    int m_bSortEnabled = 1;          // the multi-column sort may run
    int m_nMinMultiSortColumns = 2;  // what the chooser requires
    BYTE m_bSorted = 0;
    BYTE m_bLockSortEnabled = 0;
    BYTE m_bSortLocked = 0;
    int m_nLockSortColumn = -1;  // columnIndex
    int m_nLockSortOrder = 0;
    BYTE m_bMultiSortEnabled = 0;
    BYTE m_bMultiSortActive = 0;
    CArray<ColumnSortInfo, ColumnSortInfo> m_arrSortOrder;
    CZTMap<CString, const char*, int, int> m_mapSortOrderByName{kListMapBuckets};
    CArray<DWORD_PTR, DWORD_PTR> m_arrSavedItemData;  // row data held during a sort
    BYTE m_bAutoSort = 0;
    UINT_PTR m_nAutoSortTimer = 0;

    // What the menus and keys offer.
    int m_bWriteExcel = 1;
    int m_bParentChildExport = 0;  // export has a parent/child submenu, ticked by the three below
    int m_bExportChild = 0;
    int m_bExportParent = 0;
    int m_bExportBoth = 0;
    int m_bExportSelected = 0;
    int m_bUserColumnsMenu = 0;
    int m_bDealSlipEnabled = 0;
    int m_bCopyEnabled = 1;
    int m_bGridLinesMenu = 1;
    int m_bUserCustomizeEnabled = 0;
    int m_bHideView = 0;               // the column chooser has no View button
    int m_bNoSave = 0;                 // the column chooser does not save
    CStringArray m_arrProtectedNames;  // headings that the choosers may not remove

    // Looks.
    int m_bUseColors = 1;         // the list shows the colours of m_Appearance
    int m_bCustomizeEnabled = 1;  // the list takes part in customised appearance
    int m_bHeaderToolTips = 1;    // each column gets a header tool tip
    int m_bFillEmptyArea = 0;     // erase fills only what no cell covers
    int m_bHeaderCheckBox = 0;    // header of column 0 has a check box
    int m_bCustomDraw = 0;        // derived lists may paint by custom draw
    BYTE m_bRedrawEnabled = 1;    // clear while AutoSizeColumns runs
    BYTE m_bGroupList = 0;        // member of a column group
    BYTE m_bGridLines = 0;
    BYTE m_bCustomized = 0;  // the list has an appearance record of its own
    cCustomizedAppearanceSettings m_Appearance;
    // A cell under the mouse has a tool tip: its whole text, in its place and its font, if the cell does not show that,
    // or what m_pfnToolTipText gives, beside the cell. It follows the text while it shows.
    int m_bCellToolTips = 0;
    // Of the header; created on first use. Off while the mouse is on a heading that shows whole and that it would
    // repeat.
    CToolTipCtrl m_ToolTip;
    TextColorCallback m_pfnGetTextColor = nullptr;
    TextColorWithLineCallback m_pfnGetTextColorWithLine = nullptr;
    ToolTipTextCallback m_pfnToolTipText = nullptr;

    // Exports. Profile names are without their stored prefix; the map owns its arrays.
    CString m_csClipboard;  // what BuildTable built
    CString m_csLastInvokedProfile;
    CString m_csDefaultProfile;
    CStringArray m_arrProfileNames;
    CZTMap<CString, const char*, CArray<int, int>*, CArray<int, int>*> m_mapDealSlipProfiles{kListMapBuckets};
    CZTMap<int, int, int, int> m_mapDealSlipColumns{kListMapBuckets};  // place in the report to columnIndex
    CArray<int, int> m_arrVisibleRows;                                 // rows of a "selected" export
    void* m_pExportFormat = nullptr;                                   // passed through to the spreadsheet; borrowed

    int m_bRowDragEnabled = 0;

    // --- The framework's operations

    BOOL DestroyWindow() override;
    BOOL PreTranslateMessage(MSG* message) override;
    // With m_bCellToolTips: a number of the cell at the point, with its rectangle in `info`; -1 if it has no tip. Tips
    // of cells ask here, so that a derived list may refuse.
    INT_PTR OnToolHitTest(CPoint point, TOOLINFO* info) const override;
    // The owner paints: forwards WM_DRAWITEM to it with the list's control id. While such a forward is under way, a
    // WM_DRAWITEM that comes back reflected returns at once, so that an owner that does not paint is no endless loop.
    void DrawItem(LPDRAWITEMSTRUCT item) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PreSubclassWindow() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    afx_msg void MeasureItem(LPMEASUREITEMSTRUCT item);
    afx_msg LRESULT OnSetFont(WPARAM font, LPARAM redraw);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* former);
    afx_msg void OnKillFocus(CWnd* next);
    afx_msg LRESULT OnInsertRow(WPARAM, LPARAM);
    afx_msg LRESULT OnDeleteRow(WPARAM row, LPARAM);
    afx_msg void OnDestroy();
    afx_msg void OnTimer(UINT_PTR id);
    // A click on the header: sorts by the column, rising if it is a new one, else the other way round. Nothing while
    // locked, disabled, or sorted by several columns. Rows of an owner-data control are left to the derived list.
    afx_msg void OnLvnColumnclick(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

    // Whether this list is a market watch; that class overrides it.
    virtual bool IsMarketWatch() const { return false; }
    // The click handlers that an auto-sort step runs: here the base's. A grid runs its own and then this one; a
    // multi-line list only its own.
    virtual void OnAutoSortClick(NMHDR* header, LRESULT* result);
    // The timer of this number was set or killed. A grid has another use for it.
    virtual void OnAutoSortTimerTaken();

    // What kinds of list do in their own way. On a market watch the first three do their work and answer true:
    // save under the parent window's title; export to a file if the frame's title is `name`; import from a file.
    virtual bool SaveMarketWatchProfile();
    virtual bool ExportMarketWatch(const CString& name, const CString& file);
    virtual bool ImportMarketWatch(const CString& file);
    // Columns were numbered anew: `moved` has the new columnIndex for each former one, -1 for a column that went.
    // Carries the numbers kept elsewhere along, which end with their columns: here lock, levels and keyword column.
    virtual void OnColumnsMoved(const std::vector<int>& moved);
    // The columns stand as they were built anew; not `shown`: the control still has the former ones. Here an open
    // dialog that shows them takes them over; runs before the parent is told.
    virtual void OnColumnsRebuilt(bool shown);
    // Columns were imported and the parent was told; here nothing is left to do.
    virtual void OnColumnsImported();
    // On a category list: makes a user column read-only.
    virtual void SetUserColumnReadOnly(int columnIndex);
    // The heading by which the column of a header item is known, for its width to be saved; here the one that it shows.
    virtual CString KnownHeading(int item, const CString& shown);
    // The text that a cell is painted with; here GetItemText's.
    virtual CString ShownText(int row, int place);
    // The cell at a point of the client area; false if there is none.
    virtual bool CellAt(CPoint point, int& row, int& place);
    // The rectangle of a cell's label, as it is painted; false if the list does not paint that cell. The text in it
    // keeps away from the edge that it is aligned to, as a grid's does.
    virtual bool LabelRect(int row, int place, CRect& label);
    // Whose cells make the data width of a column: the rows from `first` to `last`, none if `last` is before it. False:
    // the control has the texts and measures them itself. Here the rows in view of an owner-data control.
    virtual bool RowsToMeasure(int& first, int& last) const;

    // Where callbacks that are members of CWnd run; null: nowhere.
    CWnd* callbackOwner() const;
    // Whether arrays and control tell of the same columns, so that these are worth storing.
    bool ColumnsStand() const;
    // Makes the control ask for its row height again, as after a change of size.
    void RemeasureRows();
    // What is to be painted of a row becomes the whole of it, across the window.
    void WidenUpdate();
    // Lays the header's tool tips over the header items as they stand now.
    void LayOutHeaderToolTips();
    // Takes all columns off the control; the arrays stay.
    void DeleteAllColumns();
    // The rectangle of the rows that are in view, over all columns; empty without rows.
    CRect RowsInView();
    // The lock that is stored under the list's name; its end if it names a column that the list does not have.
    void ReadSortLockInfo();
    void DropSortLockOutsideColumns();
    // Around whatever numbers or places columns anew. What was kept by number stays with the heading of its column
    // (OnColumnsMoved), sorted places and arrows follow theirs, or end with them. The first is taken before, the second
    // gives the new numbers, the last comes once the control shows the columns. A lock that moved with columns worth
    // storing is stored with them.
    quor::list::ColumnNumbers TakeColumnNumbers() const;
    std::vector<int> FollowNumbers(const quor::list::ColumnNumbers& before, bool imported);
    void FollowPlaces(const quor::list::ColumnNumbers& before, const std::vector<int>& moved);
    void SaveMovedSortLock();
    // The levels of the multi-column sort in a section of the store. `name` is what a line in the log calls them.
    void ReadSortLevels(const CString& section, const CString& name);
    void WriteSortLevels(const CString& section);

    bool m_columnsChanging = false;  // they are being read or replaced
    bool m_autoSortRead = false;     // from the store; so with the grid lines
    bool m_gridLinesRead = false;

private:
    struct Parts;
    class CellTip;  // the tool tip of the cell under the mouse

    // Life.
    void StartOnLivingControl();
    // Columns.
    void InsertColumnsForList_Recursive(int* unused);
    bool TakeColumnsFrom(CString file);
    std::vector<CString> Headings() const;
    void InsertColumnRecord(int place, int columnIndex, int width);
    void NotifyColumnsRebuilt(LPARAM imported);
    CRect HeaderToolRect(int place);
    bool HeadingSaysTheSame(int place);
    void QuietHeaderToolTip(const MSG& move);
    int LabelIndent(int place);
    void FitColumnToView(const NMHEADER& click);
    void RemoveHeaderToolTip(int place);
    // Painting.
    bool IsHeaderPaint(LPARAM notification) const;
    void FollowColumnOrder();
    void InvalidateFrom(int row);
    void InvalidateFocusedRow();
    // Appearance.
    bool ReadRecoverySetting(const char* section, CString& record);
    void ReadAppearance();
    void ReadUserAppearance();
    void ApplyAppearanceFont();
    void ApplyAppearanceColors();
    void ReplaceFont(const LOGFONT& description);
    void ReadCustomizeRecord(const CString& record);
    void WriteCustomizeRecord();
    void ReadUserCustomizeRecord(const CString& record);
    // Deal slip profiles.
    void ReadDealSlipState();
    void FreeDealSlipProfiles();

    // Sorting.
    void OnListKey(WPARAM key);
    void ClickColumn(int place);
    void SortRows();
    std::vector<DWORD_PTR> SaveRowData();
    std::vector<DWORD_PTR> NumberRows();
    void ReleaseRowData();
    void TakeSortDataType();
    bool RowsAreNative() const;
    int PlaceOfColumn(int columnIndex) const;
    void ShowSortImage(int place, int image);
    void AfterSort(bool touchesFirstColumn);
    void SetSortLock(bool locked);
    void EndSortLock();

    std::unique_ptr<Parts> m_parts;
};

// CMrktWatchListCtrl: the list of a market watch window.
//
// Its rows are items of the native control without text: the item data points to a pair whose second member points to
// the host's record, and each cell's text is asked of the host (MrktWatchGetColumnText). What sets it apart is that the
// columns belong to all market watches: 112 built-in ones, which the host puts into m_arrColumns, and user columns from
// index 112 on, read from one store (UserSettingMWColumns). How they show is kept per watch name, in the section
// "MarketWatchNew_<name>"; the name of a running watch is its parent window's title.
//
// Rows are drawn by the owner (DrawItem forwards); a row that is painted erases itself, so the list erases only what no
// row covers. A market watch is a group list: it is in g_groupListRegistry only. GUI thread only.
#pragma once

#include "quor/list/CommonListCtrl.h"

#include <memory>

struct sMWStruct;  // the host's record of a row; only two texts at fixed offsets are read here

// What a row's item data points to.
struct MrktWatchRowData {
    void* pOwn = nullptr;          // the host's
    sMWStruct* pRecord = nullptr;  // null: the row shows nothing
};

class QUOR_CONTROLS_API CMrktWatchListCtrl : public CCommonListCtrl {
    DECLARE_DYNAMIC(CMrktWatchListCtrl)

public:
    CMrktWatchListCtrl();
    ~CMrktWatchListCtrl() override;

    // --- Columns

    // Reads lock, user columns and, if the order array is empty, this watch's profile (else the defaults, else all
    // columns), and builds the columns. A user column that is hidden comes back at the end. Once per window.
    void InsertColumnsForList(int* unused) override;
    // Adds one column with its records: `place` is where the control gets it, `order` what the order array says of it,
    // -1 for a hidden column. Places from `order` on move up. Returns the new columnIndex.
    int InsertMrktColumn(int place, CString name, int format, int width, int order);
    // Writes the columns under a watch's name, in the order in which the header stands, then the user columns of all
    // watches and the grid lines. A host that refuses the first is reported in a message box; the rest still goes on.
    // What was not read or built yet is not written. The user columns are written by a watch that changed them, or
    // whose reading the store still matches: none at all never replace what could not be read.
    void SaveColumnProfile(CString name);
    using CCommonListCtrl::SaveColumnProfile;
    // Writes this watch to a file. A failure is not reported.
    void ExportColumnToFile(CString name, CString file);
    // Replaces the columns by those of a file, found under the title of the parent frame; built-in columns are known by
    // name there; the parent is told (WM_LIST_COLUMNS_REBUILT, 0). A file without the watch shows the 112 built-in
    // columns and tells nobody; the user columns that watches share stay in their store, and so does their count.
    void ImportColumnsFromFile(CString file);
    afx_msg void ColFitToContentMarketListControl();
    afx_msg void ColFitToHeaderMarketListControl();

    // --- Texts

    // The host's text for the column that stands at `place`; empty for a row without a record.
    CString GetItemText(int row, int place) override;
    // The flags change nothing.
    CString GetItemText(int row, int place, bool mapColumn, bool forExport) override;
    using CCommonListCtrl::GetItemText;
    // One of two texts of the row's record; empty without a record.
    CString GetTradingSymbolOrSymbol(bool tradingSymbol, int row);
    // The text of a user column (columnIndex above 111), made anew from the host's texts of the record. 1; 0 if there
    // is no such column, if the formula refers to no column or back to its own cell, or if its values run together
    // (then a message box says so).
    int GetCustomColumnText(sMWStruct* record, int columnIndex, CString& text);

    // --- Looks. SetBkColor and SetTextColor also repaint.

    void ShowFontDlg();
    // Size in points, as text; style 1 bold, 2 italic, 3 both. Nothing if a text is empty.
    void SetListFont(CString face, CString size, int style);
    void SetBkColor(COLORREF color);
    void SetTextColor(COLORREF color);
    void SetBkColorFromDlg();
    void SetTxtColorFromDlg();
    // A check box at the left of a cell. The box goes into `box` if that is given; row, column and colours are not
    // read.
    void DrawCheckbox(int row, int column, CDC* dc, COLORREF, COLORREF, CRect& cell, CRect* box, int checked);
    // The row and the column at a client point; the column counts as the columns stand on screen. False outside of
    // rows, or not in report view.
    bool HitTestEx(CPoint& point, int* row, int* column);

    // --- Sorting by levels

    // Sorts the rows' data; the items stay. Then the parent is told (WM_LIST_ROWS_REORDERED).
    void SortListOnMultiplelevel() override;
    // Under the name in SortProfileCombo; nothing without one.
    void ReadSortOrderProfile() override;
    void SaveSortOrderProfile() override;
    // Active levels that are read end a locked sort.
    void ReadMultiSortOrderProfile(CString name);
    void SaveMultiSortOrderProfile(CString name);

    // --- State

    static CMrktWatchListCtrl* g_pLastMarketWatch;  // the one constructed last, null once it is gone
    static int g_nMarketWatchesBuilt;               // InsertColumnsForList calls that finished

    COLORREF ListBkColor = CLR_DEFAULT;  // CLR_DEFAULT: never set, the control's own
    COLORREF ListTextColor = CLR_DEFAULT;
    CRect ClientRect;                       // kept by OnSize
    CComboBox* SortProfileCombo = nullptr;  // the window's watch names; borrowed

protected:
    bool IsMarketWatch() const override { return true; }
    // All rows: the host has their texts.
    bool RowsToMeasure(int& first, int& last) const override;
    bool SaveMarketWatchProfile() override;
    bool ExportMarketWatch(const CString& name, const CString& file) override;
    bool ImportMarketWatch(const CString& file) override;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    struct Parts;

    MrktWatchRowData* RowData(int row);
    // Where a watch keeps what is its own.
    static CString WatchSection(const CString& name);
    CString ParentTitle() const;
    void TakeUserColumns(const CString& text);
    bool MayWriteUserColumns(const CString& own);
    void WriteUserColumns(const CString& own);
    bool TakeColumnsFrom(CString file);
    void ReadStoredPlaces();
    void ReadGridLines();
    void ShowColumns(bool placesUserColumns);
    int WidthOfHeading(const char* heading) const;
    void EraseBesideRows(CDC& dc);
    void TakeFont(const LOGFONT& description);

    std::unique_ptr<Parts> m_parts;
};

// The plain records on which every list stands: a column, its link to a place on screen, a sort level, an appearance.
//
// A column is known by its columnIndex, a stable index into the list's column array; its place is where it stands on
// screen, -1 when hidden. Built-in columns come first in the array, user columns after them. Four arrays of a list are
// kept in step: column array (sQuorColInfo), order array (columnIndex to place), width array, visible array.
#pragma once

#include "quor/platform/Base.h"

// What szColumnName holds, its terminator included.
inline constexpr int kColumnNameSize = 64;

// Values of sQuorColInfo::iFormat: the list column formats, and one that asks for a header image from the start.
enum ColumnFormat { kFormatLeft = 0, kFormatRight = 1, kFormatCentre = 2, kFormatHeaderImage = 2048 };

// Values of sQuorColInfo::iDataType: how the texts of a column are read and compared. Stored columns of older hosts
// carry all nine. The last three sort by a click only: among the levels of a multi-column sort their rows are equal.
enum ColumnDataType {
    kTypeInteger = 1,
    kTypeDecimal = 2,  // a grid groups its digits by thousands
    kTypeMixed = 3,    // texts with numbers in them, compared naturally
    kTypeLongInteger = 4,
    kTypePlainDecimal = 5,  // not grouped
    kTypeDateTime = 6,
    kTypeWatchDecimal = 7,  // the user columns of market watches
    kTypeText = 8,          // compared by bytes
    kTypeTrendDecimal = 9,
};

// What a list shows until somebody chose its colours.
inline constexpr COLORREF kDefaultListBackground = RGB(0, 0, 0);
inline constexpr COLORREF kDefaultListText = RGB(0, 255, 0);

// One column that a list can show. Copied member by member.
struct sQuorColInfo {
    char szColumnName[kColumnNameSize] = {};  // heading; also the column's identity in profiles: equal headings are one
    int iWidth = 0;                           // pixels, at insertion
    int iFormat = kFormatLeft;                // ColumnFormat
    int iDataType = 0;                        // ColumnDataType; any other value: its rows are equal
    CString csExpression;                     // formula in id form; empty for a built-in column
    CString csToolTip;                        // formula as displayed, also the header tip; not empty: a user column
};

// Writes a heading into a record. A name over 63 characters is cut; the record is never overrun.
QUOR_CONTROLS_API void setColumnName(sQuorColInfo& column, const char* name);

// A user column as a stored profile makes it: right aligned, decimal, 80 pixels until the profile's width is applied.
QUOR_CONTROLS_API sQuorColInfo makeUserColumn(const char* name, const char* expression, const char* toolTip);

// A column on screen: which place shows which column.
struct sVisibleColumn {
    int iVisiblePosition = 0;  // place
    int iColumnIndex = 0;      // index in the column array

    sVisibleColumn() = default;
    sVisibleColumn(int visiblePosition, int columnIndex)
        : iVisiblePosition(visiblePosition), iColumnIndex(columnIndex) {}
};

// One level of a multi-column sort.
struct ColumnSortInfo {
    int iColumnIndex = 0;  // never a place
    int iSortOrder = 0;    // -1 rising values, 1 falling
    CString csColumnName;  // the heading when the level was built
};

// Element of a second column array that hosts of an older kind hand about. Nothing here reads or writes a field of it.
struct sMnmQuorColInfo {};

// The appearance of a list, and the type of the application-wide one.
//
// The keyword arrays run in parallel by index and are made on demand. Who owns them is deliberately loose, as hosts
// expect it: assignment makes fresh arrays for every pointer that the source has and leaves the target's pointer alone
// where the source has none, and never frees what stood there before; the copy constructor shares the source's arrays;
// the destructor frees none. A list frees the arrays of its own record when it dies.
struct QUOR_CONTROLS_API cCustomizedAppearanceSettings {
    COLORREF crBackground = kDefaultListBackground;
    COLORREF crText = kDefaultListText;
    // Customise level: each keyword and its colour.
    CArray<DWORD, DWORD>* pKeywordColors = nullptr;
    CStringArray* pKeywords = nullptr;
    // User level: each keyword, its text colour and its background colour.
    CArray<DWORD, DWORD>* pUserTextColors = nullptr;
    CArray<DWORD, DWORD>* pUserBackColors = nullptr;
    CStringArray* pUserKeywords = nullptr;
    int iKeywordColumn = -1;  // columnIndex whose cells the keywords test; -1 none
    BYTE bKeywordsEnabled = 0;
    CString csFontName = "MS Shell Dlg 2";
    CString csFontSize = "8";  // points, kept as text

    cCustomizedAppearanceSettings() = default;
    cCustomizedAppearanceSettings(const cCustomizedAppearanceSettings& source) = default;
    cCustomizedAppearanceSettings& operator=(const cCustomizedAppearanceSettings& source);
    ~cCustomizedAppearanceSettings() = default;

    // Frees the five arrays and clears their pointers. Only for the record's owner: copies may share them.
    void freeKeywordArrays();
};

// The framework's hash map with its table size chosen at construction. Lists use 100 buckets, allocated on first
// insert.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CZTMap : public CMap<KEY, ARG_KEY, VALUE, ARG_VALUE> {
public:
    explicit CZTMap(UINT buckets, BOOL allocateNow = FALSE) { this->InitHashTable(buckets, allocateNow); }
};

inline constexpr UINT kListMapBuckets = 100;

// TrendStore: what the cells of trend columns were painted with last, so that the next paint can tell a rise from a
// fall; and which of them show a change, so that its end is found without a walk over what is stored.
//
// A record belongs to a row: it moves, ends and is made anew with it (the operations on rows below), so that no row
// takes over what another one showed. Rows that come by LiveRows::add have none until the columns are extended or set
// again. There is one exception: a row of classic mode that is deleted while it is filtered out leaves its record
// behind, and the records after it stay where they were; hosts set the columns anew after such deletes.
//
// Knows no text but the one that it is asked about, and no clock: every time is the caller's, in milliseconds, may
// wrap, and must not step back. Row numbers: see FilterListBaseData.h. Bad numbers have no record.
#pragma once

#include "quor/platform/Base.h"

#include <cstddef>
#include <cstdint>
#include <vector>

enum TrendValue : std::uint8_t {
    kTrendFresh = 0,  // no value seen yet
    kTrendRose = 1,
    kTrendFell = 2,
    kTrendFlat = 3,
    kTrendNone = 255,  // the row has no record
};

// The trend of one cell.
struct sTrendValues {
    double lastValue = 0;         // what the next paint compares with
    double newValue = 0;          // of the latest paint
    std::uint8_t trend = 0;       // TrendValue
    std::int32_t changeTime = 0;  // of the change that is shown; 0: none is
};

namespace quor::grid {

// How a cell is to be painted: as the one before it, in the row's text colour, or in one of the trend colours.
enum class TrendPaint { unchanged, normal, positive, negative };

struct TrendTime {
    std::int32_t now = 0;
    std::int32_t interval = 0;  // how long a change is shown
};

class TrendStore {
public:
    static constexpr int kLastColumn = 4095;  // the highest columnIndex with records

    // ---- Columns
    // Forgets everything; `columns`, each counted once, get a fresh record for every row. One that is not below
    // `columnCount` or above kLastColumn is kept by name alone.
    void set(const std::vector<int>& columns, int columnCount, int rowCount);
    // As set, or moved since; in that order.
    std::vector<int> columns() const;
    bool isActive() const { return !m_columns.empty(); }
    // Columns were numbered anew: `moved` has the new columnIndex for each former one, -1 for one that went. One kept
    // by name alone ends if a column of the new set has its number.
    void moveColumns(const std::vector<int>& moved, int columnCount);

    // ---- Cells
    // The cell is painted with this text now.
    TrendPaint paint(int columnIndex, int mapIndex, const char* text, const TrendTime& time);
    // Ends the changes of a column that were shown for the interval. Appends the rows' map indices.
    void fade(int columnIndex, const TrendTime& time, std::vector<std::int32_t>& ended);

    // ---- Rows
    void insertRow(int mapIndex);  // a fresh record; those behind move
    void eraseRow(int mapIndex);   // those behind close up
    void forgetRow(int mapIndex);  // in its place
    void clearRows();              // the columns stay
    void extend(int rowCount);     // a fresh record for each row behind those that were there
    // Records by the new map index, each named by its former one.
    void reorderRows(const std::vector<std::int32_t>& mapIndices);

private:
    struct Change {
        std::int32_t mapIndex;
        std::int32_t time;
    };
    struct Column {
        int columnIndex;
        bool hasRecords;
        std::vector<sTrendValues> records;  // by map index
        // In the order of their times, those before `first` taken. A change whose time is not that of its record is
        // over, or was followed by another one.
        std::vector<Change> changes;
        std::size_t first = 0;
        std::size_t shown = 0;  // records that show a change

        sTrendValues* recordOf(int mapIndex);
        void show(int mapIndex, sTrendValues& record, std::int32_t now);
        void end(sTrendValues& record);
        void dropOverChanges();
        void dropTakenChanges();
        template <class Renumber>
        void renumberChanges(Renumber renumber);
    };

    Column* columnOf(int columnIndex);
    void numberColumns();

    std::vector<Column> m_columns;
    std::vector<std::int32_t> m_places;  // by columnIndex: where the column stands, -1 nowhere
};

// The columns as they are stored: numbers with a blank behind each. Any text can be read: what is no number is 0.
CString formatTrendColumns(const std::vector<int>& columns);
std::vector<int> parseTrendColumns(const CString& text);

}  // namespace quor::grid

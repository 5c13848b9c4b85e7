// Times only rise, and all cells of a grid show their changes equally long: so the changes of a column end in the order
// in which they came, and a fade takes them from the front of a queue. A change that is followed by another one of the
// same cell stays in the queue and is known by its time; the queue is swept when most of it is such.
#include "quor/grid/core/TrendStore.h"

#include "quor/foundation/core/StoredFields.h"

#include <algorithm>
#include <utility>

namespace quor::grid {

namespace {

constexpr std::size_t kFewChanges = 64;  // not worth sweeping

// The numbers wrap.
bool isOver(std::int32_t since, const TrendTime& time) {
    const auto shown = static_cast<std::uint32_t>(time.now) - static_cast<std::uint32_t>(since);
    return static_cast<std::int32_t>(shown) >= time.interval;
}

sTrendValues noRecord() {
    sTrendValues record;
    record.trend = kTrendNone;
    return record;
}

}  // namespace

// ---- One column

sTrendValues* TrendStore::Column::recordOf(int mapIndex) {
    if (mapIndex < 0 || static_cast<std::size_t>(mapIndex) >= records.size()) return nullptr;
    sTrendValues& record = records[static_cast<std::size_t>(mapIndex)];
    return record.trend == kTrendNone ? nullptr : &record;
}

// A change at time 0 would show as none.
void TrendStore::Column::show(int mapIndex, sTrendValues& record, std::int32_t now) {
    const std::int32_t time = now == 0 ? 1 : now;
    const std::int32_t former = std::exchange(record.changeTime, time);
    if (former == time) return;
    if (former == 0) ++shown;
    if (changes.size() - first > 2 * shown + kFewChanges) dropOverChanges();
    changes.push_back({mapIndex, time});
}

void TrendStore::Column::end(sTrendValues& record) {
    record.trend = kTrendFlat;
    if (std::exchange(record.changeTime, 0) != 0) --shown;
}

void TrendStore::Column::dropOverChanges() {
    dropTakenChanges();
    std::erase_if(changes, [this](const Change& change) {
        const sTrendValues* const record = recordOf(change.mapIndex);
        return !record || record->changeTime != change.time;
    });
}

void TrendStore::Column::dropTakenChanges() {
    changes.erase(changes.begin(), changes.begin() + static_cast<std::ptrdiff_t>(std::exchange(first, 0)));
}

// The records are numbered anew; a change whose row went is numbered -1.
template <class Renumber>
void TrendStore::Column::renumberChanges(Renumber renumber) {
    for (Change& change : changes) change.mapIndex = renumber(change.mapIndex);
    shown = static_cast<std::size_t>(
        std::count_if(records.begin(), records.end(), [](const auto& record) { return record.changeTime != 0; }));
}

// ---- Columns

TrendStore::Column* TrendStore::columnOf(int columnIndex) {
    if (columnIndex < 0 || static_cast<std::size_t>(columnIndex) >= m_places.size()) return nullptr;
    const std::int32_t place = m_places[static_cast<std::size_t>(columnIndex)];
    return place == -1 ? nullptr : &m_columns[static_cast<std::size_t>(place)];
}

void TrendStore::numberColumns() {
    m_places.clear();
    for (std::size_t place = 0; place < m_columns.size(); ++place) {
        const int columnIndex = m_columns[place].columnIndex;
        if (columnIndex < 0 || columnIndex > kLastColumn) continue;
        const auto index = static_cast<std::size_t>(columnIndex);
        if (index >= m_places.size()) m_places.resize(index + 1, -1);
        m_places[index] = static_cast<std::int32_t>(place);
    }
}

void TrendStore::set(const std::vector<int>& columns, int columnCount, int rowCount) {
    m_columns.clear();
    for (const int columnIndex : columns) {
        if (std::ranges::find(m_columns, columnIndex, &Column::columnIndex) != m_columns.end()) continue;
        Column& column = m_columns.emplace_back();
        column.columnIndex = columnIndex;
        column.hasRecords = columnIndex >= 0 && columnIndex < columnCount && columnIndex <= kLastColumn;
        if (column.hasRecords) column.records.resize(static_cast<std::size_t>(std::max(rowCount, 0)));
    }
    numberColumns();
}

std::vector<int> TrendStore::columns() const {
    std::vector<int> numbers;
    for (const Column& column : m_columns) numbers.push_back(column.columnIndex);
    return numbers;
}

void TrendStore::moveColumns(const std::vector<int>& moved, int columnCount) {
    std::vector<Column> former;
    former.swap(m_columns);
    for (Column& column : former) {
        int& number = column.columnIndex;
        const bool hadColumn = number >= 0 && static_cast<std::size_t>(number) < moved.size();
        if (hadColumn) number = moved[static_cast<std::size_t>(number)];
        const bool hasColumn = number >= 0 && number < columnCount;
        if (hadColumn != hasColumn || std::ranges::find(m_columns, number, &Column::columnIndex) != m_columns.end())
            continue;
        m_columns.push_back(std::move(column));
    }
    numberColumns();
}

// ---- Cells

TrendPaint TrendStore::paint(int columnIndex, int mapIndex, const char* text, const TrendTime& time) {
    Column* const column = columnOf(columnIndex);
    if (!column) return TrendPaint::normal;
    sTrendValues* const record = column->recordOf(mapIndex);
    if (!record) return TrendPaint::unchanged;
    record->newValue = quor::atof(text);
    if (record->trend == kTrendFresh) {
        record->trend = kTrendFlat;
        record->lastValue = record->newValue;
        return TrendPaint::normal;
    }
    if (record->newValue != record->lastValue) {
        record->trend = record->newValue > record->lastValue ? kTrendRose : kTrendFell;
        record->lastValue = record->newValue;
        column->show(mapIndex, *record, time.now);
    } else if (record->changeTime == 0) {
        return TrendPaint::normal;
    } else if (isOver(record->changeTime, time)) {
        column->end(*record);
        return TrendPaint::normal;
    }
    return record->trend == kTrendRose ? TrendPaint::positive : TrendPaint::negative;
}

void TrendStore::fade(int columnIndex, const TrendTime& time, std::vector<std::int32_t>& ended) {
    Column* const column = columnOf(columnIndex);
    if (!column) return;
    for (; column->first < column->changes.size(); ++column->first) {
        const Change& change = column->changes[column->first];
        if (!isOver(change.time, time)) break;
        sTrendValues* const record = column->recordOf(change.mapIndex);
        if (!record || record->changeTime != change.time) continue;
        column->end(*record);
        record->lastValue = record->newValue;
        ended.push_back(change.mapIndex);
    }
    if (column->first > column->changes.size() / 2) column->dropTakenChanges();
}

// ---- Rows

void TrendStore::insertRow(int mapIndex) {
    for (Column& column : m_columns) {
        if (!column.hasRecords) continue;
        const auto index = static_cast<std::size_t>(mapIndex);
        if (index >= column.records.size()) {
            column.records.resize(index, noRecord());
            column.records.emplace_back();
            continue;
        }
        column.records.insert(column.records.begin() + mapIndex, sTrendValues{});
        column.renumberChanges([mapIndex](int former) { return former < mapIndex ? former : former + 1; });
    }
}

void TrendStore::eraseRow(int mapIndex) {
    for (Column& column : m_columns) {
        if (mapIndex < 0 || static_cast<std::size_t>(mapIndex) >= column.records.size()) continue;
        column.records.erase(column.records.begin() + mapIndex);
        column.renumberChanges([mapIndex](int former) {
            if (former == mapIndex) return -1;
            return former < mapIndex ? former : former - 1;
        });
    }
}

void TrendStore::forgetRow(int mapIndex) {
    for (Column& column : m_columns) {
        sTrendValues* const record = column.recordOf(mapIndex);
        if (!record) continue;
        column.end(*record);
        *record = noRecord();
    }
}

void TrendStore::clearRows() {
    for (Column& column : m_columns) {
        column.records.clear();
        column.changes.clear();
        column.first = column.shown = 0;
    }
}

void TrendStore::extend(int rowCount) {
    for (Column& column : m_columns)
        if (column.hasRecords)
            column.records.resize(std::max(column.records.size(), static_cast<std::size_t>(rowCount)));
}

void TrendStore::reorderRows(const std::vector<std::int32_t>& mapIndices) {
    for (Column& column : m_columns) {
        if (column.records.empty()) continue;
        std::vector<sTrendValues> records(mapIndices.size(), noRecord());
        std::vector<std::int32_t> places(column.records.size(), -1);
        for (std::size_t i = 0; i < mapIndices.size(); ++i) {
            const auto former = static_cast<std::size_t>(mapIndices[i]);
            if (former >= column.records.size()) continue;
            records[i] = column.records[former];
            places[former] = static_cast<std::int32_t>(i);
        }
        column.records.swap(records);
        column.renumberChanges(
            [&places](int former) { return former < 0 ? -1 : places[static_cast<std::size_t>(former)]; });
    }
}

// ---- Texts

CString formatTrendColumns(const std::vector<int>& columns) {
    CString text;
    for (const int column : columns) text.AppendFormat("%d ", column);
    return text;
}

std::vector<int> parseTrendColumns(const CString& text) {
    std::vector<int> columns;
    foundation::StoredFields fields(text);
    while (const auto field = fields.next(' ')) columns.push_back(quor::atoi(*field));
    return columns;
}

}  // namespace quor::grid

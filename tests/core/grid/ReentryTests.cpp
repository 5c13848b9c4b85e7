// Hosts that come back: while a row is tested or a sort reads it, the host adds, changes, deletes, empties, rebuilds,
// sorts, ends batches, throws or destroys the rows, at random moments and inside each other. Afterwards the rows must
// be what the same operations make one after the other: the outer one first, then those that came in, in their order.
// Rows die as soon as they were deleted, so that whoever touches one is found. Classic mode has a mix of its own.
//   QUOR_REENTRY_STEPS  how many operations, 200,000 by default      QUOR_REENTRY_SEED  of the first run
#include "tests/core/grid/StoreHarness.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>

namespace {

struct LiveRow : CFilterListBaseData {
    int key = 0;        // shown if above 2
    int mapIndex = -1;  // of opti-data mode; to ask the list would be to come back
};

enum class Kind { add, update, remove, endBatch, rebuild, sort, empty };

// An operation as it went: what the host answered, by map index, and what it did meanwhile.
struct Record {
    Kind kind;
    int mapIndex = -1;
    bool now = false;
    bool threw = false;
    std::map<int, int> answers;
    std::vector<int> shown;  // of a sort: what it read
    std::vector<std::unique_ptr<Record>> inner;
};

// The rules of the display, by map indices.
class Model {
public:
    std::vector<char> live;  // by map index
    std::vector<std::int32_t> display;
    bool deletePending = false, insertPending = false;
    bool batchIsMoot = false;
    bool orderIsOpen = false;  // an inner sort did not know every row: it sorts once more at the end

    void apply(const Record& record) {
        if (!record.threw) applyOwn(record);
        if (record.threw && record.kind == Kind::sort) endBatch();  // which came before
        const bool goes = record.threw && record.kind == Kind::add;
        if (goes && !record.inner.empty()) m_mayHaveSlot = true;
        if (goes) m_adding.insert(record.mapIndex);
        for (const auto& inner : record.inner) apply(*inner);
        if (goes && m_adding.erase(record.mapIndex)) takeBack(record.mapIndex);
    }
    bool mayHaveSlot() const { return m_mayHaveSlot; }
    void settleSlots(int count) {
        while (static_cast<int>(live.size()) < count) live.push_back(0);
    }
    void endStep() { m_mayHaveSlot = false; }

private:
    auto placeOf(int mapIndex) { return std::find(display.begin(), display.end(), mapIndex); }

    void applyOwn(const Record& record) {
        const int mapIndex = record.mapIndex;
        const auto answer = record.answers.find(mapIndex);
        const bool passes = answer != record.answers.end() && answer->second != 0;
        switch (record.kind) {
            case Kind::add:
                while (static_cast<int>(live.size()) < mapIndex) live.push_back(0);
                live.push_back(1);
                if (!passes) break;
                display.push_back(mapIndex);
                insertPending |= !record.now;
                break;
            case Kind::update: {
                const auto place = placeOf(mapIndex);
                if (answer == record.answers.end() || (place != display.end()) == passes) break;
                if (!passes) {
                    display.erase(place);
                    break;
                }
                const auto larger =
                    std::find_if(display.rbegin(), display.rend(), [&](int one) { return one > mapIndex; });
                display.insert(larger == display.rend() ? display.end() : larger.base(), mapIndex);
                break;
            }
            case Kind::remove: {
                settleSlots(mapIndex + 1);  // of a row whose add threw behind it
                live[static_cast<std::size_t>(mapIndex)] = 0;
                const auto place = placeOf(mapIndex);
                if (place == display.end()) break;
                if (record.now) {
                    eraseDead(place);
                } else {
                    deletePending = true;
                }
                break;
            }
            case Kind::endBatch:
                endBatch();
                break;
            case Kind::rebuild:
                display.clear();
                for (const auto& [row, shows] : record.answers)
                    if (shows) display.push_back(row);
                break;
            case Kind::sort:
                sort(record);
                break;
            case Kind::empty:
                batchIsMoot = true;  // what is pending finds nothing to do
                deletePending = insertPending = false;
                live.clear();
                display.clear();
                m_adding.clear();
                break;
        }
    }
    // The row was never there; what came in has seen it all the same.
    void takeBack(int mapIndex) {
        const auto place = placeOf(mapIndex);
        if (mapIndex < static_cast<int>(live.size())) live[static_cast<std::size_t>(mapIndex)] = 0;
        if (place == display.end()) return;
        while (static_cast<int>(live.size()) <= mapIndex) live.push_back(0);
        eraseDead(place);
    }
    void endBatch() {
        if (deletePending) eraseDead(display.begin());
        deletePending = insertPending = false;
    }
    void eraseDead(std::vector<std::int32_t>::iterator from) {
        const auto isDead = [this](int one) {
            return one < static_cast<int>(live.size()) && !live[static_cast<std::size_t>(one)] && !m_adding.count(one);
        };
        display.erase(std::remove_if(from, display.end(), isDead), display.end());
    }
    void sort(const Record& record) {
        endBatch();
        std::vector<std::int32_t> next;
        for (const int mapIndex : record.shown)
            if (placeOf(mapIndex) != display.end()) next.push_back(mapIndex);
        orderIsOpen |= next.size() != display.size();
        if (!orderIsOpen) display = next;
    }

    std::set<int> m_adding;  // rows whose add will throw: no tombstones before it does
    bool m_mayHaveSlot = false;
};

class Reentry {
public:
    explicit Reentry(unsigned seed) : m_random(seed) { start(); }
    ~Reentry() { m_rows->clear(); }
    Reentry(const Reentry&) = delete;
    Reentry& operator=(const Reentry&) = delete;

    // The fault that the operation leaves, or empty.
    std::string step() {
        auto record = std::make_unique<Record>();
        m_depth = 0;
        m_destroyed = false;
        m_fault.clear();
        if (m_rows->displayCount() > 0)
            m_port->control.setState(pick(m_rows->displayCount()), kRowSelected, kRowSelected);
        try {
            perform(*record);
        } catch (const std::runtime_error&) {
            record->threw = true;
        }
        if (m_destroyed) return start(), std::string();
        m_model.apply(*record);
        if (m_model.mayHaveSlot()) m_model.settleSlots(m_rows->itemCount());
        m_model.endStep();
        const std::string fault = m_fault.empty() ? compare() : m_fault;
        return fault.empty() ? fault : fault + "\n" + told(*record, 1);
    }
    long innerSteps() const { return m_innerSteps; }

private:
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    void start() {
        m_rows.reset();
        m_live.clear();
        m_port = std::make_unique<PretendedPort>();
        m_port->layout = {.rowHeight = 10, .countPerPage = 4, .totalWidth = 100};
        m_port->layout.visible = true;
        m_port->onState = [this] { hearState(); };
        m_rows = std::make_unique<LiveRows>(*m_port);
        m_rows->enterOptiData();
        m_rows->setReverse(pick(2) == 0);
        m_model = {};
    }

    RowTest test() {
        return {[](const void* self, RowData data) {
                    return const_cast<Reentry*>(static_cast<const Reentry*>(self))->ask(data);
                },
                this};
    }

    // A notification of the control. What the operation has done by then, only those tell that fail as one.
    void hearState() {
        if (!m_active || m_destroyed || m_depth > 2 || pick(3) != 0) return;
        Record& record = *m_active;
        const bool isOne = record.kind == Kind::add || record.kind == Kind::update || record.kind == Kind::rebuild;
        try {
            comeBack(record);
            if (isOne && !m_destroyed && pick(4) == 0) throw std::runtime_error("the host");
        } catch (const std::runtime_error&) {
            if (isOne) throw;
        }
        m_active = &record;
    }

    // The list answers in the middle of an operation as it was before.
    void look() {
        LiveRow& row = anyRow();
        int mapIndex = -1, visual = -1;
        m_rows->numbersOf(&row, mapIndex, visual);
        if (mapIndex == -1) return;
        const int slot = m_rows->slotOfMapIndex(mapIndex);
        if (visual != (slot == -1 ? -1 : m_rows->mirrored(slot)))
            m_fault = "row " + std::to_string(mapIndex) + " is not where it says";
    }

    // What a host's callback does. False once the rows are gone.
    bool ask(RowData data) {
        Record& record = *m_active;
        const auto* const row = static_cast<LiveRow*>(reinterpret_cast<CFilterListBaseData*>(data));
        const int key = row->key, mapIndex = row->mapIndex;
        int many = pick(12) == 0 ? 1 + pick(2) : 0;
        while (many-- > 0 && m_depth < 3 && !m_destroyed) comeBack(record);
        if (m_destroyed) return false;
        if (pick(20) == 0 && !m_live.empty()) look();
        m_active = &record;
        if (pick(60) == 0) throw std::runtime_error("the host");
        record.answers[mapIndex] = record.kind == Kind::sort ? key : key > 2;
        return key > 2;
    }

    void comeBack(Record& outer) {
        if (m_depth > 0 && pick(150) == 0) {
            m_destroyed = true;
            m_rows.reset();
            return;
        }
        outer.inner.push_back(std::make_unique<Record>());
        Record& inner = *outer.inner.back();
        ++m_depth;
        ++m_innerSteps;
        try {
            perform(inner);
        } catch (const std::runtime_error&) {
            inner.threw = true;
            --m_depth;
            if (pick(2) == 0) throw;  // through the outer operation as well
            return;
        }
        --m_depth;
    }

    void perform(Record& record) {
        ++m_depth;
        Record* const outer = std::exchange(m_active, &record);
        const int rows = static_cast<int>(m_live.size());
        const int choice = pick(rows < 4 ? 4 : rows > 24 ? 26 : 20);
        record.now = pick(3) == 0;
        if (choice < 5 || rows == 0) {
            record.kind = Kind::add;
            add(record);
        } else if (choice < 10) {
            record.kind = Kind::update;
            LiveRow& row = anyRow();
            record.mapIndex = row.mapIndex;
            row.key = pick(6);
            if (pick(8) == 0) {  // without filters
                record.answers[row.mapIndex] = 1;
                m_rows->update(&row, {});
            } else {
                m_rows->update(&row, test());
            }
        } else if (choice < 12 || choice >= 20) {
            record.kind = Kind::remove;
            remove(record);
        } else if (choice < 14) {
            record.kind = Kind::endBatch;
            m_rows->endBatch();
        } else if (choice < 16) {
            record.kind = Kind::rebuild;
            RowWalk walk(*m_rows);
            m_rows->rebuild(walk, test());
            if (!walk.gone()) walk.finish();
        } else if (choice < 19) {
            record.kind = Kind::sort;
            sort(record);
        } else if (pick(12) == 0) {
            record.kind = Kind::empty;
            m_rows->clear();
            m_live.clear();
        } else {
            record.kind = Kind::endBatch;
            m_rows->endBatch();
        }
        --m_depth;
        m_active = outer;
    }

    void add(Record& record) {
        auto row = std::make_unique<LiveRow>();
        row->key = pick(6);
        LiveRow* const added = row.get();
        m_live[added] = std::move(row);
        record.mapIndex = added->mapIndex = m_rows->itemCount();
        try {
            m_rows->add(added, record.now, test());
        } catch (...) {
            if (!m_destroyed) forget(added, record.mapIndex);  // nothing may know it any more
            throw;
        }
    }

    // A row that was deleted meanwhile may have left its memory to another.
    void forget(LiveRow* row, int mapIndex) {
        if (const auto found = m_live.find(row); found != m_live.end() && found->second->mapIndex == mapIndex)
            m_live.erase(found);
    }

    void remove(Record& record) {
        LiveRow& row = anyRow();
        record.mapIndex = row.mapIndex;
        m_rows->remove(&row, record.now);
        m_live.erase(&row);
    }

    void sort(Record& record) {
        RowWalk walk(*m_rows);
        m_rows->endBatch(walk);
        if (walk.gone()) return;
        std::vector<std::int32_t> shown = m_rows->displayedInMapOrder();
        std::map<int, int> keys;
        for (const std::int32_t mapIndex : shown) {
            const RowData data = m_rows->dataOfMapIndex(walk.present(mapIndex));
            if (data == 0) continue;
            ask(data);
            if (walk.gone() || walk.emptied()) return;
            keys[mapIndex] = record.answers[mapIndex];
        }
        std::sort(shown.begin(), shown.end(),
                  [&](int a, int b) { return std::pair(keys[a], a) < std::pair(keys[b], b); });
        record.shown.assign(shown.begin(), shown.end());
        m_rows->reorder(walk, shown, [] {});
        walk.finish();
    }

    LiveRow& anyRow() {
        auto row = m_live.begin();
        std::advance(row, pick(static_cast<int>(m_live.size())));
        return *row->second;
    }

    std::string compare() {
        if (std::string fault = m_rows->Check(); !fault.empty()) return fault;
        if (m_rows->itemCount() != static_cast<int>(m_model.live.size())) return "the item counts differ";
        std::vector<std::int32_t> shown = m_rows->displayOrder(), shallBe = m_model.display;
        if (m_model.orderIsOpen) {
            m_model.display = shown;
            m_model.orderIsOpen = false;
            // Which deleted rows a later delete closed depends on the order that is not known.
            const auto isDead = [this](int one) { return !m_model.live[static_cast<std::size_t>(one)]; };
            std::erase_if(shown, isDead);
            std::erase_if(shallBe, isDead);
            std::sort(shown.begin(), shown.end());
            std::sort(shallBe.begin(), shallBe.end());
        }
        if (shown != shallBe) return "the orders differ: " + told(shown) + "not " + told(shallBe);
        if (std::exchange(m_model.batchIsMoot, false)) m_model.insertPending |= m_rows->batchIsOpen();
        if (m_rows->batchIsOpen() != (m_model.deletePending || m_model.insertPending)) return "the batches differ";
        return {};
    }
    static std::string told(const Record& record, std::size_t depth) {
        static constexpr const char* names[] = {"add", "update", "remove", "end batch", "rebuild", "sort", "empty"};
        std::string text(depth * 2, ' ');
        text += names[static_cast<int>(record.kind)] + std::string(" ") + std::to_string(record.mapIndex);
        text += std::string(record.now ? " now" : "") + (record.threw ? " threw" : "");
        for (const auto& [row, answer] : record.answers)
            text += " " + std::to_string(row) + ":" + std::to_string(answer);
        text += "\n";
        for (const auto& inner : record.inner) text += told(*inner, depth + 1);
        return text;
    }
    static std::string told(const std::vector<std::int32_t>& order) {
        std::string text;
        for (const int mapIndex : order) text += std::to_string(mapIndex) + " ";
        return text;
    }

    std::mt19937 m_random;
    std::map<LiveRow*, std::unique_ptr<LiveRow>> m_live;  // outlives the rows' store: declared before it
    std::unique_ptr<PretendedPort> m_port;
    std::unique_ptr<LiveRows> m_rows;
    Model m_model;
    Record* m_active = nullptr;
    int m_depth = 0;
    bool m_destroyed = false;
    std::string m_fault;  // of an answer in the middle
    long m_innerSteps = 0;
};

// ---- Classic mode: map indices move, so rows are known by numbers of their own.

// An operation as it went; what it asks is answered by row.
struct ClassicRecord {
    enum class Kind { insert, give, erase, retest, rebuild, sort, empty };
    Kind kind = Kind::rebuild;
    int row = -1;
    int mapIndex = -1;    // of insert
    bool atEnd = false;   // of insert
    bool passes = false;  // of give and retest
    bool threw = false;
    bool refused = false;
    LiveRow* data = nullptr;  // of give
    std::map<int, bool> answers;
    std::vector<int> shown;  // of sort, in the new order
    std::vector<std::unique_ptr<ClassicRecord>> inner;
};

class ClassicModel {
public:
    std::vector<int> map, display;  // rows
    std::map<int, LiveRow*> data;
    bool orderIsOpen = false;

    void apply(const ClassicRecord& record) {
        if (!record.threw && !record.refused) applyOwn(record);
        for (const auto& inner : record.inner) apply(*inner);
    }

private:
    using Kind = ClassicRecord::Kind;

    int mapIndexOf(int row) const { return static_cast<int>(std::find(map.begin(), map.end(), row) - map.begin()); }
    bool shows(int row) const { return std::find(display.begin(), display.end(), row) != display.end(); }
    void test(int row, bool passes) {
        if (!passes) std::erase(display, row);
        if (!passes || shows(row)) return;
        display.insert(std::find_if(display.begin(), display.end(),
                                    [&](int other) { return mapIndexOf(other) > mapIndexOf(row); }),
                       row);
    }
    void applyOwn(const ClassicRecord& record) {
        switch (record.kind) {
            case Kind::insert: {
                map.insert(map.begin() + record.mapIndex, record.row);
                const std::size_t slot =
                    record.atEnd ? display.size() : std::min<std::size_t>(display.size(), record.mapIndex);
                display.insert(display.begin() + static_cast<std::ptrdiff_t>(slot), record.row);
                break;
            }
            case Kind::give:
                if (std::find(map.begin(), map.end(), record.row) == map.end()) break;
                data[record.row] = record.data;
                test(record.row, record.passes);
                break;
            case Kind::retest:
                test(record.row, record.passes);
                break;
            case Kind::erase:
                std::erase(map, record.row);
                std::erase(display, record.row);
                break;
            case Kind::rebuild:
                display.clear();
                for (const int row : map)
                    if (const auto answer = record.answers.find(row); answer != record.answers.end() && answer->second)
                        display.push_back(row);
                break;
            case Kind::sort: {
                std::vector<int> next;
                for (const int row : record.shown)
                    if (shows(row)) next.push_back(row);
                orderIsOpen |= next.size() != display.size();
                if (!orderIsOpen) display = next;
                break;
            }
            case Kind::empty:
                map.clear();
                display.clear();
                break;
        }
    }
};

class ClassicReentry {
public:
    explicit ClassicReentry(unsigned seed) : m_random(seed) { start(); }

    std::string step() {
        ClassicRecord record;
        m_depth = 0;
        m_destroyed = false;
        try {
            perform(record);
        } catch (const std::runtime_error&) {
            record.threw = true;
        }
        if (m_destroyed) return start(), std::string();
        m_model.apply(record);
        const std::string fault = compare();
        return fault.empty() ? fault : fault + "\n" + told(record, 1);
    }
    long innerSteps() const { return m_innerSteps; }

private:
    using Kind = ClassicRecord::Kind;

    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    void start() {
        m_rows.reset();
        m_map.clear();
        m_live.clear();
        m_port = std::make_unique<PretendedPort>();
        m_rows = std::make_unique<LiveRows>(*m_port);
        m_rows->setReverse(pick(2) == 0);
        m_model = {};
    }

    RowTest test() {
        return {[](const void* self, RowData data) {
                    return const_cast<ClassicReentry*>(static_cast<const ClassicReentry*>(self))->ask(data) > 2;
                },
                this};
    }

    int ask(RowData data) {
        ClassicRecord& record = *m_active;
        const int key = reinterpret_cast<const LiveRow*>(data)->key;
        const int row = rowOfData(data);
        for (int many = pick(12) == 0 ? 1 + pick(2) : 0; many > 0 && m_depth < 3 && !m_destroyed; --many)
            comeBack(record);
        if (m_destroyed) return 0;
        m_active = &record;
        if (pick(60) == 0) throw std::runtime_error("the host");
        record.passes = record.answers[row] = key > 2;
        record.row = row;
        return key;
    }

    void comeBack(ClassicRecord& outer) {
        if (m_depth > 0 && pick(150) == 0) {
            m_destroyed = true;
            m_rows.reset();
            return;
        }
        outer.inner.push_back(std::make_unique<ClassicRecord>());
        ClassicRecord& inner = *outer.inner.back();
        ++m_innerSteps;
        ++m_depth;
        try {
            perform(inner);
        } catch (const std::runtime_error&) {
            inner.threw = true;
            --m_depth;
            if (pick(2) == 0) throw;
            return;
        }
        --m_depth;
    }

    void perform(ClassicRecord& record) {
        ++m_depth;
        ClassicRecord* const outer = std::exchange(m_active, &record);
        const int rows = static_cast<int>(m_map.size());
        const int choice = pick(rows > 24 ? 30 : 22);
        if (choice < 5 || rows == 0) {
            insert(record);
        } else if (choice < 10) {
            give(record);
        } else if (choice < 14) {
            retest(record);
        } else if (choice < 17 || choice >= 22) {
            erase(record);
        } else if (choice < 19) {
            RowWalk walk(*m_rows);
            m_rows->rebuild(walk, test());
            if (!walk.gone()) walk.finish();
        } else if (choice < 21) {
            record.kind = Kind::sort;
            sort(record);
        } else if (pick(12) == 0) {
            record.kind = Kind::empty;
            m_rows->clear();
            m_map.clear();
        } else {
            record.refused = true;
        }
        --m_depth;
        m_active = outer;
    }

    void insert(ClassicRecord& record) {
        record.kind = Kind::insert;
        const int item = pick(static_cast<int>(m_map.size()) + 2), count = m_rows->itemCount();
        record.atEnd = item == 0 || item >= count;
        record.mapIndex = m_rows->insertItem(item).mapIndex;
        record.row = m_lastRow++;
        m_map.insert(m_map.begin() + record.mapIndex, record.row);
    }
    // Give and retest ask for one row. When they asked nobody they have changed nothing.
    void give(ClassicRecord& record) {
        record.kind = Kind::give;
        m_live.push_back(std::make_unique<LiveRow>());
        record.data = m_live.back().get();
        record.data->key = pick(6);
        m_rows->setItemData(pick(m_rows->displayCount() + 1), reinterpret_cast<RowData>(record.data), test());
        record.refused = record.answers.empty();
    }
    void retest(ClassicRecord& record) {
        record.kind = Kind::retest;
        const int mapIndex = pick(static_cast<int>(m_map.size()));
        if (auto* const data = reinterpret_cast<LiveRow*>(m_rows->dataOfMapIndex(mapIndex))) data->key = pick(6);
        const int slot = m_rows->slotOfMapIndex(mapIndex);
        if (slot != -1 && pick(2) == 0) {
            m_rows->retestVisual(m_rows->mirrored(slot), test());
        } else {
            m_rows->retestMapIndex(mapIndex, test());
        }
        record.refused = record.answers.empty();
    }
    void erase(ClassicRecord& record) {
        record.kind = Kind::erase;
        const int mapIndex = pick(static_cast<int>(m_map.size()));
        const auto at = m_map.begin() + mapIndex;
        const int slot = m_rows->slotOfMapIndex(mapIndex);
        record.row = *at;
        const RowData data = m_rows->dataOfMapIndex(mapIndex);
        const ClassicChange change =
            slot == -1 ? m_rows->eraseHidden(mapIndex) : m_rows->eraseVisual(m_rows->mirrored(slot));
        record.refused = change.outcome != ClassicOutcome::done;
        m_map.erase(at);
        std::erase_if(m_live, [data](const auto& row) { return reinterpret_cast<RowData>(row.get()) == data; });
    }
    void sort(ClassicRecord& record) {
        RowWalk walk(*m_rows);
        std::vector<std::int32_t> shown = m_rows->displayedInMapOrder();
        std::map<int, int> keys, rows;
        for (const std::int32_t mapIndex : shown) rows[mapIndex] = m_map[static_cast<std::size_t>(mapIndex)];
        for (const std::int32_t mapIndex : shown) {
            const RowData data = m_rows->dataOfMapIndex(walk.present(mapIndex));
            keys[mapIndex] = data == 0 ? -1 : ask(data);
            if (m_destroyed || walk.emptied()) return;
        }
        std::sort(shown.begin(), shown.end(),
                  [&](int a, int b) { return std::pair(keys[a], a) < std::pair(keys[b], b); });
        for (const std::int32_t mapIndex : shown) record.shown.push_back(rows[mapIndex]);
        m_rows->reorder(walk, std::move(shown), [] {});
        walk.finish();
    }

    int rowOfData(RowData data) {
        for (std::size_t i = 0; i < m_map.size(); ++i)
            if (m_rows->dataOfMapIndex(static_cast<int>(i)) == data) return m_map[i];
        return -1;
    }

    std::string compare() {
        if (std::string fault = m_rows->Check(); !fault.empty()) return fault;
        if (m_map != m_model.map) return "the maps differ";
        if (m_rows->itemCount() != static_cast<int>(m_map.size())) return "the item counts differ";
        for (std::size_t i = 0; i < m_map.size(); ++i)
            if (m_rows->dataOfMapIndex(static_cast<int>(i)) != reinterpret_cast<RowData>(m_model.data[m_map[i]]))
                return "map index " + std::to_string(i) + " has other data";
        std::vector<int> shown;
        for (const std::int32_t mapIndex : m_rows->displayOrder()) {
            if (mapIndex < 0 || mapIndex >= m_rows->itemCount()) return "a row is displayed that is not there";
            shown.push_back(m_map[static_cast<std::size_t>(mapIndex)]);
        }
        std::vector<int> shallBe = m_model.display;
        if (std::exchange(m_model.orderIsOpen, false)) {
            m_model.display = shown;
            std::sort(shown.begin(), shown.end());
            std::sort(shallBe.begin(), shallBe.end());
        }
        return shown == shallBe ? "" : "the orders differ: " + told(shown) + "not " + told(shallBe);
    }
    static std::string told(const std::vector<int>& rows) {
        std::string text;
        for (const int row : rows) text += std::to_string(row) + " ";
        return text;
    }
    static std::string told(const ClassicRecord& record, std::size_t depth) {
        static constexpr const char* names[] = {"insert", "give", "erase", "retest", "rebuild", "sort", "empty"};
        std::string text(depth * 2, ' ');
        text += names[static_cast<int>(record.kind)] + std::string(" ") + std::to_string(record.row) + " at " +
                std::to_string(record.mapIndex);
        text += std::string(record.threw ? " threw" : "") + (record.refused ? " refused" : "");
        for (const auto& [row, answer] : record.answers)
            text += " " + std::to_string(row) + ":" + std::to_string(answer);
        text += "\n";
        for (const auto& inner : record.inner) text += told(*inner, depth + 1);
        return text;
    }

    std::mt19937 m_random;
    std::vector<std::unique_ptr<LiveRow>> m_live;
    std::unique_ptr<PretendedPort> m_port;
    std::unique_ptr<LiveRows> m_rows;
    std::vector<int> m_map;  // the rows as they stand now
    ClassicModel m_model;
    ClassicRecord* m_active = nullptr;
    int m_depth = 0;
    int m_lastRow = 0;
    bool m_destroyed = false;
    long m_innerSteps = 0;
};

template <class Run>
void runSeeds() {
    const long steps = test::fromEnvironment("QUOR_REENTRY_STEPS", 200000);
    const auto first = static_cast<unsigned>(test::fromEnvironment("QUOR_REENTRY_SEED", 1));
    constexpr long kStepsOfASeed = 500;
    long inner = 0;
    for (long done = 0; done < steps; done += kStepsOfASeed) {
        const unsigned seed = first + static_cast<unsigned>(done / kStepsOfASeed);
        Run run(seed);
        for (long step = 0; step < kStepsOfASeed; ++step) {
            const std::string fault = run.step();
            ASSERT_EQ(fault, "") << "seed " << seed << ", step " << step;
        }
        inner += run.innerSteps();
    }
    EXPECT_GT(inner, steps / 20);
}

TEST(Reentry, EndsAsTheSameOperationsOneAfterTheOther) { runSeeds<Reentry>(); }
TEST(Reentry, ClassicModeEndsSoToo) { runSeeds<ClassicReentry>(); }

}  // namespace

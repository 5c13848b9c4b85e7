// Hosts that come back: while a row is tested or a sort reads it, the host adds, changes, deletes, empties, rebuilds,
// sorts, ends batches, throws or destroys the rows, at random moments and inside each other. Afterwards the rows must
// be what the same operations make one after the other: the outer one first, then those that came in, in their order.
// Rows die as soon as they were deleted, so that whoever touches one is found. Classic mode has a mix of its own.
//   QUOR_REENTRY_STEPS  how many operations, 200,000 by default      QUOR_REENTRY_SEED  of the first run
#include "tests/core/grid/PretendedPort.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>

namespace {

struct LiveRow : CFilterListBaseData {
    int key = 0;
    int mapIndex = -1;  // of opti-data mode; to ask the list would be to come back
};

bool isShown(int key) { return key > 2; }
constexpr int kShownKey = 3;

RowData dataOf(LiveRow* row) { return reinterpret_cast<RowData>(static_cast<CFilterListBaseData*>(row)); }
LiveRow* rowOfData(RowData data) { return static_cast<LiveRow*>(reinterpret_cast<CFilterListBaseData*>(data)); }

struct HostThrew : std::runtime_error {
    HostThrew() : std::runtime_error("the host") {}
};

enum class Kind { endBatch, rebuild, sort, empty, add, update, remove, insert, give, retest, erase };
using enum Kind;
constexpr const char* kKindNames[] = {"end batch", "rebuild", "sort", "empty",  "add",  "update",
                                      "remove",    "insert",  "give", "retest", "erase"};

// An operation as it went: what the host answered, by row, and what it did meanwhile. A row is known by its map index;
// in classic mode, where those move, by a number of its own.
struct Record {
    Kind kind = endBatch;
    int row = -1;
    bool now = false;         // of add and remove: the control hears at once; of insert: at the very end
    int mapIndex = -1;        // of insert
    LiveRow* data = nullptr;  // of give
    bool threw = false;
    bool refused = false;
    std::map<int, int> answers;  // keys
    std::vector<int> shown;      // of sort: the rows in their new order
    std::vector<std::unique_ptr<Record>> inner;

    std::string told(std::size_t depth) const {
        std::string text(depth * 2, ' ');
        text += kKindNames[static_cast<int>(kind)] + std::string(" ") + std::to_string(row);
        text += std::string(now ? " now" : "") + (threw ? " threw" : "") + (refused ? " refused" : "");
        if (kind == insert) text += " at " + std::to_string(mapIndex);
        for (const auto& [asked, answer] : answers) text += " " + std::to_string(asked) + ":" + std::to_string(answer);
        text += "\n";
        for (const auto& one : inner) text += one->told(depth + 1);
        return text;
    }
};

// ---- The rules of the display

class Model {
public:
    std::vector<int> display;
    bool orderIsOpen = false;  // an inner sort did not know every row: it sorts once more at the end

protected:
    auto placeOf(int row) { return std::find(display.begin(), display.end(), row); }
    bool shows(int row) { return placeOf(row) != display.end(); }
    void sortBy(const Record& record) {
        std::vector<int> next;
        for (const int row : record.shown)
            if (shows(row)) next.push_back(row);
        orderIsOpen |= next.size() != display.size();
        if (!orderIsOpen) display = next;
    }
};

class OptiModel : public Model {
public:
    int count() const { return static_cast<int>(m_live.size()); }
    bool isDead(int row) const { return row < count() && !m_live[static_cast<std::size_t>(row)]; }

    void take(const Record& record, LiveRows& rows) {
        apply(record);
        if (std::exchange(m_mayHaveSlot, false)) growTo(rows.itemCount());
        if (std::exchange(m_batchIsMoot, false)) m_insertPending |= rows.batchIsOpen();
    }
    std::string compareRest(LiveRows& rows) const {
        return rows.batchIsOpen() == (m_deletePending || m_insertPending) ? "" : "the batches differ";
    }

private:
    void apply(const Record& record) {
        if (!record.threw) applyOwn(record);
        if (record.threw && record.kind == sort) closeBatch();  // which came before
        const bool goes = record.threw && record.kind == add;
        m_mayHaveSlot |= goes && !record.inner.empty();
        if (goes) m_adding.insert(record.row);
        for (const auto& inner : record.inner) apply(*inner);
        if (goes && m_adding.erase(record.row)) takeBack(record.row);
    }
    void applyOwn(const Record& record) {
        const auto answer = record.answers.find(record.row);
        const bool isAnswered = answer != record.answers.end(), passes = isAnswered && isShown(answer->second);
        switch (record.kind) {
            case add:
                growTo(record.row);
                m_live.push_back(1);
                if (!passes) break;
                display.push_back(record.row);
                m_insertPending |= !record.now;
                break;
            case update:
                if (isAnswered && shows(record.row) != passes) enterOrLeave(record.row, passes);
                break;
            case remove:
                growTo(record.row + 1);  // of a row whose add threw behind it
                m_live[static_cast<std::size_t>(record.row)] = 0;
                if (!shows(record.row)) break;
                if (record.now) {
                    eraseDead(placeOf(record.row));
                } else {
                    m_deletePending = true;
                }
                break;
            case rebuild:
                display.clear();
                for (const auto& [row, key] : record.answers)
                    if (isShown(key)) display.push_back(row);
                break;
            case sort:
                closeBatch();
                sortBy(record);
                break;
            case empty:
                m_batchIsMoot = true;  // what is pending finds nothing to do
                m_deletePending = m_insertPending = false;
                m_live.clear();
                display.clear();
                m_adding.clear();
                break;
            default:
                closeBatch();
        }
    }
    void enterOrLeave(int row, bool enters) {
        if (!enters) return void(display.erase(placeOf(row)));
        const auto larger = std::find_if(display.rbegin(), display.rend(), [&](int one) { return one > row; });
        display.insert(larger == display.rend() ? display.end() : larger.base(), row);
    }
    void growTo(int count) {
        if (count > this->count()) m_live.resize(static_cast<std::size_t>(count));
    }
    // The row was never there; what came in has seen it all the same.
    void takeBack(int row) {
        if (row < count()) m_live[static_cast<std::size_t>(row)] = 0;
        if (!shows(row)) return;
        growTo(row + 1);
        eraseDead(placeOf(row));
    }
    void closeBatch() {
        if (m_deletePending) eraseDead(display.begin());
        m_deletePending = m_insertPending = false;
    }
    void eraseDead(std::vector<int>::iterator from) {
        const auto isGone = [this](int row) { return isDead(row) && !m_adding.count(row); };
        display.erase(std::remove_if(from, display.end(), isGone), display.end());
    }

    std::vector<char> m_live;
    bool m_deletePending = false, m_insertPending = false;
    bool m_batchIsMoot = false;
    bool m_mayHaveSlot = false;
    std::set<int> m_adding;  // rows whose add will throw: no tombstones before it does
};

class ClassicModel : public Model {
public:
    int count() const { return static_cast<int>(m_map.size()); }
    static bool isDead(int) { return false; }

    void take(const Record& record, LiveRows&) { apply(record); }
    std::string compareRest(LiveRows& rows) {
        for (int mapIndex = 0; mapIndex < count(); ++mapIndex)
            if (rows.dataOfMapIndex(mapIndex) != dataOf(m_data[m_map[static_cast<std::size_t>(mapIndex)]]))
                return "map index " + std::to_string(mapIndex) + " has other data";
        return {};
    }

private:
    void apply(const Record& record) {
        if (!record.threw && !record.refused) applyOwn(record);
        for (const auto& inner : record.inner) apply(*inner);
    }
    auto mapPlaceOf(int row) const { return std::find(m_map.begin(), m_map.end(), row); }
    void judge(const Record& record) {
        if (!isShown(record.answers.at(record.row))) std::erase(display, record.row);
        if (!isShown(record.answers.at(record.row)) || shows(record.row)) return;
        const auto isBehind = [&](int other) { return mapPlaceOf(other) > mapPlaceOf(record.row); };
        display.insert(std::find_if(display.begin(), display.end(), isBehind), record.row);
    }
    void applyOwn(const Record& record) {
        switch (record.kind) {
            case insert: {
                m_map.insert(m_map.begin() + record.mapIndex, record.row);
                const auto shown = static_cast<int>(display.size());
                display.insert(display.begin() + (record.now ? shown : std::min(shown, record.mapIndex)), record.row);
                break;
            }
            case give:
                if (mapPlaceOf(record.row) == m_map.end()) break;
                m_data[record.row] = record.data;
                judge(record);
                break;
            case retest:
                judge(record);
                break;
            case erase:
                std::erase(m_map, record.row);
                std::erase(display, record.row);
                break;
            case rebuild:
                display.clear();
                for (const int row : m_map)
                    if (const auto answer = record.answers.find(row);
                        answer != record.answers.end() && isShown(answer->second))
                        display.push_back(row);
                break;
            case sort:
                sortBy(record);
                break;
            case empty:
                m_map.clear();
                display.clear();
                break;
            default:
                break;
        }
    }

    std::vector<int> m_map;
    std::map<int, LiveRow*> m_data;
};

// ---- The hosts

template <class ModelOfMode>
class Host {
public:
    Host(unsigned seed, std::vector<Kind> kinds) : m_kinds(std::move(kinds)), m_random(seed) {}
    virtual ~Host() {
        if (m_rows) m_rows->clear();
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The fault that the operation leaves, or empty.
    std::string step() {
        if (!m_rows) start();
        m_fault.clear();
        if (m_rows->displayCount() > 0)
            m_port.control.setState(pick(m_rows->displayCount()), kRowSelected, kRowSelected);
        Record record;
        try {
            perform(record);
        } catch (const HostThrew&) {
            record.threw = true;
        }
        if (!m_rows) return {};
        m_model.take(record, *m_rows);
        const std::string fault = m_fault.empty() ? compare() : m_fault;
        return fault.empty() ? fault : fault + "\n" + record.told(1);
    }
    long innerSteps() const { return m_innerSteps; }

protected:
    static constexpr int kDeepest = 2;

    virtual void begin() {}
    virtual void act(Record& record) = 0;
    // How the records know a row.
    virtual int numberAt(int mapIndex) const = 0;
    virtual int numberOf(const LiveRow& row) const = 0;
    virtual std::size_t rowCount() const = 0;
    virtual void look() {}
    virtual void forgetAll() = 0;

    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    LiveRow& newRow() {
        m_live.push_back(std::make_unique<LiveRow>());
        m_live.back()->key = pick(6);
        return *m_live.back();
    }
    LiveRow& anyRow() { return *m_live[static_cast<std::size_t>(pick(static_cast<int>(m_live.size())))]; }
    RowTest test() {
        return {[](const void* self, RowData data) {
                    return isShown(const_cast<Host*>(static_cast<const Host*>(self))->ask(data));
                },
                this};
    }

    std::vector<std::unique_ptr<LiveRow>> m_live;  // outlive the rows' store: declared before it
    PretendedPort m_port;
    std::unique_ptr<LiveRows> m_rows;  // null: destroyed
    std::string m_fault;               // of an answer in the middle

private:
    void start() {
        m_live.clear();
        m_port = {};
        m_port.layout = {.rowHeight = 10, .countPerPage = 4, .totalWidth = 100};
        m_port.layout.visible = true;
        m_port.onState = [this] { hearState(); };
        m_rows = std::make_unique<LiveRows>(m_port);
        m_rows->setReverse(pick(2) == 0);
        m_model = {};
        forgetAll();
        begin();
    }

    Kind draw() {
        const std::size_t rows = rowCount();
        if (rows == 0 || (rows < 4 && pick(2) == 0)) return m_kinds.front();
        if (rows > 24 && pick(4) == 0) return m_kinds.back();
        return pick(240) == 0 ? empty : m_kinds[static_cast<std::size_t>(pick(static_cast<int>(m_kinds.size())))];
    }

    void perform(Record& record) {
        Record* const outer = std::exchange(m_active, &record);
        record.kind = draw();
        switch (record.kind) {
            case endBatch:
                m_rows->endBatch();
                break;
            case rebuild: {
                RowWalk walk(*m_rows);
                m_rows->rebuild(walk, test());
                if (!walk.gone()) walk.finish();
                break;
            }
            case sort:
                sortRows(record);
                break;
            case empty:
                m_rows->clear();
                forgetAll();
                break;
            default:
                act(record);
        }
        m_active = outer;
    }
    void sortRows(Record& record) {
        RowWalk walk(*m_rows);
        m_rows->endBatch(walk);
        if (walk.gone()) return;
        std::vector<std::int32_t> shown = m_rows->displayedInMapOrder();
        std::map<int, int> keys, numbers;
        for (const std::int32_t mapIndex : shown) numbers[mapIndex] = numberAt(mapIndex);
        for (const std::int32_t mapIndex : shown) {
            const RowData data = m_rows->dataOfMapIndex(walk.present(mapIndex));
            keys[mapIndex] = data == 0 ? -1 : ask(data);
            if (walk.gone() || walk.emptied()) return;
        }
        std::sort(shown.begin(), shown.end(),
                  [&](int a, int b) { return std::pair(keys[a], a) < std::pair(keys[b], b); });
        for (const std::int32_t mapIndex : shown) record.shown.push_back(numbers[mapIndex]);
        m_rows->reorder(walk, std::move(shown), [] {});
        walk.finish();
    }

    // What a host's callback does. The row may be gone behind it.
    int ask(RowData data) {
        Record& record = *m_active;
        const LiveRow& row = *rowOfData(data);
        const int key = row.key, number = numberOf(row);
        for (int many = pick(12) == 0 ? 1 + pick(2) : 0; many > 0 && m_depth < kDeepest && m_rows; --many)
            comeBack(record);
        if (!m_rows) return 0;
        if (pick(20) == 0 && !m_live.empty()) look();
        m_active = &record;
        if (pick(60) == 0) throw HostThrew();
        return record.answers[number] = key;
    }

    // A notification of the control. What the operation has done by then, only those tell that fail as one.
    void hearState() {
        if (!m_active || !m_rows || m_depth == kDeepest || pick(3) != 0) return;
        Record& record = *m_active;
        const bool isOne = record.kind == add || record.kind == update || record.kind == rebuild;
        try {
            comeBack(record);
            if (isOne && m_rows && pick(4) == 0) throw HostThrew();
        } catch (const HostThrew&) {
            if (isOne) throw;
        }
        m_active = &record;
    }

    void comeBack(Record& outer) {
        if (pick(150) == 0) return m_rows.reset();
        Record& inner = *outer.inner.emplace_back(std::make_unique<Record>());
        ++m_innerSteps;
        ++m_depth;
        try {
            perform(inner);
        } catch (const HostThrew&) {
            inner.threw = true;
        }
        --m_depth;
        if (inner.threw && pick(2) == 0) throw HostThrew();  // through the outer operation as well
    }

    std::string compare() {
        if (std::string fault = m_rows->Check(); !fault.empty()) return fault;
        if (m_rows->itemCount() != m_model.count()) return "the item counts differ";
        std::vector<int> shown, shallBe = m_model.display;
        for (const std::int32_t mapIndex : m_rows->displayOrder()) shown.push_back(numberAt(mapIndex));
        if (std::exchange(m_model.orderIsOpen, false)) {
            m_model.display = shown;
            // Which deleted rows a later delete closed depends on the order that is not known.
            const auto isDead = [this](int row) { return m_model.isDead(row); };
            for (std::vector<int>* const order : {&shown, &shallBe}) {
                std::erase_if(*order, isDead);
                std::sort(order->begin(), order->end());
            }
        }
        if (shown != shallBe) return "the orders differ: " + told(shown) + "not " + told(shallBe);
        return m_model.compareRest(*m_rows);
    }
    static std::string told(const std::vector<int>& rows) {
        std::string text;
        for (const int row : rows) text += std::to_string(row) + " ";
        return text;
    }

    const std::vector<Kind> m_kinds;  // the first makes rows, the last takes them away
    std::mt19937 m_random;
    ModelOfMode m_model;
    Record* m_active = nullptr;
    int m_depth = 0;
    long m_innerSteps = 0;
};

class OptiHost : public Host<OptiModel> {
public:
    explicit OptiHost(unsigned seed)
        : Host(seed, {add,      add,      add,     add,     add,  update, update, update, update, update,
                      endBatch, endBatch, rebuild, rebuild, sort, sort,   sort,   remove, remove, remove}) {}

private:
    void begin() override { m_rows->enterOptiData(); }
    int numberAt(int mapIndex) const override { return mapIndex; }
    int numberOf(const LiveRow& row) const override { return row.mapIndex; }
    std::size_t rowCount() const override { return m_live.size(); }
    void forgetAll() override { m_live.clear(); }

    // The list answers in the middle of an operation as it was before.
    void look() override {
        int mapIndex = -1, visual = -1;
        m_rows->numbersOf(&anyRow(), mapIndex, visual);
        if (mapIndex == -1) return;
        const int slot = m_rows->slotOfMapIndex(mapIndex);
        if (visual != (slot == -1 ? -1 : m_rows->mirrored(slot)))
            m_fault = "row " + std::to_string(mapIndex) + " is not where it says";
    }

    void act(Record& record) override {
        record.now = pick(3) == 0;
        if (record.kind == add) return addRow(record);
        LiveRow& row = anyRow();
        record.row = row.mapIndex;
        if (record.kind == remove) {
            m_rows->remove(&row, record.now);
            return forget(&row, record.row);
        }
        row.key = pick(6);
        if (pick(8) != 0) return void(m_rows->update(&row, test()));
        record.answers[record.row] = kShownKey;  // without filters
        m_rows->update(&row, {});
    }
    void addRow(Record& record) {
        LiveRow* const row = &newRow();
        record.row = row->mapIndex = m_rows->itemCount();
        try {
            m_rows->add(row, record.now, test());
        } catch (const HostThrew&) {
            if (m_rows) forget(row, record.row);  // nothing may know it any more
            throw;
        }
    }
    // A row that was deleted meanwhile may have left its memory to another.
    void forget(const LiveRow* row, int mapIndex) {
        std::erase_if(m_live, [&](const auto& one) { return one.get() == row && one->mapIndex == mapIndex; });
    }
};

class ClassicHost : public Host<ClassicModel> {
public:
    explicit ClassicHost(unsigned seed)
        : Host(seed, {insert, insert, insert, insert, insert,  give,    give, give, give,  give,
                      retest, retest, retest, retest, rebuild, rebuild, sort, sort, erase, erase}) {}

private:
    int numberAt(int mapIndex) const override {
        const bool isThere = mapIndex >= 0 && mapIndex < static_cast<int>(m_map.size());
        return isThere ? m_map[static_cast<std::size_t>(mapIndex)] : -1;
    }
    int numberOf(const LiveRow& row) const override {
        for (std::size_t i = 0; i < m_map.size(); ++i)
            if (rowOfData(m_rows->dataOfMapIndex(static_cast<int>(i))) == &row) return m_map[i];
        return -1;
    }
    std::size_t rowCount() const override { return m_map.size(); }
    void forgetAll() override { m_map.clear(); }

    void act(Record& record) override {
        if (record.kind == insert) return insertRow(record);
        const int mapIndex = pick(static_cast<int>(m_map.size()));
        if (record.kind == erase) return eraseRow(record, mapIndex);
        if (record.kind == give) {
            giveData(record, pick(m_rows->displayCount() + 2));
        } else {
            retestRow(record, pick(16) == 0 ? m_rows->itemCount() : mapIndex);
        }
        // Both ask for one row. When they asked nobody they have changed nothing.
        record.refused = record.answers.empty();
        if (!record.refused) record.row = record.answers.begin()->first;
    }
    void insertRow(Record& record) {
        const int item = pick(static_cast<int>(m_map.size()) + 3) - 1;
        record.now = item == 0 || item >= m_rows->itemCount();
        const ClassicChange change = m_rows->insertItem(item);
        record.refused = item < 0;
        expect(record, change.outcome, item < 0 ? ClassicOutcome::refused : ClassicOutcome::done);
        if (item < 0) return;
        record.mapIndex = change.mapIndex;
        record.row = m_lastRow++;
        m_map.insert(m_map.begin() + record.mapIndex, record.row);
    }
    // 0 and everything past the end mean the last row while that has no data; else its own row is meant.
    void giveData(Record& record, int item) {
        const int count = m_rows->displayCount();
        const bool isLast = (item == 0 || item >= count) && count > 0 && !dataOfSlot(count - 1);
        const int slot = isLast ? count - 1 : item >= count ? -1 : m_rows->reverse() ? count - 1 - item : item;
        const int row = slot == -1 ? -1 : numberAt(m_rows->mapIndexOfSlot(slot));
        record.data = &newRow();
        const bool passes = isShown(record.data->key);
        const ClassicChange change = m_rows->setItemData(item, dataOf(record.data), test());
        expect(record, change.outcome,
               row == -1 ? ClassicOutcome::refused
               : passes  ? ClassicOutcome::shown
                         : ClassicOutcome::left);
        if (m_rows && row != (record.answers.empty() ? -1 : record.answers.begin()->first))
            m_fault = "item " + std::to_string(item) + " is another row";
    }
    void retestRow(Record& record, int mapIndex) {
        const int slot = m_rows->slotOfMapIndex(mapIndex);
        LiveRow* const row = rowOfData(m_rows->dataOfMapIndex(mapIndex));
        ClassicOutcome outcome = mapIndex == m_rows->itemCount() ? ClassicOutcome::refused : ClassicOutcome::keptOut;
        if (row) row->key = pick(6);
        if (row && isShown(row->key)) outcome = slot == -1 ? ClassicOutcome::entered : ClassicOutcome::shown;
        if (row && !isShown(row->key) && slot != -1) outcome = ClassicOutcome::left;
        const ClassicChange change = slot != -1 && pick(2) == 0 ? m_rows->retestVisual(m_rows->mirrored(slot), test())
                                                                : m_rows->retestMapIndex(mapIndex, test());
        expect(record, change.outcome, outcome);
    }
    void eraseRow(Record& record, int mapIndex) {
        expect(record, m_rows->eraseVisual(m_rows->displayCount()).outcome, ClassicOutcome::refused);
        expect(record, m_rows->eraseVisual(-1).outcome, ClassicOutcome::unknown);
        const int slot = m_rows->slotOfMapIndex(mapIndex);
        if (slot != -1) expect(record, m_rows->eraseHidden(mapIndex).outcome, ClassicOutcome::refused);
        const LiveRow* const row = rowOfData(m_rows->dataOfMapIndex(mapIndex));
        record.row = m_map[static_cast<std::size_t>(mapIndex)];
        const ClassicChange change =
            slot == -1 ? m_rows->eraseHidden(mapIndex) : m_rows->eraseVisual(m_rows->mirrored(slot));
        expect(record, change.outcome, ClassicOutcome::done);
        m_map.erase(m_map.begin() + mapIndex);
        std::erase_if(m_live, [row](const auto& one) { return one.get() == row; });
    }
    RowData dataOfSlot(int slot) { return m_rows->dataOfMapIndex(m_rows->mapIndexOfSlot(slot)); }
    // Of an operation into which none came.
    void expect(const Record& record, ClassicOutcome outcome, ClassicOutcome shallBe) {
        if (!m_rows || !record.inner.empty() || outcome == shallBe) return;
        m_fault = "the outcome is " + std::to_string(static_cast<int>(outcome)) + ", not " +
                  std::to_string(static_cast<int>(shallBe));
    }

    std::vector<int> m_map;  // the rows as they stand now
    int m_lastRow = 0;
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

TEST(Reentry, EndsAsTheSameOperationsOneAfterTheOther) { runSeeds<OptiHost>(); }
TEST(Reentry, ClassicModeEndsSoToo) { runSeeds<ClassicHost>(); }

}  // namespace

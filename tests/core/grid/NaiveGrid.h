// The slow model that the row store is compared with: the rules of the grid written down one by one, with a walk for
// everything. It talks to a native control through NativeControl, so that the same model drives a pretended control in
// the windowless tests and a real one in the tests on windows. Row numbers: see FilterListBaseData.h.
#pragma once

#include "quor/grid/core/RowLayout.h"

#include <functional>
#include <set>
#include <unordered_map>
#include <vector>

using namespace quor::grid;

// What the grid says to the list view, one call each.
class NativeControl {
public:
    virtual ~NativeControl() = default;
    virtual int rowCount() = 0;
    virtual int selectionMark() = 0;
    virtual void setSelectionMark(int visual) = 0;
    virtual int nextSelected(int after) = 0;
    virtual void setState(int visual, unsigned state, unsigned mask) = 0;  // -1: all rows
    virtual void setCount(int count) = 0;
};

// A list view reduced to count, selection, focus and mark.
class PretendedControl : public NativeControl {
public:
    int rowCount() override { return count; }
    int selectionMark() override { return mark; }
    void setSelectionMark(int visual) override { mark = visual; }
    int nextSelected(int after) override {
        const auto found = selected.upper_bound(after);
        return found == selected.end() ? -1 : *found;
    }
    void setState(int visual, unsigned state, unsigned mask) override {
        if (mask & 2) {
            if (visual == -1 && !(state & 2)) selected.clear();
            if (visual >= 0 && visual < count) {
                if (state & 2) selected.insert(visual);
                if (!(state & 2)) selected.erase(visual);
            }
        }
        if (mask & 1) {
            if (state & 1) focus = visual;
            if (!(state & 1) && (visual == -1 || visual == focus)) focus = -1;
        }
    }
    void setCount(int newCount) override {
        count = newCount;
        selected.erase(selected.lower_bound(count), selected.end());
        if (focus >= count) focus = -1;
    }
    bool operator==(const PretendedControl& other) const {
        return count == other.count && selected == other.selected && focus == other.focus && mark == other.mark;
    }

    int count = 0;
    std::set<int> selected;
    int focus = -1;
    int mark = -1;
};

class NaiveGrid {
public:
    using Row = const void*;
    struct Numbers {
        int mapIndex;
        int slot;
    };

    NaiveGrid(NativeControl& native, std::function<bool(Row)> passes) : m_native(native), m_passes(std::move(passes)) {}

    int addRow(Row row, bool now) {
        const int mapIndex = static_cast<int>(map.size());
        map.push_back(row);
        numbers[row] = {mapIndex, -1};
        if (!m_passes(row)) return mapIndex;
        numbers[row].slot = static_cast<int>(display.size());
        display.push_back(mapIndex);
        if (now) {
            tellCount();
            markDirty(std::max(layout.topIndex, reverse ? 0 : count() - 1));
        } else {
            m_pendingInsert = true;
            if (reverse) ++m_pendingTopInserts;
        }
        return mapIndex;
    }

    int updateRow(Row row) {
        const auto found = numbers.find(row);
        if (found == numbers.end()) return 0;
        const bool matches = m_passes(row);
        const int slot = found->second.slot;
        if (slot >= 0 && matches) {
            const int visual = visualOf(slot);
            if (layout.visible) unite(visual, visual);
            return 0;
        }
        if (slot >= 0) {
            const int visual = visualOf(slot);
            noteWhatIsOpen();
            display.erase(display.begin() + slot);
            if (m_first != -1 && m_first > slot) --m_first;
            if (m_last != -1 && m_last > slot) --m_last;
            found->second.slot = -1;
            renumber();
            tellCount();
            markDirty(std::max(layout.topIndex, visual));
            return -1;
        }
        return matches ? insertBack(found->second) : 0;
    }

    int deleteRow(Row row, bool now) {
        const auto found = numbers.find(row);
        if (found == numbers.end()) return -1;
        const Numbers gone = found->second;
        numbers.erase(found);
        map[static_cast<std::size_t>(gone.mapIndex)] = nullptr;
        if (gone.slot == -1) return gone.mapIndex;
        if (now) {
            int visual = visualOf(gone.slot);
            for (int slot = gone.slot; reverse && slot < count(); ++slot)
                if (rowAt(slot) == nullptr) visual = std::min(visual, visualOf(slot));
            for (int slot = gone.slot; slot < count();) {
                if (rowAt(slot) == nullptr) {
                    display.erase(display.begin() + slot);
                } else {
                    numbers[rowAt(slot)].slot = slot;
                    ++slot;
                }
            }
            tellCount();
            markDirty(std::max(layout.topIndex, visual));
        } else {
            m_pendingDelete = true;
            if (m_first == -1 || gone.slot < m_first) m_first = gone.slot;
            if (m_last == -1 || gone.slot > m_last) m_last = gone.slot;
        }
        return gone.mapIndex;
    }

    void endBatch() {
        if (!m_pendingDelete && !m_pendingInsert) return;
        int mark = m_native.selectionMark();
        std::vector<int> collected;
        for (int visual = m_native.nextSelected(-1); visual != -1; visual = m_native.nextSelected(visual))
            collected.push_back(visual);
        m_native.setState(-1, 0, 3);
        if (m_pendingTopInserts != 0) {
            for (int& visual : collected) visual += m_pendingTopInserts;
            mark += m_pendingTopInserts;
        }
        int start = m_first;
        if (m_pendingInsert) {
            start = 0;
        } else if (reverse) {
            start = count() - m_last - 1;
        }
        for (int slot = std::max(m_first, 0); m_first != -1 && reverse && slot < count(); ++slot)
            if (rowAt(slot) == nullptr) start = std::min(start, visualOf(slot));
        if (m_first != -1) compact(collected, mark);
        m_pendingDelete = m_pendingInsert = false;
        dirtIsOpen |= std::exchange(m_startIsOpen, false);
        m_pendingTopInserts = 0;
        m_first = m_last = -1;
        tellCount();
        for (const int visual : collected) {
            if (visual < 0 || visual >= count()) continue;
            m_native.setState(visual, mark == -1 || visual == mark ? 3 : 2, mark == -1 || visual == mark ? 3 : 2);
        }
        if (reverse && start > count() - 1) start = count() - 1;
        markDirty(std::max(layout.topIndex, start));
    }

    // The control hears the count when all that belongs to the rebuild is done.
    void rebuild() {
        for (auto& [row, own] : numbers) own.slot = -1;
        display.clear();
        for (std::size_t i = 0; i < map.size(); ++i) {
            if (map[i] == nullptr || !m_passes(map[i])) continue;
            numbers[map[i]].slot = count();
            display.push_back(static_cast<int>(i));
        }
    }

    // The same rows in another order, by slot.
    void reorder(std::vector<int> mapIndices) {
        display = std::move(mapIndices);
        renumber();
    }

    // Every row goes; what a batch has pending stays pending.
    void clear() {
        map.clear();
        display.clear();
        numbers.clear();
        tellCount();
    }

    // The page moves up when it would end below the last row.
    void tellCount() {
        m_native.setCount(count());
        const int former = layout.topIndex;
        layout.countFellTo(count());
        if (layout.topIndex != former) markDirty(layout.topIndex);
    }

    void forgetDirt() {
        dirty = {};
        dirtyNews = dirtIsOpen = false;
    }

    int count() const { return static_cast<int>(display.size()); }
    int visualOf(int slot) const { return reverse ? count() - 1 - slot : slot; }
    Row rowAt(int slot) const { return map[static_cast<std::size_t>(display[static_cast<std::size_t>(slot)])]; }

    std::vector<Row> map;  // null: a tombstone
    std::vector<int> display;
    std::unordered_map<Row, Numbers> numbers;
    bool reverse = false;
    RowLayout layout;  // only its plain fields are read
    bool dirtyNews = false;
    RECT dirty{};
    bool dirtIsOpen = false;

private:
    int insertBack(Numbers& own) {
        int slot = count();
        for (int i = count() - 1; i >= 0; --i) {
            const int mapIndex = display[static_cast<std::size_t>(i)];
            if (mapIndex == own.mapIndex) return 0;
            if (mapIndex > own.mapIndex) {
                slot = i + 1;
                break;
            }
        }
        display.insert(display.begin() + slot, own.mapIndex);
        own.slot = slot;
        renumber();
        tellCount();
        markDirty(std::max(layout.topIndex, visualOf(slot)));
        return 1;
    }

    void compact(std::vector<int>& collected, int& mark) {
        for (int i = m_first; i < count();) {
            if (rowAt(i) != nullptr) {
                numbers[rowAt(i)].slot = i;
                ++i;
                continue;
            }
            const int gone = reverse ? count() - i - 1 : i;
            display.erase(display.begin() + i);
            bool markMoved = false;
            for (std::size_t k = collected.size(); k-- > 0;) {
                if (!markMoved && mark == gone) {
                    mark = -1;
                } else if (!markMoved && mark != -1 && mark > gone) {
                    --mark;
                }
                markMoved = true;
                if (collected[k] == gone) {
                    collected.erase(collected.begin() + static_cast<std::ptrdiff_t>(k));
                } else if (collected[k] > gone) {
                    --collected[k];
                }
            }
        }
    }

    // A row leaves. Where all that was deleted is closed already, by a rebuild say, the batch end may repaint what it
    // likes; and a row at the end of the page that is no more is the control's to erase.
    void noteWhatIsOpen() {
        const auto isTombstone = [this](int mapIndex) { return map[static_cast<std::size_t>(mapIndex)] == nullptr; };
        m_startIsOpen |= m_pendingDelete && std::none_of(display.begin(), display.end(), isTombstone);
        dirtIsOpen |= count() - 1 == layout.topIndex + layout.countPerPage;
    }

    void renumber() {
        for (int slot = 0; slot < count(); ++slot)
            if (rowAt(slot) != nullptr) numbers[rowAt(slot)].slot = slot;
    }

    void markDirty(int first) {
        const int last = std::min(layout.topIndex + layout.countPerPage + 1, count()) - 1;  // with the row in part
        if (layout.visible && first >= layout.topIndex && first <= last) unite(first, last);
    }

    void unite(int first, int last) {
        const int top = layout.headerHeight + (first - layout.topIndex) * layout.rowHeight;
        const int bottom = layout.headerHeight + (last + 1 - layout.topIndex) * layout.rowHeight;
        const int left = -layout.horizontalScroll;
        const int right = left + layout.totalWidth;
        dirty = dirty.right == 0 ? RECT{left, top, right, bottom}
                                 : RECT{std::min<LONG>(dirty.left, left), std::min<LONG>(dirty.top, top),
                                        std::max<LONG>(dirty.right, right), std::max<LONG>(dirty.bottom, bottom)};
        dirtyNews = true;
    }

    NativeControl& m_native;
    std::function<bool(Row)> m_passes;
    bool m_pendingDelete = false;
    bool m_pendingInsert = false;
    bool m_startIsOpen = false;
    int m_pendingTopInserts = 0;
    int m_first = -1;
    int m_last = -1;
};

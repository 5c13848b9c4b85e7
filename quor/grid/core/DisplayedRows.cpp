// What costs here is not the work but waiting for rows, which lie far apart in memory. So rows are written in the order
// of the map, not of the display, with the ones ahead fetched in time; and to note a tick jumps on nothing that its row
// says, since that cannot be foretold.
#include "quor/grid/core/DisplayedRows.h"

#include <algorithm>
#include <iterator>

namespace quor::grid {

namespace {

constexpr int kAhead = 16;  // rows are far apart in memory: ask for their numbers before they are written

}  // namespace

// No jump depends on the row or on its test: what one of two ways would do is done by arithmetic.
bool DisplayedRows::note(sFilterListRowIndex& numbers, int passes) {
    if (!m_lazy || m_noteCount == kNoteCapacity) return false;
    const int shown = numbers.displayIndex != -1;
    m_notes[m_noteCount] = {numbers.mapIndex, static_cast<std::int8_t>(shown), static_cast<std::int8_t>(passes)};
    m_noteCount += static_cast<std::size_t>(shown | passes);
    m_notedGrowth += passes - shown;
    numbers.displayIndex = passes - 1;  // the order is lazy: only -1 has a meaning
    return true;
}

SettledTicks DisplayedRows::settle(bool reverse) {
    constexpr std::size_t kFarAhead = 16, kNearAhead = 8;
    DisplayOrder& order = *m_lazy;
    const std::size_t count = m_noteCount;
    m_noteCount = 0;
    m_notedGrowth = 0;
    SettledTicks done;
    done.lowestCount = order.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i + kFarAhead < count) order.prefetchHome(m_notes[i + kFarAhead].mapIndex);
        if (i + kNearAhead < count) order.prefetchPlace(m_notes[i + kNearAhead].mapIndex);
        const Note tick = m_notes[i];
        const int formerCount = order.size();
        if (tick.shown && tick.passes) {
            const int slot = order.slotOf(tick.mapIndex);
            const int visual = reverse ? formerCount - 1 - slot : slot;
            done.firstRepaint = std::min(done.firstRepaint, visual);
            done.lastRepaint = std::max(done.lastRepaint, visual);
        } else if (tick.shown) {
            const int slot = order.erase(tick.mapIndex);
            if (!m_lazyTombstones.empty()) done.left.push_back(slot);
            done.firstMoved = std::min(done.firstMoved, reverse ? formerCount - 1 - slot : slot);
            done.lowestCount = std::min(done.lowestCount, formerCount - 1);
        } else {
            const int slot = order.enter(tick.mapIndex);
            done.firstMoved = std::min(done.firstMoved, reverse ? formerCount - slot : slot);
        }
    }
    return done;
}

int DisplayedRows::slotOfMapIndex(int mapIndex) const {
    if (m_lazy) return mapIndex < 0 ? -1 : m_lazy->slotOf(mapIndex);
    const auto found = std::find(DisplayItems.begin(), DisplayItems.end(), mapIndex);
    return found == DisplayItems.end() ? -1 : static_cast<int>(found - DisplayItems.begin());
}

std::vector<std::int32_t> DisplayedRows::order() const {
    if (!m_lazy) return DisplayItems;
    std::vector<std::int32_t> mapIndices;
    mapIndices.reserve(static_cast<std::size_t>(size()));
    m_lazy->forEach([&](int mapIndex) { mapIndices.push_back(mapIndex); });
    return mapIndices;
}

int DisplayedRows::append(int mapIndex) {
    int slot = size();
    if (m_lazy) {
        slot = m_lazy->append(mapIndex);
    } else {
        DisplayItems.push_back(mapIndex);
    }
    m_rows.tell(mapIndex, slot);
    return slot;
}

int DisplayedRows::enter(int mapIndex) {
    if (!m_lazy && (DisplayItems.empty() || DisplayItems.back() > mapIndex)) return append(mapIndex);
    if (!m_lazy) becomeLazy();
    if (m_lazy->contains(mapIndex)) return -1;
    const int slot = m_lazy->enter(mapIndex);
    m_rows.tell(mapIndex, slot);
    return slot;
}

int DisplayedRows::leave(const sFilterListRowIndex& numbers) {
    const int mapIndex = numbers.mapIndex;
    int slot = numbers.displayIndex;
    if (!m_lazy && slot == size() - 1) {
        DisplayItems.pop_back();
    } else {
        if (!m_lazy) becomeLazy();
        slot = m_lazy->erase(mapIndex);
    }
    m_rows.tell(mapIndex, -1);
    return slot;
}

// The rows keep the slots that they know. From now on these mean no more than that they are displayed.
void DisplayedRows::becomeLazy() {
    m_lazyTombstones.clear();
    std::copy_if(DisplayItems.begin(), DisplayItems.end(), std::back_inserter(m_lazyTombstones),
                 [this](std::int32_t mapIndex) { return m_rows.isTombstone(mapIndex); });
    m_lazy.emplace(DisplayItems);
    std::vector<std::int32_t>().swap(DisplayItems);
}

// One pass: live rows move down and learn their slot, tombstones go.
void DisplayedRows::eraseTombstones(int fromSlot, std::vector<int>* erased) {
    if (m_lazy) return eraseLazyTombstones(fromSlot, erased);
    const int count = size();
    int kept = fromSlot;
    for (int from = fromSlot; from < count; ++from) {
        if (from + kAhead < count) m_rows.fetchToTell(at(from + kAhead));
        const int mapIndex = at(from);
        if (!m_rows.isTombstone(mapIndex)) {
            DisplayItems[static_cast<std::size_t>(kept)] = mapIndex;
            m_rows.tell(mapIndex, kept++);
        } else if (erased != nullptr) {
            erased->push_back(from);
        }
    }
    if (kept < count) DisplayItems.resize(static_cast<std::size_t>(kept));
}

// All slots are read before the first tombstone goes.
void DisplayedRows::eraseLazyTombstones(int fromSlot, std::vector<int>* erased) {
    const auto stays = [&](std::int32_t mapIndex) {
        const int own = m_lazy->slotOf(mapIndex);
        if (own >= fromSlot && erased != nullptr) erased->push_back(own);
        return own < fromSlot;
    };
    const auto going = std::partition(m_lazyTombstones.begin(), m_lazyTombstones.end(), stays);
    std::for_each(going, m_lazyTombstones.end(), [this](std::int32_t mapIndex) { m_lazy->erase(mapIndex); });
    m_lazyTombstones.erase(going, m_lazyTombstones.end());
    if (erased != nullptr) std::sort(erased->begin(), erased->end());
}

void DisplayedRows::assign(std::vector<std::int32_t> mapIndices, bool tellOthers) {
    assignTold(std::move(mapIndices));
    tell(DisplayItems, tellOthers);
}

void DisplayedRows::assignTold(std::vector<std::int32_t> mapIndices) {
    clear(false);
    DisplayItems = std::move(mapIndices);
}

// Rows learn their slots in the order of the map: that is how they mostly lie in memory.
void DisplayedRows::tell(const std::vector<std::int32_t>& mapIndices, bool tellOthers) {
    if (!m_rows.optiData()) return;
    const int count = m_rows.count();
    std::vector<std::int32_t> slots(static_cast<std::size_t>(count), -1);
    for (std::size_t slot = 0; slot < mapIndices.size(); ++slot)
        slots[static_cast<std::size_t>(mapIndices[slot])] = static_cast<std::int32_t>(slot);
    for (int mapIndex = 0; mapIndex < count; ++mapIndex) {
        if (mapIndex + kAhead < count) m_rows.fetchToTell(mapIndex + kAhead);
        const std::int32_t slot = slots[static_cast<std::size_t>(mapIndex)];
        if (slot != -1 || tellOthers) m_rows.tell(mapIndex, slot);
    }
}

void DisplayedRows::clear(bool tell) {
    if (tell) forEach([this](int mapIndex) { m_rows.tell(mapIndex, -1); });
    DisplayItems.clear();
    m_lazy.reset();
    m_lazyTombstones.clear();
    m_noteCount = 0;
    m_notedGrowth = 0;
}

std::string DisplayedRows::Check(std::size_t& tombstones) const {
    tombstones = 0;
    if (m_lazy) {
        if (!m_rows.optiData()) return "the order is lazy outside opti-data mode";
        if (!DisplayItems.empty()) return "two display orders hold rows";
        if (std::string fault = m_lazy->Check(); !fault.empty()) return fault;
    }
    std::vector<bool> seen(static_cast<std::size_t>(m_rows.count()));
    for (int slot = 0; slot < size(); ++slot) {
        const std::string where = "slot " + std::to_string(slot);
        const int mapIndex = at(slot);
        if (!m_rows.holds(mapIndex)) return where + " holds no valid map index";
        if (seen[static_cast<std::size_t>(mapIndex)]) return where + " holds a map index that is displayed already";
        seen[static_cast<std::size_t>(mapIndex)] = true;
        if (m_lazy && m_lazy->slotOf(mapIndex) != slot) return where + " is not where its row says";
        if (m_rows.optiData() && m_rows.isTombstone(mapIndex)) ++tombstones;
    }
    if (m_lazy && m_lazyTombstones.size() != tombstones) return "a tombstone is not listed, or one too many is";
    return {};
}

}  // namespace quor::grid

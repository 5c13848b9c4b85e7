// Entries are allocated one by one: a window may register another one while it is told, and the array then moves under
// the walk.
#include "quor/foundation/core/TimerTable.h"

namespace quor::foundation {

namespace {

// Adds a tick to an entry; true if it is due, which starts it anew. Sums wrap as 32-bit values do.
bool accumulate(tTimerStruct& entry, std::uint32_t elapsed) {
    if (entry.iAccumulated == 0) {
        entry.iAccumulated = static_cast<std::int32_t>(elapsed);
        return false;
    }
    entry.iAccumulated = static_cast<std::int32_t>(static_cast<std::uint32_t>(entry.iAccumulated) + elapsed);
    if (entry.iAccumulated < entry.iInterval) return false;
    entry.iAccumulated = 0;
    return true;
}

}  // namespace

TimerTable::~TimerTable() {
    for (INT_PTR i = 0; i < m_entries.GetCount(); ++i) delete m_entries.GetAt(i);
}

void TimerTable::add(CWnd* window, std::int32_t interval, std::uint32_t messageOffset) {
    m_entries.Add(new tTimerStruct{window, 0, interval, messageOffset});
}

void TimerTable::tick(std::uint32_t elapsed, const Send& send) {
    const INT_PTR count = m_entries.GetCount();
    for (INT_PTR i = 0; i < count; ++i) {
        tTimerStruct& entry = *m_entries.GetAt(i);
        if (accumulate(entry, elapsed)) send(entry);
    }
}

}  // namespace quor::foundation

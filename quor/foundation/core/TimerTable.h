// One tick of the host, shared by many windows with a period each: the table of who is due when. It knows no window;
// CZTTimer (foundation/ZTTimer.h) is the shell that sends the messages.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>
#include <functional>

class CWnd;

// One registration. Times are in the units of the host's tick.
struct tTimerStruct {
    CWnd* pWnd = nullptr;               // who gets the message; borrowed
    std::int32_t iAccumulated = 0;      // gathered since the last firing
    std::int32_t iInterval = 0;         // period
    std::uint32_t dwMessageOffset = 0;  // added to WM_USER
};

namespace quor::foundation {

// Owns its entries; they live as long as the table.
class TimerTable {
public:
    using Send = std::function<void(const tTimerStruct&)>;

    TimerTable() = default;
    TimerTable(const TimerTable&) = delete;
    TimerTable& operator=(const TimerTable&) = delete;
    ~TimerTable();

    // Appends an entry; the same values twice are two entries.
    void add(CWnd* window, std::int32_t interval, std::uint32_t messageOffset);

    // Passes on a tick, in the order of registration, and calls `send` for each entry that is due. A first tick after
    // registration or firing only loads the entry, so that no period is shorter than two ticks, whatever its interval.
    // Entries that `send` adds take their first tick at the next call.
    void tick(std::uint32_t elapsed, const Send& send);

private:
    CArray<tTimerStruct*, tTimerStruct*> m_entries;
};

}  // namespace quor::foundation

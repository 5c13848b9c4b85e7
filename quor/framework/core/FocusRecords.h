// FocusRecords: windows that wait for the focus, the last one on top. A record knows the window's object only as an
// address, to be compared: whoever reads it says whether that object still lives, so that no dead one is touched.
#pragma once

#include "quor/platform/Base.h"

#include <cstddef>
#include <vector>

namespace quor::framework {

struct FocusRecord {
    const void* window = nullptr;  // the object
    const void* handle = nullptr;  // what it had as a window when it was put here
    int flag = 0;
};

class FocusRecords {
public:
    // With a flag, records of the same window go first, from the bottom; of two that are neighbours the upper one is
    // passed over, since the walk steps on behind each removal.
    void push(const FocusRecord& record);
    // The topmost record of a window that lives; the dead above it are dropped. Null: none is left.
    template <class Lives>
    const FocusRecord* top(Lives lives) {
        while (!m_records.empty() && !lives(m_records.back())) m_records.pop_back();
        return m_records.empty() ? nullptr : &m_records.back();
    }
    // The record below the topmost, if its window lives. Drops nothing.
    template <class Lives>
    const FocusRecord* previous(Lives lives) const {
        if (m_records.size() < 2) return nullptr;
        const FocusRecord& record = m_records[m_records.size() - 2];
        return lives(record) ? &record : nullptr;
    }
    // The topmost record of a window.
    void remove(const void* window);
    void removeAll(const void* window);
    std::size_t size() const { return m_records.size(); }

private:
    std::vector<FocusRecord> m_records;
};

}  // namespace quor::framework

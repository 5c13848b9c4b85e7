// A host for tests: FakeHost.cpp, compiled into a test executable, exports every entry point that the library looks for
// in its host. It records the calls, answers what the test sets, and keeps the settings in memory.
//
// The entry points may be called before the executable's own statics are made; all state is function-local.
#pragma once

#include "quor/foundation/ControlBlock.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

struct FakeHost {
    // Each call as its name and arguments, with blanks between.
    std::vector<std::string> calls;
    // What UserSetting keeps, by section and key.
    std::map<std::pair<std::string, std::string>, std::string> settings;
    std::map<std::string, std::string> marketWatchColumns;  // by section
    bool refuseWrites = false;
    // Runs inside each call of either store, operation 0 to read and 1 to write; false: the call is refused.
    std::function<bool(int operation)> onStore;

    // Answers.
    int appStatus = 0;
    int roleForbids = 0;
    int optimizedMarketWatch = 0;
    int affinityResult = 7;
    int defaultSharingStatus = 0;
    std::string hashText = "hash";
    std::string marketText = "text";
    // Answers for the text of a market watch cell in place of marketText, and is not recorded among the calls.
    std::function<void(CWnd* parent, void* record, int columnIndex, CString& text)> marketCell;

    int count(const std::string& call) const;
};

// The one host of the process.
FakeHost& fakeHost();
// A host as at start: no calls, no settings, default answers. Also empties the block's hash text.
void resetFakeHost();

// Takes an entry point away for a block.
template <class Slot>
class WithoutEntry {
public:
    explicit WithoutEntry(Slot& slot) : m_slot(slot), m_entry(slot) { slot = nullptr; }
    WithoutEntry(const WithoutEntry&) = delete;
    WithoutEntry& operator=(const WithoutEntry&) = delete;
    ~WithoutEntry() { m_slot = m_entry; }

private:
    Slot& m_slot;
    Slot m_entry;
};

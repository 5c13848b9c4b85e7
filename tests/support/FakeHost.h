// A host for tests: FakeHost.cpp, compiled into a test executable, exports every entry point that the library looks for
// in its host. It records the calls, answers what the test sets, and keeps the settings in memory.
//
// The entry points may be called before the executable's own statics are made; all state is function-local.
#pragma once

#include "quor/foundation/ControlBlock.h"
#include "support/CallRecorder.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

struct FakeHost {
    // Each call as its name and arguments, with blanks between.
    test::CallRecorder calls;
    // What UserSetting keeps, by section and key; and UserSettingMWColumns, under a key of its own.
    using Key = std::pair<std::string, std::string>;
    using Settings = std::map<Key, std::string>;
    static constexpr const char* sharedColumns = "user columns of all watches";
    Settings settings;
    bool refuseWrites = false;
    // Runs inside each call of either store, operation 0 to read and 1 to write; false: the call is refused.
    std::function<bool(int operation)> onStore;

    // Answers.
    static constexpr int affinityResult = 7;
    int optimizedMarketWatch = 0;
    int defaultSharingStatus = 0;
    int appStatus = 0;                 // 4: peer data are available
    std::string clientName = "third";  // the third of these
    std::string hashText = "hash";
    // Gives the text of a market watch cell; such a call is not recorded.
    std::function<void(CWnd* parent, void* record, int columnIndex, CString& text)> marketCell;
};

// The one host of the process.
FakeHost& fakeHost();
// A host as at start: no calls, no settings, default answers. Also empties the block's hash text.
void resetFakeHost();

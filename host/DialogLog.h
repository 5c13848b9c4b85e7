// Notes in the log which of the library's dialogs were made and which ended, by their titles.
#pragma once

#include "quor/foundation/core/Watchers.h"

namespace terminal {

// Hears of dialogs while it lives. One at a time.
class DialogLog : public CWatcher {
public:
    DialogLog();
    ~DialogLog() override;
    DialogLog(const DialogLog&) = delete;
    DialogLog& operator=(const DialogLog&) = delete;

    void OnUpdate(int event, CString text, sUpdateData* data, int) override;
    void OnReserved() override {}
};

}  // namespace terminal

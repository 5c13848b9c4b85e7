#include "host/DialogLog.h"

#include "host/panes/LogPane.h"
#include "quor/framework/ZTDialog.h"

namespace terminal {

DialogLog::DialogLog() { CZTDialog::SetLayoutWatcher(this); }

DialogLog::~DialogLog() { CZTDialog::SetLayoutWatcher(nullptr); }

void DialogLog::OnUpdate(int event, CString, sUpdateData* data, int) {
    CString title;
    reinterpret_cast<CZTDialog*>(data)->GetWindowText(title);
    Log::instance().add((event ? "Dialog made: " : "Dialog ended: ") + title);
}

}  // namespace terminal

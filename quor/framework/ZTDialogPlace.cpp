// Where a dialog stands: the stored place, and the monitors of the moment when it is shown.
#include "quor/foundation/HostServices.h"
#include "quor/foundation/core/HostFiles.h"
#include "quor/framework/FocusStackInternal.h"
#include "quor/framework/ZTDialog.h"
#include "quor/framework/core/MonitorPlacement.h"
#include "quor/platform/tools/QuorTools.h"

using quor::framework::DialogPlacement;

namespace {

constexpr const char* kPositionSection = "DIALOG_POSITION";
constexpr const char* kNoRecord = "Settings Not Found";
constexpr DWORD kLongestRecord = 4096;

constexpr const char* kMultiMonitorSection = "MultiMonitor Settings";
constexpr const char* kYes = "YES";
constexpr const char* kNo = "NO";

DialogPlacement coreOf(const WINDOWPLACEMENT& placement) {
    return {placement.rcNormalPosition, placement.ptMaxPosition, placement.ptMinPosition,
            static_cast<int>(placement.showCmd)};
}

void take(const DialogPlacement& from, WINDOWPLACEMENT& to) {
    to.rcNormalPosition = from.normal;
    to.ptMaxPosition = from.maximized;
    to.ptMinPosition = from.minimized;
    to.showCmd = static_cast<UINT>(from.showCmd);
}

void logRecord(const char* what, const CString& key) {
    quor::foundation::logToHost(CString(what) + key + "Dialog; Loading Defualt");
}

}  // namespace

// --- Stored --------------------------------------------------------------------------------------------------------

void CZTDialog::GetWindowPos() {
    GetWindowPlacement(&m_wpPlacement);
    if (m_strDialogKey.IsEmpty() || quor::foundation::dialogPositionFile().IsEmpty()) return;
    if (readPosition()) readMultiMonitorMode();
}

// True also for an empty record, which is only logged.
bool CZTDialog::readPosition() {
    CString record;
    ::GetPrivateProfileStringA(kPositionSection, m_strDialogKey, kNoRecord, record.GetBuffer(kLongestRecord),
                               kLongestRecord, quor::foundation::dialogPositionFile());
    record.ReleaseBuffer();
    if (record.IsEmpty()) {
        logRecord("Could Not Find Saved Positions for ", m_strDialogKey);
        return true;
    }
    if (record == kNoRecord) return false;
    using quor::framework::RecordFault;
    DialogPlacement placement = coreOf(m_wpPlacement);
    const RecordFault fault = applyPositionRecord(record, (GetStyle() & WS_THICKFRAME) != 0, placement);
    if (fault == RecordFault::badCharacter)
        logRecord("Error Occured While Reading saved Positions for ", m_strDialogKey);
    if (fault != RecordFault::none) return false;
    take(placement, m_wpPlacement);
    return true;
}

void CZTDialog::readMultiMonitorMode() {
    CString value, file = quor::foundation::recoveryFile(), error;
    if (!quoru_appdata_ini_file_operations(0, kMultiMonitorSection, m_strDialogKey, value, file, error)) return;
    if (!error.IsEmpty()) AfxMessageBox(error);
    m_bMmmMode = value == kYes;
}

void CZTDialog::writeMultiMonitorMode() {
    CString value = m_bMmmMode ? kYes : kNo, file = quor::foundation::recoveryFile(), error;
    if (quoru_appdata_ini_file_operations(1, kMultiMonitorSection, m_strDialogKey, value, file, error) &&
        !error.IsEmpty())
        AfxMessageBox(error);
}

void CZTDialog::SaveWindowPos() {
    const CString file = quor::foundation::dialogPositionFile();
    if (m_strDialogKey.IsEmpty() || file.IsEmpty() || !m_hWnd) return;
    if (::IsWindow(m_hWnd)) GetWindowPlacement(&m_wpPlacement);
    ::WritePrivateProfileStringA(kPositionSection, m_strDialogKey, positionRecord(coreOf(m_wpPlacement)), file);
    writeMultiMonitorMode();
}

// --- Shown ---------------------------------------------------------------------------------------------------------

// Taking its place may show the window once more: that call has nothing left to do.
void CZTDialog::OnShowWindow(BOOL bShow, UINT nStatus) {
    if (m_takingPlace) return CZTBCGPDialog::OnShowWindow(bShow, nStatus);
    const HWND window = m_hWnd;
    if (bShow) {
        takeShownPlace();
    } else {
        RemoveFocusWnd(this);
        m_inFocusStack = false;
    }
    if (CWnd::FromHandlePermanent(window) != this) return;
    if (m_pDgBar) m_bFocusStatus = true;
    if (nStatus == 0) m_bClosedByCancel = false;
    SendMessage(BCGM_CHANGEVISUALMANAGER);
    if (CWnd::FromHandlePermanent(window) == this) CZTBCGPDialog::OnShowWindow(bShow, nStatus);
}

void CZTDialog::takeShownPlace() {
    struct Taking {
        explicit Taking(bool& taking) : flag(taking) { flag = true; }
        ~Taking() { flag = false; }
        bool& flag;
    } taking(m_takingPlace);
    AddToFocusWnd(this, 0);
    m_inFocusStack = true;
    quoru_add_details_to_window_title(this, m_strTitleDetails);
    CRect normal(m_wpPlacement.rcNormalPosition);
    if (IsMonitorTopOccupied() && m_bAdjustForOccupiedTop) {
        if (m_bTopCheckedOnce) normal = quor::framework::belowOccupiedTop(normal, m_nOccupiedTop);
        m_bTopCheckedOnce = 1;
    }
    m_wpPlacement.rcNormalPosition = normal;
    using quor::framework::ShowPlace;
    quor::framework::ShowFacts facts;
    facts.showCmd = static_cast<int>(m_wpPlacement.showCmd);
    facts.onMonitor = quor::platform::screens().monitorFromRect(normal) != nullptr;
    facts.closedByCancel = m_bClosedByCancel;
    switch (showPlace(facts)) {
        case ShowPlace::rectangle:
            MoveWindow(normal);
            break;
        case ShowPlace::centre:
            CenterWindow();
            break;
        case ShowPlace::placement: {
            const WINDOWPLACEMENT placement = m_wpPlacement;  // OnSize writes the member meanwhile
            SetWindowPlacement(&placement);
            break;
        }
        case ShowPlace::asItIs:
            break;
    }
}

int CZTDialog::IsMonitorTopOccupied() {
    if (!m_hWnd) return 0;
    MONITORINFO info{};
    const auto& screens = quor::platform::screens();
    if (!screens.describe(screens.monitorFromWindow(m_hWnd), info)) return 0;
    m_nOccupiedTop = quor::framework::occupiedTop(info.rcMonitor, info.rcWork);
    return m_nOccupiedTop > 0;
}

// EndDialog hides without WM_SHOWWINDOW.
void CZTDialog::OnWindowPosChanged(WINDOWPOS* pPos) {
    if ((pPos->flags & SWP_HIDEWINDOW) && m_inFocusStack) {
        m_inFocusStack = false;
        RemoveFocusWnd(this);
    }
    CZTBCGPDialog::OnWindowPosChanged(pPos);
}

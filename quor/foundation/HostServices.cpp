#include "quor/foundation/HostServices.h"

namespace quor::foundation {

void logToHost(const char* text) {
    if (g_pControlBlock && g_pControlBlock->AddToTabbedLog) g_pControlBlock->AddToTabbedLog(text, 0, 0);
}

bool hostRunsOptimizedMarketWatch() {
    return g_pControlBlock->IsOptimizedMWUpdate && g_pControlBlock->IsOptimizedMWUpdate() != 0;
}

int registerForDisplayAffinity(CWnd* dialog) {
    const auto sharingAllowed = g_pControlBlock->pu_GetDefaultScreenSharingStatus;
    const auto enlist = g_pControlBlock->pu_RegisterForWindowDisplayAffinity;
    if (!sharingAllowed || (sharingAllowed(dialog, 0, 0) & 0xFF) != 0 || !enlist) return 1;
    return enlist(dialog);
}

void removeFromDisplayAffinity(CWnd* dialog) {
    const auto remove = g_pControlBlock->pu_RemoveWindowFromDispAffinityWindowsMap;
    if (remove) remove(dialog);
}

const CString& appdataHashCode() {
    CString& text = g_pControlBlock->csAppdataHashCode;
    if (text.IsEmpty() && g_pControlBlock->pu_GetAppdataHashCode) g_pControlBlock->pu_GetAppdataHashCode(text);
    return text;
}

}  // namespace quor::foundation

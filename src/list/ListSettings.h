// One setting of a list in the host's store, under the list's name.
#pragma once

#include "src/foundation/ControlBlock.h"
#include "src/list/CommonListCtrl.h"

// False if the host has nothing under the key; `value` is then of no use.
inline bool readListSetting(const CCommonListCtrl& list, const char* key, CString& value) {
    return g_pControlBlock->UserSetting(0, list.m_csListName, value, key) != 0;
}

// False if the host refuses.
inline bool writeListSetting(const CCommonListCtrl& list, const char* key, CString value) {
    return g_pControlBlock->UserSetting(1, list.m_csListName, value, key) != 0;
}

// One setting of a list in the host's store. UserSetting is an entry that a host must export: it is called as it
// stands.
#pragma once

#include "quor/foundation/ControlBlock.h"

namespace quor::list {

// False if nothing is stored.
inline bool readListSetting(const CString& section, const char* key, CString& value) {
    return g_pControlBlock->UserSetting(0, section, value, key) != 0;
}

// False if the host refused.
inline bool writeListSetting(const CString& section, const char* key, CString value) {
    return g_pControlBlock->UserSetting(1, section, value, key) != 0;
}

}  // namespace quor::list

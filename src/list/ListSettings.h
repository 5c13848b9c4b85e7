// One setting of a list in the host's store. A host without the entry stores nothing: reads find nothing, and writes
// are no failure that a user should hear of.
#pragma once

#include "src/foundation/ControlBlock.h"

namespace quor::list {

inline bool readListSetting(const CString& section, const char* key, CString& value) {
    return g_pControlBlock->UserSetting && g_pControlBlock->UserSetting(0, section, value, key) != 0;
}

// False if the host refused.
inline bool writeListSetting(const CString& section, const char* key, CString value) {
    return !g_pControlBlock->UserSetting || g_pControlBlock->UserSetting(1, section, value, key) != 0;
}

}  // namespace quor::list

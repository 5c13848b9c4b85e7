// The entry points that this executable exports to the library stand in HostEntries.cpp; here is what they work on.
#pragma once

#include "host/core/SettingsFile.h"

namespace terminal {

// The store behind the lists' settings. Borrowed; null, the state before this call: nothing is stored and reads fail.
void useSettings(SettingsFile* settings);

// Whether the store in use has a value under a key.
bool settingStored(const char* section, const char* key);

}  // namespace terminal

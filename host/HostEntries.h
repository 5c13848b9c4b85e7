// The entry points that this executable exports to the library stand in HostEntries.cpp; here is what they work on.
#pragma once

#include "host/core/SettingsFile.h"

namespace terminal {

// The store behind the lists' settings. Borrowed; null, the state before this call: nothing is stored and reads fail.
void useSettings(SettingsFile* settings);

}  // namespace terminal

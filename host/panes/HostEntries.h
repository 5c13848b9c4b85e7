// The entry points that this executable exports to the library stand in HostEntries.cpp; here is what they work on.
#pragma once

#include "host/core/SettingsFile.h"

#include <string>

namespace terminal {

// The store behind the lists' settings. Borrowed; null, the state before this call: nothing is stored and reads fail.
void useSettings(SettingsFile* settings);

SettingsFile* settingsInUse();

// Whether the store in use has a value under a key.
bool settingStored(const char* section, const char* key);

// A value of the store in use, "" if it has none; and a new one.
std::string setting(const char* section, const char* key);
void keepSetting(const char* section, const char* key, const std::string& value);

}  // namespace terminal

// The child of the kill test: this test program started in another role.
#pragma once

namespace terminal {

inline constexpr const char* settingsWriterOption = "--write-settings";

// Saves generation after generation to `path` until it is ended; returns only when something fails.
int writeSettingsForEver(const char* path, const char* counterName);

}  // namespace terminal

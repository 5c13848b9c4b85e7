#include "benchmarks/PrivateBytes.h"

#include <windows.h>
#include <psapi.h>
#include <stdexcept>

// Windows has the same number as PrivateUsage too; Wine does not.
long long privateBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    if (!::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters))
        throw std::runtime_error("the process cannot be asked for its memory");
    return static_cast<long long>(counters.PagefileUsage);
}

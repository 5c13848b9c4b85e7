// Wine's GetGuiResources always answers 0, so the objects are counted where they are listed: GDI objects in the table
// that the process shares with the system, windows and menus by asking about every handle value.
#include "support/HandleCounts.h"

#include "platform/Framework.h"

#include <ostream>

namespace test {

namespace {

struct GdiTableEntry {
    ULONGLONG object;
    ULONG owner;
    USHORT unique;
    BYTE type;  // 0: free
    BYTE flags;
    ULONGLONG user;
};
static_assert(sizeof(GdiTableEntry) == 24);

int gdiObjects() {
    constexpr std::size_t tableInEnvironment = 0xF8;
    constexpr int tableSize = 0x10000;
    const char* environment = nullptr;  // the process environment block
    asm("movq %%gs:0x60, %0" : "=r"(environment));
    const auto* table = *reinterpret_cast<const GdiTableEntry* const*>(environment + tableInEnvironment);
    int used = 0;
    for (int index = 0; index < tableSize; ++index) used += table[index].type != 0;
    return used;
}

bool isOwnWindow(HWND window) {
    DWORD process = 0;
    return ::IsWindow(window) && ::GetWindowThreadProcessId(window, &process) && process == ::GetCurrentProcessId();
}

}  // namespace

HandleCounts countHandles() {
    HandleCounts counts;
    if (const auto gdi = static_cast<int>(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS)))
        counts.gdi = gdi;
    else
        counts.gdi = gdiObjects();
    for (UINT_PTR value = 0x20; value <= 0x1001E; value += 2) {
        counts.windows += isOwnWindow(reinterpret_cast<HWND>(value));
        counts.menus += ::IsMenu(reinterpret_cast<HMENU>(value)) != FALSE;
    }
    return counts;
}

std::ostream& operator<<(std::ostream& out, const HandleCounts& counts) {
    return out << counts.gdi << " GDI objects, " << counts.windows << " windows, " << counts.menus << " menus";
}

}  // namespace test

// Wine's GetGuiResources always answers 0, so the objects are counted where they are listed: GDI objects in the table
// that the process shares with the system, windows by enumeration, menus by asking about every handle value.
#include "support/HandleCounts.h"

#include "quor/platform/Framework.h"
#include "support/WindowFixture.h"

#include <gtest/gtest.h>
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

BOOL CALLBACK countOwn(HWND window, LPARAM count) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    *reinterpret_cast<int*>(count) += process == ::GetCurrentProcessId();
    return TRUE;
}

BOOL CALLBACK countWithChildren(HWND window, LPARAM count) {
    countOwn(window, count);
    return ::EnumChildWindows(window, &countOwn, count), TRUE;
}

// Top-level windows with all below them, and windows that only take messages.
int ownWindows() {
    int count = 0;
    ::EnumWindows(&countWithChildren, reinterpret_cast<LPARAM>(&count));
    for (HWND window = nullptr; (window = ::FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr));)
        countOwn(window, reinterpret_cast<LPARAM>(&count));
    return count;
}

// Menus are listed nowhere: every value that a handle can have is asked about.
int ownMenus() {
    int count = 0;
    for (UINT_PTR value = 0x20; value <= 0x1001E; value += 2)
        count += ::IsMenu(reinterpret_cast<HMENU>(value)) != FALSE;
    return count;
}

}  // namespace

HandleCounts countHandles() {
    HandleCounts counts;
    counts.gdi = static_cast<int>(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS));
    if (counts.gdi == 0) counts.gdi = gdiObjects();
    counts.windows = ownWindows();
    counts.menus = ownMenus();
    return counts;
}

std::ostream& operator<<(std::ostream& out, const HandleCounts& counts) {
    return out << counts.gdi << " GDI objects, " << counts.windows << " windows, " << counts.menus << " menus";
}

void expectHandlesReturn(int count, const std::function<void(int round)>& play) {
    const auto playAll = [&](int rounds) {
        for (int round = 0; round < rounds; ++round) play(round);
        pumpUntilIdle();
    };
    playAll(2);
    const HandleCounts before = countHandles();
    playAll(count);
    EXPECT_EQ(countHandles(), before);
}

}  // namespace test

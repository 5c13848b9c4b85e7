// The plain value types of the Windows API. On Windows they come from <windows.h>; natively this header defines the
// same names with the same widths (LONG and DWORD have 32 bits everywhere), so that windowless code reads alike in both
// builds and gives one answer. Handles are opaque natively: they can be stored and compared, nothing else.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
// Empty macros of 16-bit days, which take two plain words from everyone. The headers themselves use the upper case.
#undef near
#undef far

#else

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using BOOL = int;
using CHAR = char;
using TCHAR = char;
using LPSTR = char*;
using LPCSTR = const char*;
using LPTSTR = char*;
using LPCTSTR = const char*;
using LPVOID = void*;
using LPCVOID = const void*;

// Integers as wide as a pointer; `long long` as on Windows, so that formats and overloads agree.
using INT_PTR = long long;
using UINT_PTR = unsigned long long;
using LONG_PTR = long long;
using ULONG_PTR = unsigned long long;
using DWORD_PTR = unsigned long long;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using HRESULT = LONG;
using COLORREF = DWORD;
static_assert(sizeof(INT_PTR) == sizeof(void*));

#define DECLARE_OPAQUE_HANDLE(name) \
    struct name##__;                \
    using name = name##__*
DECLARE_OPAQUE_HANDLE(HWND);
DECLARE_OPAQUE_HANDLE(HDC);
DECLARE_OPAQUE_HANDLE(HMENU);
DECLARE_OPAQUE_HANDLE(HFONT);
DECLARE_OPAQUE_HANDLE(HICON);
DECLARE_OPAQUE_HANDLE(HINSTANCE);
#undef DECLARE_OPAQUE_HANDLE
using HMODULE = HINSTANCE;
using HANDLE = void*;

struct tagPOINT {
    LONG x;
    LONG y;
};
struct tagSIZE {
    LONG cx;
    LONG cy;
};
struct tagRECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using POINT = tagPOINT;
using SIZE = tagSIZE;
using RECT = tagRECT;
using LPPOINT = POINT*;
using LPSIZE = SIZE*;
using LPRECT = RECT*;
using LPCRECT = const RECT*;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
#define CALLBACK
#define WINAPI
#define MAX_PATH 260
#define CLR_NONE 0xFFFFFFFFu
#define CLR_DEFAULT 0xFF000000u

// Functions here, macros there; both are used in the same way.
constexpr WORD LOWORD(std::uint64_t value) { return static_cast<WORD>(value & 0xFFFF); }
constexpr WORD HIWORD(std::uint64_t value) { return static_cast<WORD>((value >> 16) & 0xFFFF); }
constexpr BYTE LOBYTE(std::uint64_t value) { return static_cast<BYTE>(value & 0xFF); }
constexpr BYTE HIBYTE(std::uint64_t value) { return static_cast<BYTE>((value >> 8) & 0xFF); }
constexpr LONG MAKELONG(std::uint64_t low, std::uint64_t high) {
    return static_cast<LONG>(LOWORD(low) | static_cast<DWORD>(LOWORD(high)) << 16);
}
constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>((red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16);
}
constexpr BYTE GetRValue(COLORREF colour) { return LOBYTE(colour); }
constexpr BYTE GetGValue(COLORREF colour) { return LOBYTE(colour >> 8); }
constexpr BYTE GetBValue(COLORREF colour) { return LOBYTE(colour >> 16); }

#endif

// Records of these types go through the system's calls and into stored bytes: the same in both builds.
static_assert(sizeof(LONG) == 4 && sizeof(DWORD) == 4 && sizeof(COLORREF) == 4 && sizeof(WORD) == 2);
static_assert(sizeof(WPARAM) == 8 && sizeof(LPARAM) == 8 && sizeof(DWORD_PTR) == 8);
static_assert(sizeof(POINT) == 8 && offsetof(POINT, y) == 4);
static_assert(sizeof(SIZE) == 8 && offsetof(SIZE, cy) == 4);
static_assert(sizeof(RECT) == 16 && offsetof(RECT, top) == 4 && offsetof(RECT, right) == 8 &&
              offsetof(RECT, bottom) == 12);

#ifndef _T
#define _T(text) text
#endif

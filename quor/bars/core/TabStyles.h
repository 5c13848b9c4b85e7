// Style bits and hit codes of a tab control. Hosts and dialog templates use the numbers: none may change.
#pragma once

#include "quor/platform/Base.h"

// Style bits of the window.
constexpr DWORD CTS_FIXEDWIDTH = 1;       // all tabs as wide as the widest text
constexpr DWORD CTS_FOURBUTTONS = 2;      // first and last buttons besides previous and next
constexpr DWORD CTS_AUTOHIDEBUTTONS = 4;  // scroll buttons vanish when all tabs fit
constexpr DWORD CTS_LISTBUTTON = 8;       // a button that opens a menu of all tabs
constexpr DWORD CTS_MULTIHIGHLIGHT = 16;  // Ctrl-click highlights without selecting
constexpr DWORD CTS_VERTICAL = 32;        // the strip runs downwards
constexpr DWORD CTS_DRAGMOVE = 64;        // tabs can be dragged to a new place
constexpr DWORD CTS_DRAGCOPY = 128;       // Ctrl-drag copies a tab
constexpr DWORD CTS_CLOSEBUTTON = 256;    // a close button
constexpr DWORD CTS_BUTTONSAFTER = 512;   // buttons at the far end of the strip
constexpr DWORD CTS_TOP = 1024;           // tabs hang from the top edge, for a strip below its content

// What a point of the strip hits: a tab by its index, or one of these.
constexpr int CTS_HIT_FIRST = -1;
constexpr int CTS_HIT_PREVIOUS = -2;
constexpr int CTS_HIT_NEXT = -3;
constexpr int CTS_HIT_LAST = -4;
constexpr int CTS_HIT_CLOSE = -5;
constexpr int CTS_HIT_NOTHING = -6;
constexpr int CTS_HIT_LIST = -7;

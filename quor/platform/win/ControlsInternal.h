// What the control classes share. Private to quor/platform/win.
#pragma once

#include "quor/platform/Framework.h"

// Registers the common controls' window classes once.
void registerCommonControls();

// By way of CWnd, which throws again what a handler threw meanwhile.
inline LRESULT send(const CWnd* window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return window->SendMessage(message, wParam, lParam);
}

// Vertical dots an inch of a screen or printer; scaled (Platform.h) is for windows.
int dotsPerInch(HDC device);

inline LPARAM pointerParam(const void* pointer) { return reinterpret_cast<LPARAM>(pointer); }

inline HIMAGELIST handleOf(const CImageList* list) { return list ? list->m_hImageList : nullptr; }
inline HWND handleOf(const CWnd* window) { return window ? window->m_hWnd : nullptr; }

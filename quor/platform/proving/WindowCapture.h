// Pictures of windows as PNG files.
#pragma once

#include "quor/platform/base/Strings.h"
#include "quor/platform/base/WinTypes.h"

#include <cstdint>
#include <vector>

// Pixels from the top row down, each 0xAARRGGBB, alpha 255.
struct WindowPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

// Reads the client area with its child windows as they stand on the screen (a parent with WS_CLIPCHILDREN leaves holes
// where its children are, as seen by the system). Menus, tips and other popups need a call of their own. False for a
// window that is gone or has an empty client area.
bool quorCaptureClientArea(HWND window, WindowPicture& picture);
// The same of the whole window, with its caption and frame.
bool quorCaptureWindow(HWND window, WindowPicture& picture);

// The tool tip of the calling thread that shows; null if none does.
HWND quorShownToolTip();

// Writes a picture to `path`, replacing the file. COM is initialised meanwhile. On failure the result is false and
// `error`, if given, says which step failed, after the path where that is narrow.
bool quorSavePng(const WindowPicture& picture, LPCTSTR path, CString* error = nullptr);
bool quorSavePng(const WindowPicture& picture, LPCWSTR path, CString* error = nullptr);

// The pixels of a PNG file. False, and an empty picture: it is none.
bool quorReadPng(LPCWSTR path, WindowPicture& picture);

// Captures the client area and writes it as quorSavePng does.
bool quorSaveClientAreaPng(HWND window, LPCTSTR path, CString* error = nullptr);
bool quorSaveClientAreaPng(HWND window, LPCWSTR path, CString* error = nullptr);

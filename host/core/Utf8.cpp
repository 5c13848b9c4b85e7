#include "host/core/Utf8.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace terminal {

#ifdef _WIN32

namespace {

constexpr UINT kListCodePage = 1252;

int sizeOf(std::string_view text) { return static_cast<int>(text.size()); }

// In one code page; empty if it cannot be read so.
std::wstring wideIn(UINT page, DWORD flags, std::string_view text) {
    std::wstring wide(text.size(), L'\0');  // no text has more characters than bytes
    const int length = MultiByteToWideChar(page, flags, text.data(), sizeOf(text), wide.data(), sizeOf(text));
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

// `otherwise` stands for what the page does not have; null where that cannot be.
std::string narrowIn(UINT page, DWORD flags, std::wstring_view text, const char* otherwise) {
    constexpr std::size_t kMostBytes = 4;  // a character
    std::string narrow(text.size() * kMostBytes, '\0');
    const int length = WideCharToMultiByte(page, flags, text.data(), static_cast<int>(text.size()), narrow.data(),
                                           sizeOf(narrow), otherwise, nullptr);
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

}  // namespace

std::wstring wideText(std::string_view text) {
    const std::wstring wide = wideIn(CP_UTF8, MB_ERR_INVALID_CHARS, text);
    return wide.empty() ? wideIn(kListCodePage, 0, text) : wide;
}

std::string utf8Text(std::wstring_view text) { return narrowIn(CP_UTF8, 0, text, nullptr); }

std::string codePageText(std::string_view text) {
    return narrowIn(kListCodePage, WC_NO_BEST_FIT_CHARS, wideText(text), "_");
}

std::string codePageFolder(std::string_view folder) {
    const std::wstring wide = wideText(folder);
    std::wstring brief(GetShortPathNameW(wide.c_str(), nullptr, 0), L'\0');
    brief.resize(GetShortPathNameW(wide.c_str(), brief.data(), static_cast<DWORD>(brief.size())));
    for (const std::wstring& name : {wide, brief}) {
        const std::string narrow = narrowIn(kListCodePage, WC_NO_BEST_FIT_CHARS, name, "_");
        if (wideIn(kListCodePage, 0, narrow) == name) return narrow;
    }
    return {};
}

std::filesystem::path systemPath(std::string_view path) { return wideText(path); }

std::FILE* openFile(const std::string& path, const char* mode) {
    return _wfopen(wideText(path).c_str(), wideText(mode).c_str());
}

void printError(const std::string& line) {
    const HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (!GetConsoleMode(stream, &mode)) {
        std::fputs((line + '\n').c_str(), stderr);
        return;
    }
    const std::wstring wide = wideText(line + "\r\n");
    WriteConsoleW(stream, wide.data(), static_cast<DWORD>(wide.size()), &mode, nullptr);
}

#else

std::filesystem::path systemPath(std::string_view path) { return path; }

std::FILE* openFile(const std::string& path, const char* mode) { return std::fopen(path.c_str(), mode); }

void printError(const std::string& line) { std::fputs((line + '\n').c_str(), stderr); }

#endif

}  // namespace terminal

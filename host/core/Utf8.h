// Names of files and other texts in UTF-8, and the system's own forms of them. On Windows that is wide characters: a
// narrow name loses what the code page does not have.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace terminal {

// `path` as the standard library takes it.
std::filesystem::path systemPath(std::string_view path);

// As fopen, by a name in UTF-8.
std::FILE* openFile(const std::string& path, const char* mode);

// Writes a line to the error stream: in UTF-8 to a file, as a console shows it to a console.
void printError(const std::string& line);

#ifdef _WIN32
// For calls of the system. Bytes that are no UTF-8 are read in the lists' code page, 1252.
std::wstring wideText(std::string_view text);
std::string utf8Text(std::wstring_view text);
// For the lists, which show code page 1252: '_' stands for what it does not have.
std::string codePageText(std::string_view text);
// A folder that is there, for calls that take names in that code page: as it is named, or by its short name. Empty: it
// has no such name.
std::string codePageFolder(std::string_view folder);
#endif

}  // namespace terminal

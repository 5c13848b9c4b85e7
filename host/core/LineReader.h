// A text file line by line through one buffer of fixed size, so that a file of any length takes the same memory.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace terminal {

class LineReader {
public:
    enum class Next { line, end, tooLong, failed };

    // Opens the file, named in UTF-8, for reading; isOpen() tells.
    LineReader(const std::string& file, std::size_t longestLine);
    bool isOpen() const { return m_file != nullptr; }

    // The next line without its end ("\n", "\r\n", or the end of the file), valid until the next call. Any bytes, NUL
    // included. `tooLong` gives the first bytes of the line; after anything but `line` the reader is done.
    Next next(std::string_view& line);
    std::int64_t lineNumber() const { return m_lineNumber; }  // of the line last given, from 1

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    bool fill();

    std::unique_ptr<std::FILE, CloseFile> m_file;
    std::size_t m_longestLine;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;  // of what is not yet given out
    std::size_t m_end = 0;
    std::int64_t m_lineNumber = 0;
    bool m_atEnd = false;
};

}  // namespace terminal

#include "host/core/LineReader.h"

#include "host/core/Utf8.h"

#include <cstring>

namespace terminal {
namespace {

constexpr std::size_t kReadSize = 256 * 1024;

}  // namespace

LineReader::LineReader(const std::string& file, std::size_t longestLine)
    : m_file(openFile(file, "rb")), m_longestLine(longestLine) {
    if (!m_file) return;
    std::setvbuf(m_file.get(), nullptr, _IONBF, 0);  // the buffer here is the only one
    m_buffer.resize(longestLine + 2 + kReadSize);
}

// Moves what is left to the front and reads on behind it. False: nothing more came.
bool LineReader::fill() {
    if (m_atEnd) return false;
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    const std::size_t got = std::fread(m_buffer.data() + m_end, 1, kReadSize, m_file.get());
    m_end += got;
    m_atEnd = got < kReadSize;
    return got > 0;
}

LineReader::Next LineReader::next(std::string_view& line) {
    line = {};
    std::size_t searched = 0;  // bytes after m_begin that hold no line end
    const char* lineEnd = nullptr;
    for (;;) {
        const char* const begin = m_buffer.data() + m_begin;
        const std::size_t size = m_end - m_begin;
        if (size > searched) lineEnd = static_cast<const char*>(std::memchr(begin + searched, '\n', size - searched));
        if (lineEnd || size > m_longestLine + 1) break;
        searched = size;
        if (fill()) continue;
        if (std::ferror(m_file.get())) return Next::failed;
        if (size == 0) return Next::end;
        break;
    }
    const char* const begin = m_buffer.data() + m_begin;
    const char* const last = m_buffer.data() + m_end;
    line = {begin, static_cast<std::size_t>((lineEnd ? lineEnd : last) - begin)};
    m_begin = lineEnd ? static_cast<std::size_t>(lineEnd + 1 - m_buffer.data()) : m_end;
    ++m_lineNumber;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line.size() > m_longestLine ? Next::tooLong : Next::line;
}

}  // namespace terminal

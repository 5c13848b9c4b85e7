// The store of the terminal's settings: one INI-like text file, `[section]` and `key=value`, held in memory and written
// as a whole. Bytes are kept as they are: 0xA7, quotes, blanks at either end, any code page; nothing is case-folded.
//
// Lines that are neither a section nor a key, comments included, stay where they are. A kill at any moment loses
// nothing that an earlier save() wrote (quor::replaceFile).
#pragma once

#include "quor/platform/Base.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terminal {

class SettingsFile {
public:
    // `device` is not owned and must outlive this. Nothing is read yet.
    SettingsFile(quor::FileDevice& device, quor::FileDevice::Path path);

    // Reads the file; a missing one is an empty store. False: there is a file that could not be read. The store is
    // empty then, and save() refuses, so that what could not be read is not overwritten.
    bool load();

    // The value, or nothing. Where a file names a section or a key twice, the first one counts.
    std::optional<std::string_view> get(std::string_view section, std::string_view key) const;  // until the next set()

    // Puts a value; the same value again changes nothing. False, and nothing changed: the text would not come back as
    // it is. That is a value, key or section with CR, LF or NUL in it, a key that is empty, has a '=' or begins with
    // '['.
    bool set(std::string_view section, std::string_view key, std::string_view value);

    // The first line, counted from 1, that cannot be read: no section, no key in a section, no comment (';', '#'), not
    // empty. 0: there is none. Such lines are kept as they are.
    std::size_t damagedLine() const;
    // Takes all of them out.
    void dropDamagedLines();

    bool dirty() const { return m_dirty; }
    // Writes if dirty; a file that another program holds is waited for. False: the old file is still whole, and the
    // store stays dirty; the next save() tries again.
    bool save(std::chrono::milliseconds patience = std::chrono::milliseconds(0));

    std::string text() const;  // what save() would write

private:
    struct Line {
        std::string text;  // without its end
        std::string end;   // "\r\n", "\n", or "" for a last line that has none
        bool damaged = false;
    };
    struct Section {
        std::size_t lastLine = 0;                                 // its header or its last key: new keys go after it
        std::map<std::string, std::size_t, std::less<>> keyLine;  // index into m_lines
    };
    void parse(std::string_view bytes);
    Section* indexLine(std::size_t index, Section* section);
    void insertLine(std::size_t before, std::string text);

    quor::FileDevice& m_device;
    quor::FileDevice::Path m_path;
    std::vector<Line> m_lines;
    std::map<std::string, Section, std::less<>> m_sections;
    bool m_dirty = false;
    bool m_unreadable = false;
};

}  // namespace terminal

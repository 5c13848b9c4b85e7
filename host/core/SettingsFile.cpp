// The file is kept as its lines; an index over them finds sections and keys. Lines are never reordered or dropped, so
// whatever this reader does not understand is written back as it was.
#include "host/core/SettingsFile.h"

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isSingleLine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

bool isKey(std::string_view text) {
    return !text.empty() && isSingleLine(text) && text.front() != '[' && text.find('=') == std::string_view::npos;
}

bool isEmptyOrComment(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos || text[first] == ';' || text[first] == '#';
}

}  // namespace

SettingsFile::SettingsFile(quor::FileDevice& device, quor::FileDevice::Path path)
    : m_device(device), m_path(std::move(path)) {}

bool SettingsFile::load() {
    m_lines.clear();
    m_sections.clear();
    m_dirty = false;
    std::string bytes;
    m_unreadable = m_device.read(m_path, bytes) == quor::FileDevice::Read::failed;
    if (!m_unreadable) parse(bytes);
    return !m_unreadable;
}

void SettingsFile::parse(std::string_view bytes) {
    Section* section = nullptr;
    while (!bytes.empty()) {
        const std::size_t feed = bytes.find('\n');
        std::string_view text = bytes.substr(0, feed);
        bytes.remove_prefix(feed == std::string_view::npos ? bytes.size() : feed + 1);
        std::string_view end = feed == std::string_view::npos ? "" : "\n";
        if (!end.empty() && text.ends_with('\r')) {
            text.remove_suffix(1);
            end = kLineEnd;
        }
        m_lines.push_back({std::string(text), std::string(end), false});
        section = indexLine(m_lines.size() - 1, section);
    }
}

// Enters a line into the index; returns the section that the next line belongs to. A header that cannot be read ends
// the section before it: the keys behind it are none of that one's.
SettingsFile::Section* SettingsFile::indexLine(std::size_t index, Section* section) {
    std::string_view text = m_lines[index].text;
    if (index == 0 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    const bool readable = isSingleLine(text);
    const std::size_t bracket = text.rfind(']');
    if (readable && text.starts_with('[') && bracket != std::string_view::npos) {
        const auto [at, added] = m_sections.try_emplace(std::string(text.substr(1, bracket - 1)));
        if (added) at->second.lastLine = index;
        return &at->second;
    }
    const std::size_t equals = text.find('=');
    const bool key = readable && section && equals != std::string_view::npos && isKey(text.substr(0, equals));
    m_lines[index].damaged = !key && !isEmptyOrComment(text);
    if (!key) return text.starts_with('[') ? nullptr : section;
    if (section->keyLine.try_emplace(std::string(text.substr(0, equals)), index).second) section->lastLine = index;
    return section;
}

std::optional<std::string_view> SettingsFile::get(std::string_view section, std::string_view key) const {
    const auto inFile = m_sections.find(section);
    if (inFile == m_sections.end()) return {};
    const auto line = inFile->second.keyLine.find(key);
    if (line == inFile->second.keyLine.end()) return {};
    return std::string_view(m_lines[line->second].text).substr(key.size() + 1);
}

bool SettingsFile::set(std::string_view section, std::string_view key, std::string_view value) {
    if (!isSingleLine(section) || !isKey(key) || !isSingleLine(value)) return false;
    if (get(section, key) == value) return true;
    auto inFile = m_sections.find(section);
    if (inFile == m_sections.end()) {
        insertLine(m_lines.size(), "[" + std::string(section) + "]");
        inFile = m_sections.try_emplace(std::string(section)).first;
        inFile->second.lastLine = m_lines.size() - 1;
    }
    std::string text = std::string(key) + "=" + std::string(value);
    const auto line = inFile->second.keyLine.find(key);
    if (line != inFile->second.keyLine.end()) {
        m_lines[line->second].text = std::move(text);
    } else {
        const std::size_t index = inFile->second.lastLine + 1;
        insertLine(index, std::move(text));
        inFile->second.keyLine.emplace(key, index);
        inFile->second.lastLine = index;
    }
    m_dirty = true;
    return true;
}

// Every index behind the new line moves on by one.
void SettingsFile::insertLine(std::size_t before, std::string text) {
    if (before > 0 && m_lines[before - 1].end.empty()) m_lines[before - 1].end = kLineEnd;
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(before),
                   {std::move(text), std::string(kLineEnd), false});
    for (auto& entry : m_sections) {
        if (entry.second.lastLine >= before) ++entry.second.lastLine;
        for (auto& key : entry.second.keyLine) {
            if (key.second >= before) ++key.second;
        }
    }
}

std::size_t SettingsFile::damagedLine() const {
    const auto found = std::find_if(m_lines.begin(), m_lines.end(), [](const Line& line) { return line.damaged; });
    return found == m_lines.end() ? 0 : static_cast<std::size_t>(found - m_lines.begin()) + 1;
}

void SettingsFile::dropDamagedLines() {
    if (!std::erase_if(m_lines, [](const Line& line) { return line.damaged; })) return;
    const std::string rest = text();
    m_lines.clear();
    m_sections.clear();
    parse(rest);
    m_dirty = true;
}

bool SettingsFile::save(std::chrono::milliseconds patience) {
    if (!m_dirty) return true;
    if (m_unreadable || !quor::replaceFile(m_device, m_path, text(), patience)) return false;
    m_dirty = false;
    return true;
}

std::string SettingsFile::text() const {
    std::string text;
    for (const Line& line : m_lines) {
        text += line.text;
        text += line.end;
    }
    return text;
}

}  // namespace terminal

// The parser recurses once a bracket and takes any bytes for text, and the writer writes what the parser then refuses.
// Both are looked after from outside: depth and UTF-8 are checked before either runs, so that a file that was written
// can always be read, and one that cannot be read harms nothing.
#include "quor/settings/SettingsFile.h"

#include <boost/property_tree/json_parser.hpp>
#include <sstream>
#include <streambuf>
#include <utility>

namespace quor::settings {

namespace {

using boost::property_tree::json_parser_error;

// Lets a stream read bytes where they lie.
class ViewBuffer : public std::streambuf {
public:
    explicit ViewBuffer(std::string_view bytes) {
        char* begin = const_cast<char*>(bytes.data());  // never written: a get area alone
        setg(begin, begin, begin + bytes.size());
    }
};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Makes a text ready for the parser. False if a bracket stands inside more than kMaxDepth others: up to the first fault
// of a text this walk and the parser agree on what is a string, so a text that passes never takes the parser deeper.
// Blanks between tokens are cut to one: half of an indented file is blanks, which the parser is slow to skip.
bool prepare(std::string& json) {
    int depth = 0;
    bool inString = false;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (!inString && isBlank(c) && kept > 0 && isBlank(json[kept - 1])) continue;
        json[kept++] = c;
        if (inString && c == '\\' && i + 1 < json.size())
            json[kept++] = json[++i];
        else if (c == '"')
            inString = !inString;
        else if (!inString && (c == '{' || c == '['))
            ++depth;
        else if (!inString && (c == '}' || c == ']'))
            --depth;
        if (depth > kMaxDepth) return false;
    }
    json.resize(kept);
    return true;
}

// Well-formed UTF-8 as the Unicode standard has it: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
        const unsigned lead = byte(i);
        if (lead < 0x80) {
            ++i;
            continue;
        }
        const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        if (lead < 0xC2 || lead > 0xF4 || text.size() - i < length) return false;
        const unsigned second = byte(i + 1);
        const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        if (second < low || second > high) return false;
        for (std::size_t k = 2; k < length; ++k)
            if ((byte(i + k) & 0xC0) != 0x80) return false;
        i += length;
    }
    return true;
}

// Null, or why a tree cannot be written. A leaf adds no level to the file, except that the root is always an object.
const char* faultOf(const Tree& tree, int depth) {
    if (!tree.empty() && !tree.data().empty()) return "an entry has both a value and children";
    if (!isUtf8(tree.data())) return "a value is not UTF-8";
    if (!tree.empty() && depth > kMaxDepth) return "the tree is too deep";
    for (const auto& [key, child] : tree) {
        if (!isUtf8(key)) return "a key is not UTF-8";
        if (const char* fault = faultOf(child, depth + 1)) return fault;
    }
    return nullptr;
}

}  // namespace

bool parse(std::string json, Tree& tree) {
    if (!prepare(json)) return false;
    try {
        ViewBuffer buffer(json);
        std::istream stream(&buffer);
        boost::property_tree::read_json(stream, tree);
        return true;
    } catch (...) {
        return false;  // the reader fills a tree of its own and hands it over last
    }
}

bool readFile(const std::string& path, Tree& tree) {
    try {
        std::string json;
        return Disk().read(pathOfNarrow(path), json) == FileDevice::Read::done && parse(std::move(json), tree);
    } catch (...) {
        return false;  // a file too large for the memory
    }
}

std::string format(const Tree& tree, const std::string& path) {
    const char* fault = tree.data().empty() ? faultOf(tree, 1) : "the root has a value";
    if (fault) throw json_parser_error(fault, path, 0);
    std::ostringstream json;
    boost::property_tree::write_json(json, tree, true);
    return std::move(json).str();
}

void writeFile(const Tree& tree, const std::string& path, FileDevice& device) {
    if (!replaceFile(device, pathOfNarrow(path), format(tree, path), kReplacePatience))
        throw json_parser_error("the file may not or could not be written", path, 0);
}

}  // namespace quor::settings

// The settings tree as a file: what is read, what may be written, and how a file is replaced.
#pragma once

#include "platform/Framework.h"

#include <boost/property_tree/ptree.hpp>

#include <string>
#include <string_view>

namespace quor::settings {

using Tree = boost::property_tree::ptree;

// Objects within objects, the outermost counted. Deeper texts would exhaust the stack of the reader, which recurses.
inline constexpr int kMaxDepth = 256;

// The steps of replacing a file. Each says whether it worked; tests let one of them fail.
class FileSteps {
public:
    virtual ~FileSteps() = default;
    // True if the target does not exist or may be written. Replacing it would not ask.
    virtual bool mayWrite(const std::string& path);
    // Creates or empties the file at `path` and writes all bytes.
    virtual bool write(const std::string& path, std::string_view bytes);
    // Until the bytes are on the disk.
    virtual bool flush(const std::string& path);
    // Puts `from` in the place of `to` in one step.
    virtual bool replace(const std::string& from, const std::string& to);
    virtual void remove(const std::string& path);
};

// Parses a JSON text. False, with the tree as it was, if it is no JSON or is nested deeper than kMaxDepth.
bool parse(std::string json, Tree& tree);

// Reads a file into the tree; false, with the tree as it was, if that cannot be done.
bool readFile(const std::string& path, Tree& tree);

// The JSON text of a tree, indented. Throws json_parser_error for a tree that `parse` could not give back.
std::string format(const Tree& tree, const std::string& path);

// Writes the tree beside `path`, flushes, replaces. On failure the old bytes stay, what was written beside is removed,
// and json_parser_error is thrown.
void writeFile(const Tree& tree, const std::string& path, FileSteps& steps);

// Erases the key from the subtree and from every level below it.
void eraseEverywhere(Tree& tree, const std::string& key);

}  // namespace quor::settings

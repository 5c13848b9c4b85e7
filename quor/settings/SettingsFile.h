// The settings tree as a file: what is read and what may be written.
#pragma once

#include "quor/platform/Base.h"

#include <boost/property_tree/ptree.hpp>
#include <string>
#include <string_view>

namespace quor::settings {

using Tree = boost::property_tree::ptree;

// Objects within objects, the outermost counted. Deeper texts would exhaust the stack of the reader, which recurses.
inline constexpr int kMaxDepth = 256;

// Parses a JSON text. False, with the tree as it was, if it is no JSON or is nested deeper than kMaxDepth.
bool parse(std::string json, Tree& tree);

// Reads a file into the tree; false, with the tree as it was, if that cannot be done.
bool readFile(const std::string& path, Tree& tree);

// The JSON text of a tree, indented. Throws json_parser_error for a tree that `parse` could not give back.
std::string format(const Tree& tree, const std::string& path);

// Replaces the file at `path` by the tree's text (quor::replaceFile). On failure the old bytes stay and
// json_parser_error is thrown.
void writeFile(const Tree& tree, const std::string& path, FileDevice& device);

}  // namespace quor::settings

#include "quor/settings/SettingsFile.h"
#include "tests/fuzz/Fuzz.h"

#include <boost/property_tree/json_parser/error.hpp>

void fuzzSettings(const std::uint8_t* data, std::size_t size) {
    quor::settings::Tree marker;
    marker.put("before", "kept");
    quor::settings::Tree tree = marker;
    if (!quor::settings::parse(std::string(reinterpret_cast<const char*>(data), size), tree)) {
        require(tree == marker, "a text that was refused changed the tree");
        return;
    }
    std::string json;
    try {
        json = quor::settings::format(tree, "");
    } catch (const boost::property_tree::json_parser::json_parser_error&) {
        return;  // a lone value, or text that is not UTF-8
    }
    quor::settings::Tree again;
    require(quor::settings::parse(json, again), "what was written cannot be read");
    require(again == tree, "what was written reads otherwise");
}

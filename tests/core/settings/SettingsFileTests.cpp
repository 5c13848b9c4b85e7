#include "quor/settings/SettingsFile.h"
#include "tests/support/TestFile.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using boost::property_tree::json_parser::json_parser_error;
using quor::settings::Tree;
using test::TestFile;

std::string nested(int levels, const char* innermost = "\"v\"") {
    std::string json;
    for (int i = 0; i < levels; ++i) json += "{\"k\":";
    return json + innermost + std::string(static_cast<std::size_t>(levels), '}');
}

TEST(SettingsFile, ReadsWellFormedTextsAndLeavesTheTreeForOthers) {
    const auto read = [](const std::string& json) {
        Tree tree, before;
        tree.put("before", "kept");
        before = tree;
        const bool good = quor::settings::parse(json, tree);
        EXPECT_EQ(tree == before, !good) << json.substr(0, 40);
        return good;
    };
    for (const std::string& good :
         {"{}"s, "\xEF\xBB\xBF{\"k\":\"v\"}"s, " \r\n\t{ \n\n \"k\" \t\t : [ 1 , true, null, \"x\" ] } \n"s,
          R"({"brackets in text":"[[[{{{ \" \\"})"s, nested(256), R"({"k":")" + std::string(1000, '[') + "\"}"})
        EXPECT_TRUE(read(good)) << good.substr(0, 40);
    for (const std::string& bad :
         {""s, R"({"k": tr  ue})"s, R"({"k": 1  2})"s, R"({"P":{"X":)"s, R"({"k":"v"} trailing)"s, R"({"k":"v",})"s,
          "{\"k\":\"a\nb\"}"s, "{\"k\":\"\xFF\"}"s, R"({"k":"\ud800"})"s, "{\"k\":\"v\"\0}"s, nested(257),
          nested(300'000), std::string(1'000'000, '[')})
        EXPECT_FALSE(read(bad)) << bad.substr(0, 40);
}

TEST(SettingsFile, WhatCouldNotBeReadAgainIsNotWritten) {
    Tree deep, *level = &deep;
    for (int i = 0; i < 257; ++i) level = &level->push_back({"k", Tree()})->second;
    Tree both;
    both.put("P.X", "value");
    both.put("P.X.k", "child");
    std::vector<std::pair<const char*, Tree>> rows = {
        {"deep", deep}, {"a value and children", both}, {"a value at the root", Tree("root")}};
    for (const char* bytes : {"\xFF", "a\x80", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80",
                              "\xF4\x90\x80\x80", "\xE2\x82", "\xC3", "\xF0\x8F\x80\x80", "\xE2\x28\xA1"}) {
        Tree value, key;
        value.push_back({"k", Tree(bytes)});
        key.push_back({bytes, Tree("v")});
        rows.push_back({"value bytes", value});
        rows.push_back({"key bytes", key});
    }
    for (const auto& [what, tree] : rows) {
        TestFile file("old");
        quor::Disk disk;
        EXPECT_THROW(quor::settings::writeFile(tree, file.name, disk), json_parser_error) << what;
        EXPECT_EQ(file.bytes(), "old") << what;
    }
    Tree good;
    good.put("P.X", "new");
    const TestFile file("old");
    quor::Disk disk;
    quor::settings::writeFile(good, file.name, disk);
    EXPECT_EQ(file.bytes(), "{\n    \"P\": {\n        \"X\": \"new\"\n    }\n}\n");
}

}  // namespace

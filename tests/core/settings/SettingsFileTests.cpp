#include "src/settings/SettingsFile.h"
#include "tests/core/settings/SettingsFixture.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gtest/gtest.h>

namespace {

using boost::property_tree::json_parser::json_parser_error;
using quor::settings::Tree;
using settings_test::bytesOf;
using settings_test::TemporaryFile;
using settings_test::write;

std::string nested(int levels, const char* innermost = "\"v\"") {
    std::string json;
    for (int i = 0; i < levels; ++i) json += "{\"k\":";
    return json + innermost + std::string(static_cast<std::size_t>(levels), '}');
}

TEST(SettingsFile, ReadsWellFormedTextsAndLeavesTheTreeForOthers) {
    const struct {
        std::string json;
        bool good;
    } rows[] = {{"{}", true},
                {"{\"P\":{\"X\":{\"Y\":{\"k\":\"100\"}}}}", true},
                {"\xEF\xBB\xBF{\"k\":\"v\"}", true},
                {"{\"k\":[1,true,null,\"x\"]}", true},
                {" \r\n\t{ \n\n \"k\" \t\t : [ 1 , true ] } \n", true},
                {"{\"k\": tr  ue}", false},
                {"{\"k\": 1  2}", false},
                {"{\"brackets in text\":\"[[[{{{ \\\" \\\\\"}", true},
                {nested(256), true},
                {nested(257), false},
                {"{\"k\":\"" + std::string(1000, '[') + "\"}", true},
                {std::string(1'000'000, '['), false},
                {std::string(1'000'000, '{'), false},
                {nested(300'000), false},
                {"", false},
                {"{", false},
                {"{\"P\":{\"X\":", false},
                {"{\"k\":\"v\"} trailing", false},
                {"{\"k\":\"v\",}", false},
                {"{\"k\":\"a\nb\"}", false},
                {"{\"k\":\"\xFF\"}", false},
                {"{\"k\":\"\\ud800\"}", false},
                {"not json", false},
                {std::string("{\"k\":\"v\"\0}", 10), false}};
    for (const auto& [json, good] : rows) {
        Tree tree, before;
        tree.put("before", "kept");
        before = tree;
        EXPECT_EQ(quor::settings::parse(json, tree), good) << json.substr(0, 40);
        EXPECT_EQ(tree == before, !good) << json.substr(0, 40);
    }
}

TEST(SettingsFile, EveryTextThatMayBeWrittenReadsBackTheSame) {
    std::string control;
    for (int c = 1; c < 0x80; ++c) control += static_cast<char>(c);
    const std::string texts[] = {"",
                                 " ",
                                 "a \"quoted\" \\ / text",
                                 control,
                                 std::string("nul\0inside", 10),
                                 "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
                                 "\xEF\xBB\xBF",
                                 "\xEE\x80\x80\xED\x9F\xBF",
                                 "{[,:]}",
                                 "\\u0041"};
    Tree tree;
    for (const std::string& value : texts) tree.push_back({"key " + value, Tree(value)});
    tree.push_back({"", Tree("an empty key")});
    tree.push_back({"twice", Tree("1")});
    tree.push_back({"twice", Tree("2")});
    Tree list;
    list.push_back({"", Tree("a")});
    list.push_back({"", Tree("b")});
    tree.push_back({"list", list});
    Tree again;
    ASSERT_TRUE(quor::settings::parse(quor::settings::format(tree, ""), again));
    EXPECT_EQ(again, tree);
}

TEST(SettingsFile, WritesObjectsInObjectsAndTextValues) {
    Tree tree;
    tree.put("P.X.Y.k", "100");
    tree.put("P.ALL.ALL.m", "TRUE");
    EXPECT_EQ(quor::settings::format(tree, ""),
              "{\n"
              "    \"P\": {\n"
              "        \"X\": {\n"
              "            \"Y\": {\n"
              "                \"k\": \"100\"\n"
              "            }\n"
              "        },\n"
              "        \"ALL\": {\n"
              "            \"ALL\": {\n"
              "                \"m\": \"TRUE\"\n"
              "            }\n"
              "        }\n"
              "    }\n"
              "}\n");
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
        TemporaryFile file;
        write(file.path(), "old");
        quor::Disk disk;
        EXPECT_THROW(quor::settings::writeFile(tree, file.path(), disk), json_parser_error) << what;
        EXPECT_EQ(bytesOf(file.path()), "old") << what;
    }
}

class FullDisk : public quor::Disk {
public:
    bool write(const Path& path, std::string_view bytes) override {
        Disk::write(path, bytes.substr(0, bytes.size() / 2));
        return false;
    }
};

TEST(SettingsFile, AFailureIsThrownAndLeavesTheOldBytes) {
    Tree tree;
    tree.put("P.X", "new");
    TemporaryFile file;
    write(file.path(), "old");
    FullDisk full;
    EXPECT_THROW(quor::settings::writeFile(tree, file.path(), full), json_parser_error);
    EXPECT_EQ(bytesOf(file.path()), "old");
    quor::Disk disk;
    quor::settings::writeFile(tree, file.path(), disk);
    EXPECT_EQ(bytesOf(file.path()), quor::settings::format(tree, ""));
}

TEST(SettingsFile, ErasesAKeyAtEveryLevel) {
    Tree tree;
    for (const char* path : {"k", "P.k", "P.X.k", "P.X.Y.k", "P.X.Y.other", "k2"})
        tree.push_back({path, Tree("top, with full stops")});
    tree.put("A.k.below", "1");
    tree.put("A.B.k", "1");
    tree.put("A.B.m", "1");
    quor::settings::eraseEverywhere(tree, "k");
    EXPECT_EQ(tree.count("k"), 0u);
    EXPECT_EQ(tree.count("k2"), 1u);
    EXPECT_FALSE(tree.get_child_optional("A.k"));
    EXPECT_FALSE(tree.get_child_optional("A.B.k"));
    EXPECT_TRUE(tree.get_child_optional("A.B.m"));
}

}  // namespace

#include "quor/settings/SettingsFile.h"
#include "quor/settings/ZTSettingsLibrary.h"
#include "tests/support/TestFile.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gtest/gtest.h>
#include <memory>

namespace {

using quor::settings::Tree;
using test::TestFile;

// A library over a tree of the test's own, and short forms of what the tests ask.
class Settings : public testing::Test {
protected:
    Tree tree;
    CZTSettingsLibrary library{&tree};

    void put(std::initializer_list<const char*> paths) {
        for (const char* path : paths) tree.put(path, std::string("at ") + path);
    }
    bool has(const char* path) const { return static_cast<bool>(tree.get_child_optional(path)); }
    std::string at(const char* path) const { return tree.get<std::string>(path, "(none)"); }
    std::string found(const char* pref, const char* exg, const char* buySell) {
        CString key, value;
        return library.getSetting(pref, exg, buySell, key, value) ? value.GetString() : "(none)";
    }
};

TEST_F(Settings, FallBackFromTheExactScopeToTheWider) {
    const struct {
        std::initializer_list<const char*> present;
        const char *exg, *buySell, *expected;
    } rows[] = {{{"P.X.Y.k", "P.X.ALL.k", "P.ALL.Y.k", "P.ALL.ALL.k"}, "X", "Y", "at P.X.Y.k"},
                {{"P.X.ALL.k", "P.ALL.Y.k", "P.ALL.ALL.k"}, "X", "Y", "at P.X.ALL.k"},
                {{"P.ALL.Y.k", "P.ALL.ALL.k"}, "X", "Y", "at P.ALL.Y.k"},
                {{"P.ALL.ALL.k"}, "X", "Y", "at P.ALL.ALL.k"},
                {{"P.X.Z.k", "P.W.Y.k", "Q.X.Y.k"}, "X", "Y", "(none)"},
                {{"P.X.Y.k", "P.X.ALL.k", "P.ALL.Y.k"}, "", "", "(none)"},  // reads P.ALL.ALL only
                {{"P.ALL.Y.k", "P.X.ALL.k"}, "", "Y", "at P.ALL.Y.k"},
                {{"P.ALL.Y.k", "P.X.ALL.k"}, "X", "", "at P.X.ALL.k"}};
    for (const auto& row : rows) {
        tree.clear();
        put(row.present);
        EXPECT_EQ(found("P", row.exg, row.buySell), row.expected) << row.exg << "," << row.buySell;
        CString value;
        const int child = library.getChildSettingQuored("P", row.exg, row.buySell, "k", value);
        EXPECT_EQ(child ? value.GetString() : std::string("(none)"), row.expected);
    }
}

// An empty level is replaced at the first scope only. Later scopes look it up as it is: an empty exchange is a level of
// its own, an empty side at the end of an address falls away, so that the exchange itself is asked for its first child.
TEST_F(Settings, GetSettingKeyTellsTheScopeAndTakesEmptyLevelsAsTheyAre) {
    const struct {
        const char *present, *exg, *buySell, *found;  // found: exchange and side, or none
    } rows[] = {
        {"P.X.Y.k", "X", "Y", "X.Y"},         {"P.X.ALL.k", "X", "Y", "X.ALL"}, {"P.ALL.Y.k", "X", "Y", "ALL.Y"},
        {"P.ALL.ALL.k", "X", "Y", "ALL.ALL"}, {"Q.X.Y.k", "X", "Y", nullptr},   {"P.ALL.ALL.k", "", "", "ALL.ALL"},
        {"P.ALL.Y.k", "", "Y", "ALL.Y"},      {"P..ALL.k", "", "Y", ".ALL"},    {"P.X.ALL.k", "X", "", "X.ALL"},
        {"P.ALL.Z.k", "X", "", "ALL."},  // the third scope is "P.ALL.", that is "P.ALL"
        {"P.X.Y.k", "", "", nullptr}};
    for (const auto& row : rows) {
        tree.clear();
        put({row.present});
        CString exg("before"), buySell("before");
        const int result = library.getSettingKey("P", row.exg, row.buySell, exg, buySell);
        EXPECT_EQ(result, row.found != nullptr) << row.present << " for " << row.exg << "," << row.buySell;
        EXPECT_STREQ(result ? exg + "." + buySell : exg + buySell, row.found ? row.found : "") << row.present;
    }
}

TEST_F(Settings, FindSettingYieldsTheFirstEntryWhateverItsKey) {
    put({"P.X.Y.second", "P.X.Y.a", "P.X.leaf"});
    CString key("before"), value("before");
    EXPECT_EQ(library.findSetting("P.X.leaf", key, value), 0);    // no children
    EXPECT_EQ(library.findSetting("P", "X", "", key, value), 1);  // a full stop at the end falls away: P.X
    EXPECT_STREQ(key + "=" + value, "Y=");
    EXPECT_EQ(library.findSetting("P", "", "Y", key, value), 0);  // an empty level is no "ALL"
    EXPECT_STREQ(key, "Y");
    EXPECT_EQ(library.findSetting("P", "X", "Y", key, value), 1);
    EXPECT_STREQ(key + "=" + value, "second=at P.X.Y.second");
    EXPECT_EQ(library.findSetting("", key, value), 1);  // the root
    EXPECT_STREQ(key, "P");
    EXPECT_FALSE(library.getSetting_bool("TRUE"));
}

TEST_F(Settings, ChildrenAreFoundByTheirExactKeyAtOneScope) {
    put({"P.X.Y.k", "P.X.ALL.ALL", "P.ALL.ALL.k"});
    CString value("before");
    EXPECT_EQ(library.findChildSetting("P.X.Y", "K", value), 0);
    EXPECT_EQ(library.findChildSetting("P", "", "", "k", value), 0);   // no "ALL" here
    EXPECT_EQ(library.getChildSetting("P", "X", "Z", "k", value), 0);  // no fallback here
    EXPECT_STREQ(value, "before");
    EXPECT_EQ(library.findChildSetting("P", "X", "Y", "k", value), 1);
    EXPECT_STREQ(value, "at P.X.Y.k");
    EXPECT_EQ(library.getChildSetting("P", "", "", "k", value), 1);
    EXPECT_STREQ(value, "at P.ALL.ALL.k");
    EXPECT_EQ(library.getChildSetting("P", "X", "", "", value), 1);
    EXPECT_STREQ(value, "at P.X.ALL.ALL");
    EXPECT_EQ(library.getChildSettingQuored("P", "X", "Y", "", value), 0);  // its key is taken as it is
}

TEST_F(Settings, FlagsAndNumbersAreTextsAtSideAll) {
    int flag = 7;
    for (const int written : {1, 0, 2, -1}) {
        EXPECT_EQ(library.addChildSetting("P", "X", "k", written), 1);
        EXPECT_EQ(at("P.X.ALL.k"), written == 1 ? "TRUE" : "FALSE");
        EXPECT_EQ(library.getChildSetting("P", "X", "k", flag), 1);
        EXPECT_EQ(flag, written == 1 ? 1 : 0);
    }
    tree.put("P.X.ALL.k", "true");
    for (const char* key : {"k", "absent"}) {
        flag = 7;
        EXPECT_EQ(library.getChildSetting("P", "X", key, flag), *key == 'k');
        EXPECT_EQ(flag, 0);
    }
    EXPECT_EQ(library.addChildSetting("P", "", "n", -2147483647L), 1);
    EXPECT_EQ(at("P.ALL.ALL.n"), "-2147483647");
    const std::pair<const char*, long> rows[] = {{" -7x", -7}, {"", 0}, {"abc", 0}, {"99999999999", 2147483647}};
    long number = 5;
    for (const auto& [text, expected] : rows) {
        tree.put("P.ALL.ALL.n", text);
        EXPECT_EQ(library.getChildSetting("P", "", "n", number), 1);
        EXPECT_EQ(number, expected) << text;
    }
    EXPECT_EQ(library.getChildSetting("P", "", "absent", number), 0);
    EXPECT_EQ(number, -1);
}

TEST_F(Settings, WritesCreateOverwriteAndKeepTheOthers) {
    EXPECT_EQ(library.updateSetting("P", "", "", "k", "1"), 1);
    EXPECT_EQ(library.updateSetting("P", "", "", "m", "2"), 1);
    EXPECT_EQ(library.updateSetting("P", "", "", "k", "3"), 1);
    EXPECT_EQ(at("P.ALL.ALL.k"), "3");
    EXPECT_EQ(at("P.ALL.ALL.m"), "2");
    EXPECT_EQ(library.addChildSetting("P", "X", "", "", "4"), 1);
    EXPECT_EQ(at("P.X.ALL.ALL"), "4");
    EXPECT_EQ(library.saveSetting("Q.X", "a.b", "5"), 1);  // a full stop makes a level
    EXPECT_EQ(at("Q.X.a.b"), "5");
    EXPECT_EQ(library.saveSetting("", "k", "6"), 1);
    EXPECT_EQ(tree.get_child("").front().second.size(), 2u);  // under an empty first level, beside P and Q
}

TEST_F(Settings, WhatThePathCannotHoldIsRefusedAndChangesNothing) {
    put({"P.X.Y.k"});
    const Tree before = tree;
    std::string deep = "a";
    for (int i = 1; i < 256; ++i) deep += ".a";
    EXPECT_EQ(library.saveSetting("P", "", "v"), 0);
    EXPECT_EQ(library.saveSetting("P", "k.", "v"), 0);
    EXPECT_EQ(library.saveSetting("", "", "v"), 0);
    EXPECT_EQ(library.createSetting("P", "X", "Y", "", "v"), 0);
    EXPECT_EQ(library.saveSetting(deep.c_str(), "k", "v"), 0);
    EXPECT_EQ(tree, before);
    EXPECT_EQ(library.saveSetting(deep.c_str() + 2, "k", "v"), 1) << "256 levels";
}

// What is left of: k at X.Y, X.ALL, ALL.Y, ALL.ALL and W.Y, n at X.Y.
TEST_F(Settings, DeletingAWildcardScopeTakesTheNarrowerOnesWithIt) {
    const struct {
        const char *exg, *buySell, *left;
    } rows[] = {{"ALL", "ALL", ""},
                {"ALL", "Y", "X.ALL.k ALL.ALL.k "},
                {"X", "ALL", "ALL.Y.k ALL.ALL.k W.Y.k "},
                {"X", "Y", "X.Y.n X.ALL.k ALL.Y.k ALL.ALL.k W.Y.k "},
                // Empty is not "ALL": it only shortens the address of the key.
                {"", "", "X.Y.k X.Y.n X.ALL.k ALL.Y.k ALL.ALL.k W.Y.k "},
                {"X", "", "X.Y.k X.Y.n X.ALL.k ALL.Y.k ALL.ALL.k W.Y.k "}};
    const std::string paths[] = {"X.Y.k", "X.Y.n", "X.ALL.k", "ALL.Y.k", "ALL.ALL.k", "W.Y.k"};
    for (const auto& [exg, buySell, expected] : rows) {
        tree.clear();
        for (const std::string& path : paths) tree.put("P." + path, "v");
        EXPECT_EQ(library.deleteSetting("P", exg, buySell, "k"), 1);
        std::string left;
        for (const std::string& path : paths) left += has(("P." + path).c_str()) ? path + " " : "";
        EXPECT_EQ(left, expected) << exg << "," << buySell;
    }
}

TEST_F(Settings, DeletionsOfOneKind) {
    put({"P.X.Y.k", "P.W.Y.k", "P.W.Z.k", "Q.X.Y.k"});
    EXPECT_EQ(library.deleteBuySellSetting("P", "no such exchange", "Y"), 1);
    EXPECT_FALSE(has("P.X.Y"));
    EXPECT_FALSE(has("P.W.Y"));
    EXPECT_TRUE(has("P.W.Z") && has("Q.X.Y"));
    EXPECT_EQ(library.deleteBuySellSetting("absent", "X", "Y"), 0);
    EXPECT_EQ(library.deleteDefaultSetting("absent", "ALL", "Y"), 0);
    EXPECT_EQ(library.deleteDefaultSetting("P", "W", "Z"), 1);  // neither is "ALL": nothing
    EXPECT_TRUE(has("P.W.Z.k"));
    for (int i = 0; i < 2; ++i) EXPECT_EQ(library.deleteExgSetting("P", "W"), 1);
    EXPECT_FALSE(has("P.W"));
    EXPECT_THROW(library.deleteExgSetting("absent", "X"), boost::property_tree::ptree_bad_path);
    EXPECT_THROW(library.deleteDefaultSetting("absent", "X", "ALL"), boost::property_tree::ptree_bad_path);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(library.deletePrefSetting("P"), 1);
    EXPECT_FALSE(has("P"));
    EXPECT_TRUE(has("Q"));
    // An exchange of no name leads back to the preference itself.
    tree.push_back({"R", Tree()})->second.push_back({"", Tree()});
    tree.put("R.Y.k", "1");
    EXPECT_EQ(library.deleteBuySellSetting("R", "", "Y"), 1);
    EXPECT_FALSE(has("R.Y"));
}

TEST_F(Settings, CreateReplacesWhatIsFoundAtItsOwnScopeAndLeavesTheWider) {
    put({"P.X.Y.old", "P.W.Y.k"});
    EXPECT_EQ(library.createSetting("P", "X", "Y", "new", "1"), 1);
    EXPECT_FALSE(has("P.X.Y.old"));
    EXPECT_EQ(at("P.X.Y.new"), "1");
    put({"P.ALL.ALL.wide"});  // the hit for V, Y: stays, and the new entry comes beside it
    EXPECT_EQ(library.createSetting("P", "V", "Y", "k", "2"), 1);
    EXPECT_TRUE(has("P.ALL.ALL.wide"));
    EXPECT_EQ(at("P.V.Y.k"), "2");
    EXPECT_EQ(library.createSetting("P", "", "", "k", "3"), 1);  // found: the preference goes, then one entry
    EXPECT_FALSE(has("P.V") || has("P.X") || has("P.W"));
    EXPECT_EQ(at("P.ALL.ALL.k"), "3");
    tree.clear();
    put({"P.X.Y.k"});
    EXPECT_EQ(library.createSetting("P", "", "", "k", "4"), 1);  // nothing at P.ALL.ALL: nothing is wiped
    EXPECT_TRUE(has("P.X.Y.k"));
}

TEST_F(Settings, FirstUseFromAMissingFileToASavedOne) {
    TestFile file;
    library.setPath(file.name.c_str());
    EXPECT_EQ(found("P", "", ""), "(none)");
    EXPECT_EQ(library.updateSetting("P", "X", "Y", "k", "v \xC3\xA9\n"), 1);
    EXPECT_EQ(file.bytes(), "");  // nothing is written before savePath
    library.savePath();
    Tree other;
    CZTSettingsLibrary reader(&other);
    reader.setPath(file.name.c_str());
    EXPECT_EQ(other, tree);
    file.write("{\"P\":");
    reader.setPath(file.name.c_str());  // truncated: the tree stays
    EXPECT_EQ(other, tree);
}

TEST_F(Settings, AFileThatMayNotBeWrittenIsRefused) {
    TestFile file("{}");
    file.makeReadOnly();
    put({"P.X.Y.k"});
    for (const std::string& path : {file.name, file.name + "-no-such-folder/settings.json", std::string()}) {
        library.setPath(path.c_str());
        EXPECT_THROW(library.savePath(), boost::property_tree::json_parser::json_parser_error) << path;
    }
    EXPECT_EQ(file.bytes(), "{}");
}

TEST(SettingsCopies, ShareOneTreeThatOutlivesThem) {
    auto first = std::make_unique<CZTSettingsLibrary>();
    CZTSettingsLibrary second(*first), third;
    third = second;
    EXPECT_EQ(first->updateSetting("P", "", "", "k", "v"), 1);
    first.reset();
    CString key, value;
    EXPECT_EQ(third.getSetting("P", "X", "Y", key, value), 1);
    EXPECT_STREQ(value, "v");
    CZTSettingsLibrary other;
    EXPECT_EQ(other.getSetting("P", "X", "Y", key, value), 0);
}

}  // namespace

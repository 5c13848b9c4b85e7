#include "quor/settings/SettingsFile.h"
#include "quor/settings/ZTSettingsLibrary.h"
#include "tests/support/TestFile.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <utility>

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
    std::string at(const char* path) const { return tree.get<std::string>(path, "(none)"); }
    // "path=value" of every value, in the order of the alphabet.
    std::string all() const {
        std::set<std::string> sorted;
        collect(tree, "", sorted);
        std::string text;
        for (const std::string& one : sorted) text += (text.empty() ? "" : " ") + one;
        return text;
    }
    std::string found(const char* pref, const char* exg, const char* buySell) {
        CString key, value;
        return library.getSetting(pref, exg, buySell, key, value) ? value.GetString() : "(none)";
    }

private:
    static void collect(const Tree& level, const std::string& path, std::set<std::string>& values) {
        for (const auto& [key, child] : level) {
            if (!child.data().empty()) values.insert(path + key + "=" + child.data());
            collect(child, path + key + ".", values);
        }
    }
};

// An empty level is replaced at the first scope only. For getSettingKey later scopes look it up as it is: an empty
// exchange is a level of its own, an empty side at the end of an address falls away, so that the exchange itself is
// asked for its first child.
TEST_F(Settings, FallBackFromTheExactScopeToTheWider) {
    const struct {
        std::initializer_list<const char*> present;
        const char *exg, *buySell, *found, *key;  // exchange and side that getSettingKey finds
    } rows[] = {
        {{"P.X.Y.k", "P.X.ALL.k", "P.ALL.Y.k", "P.ALL.ALL.k"}, "X", "Y", "P.X.Y.k", "X.Y"},
        {{"P.X.ALL.k", "P.ALL.Y.k", "P.ALL.ALL.k"}, "X", "Y", "P.X.ALL.k", "X.ALL"},
        {{"P.ALL.Y.k", "P.ALL.ALL.k"}, "X", "Y", "P.ALL.Y.k", "ALL.Y"},
        {{"P.ALL.ALL.k"}, "X", "Y", "P.ALL.ALL.k", "ALL.ALL"},
        {{"P.X.Z.k", "P.W.Y.k", "Q.X.Y.k"}, "X", "Y", nullptr, nullptr},
        {{"P.X.Y.k"}, "", "", nullptr, nullptr},  // reads P.ALL.ALL only
        {{"P.ALL.ALL.k"}, "", "", "P.ALL.ALL.k", "ALL.ALL"},
        {{"P.ALL.Y.k", "P.X.ALL.k"}, "", "Y", "P.ALL.Y.k", "ALL.Y"},
        {{"P.ALL.Y.k", "P.X.ALL.k"}, "X", "", "P.X.ALL.k", "X.ALL"},
        {{"P..ALL.k"}, "", "Y", nullptr, ".ALL"},
        {{"P.ALL.Z.k"}, "X", "", nullptr, "ALL."},  // the third scope is "P.ALL.", that is "P.ALL"
    };
    for (const auto& row : rows) {
        tree.clear();
        put(row.present);
        const std::string asked = std::string(row.exg) + "," + row.buySell + " of " + *row.present.begin();
        const std::string expected = row.found ? std::string("at ") + row.found : "(none)";
        EXPECT_EQ(found("P", row.exg, row.buySell), expected) << asked;
        CString value, exg("before"), buySell("before");
        const int child = library.getChildSettingQuored("P", row.exg, row.buySell, "k", value);
        EXPECT_EQ(child ? value.GetString() : std::string("(none)"), expected) << asked;
        const int result = library.getSettingKey("P", row.exg, row.buySell, exg, buySell);
        EXPECT_EQ(result, row.key != nullptr) << asked;
        EXPECT_STREQ(result ? exg + "." + buySell : exg + buySell, row.key ? row.key : "") << asked;
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
    EXPECT_EQ(library.getChildSetting("P", "X", "", "", value), 1);
    EXPECT_STREQ(value, "at P.X.ALL.ALL");
    EXPECT_EQ(library.getChildSettingQuored("P", "X", "Y", "", value), 0);  // its key is taken as it is
}

TEST_F(Settings, FlagsAndNumbersAreTextsAtSideAll) {
    int flag = 7;
    for (const int written : {1, 0, 2}) {
        EXPECT_EQ(library.addChildSetting("P", "X", "k", written), 1);
        EXPECT_EQ(library.getChildSetting("P", "X", "k", flag), 1);
        EXPECT_EQ(at("P.X.ALL.k") + std::to_string(flag), written == 1 ? "TRUE1" : "FALSE0");
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

TEST_F(Settings, WhatThePathCannotHoldIsRefusedAndChangesNothing) {
    put({"P.X.Y.k"});
    const Tree before = tree;
    std::string deep = "a";
    for (int i = 1; i < 256; ++i) deep += ".a";
    EXPECT_EQ(library.saveSetting("P", "k.", "v"), 0);
    EXPECT_EQ(library.saveSetting("", "", "v"), 0);
    EXPECT_EQ(library.createSetting("P", "X", "Y", "", "v"), 0);
    EXPECT_EQ(library.saveSetting(deep.c_str(), "k", "v"), 0);
    EXPECT_EQ(tree, before);
    EXPECT_EQ(library.saveSetting(deep.c_str() + 2, "k", "v"), 1) << "256 levels";
}

TEST_F(Settings, DeletingAWildcardScopeTakesTheNarrowerOnesWithIt) {
    const char* const paths[] = {"P.X.Y.k", "P.X.Y.n", "P.X.ALL.k", "P.ALL.Y.k", "P.ALL.ALL.k", "P.W.Y.k"};
    const struct {
        const char *exg, *buySell, *left;
    } rows[] = {{"ALL", "ALL", ""},
                {"ALL", "Y", "P.ALL.ALL.k=1 P.X.ALL.k=1"},
                {"X", "ALL", "P.ALL.ALL.k=1 P.ALL.Y.k=1 P.W.Y.k=1"},
                {"X", "Y", "P.ALL.ALL.k=1 P.ALL.Y.k=1 P.W.Y.k=1 P.X.ALL.k=1 P.X.Y.n=1"},
                // Empty is not "ALL": it only shortens the address of the key.
                {"", "", "P.ALL.ALL.k=1 P.ALL.Y.k=1 P.W.Y.k=1 P.X.ALL.k=1 P.X.Y.k=1 P.X.Y.n=1"},
                {"X", "", "P.ALL.ALL.k=1 P.ALL.Y.k=1 P.W.Y.k=1 P.X.ALL.k=1 P.X.Y.k=1 P.X.Y.n=1"}};
    for (const auto& [exg, buySell, left] : rows) {
        tree.clear();
        for (const char* path : paths) tree.put(path, "1");
        EXPECT_EQ(library.deleteSetting("P", exg, buySell, "k"), 1);
        EXPECT_EQ(all(), left) << exg << "," << buySell;
    }
}

TEST_F(Settings, DeletionsOfOneKind) {
    for (const char* path : {"P.X.Y.k", "P.W.Y.k", "P.W.Z.k", "P.V.Z.k", "Q.X.Y.k"}) tree.put(path, "1");
    EXPECT_EQ(library.deleteBuySellSetting("P", "no such exchange", "Y"), 1);
    EXPECT_EQ(library.deleteBuySellSetting("absent", "X", "Y"), 0);
    EXPECT_EQ(library.deleteDefaultSetting("absent", "ALL", "Y"), 0);
    EXPECT_EQ(library.deleteDefaultSetting("P", "W", "Z"), 1);  // neither is "ALL": nothing
    EXPECT_EQ(all(), "P.V.Z.k=1 P.W.Z.k=1 Q.X.Y.k=1");
    for (int i = 0; i < 2; ++i) EXPECT_EQ(library.deleteExgSetting("P", "W"), 1);
    EXPECT_EQ(all(), "P.V.Z.k=1 Q.X.Y.k=1");
    EXPECT_THROW(library.deleteExgSetting("absent", "X"), boost::property_tree::ptree_bad_path);
    EXPECT_THROW(library.deleteDefaultSetting("absent", "X", "ALL"), boost::property_tree::ptree_bad_path);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(library.deletePrefSetting("P"), 1);
    EXPECT_EQ(all(), "Q.X.Y.k=1");
}

TEST_F(Settings, CreateReplacesWhatIsFoundAtItsOwnScopeAndLeavesTheWider) {
    for (const char* path : {"P.X.Y.old", "P.W.Y.k", "P.ALL.ALL.wide"}) tree.put(path, "0");
    EXPECT_EQ(library.createSetting("P", "X", "Y", "new", "1"), 1);
    EXPECT_EQ(all(), "P.ALL.ALL.wide=0 P.W.Y.k=0 P.X.Y.new=1");
    EXPECT_EQ(library.createSetting("P", "", "", "k", "3"), 1);  // found: the preference goes, then one entry
    EXPECT_EQ(all(), "P.ALL.ALL.k=3");
    tree.clear();
    tree.put("P.X.Y.k", "0");
    EXPECT_EQ(library.createSetting("P", "", "", "k", "4"), 1);  // nothing at P.ALL.ALL: nothing is wiped
    EXPECT_EQ(all(), "P.ALL.ALL.k=4 P.X.Y.k=0");
}

TEST_F(Settings, FirstUseFromAMissingFileToASavedOne) {
    TestFile file;
    library.setPath(file.name.c_str());
    EXPECT_EQ(found("P", "", ""), "(none)");
    EXPECT_EQ(library.updateSetting("P", "X", "Y", "k", "v \xC3\xA9 \x01\x1F\"\\/\n"), 1);
    EXPECT_EQ(file.bytes(), "");  // nothing is written before savePath
    library.savePath();
    Tree other;
    CZTSettingsLibrary reader(&other);
    reader.setPath(file.name.c_str());
    EXPECT_EQ(other, tree);
    file.write("{\"P\":");
    reader.setPath(file.name.c_str());  // truncated: the tree stays
    EXPECT_EQ(other, tree);
    file.makeReadOnly();
    for (const std::string& path : {file.name, file.name + "-no-such-folder/settings.json", std::string()}) {
        library.setPath(path.c_str());
        EXPECT_THROW(library.savePath(), boost::property_tree::json_parser::json_parser_error) << path;
    }
    EXPECT_EQ(file.bytes(), "{\"P\":");
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

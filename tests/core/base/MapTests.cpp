#include "core/base/Throws.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>

namespace {

TEST(Map, RandomEditsMatchAModel) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    CMap<CString, const char*, int, int> map;
    std::map<std::string, int> model;
    for (int step = 0; step < 20000; ++step) {
        const std::string key = "key" + std::to_string(random() % 300);
        switch (random() % 4) {
            case 0:
                map.SetAt(key.c_str(), step);
                model[key] = step;
                break;
            case 1:
                ++map[key.c_str()];
                ++model[key];
                break;
            case 2:
                ASSERT_EQ(map.RemoveKey(key.c_str()) != FALSE, model.erase(key) != 0) << key;
                break;
            default: {
                int value = -7;
                const auto found = model.find(key);
                ASSERT_EQ(map.Lookup(key.c_str(), value) != FALSE, found != model.end()) << key;
                ASSERT_EQ(value, found != model.end() ? found->second : -7);
            }
        }
        ASSERT_EQ(static_cast<std::size_t>(map.GetCount()), model.size());
    }
    std::map<std::string, int> walked;
    CString key;
    int value = 0;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        map.GetNextAssoc(position, key, value);
        EXPECT_TRUE(walked.emplace(key.GetString(), value).second) << "given twice: " << key.GetString();
    }
    EXPECT_EQ(walked, model);
}

TEST(Map, BucketsAreSetWhileEmptyAndMadeByTheFirstInsert) {
    CMap<int, int, CString, const char*> map;
    EXPECT_EQ(map.GetHashTableSize(), 17u);
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    EXPECT_EQ(map.PLookup(1), nullptr);
    map.InitHashTable(100, FALSE);
    EXPECT_EQ(map.GetHashTableSize(), 100u);
    EXPECT_FALSE(map.RemoveKey(1));
    map.SetAt(1, "one");
    map.SetAt(101, "hundred and one");
    EXPECT_TRUE(throwsException([&] { map.InitHashTable(5); }));
    EXPECT_STREQ(map.PLookup(1)->value, "one");
    EXPECT_STREQ(map[101], "hundred and one");
    map.RemoveAll();
    EXPECT_EQ(map.GetHashTableSize(), 100u);
    EXPECT_TRUE(throwsException([&] { map.InitHashTable(0); }));
}

TEST(Map, WalksMayRemoveWhatTheyWereGiven) {
    CMap<int, int, bool, bool> map;
    for (int i = -500; i < 500; ++i) map[i] = true;
    int key = 0;
    bool value = false;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        map.GetNextAssoc(position, key, value);
        if (key % 2 == 0) map.RemoveKey(key);
    }
    EXPECT_EQ(map.GetCount(), 500);
    std::set<int> odd;
    for (auto* pair = map.PGetFirstAssoc(); pair != nullptr; pair = map.PGetNextAssoc(pair)) odd.insert(pair->key);
    EXPECT_EQ(odd.size(), 500u);
    EXPECT_EQ(odd.count(4), 0u);
    POSITION none = nullptr;
    EXPECT_TRUE(throwsException([&] { map.GetNextAssoc(none, key, value); }));
}

TEST(Map, PairsStayWhereTheyAreWhileOthersComeAndGo) {
    CMap<const void*, const void*, int, int> map;
    static const char addresses[1000] = {};
    map[addresses] = 42;
    auto* const pair = map.PLookup(addresses);
    for (int i = 1; i < 1000; ++i) map[addresses + i] = i;
    for (int i = 1; i < 1000; i += 2) map.RemoveKey(addresses + i);
    EXPECT_EQ(map.PLookup(addresses), pair);
    EXPECT_EQ(pair->value, 42);
}

TEST(Map, TextKeysHashByContent) {
    const CString text("GARAN");
    const std::string same("GARAN");
    EXPECT_EQ(HashKey<const char*>(text.GetString()), HashKey<const char*>(same.c_str()));
    EXPECT_EQ(HashKey<const CString&>(text), HashKey<const char*>(same.c_str()));
    EXPECT_EQ(HashKey<const char*>(nullptr), HashKey<const char*>(""));
}

}  // namespace

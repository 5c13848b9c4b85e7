// Arrays, lists and maps: random edits against models, and what is refused.
#include "core/base/Throws.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

struct RandomEdits : testing::Test {
    std::size_t below(std::size_t limit) { return random() % limit; }

    const long steps = test::rounds("QUOR_COLLECTION_STEPS", 50'000);
    const unsigned seed = test::anySeed();
    const testing::ScopedTrace told{__FILE__, __LINE__, "QUOR_SEED=" + std::to_string(seed)};
    std::mt19937 random{seed};
};

TEST_F(RandomEdits, OfArraysMatchAVector) {
    CArray<CString> array;
    std::vector<CString> model;
    for (long step = steps; step > 0; --step) {
        const std::size_t size = model.size(), at = below(size + 4), count = below(4);  // inside and beyond the end
        const auto index = static_cast<INT_PTR>(at), many = static_cast<INT_PTR>(count);
        CString fresh(std::to_string(step).c_str());
        const CString& given = at < size ? array[index / 2] : fresh;  // an element of its own too
        const CString value = given;
        switch (below(6)) {
            case 0:
                array.InsertAt(index, given, many);
                model.resize(std::max(size, count ? at : 0));
                model.insert(model.begin() + std::min<INT_PTR>(index, array.GetSize()), count, value);
                break;
            case 1:
                ASSERT_EQ(array.Add(given), static_cast<INT_PTR>(size));
                model.push_back(value);
                break;
            case 2:
                array.SetAtGrow(index, given);
                model.resize(std::max(size, at + 1));
                model[at] = value;
                break;
            case 3:
                if (at + count > size) break;
                array.RemoveAt(index, many);
                model.erase(model.begin() + index, model.begin() + index + many);
                break;
            case 4:
                if (at < size && size <= 50) break;
                array.SetSize(index, many);
                model.resize(at);
                break;
            default:
                array.FreeExtra();
        }
        ASSERT_EQ(array.GetSize(), static_cast<INT_PTR>(model.size())) << step;
        ASSERT_TRUE(std::equal(model.begin(), model.end(), array.GetData())) << step;
    }
    CUIntArray one, two;
    one.Add(7);
    two.Copy(one);
    two.SetAt(0, 8);
    EXPECT_EQ(two.Append(one), 1);
    one.InsertAt(2, &two);
    EXPECT_EQ(std::vector<UINT>(one.GetData(), one.GetData() + one.GetSize()), (std::vector<UINT>{7, 0, 8, 7}));
}

TEST_F(RandomEdits, OfListsMatchAVector) {
    CList<int, int> list;
    std::vector<std::pair<int, POSITION>> model;
    for (int step = 0; step < steps; ++step) {
        const auto here = model.begin() + static_cast<INT_PTR>(below(model.size() + 1));
        const bool inside = here != model.end();
        const POSITION position = inside ? here->second : nullptr;  // none: the head, or the tail
        const std::size_t edit = below(4);
        if (edit == 0) model.insert(inside ? here : model.begin(), {step, list.InsertBefore(position, step)});
        if (edit == 1) model.insert(inside ? here + 1 : here, {step, list.InsertAfter(position, step)});
        if (edit == 2 && inside) list.SetAt(position, here->first = step);
        if (edit == 3 && inside) {
            list.RemoveAt(position);
            model.erase(here);
        }
        if (model.size() > 20) {
            ASSERT_EQ(list.RemoveHead(), model.front().first);
            ASSERT_EQ(list.RemoveTail(), model.back().first);
            model.erase(model.begin());
            model.pop_back();
        }
        ASSERT_EQ(list.GetCount(), static_cast<INT_PTR>(model.size()));
        POSITION forward = list.GetHeadPosition(), backward = list.GetTailPosition();
        for (std::size_t i = 0; i < model.size(); ++i) {
            ASSERT_EQ(forward, model[i].second) << step;
            ASSERT_EQ(list.GetNext(forward), model[i].first);
            ASSERT_EQ(list.GetPrev(backward), model[model.size() - 1 - i].first);
        }
        ASSERT_TRUE(forward == nullptr && backward == nullptr);
    }
    list.RemoveAll();
    list.AddTail(7);
    list.AddHead(-1);
    CList<int, int> twice;
    twice.AddHead(&list);
    twice.AddTail(&list);
    EXPECT_EQ(twice.Find(-1), twice.GetHeadPosition());
    EXPECT_EQ(twice.Find(-1, twice.GetHeadPosition()), twice.FindIndex(2));
    EXPECT_EQ(twice.Find(7, twice.FindIndex(2)), twice.GetTailPosition());
    EXPECT_EQ(twice.Find(-2), nullptr);
    for (const INT_PTR outside : {-1, 4}) EXPECT_EQ(twice.FindIndex(outside), nullptr);
}

// A pair stays where it is while others come and go; a walk may remove what it was given.
TEST_F(RandomEdits, OfMapsMatchAModel) {
    CMap<CString, const char*, int, int> map;
    std::map<std::string, int> model;
    std::map<std::string, const void*> places;
    const auto walk = [&] {
        CString key;
        int value = 0;
        std::map<std::string, int> given;
        for (POSITION position = map.GetStartPosition(); position != nullptr;) {
            map.GetNextAssoc(position, key, value);
            EXPECT_TRUE(given.emplace(key.GetString(), value).second) << "given twice: " << key.GetString();
            if (value % 2) map.RemoveKey(key);
        }
        EXPECT_EQ(given, model);
        std::erase_if(model, [](const auto& pair) { return pair.second % 2 != 0; });
    };
    for (int step = 0; step < steps; ++step) {
        const std::string key = "key" + std::to_string(below(300));
        const std::size_t edit = below(4);
        if (edit == 0) map.SetAt(key.c_str(), model[key] = step);
        if (edit == 1) ++map[key.c_str()], ++model[key];
        const bool removes = edit == 2, removed = removes && map.RemoveKey(key.c_str());
        ASSERT_EQ(removed, removes && model.erase(key) != 0) << key;
        if (edit == 3 && below(1000) == 0) walk();
        int value = -7;
        const auto found = model.find(key);
        ASSERT_EQ(map.Lookup(key.c_str(), value) != FALSE, found != model.end()) << key;
        ASSERT_EQ(value, found != model.end() ? found->second : -7);
        ASSERT_EQ(static_cast<std::size_t>(map.GetCount()), model.size());
        std::erase_if(places, [&](const auto& place) { return !model.contains(place.first); });
        const auto* const pair = map.PLookup(key.c_str());
        ASSERT_TRUE(!pair || places.emplace(key, pair).first->second == pair) << key;
    }
    std::map<std::string, int> walked;
    for (auto* pair = map.PGetFirstAssoc(); pair != nullptr; pair = map.PGetNextAssoc(pair))
        EXPECT_TRUE(walked.emplace(pair->key.GetString(), pair->value).second) << pair->key.GetString();
    EXPECT_EQ(walked, model);
}

TEST(Collections, WhatIsOutsideThrows) {
    CUIntArray array;
    array.SetSize(3);
    EXPECT_TRUE(throwsException([&] { array[3]; }));
    EXPECT_TRUE(throwsException([&] { (void)std::as_const(array)[-1]; }));
    EXPECT_TRUE(throwsException([&] { array.SetAtGrow(-1, 1); }));
    EXPECT_TRUE(throwsException([&] { array.SetSize(-1); }));
    EXPECT_TRUE(throwsException([&] { array.InsertAt(-1, 1); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(2, 2); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(4, 0); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(1, std::numeric_limits<INT_PTR>::max()); }));
    EXPECT_EQ(array.GetSize(), 3);

    CPtrList list;
    CMap<int, int, CString, const char*> map;
    POSITION none = nullptr;
    int key = 0;
    CString value;
    EXPECT_TRUE(throwsException([&] { list.GetHead(); }));
    EXPECT_TRUE(throwsException([&] { list.RemoveTail(); }));
    EXPECT_TRUE(throwsException([&] { list.GetNext(none); }));
    EXPECT_TRUE(throwsException([&] { list.RemoveAt(none); }));
    EXPECT_TRUE(throwsException([&] { map.InitHashTable(0); }));
    EXPECT_TRUE(throwsException([&] { map.GetNextAssoc(none, key, value); }));
    map.SetAt(1, "one");
    EXPECT_TRUE(throwsException([&] { map.InitHashTable(5); })) << "only while it is empty";
    EXPECT_STREQ(map.PLookup(1)->value, "one");
}

}  // namespace

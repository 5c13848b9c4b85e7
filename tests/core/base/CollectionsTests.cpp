// Arrays, lists and maps: random edits against models, and what is refused.
#include "core/base/Throws.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

class RandomEdits : public testing::Test {
protected:
    static long steps() { return test::rounds("QUOR_COLLECTION_STEPS", 50'000); }
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    const unsigned seed = test::anySeed();
    const testing::ScopedTrace told{__FILE__, __LINE__, "QUOR_SEED=" + std::to_string(seed)};

    template <class Array, class Value>
    void editArray();

private:
    std::mt19937 m_random{seed};
};

CString valueOf(long step, const CString&) { return std::to_string(step).c_str(); }
UINT valueOf(long step, UINT) { return static_cast<UINT>(step); }

template <class Array, class Value>
void RandomEdits::editArray() {
    Array array;
    std::vector<Value> model;
    for (long step = steps(); step > 0; --step) {
        const std::size_t size = model.size(), at = below(size + 1), count = below(4);
        const auto index = static_cast<INT_PTR>(at), many = static_cast<INT_PTR>(count);
        const auto end = static_cast<INT_PTR>(size);
        const Value value = valueOf(step, Value());
        switch (below(9)) {
            case 0:
                array.InsertAt(index, value, many);
                model.insert(model.begin() + index, count, value);
                break;
            case 1:
                ASSERT_EQ(array.Add(value), end);
                model.push_back(value);
                break;
            case 2:  // beyond the end
                if (count % 2)
                    array.InsertAt(end + many, value);
                else
                    array.SetAtGrow(end + many, value);
                model.resize(size + count);
                model.push_back(value);
                break;
            case 3:
                if (at + count > size) break;
                array.RemoveAt(index, many);
                model.erase(model.begin() + index, model.begin() + index + many);
                break;
            case 4: {  // an element of its own
                if (at == size) break;
                const Value own = model[at];
                if (count == 0) array.Add(array[index]);
                if (count == 1) array.SetAtGrow(end, array[index]);
                if (count > 1) array.InsertAt(end, array[index], many);
                model.insert(model.end(), std::max<std::size_t>(count, 1), own);
                break;
            }
            case 5: {
                if (size > 40) break;
                Array other, both;
                both.Add(value);
                other.Copy(array);
                ASSERT_EQ(both.Append(other), 1);
                array.InsertAt(index, &both);
                std::vector<Value> whole = model;
                whole.insert(whole.begin(), value);
                model.insert(model.begin() + index, whole.begin(), whole.end());
                break;
            }
            case 6:
                array.SetSize(end + many, many);
                model.resize(size + count);
                break;
            case 7:
                if (size <= 50) break;
                array.SetSize(index);
                model.resize(at);
                break;
            default:
                array.FreeExtra();
        }
        ASSERT_EQ(array.GetSize(), static_cast<INT_PTR>(model.size())) << step;
        ASSERT_TRUE(std::equal(model.begin(), model.end(), array.GetData())) << step;
    }
}

TEST_F(RandomEdits, OfArraysMatchAVector) {
    editArray<CArray<CString>, CString>();
    editArray<CUIntArray, UINT>();
}

TEST_F(RandomEdits, OfListsMatchAVector) {
    CList<int, int> list;
    std::vector<std::pair<int, POSITION>> model;
    for (int step = 0; step < steps(); ++step) {
        const auto here = model.begin() + static_cast<INT_PTR>(below(model.size() + 1));
        const bool inside = here != model.end();
        const POSITION position = inside ? here->second : nullptr;  // none: the head, or the tail
        switch (below(5)) {
            case 0:
                model.insert(inside ? here : model.begin(), {step, list.InsertBefore(position, step)});
                break;
            case 1:
                model.insert(inside ? here + 1 : here, {step, list.InsertAfter(position, step)});
                break;
            case 2:
                if (!inside) break;
                list.RemoveAt(position);
                model.erase(here);
                break;
            case 3:
                if (inside) list.SetAt(position, here->first = step);
                break;
            default:
                if (model.size() < 20) break;
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
    list.AddHead(-1);
    CList<int, int> twice;
    twice.AddHead(&list);
    twice.AddTail(&list);
    ASSERT_EQ(twice.GetCount(), 2 * list.GetCount());
    const POSITION first = twice.Find(list.GetHead());
    EXPECT_EQ(first, twice.GetHeadPosition());
    EXPECT_EQ(twice.Find(list.GetHead(), first), twice.FindIndex(list.GetCount()));
    EXPECT_EQ(twice.Find(-2), nullptr);
    for (const INT_PTR outside : {INT_PTR{-1}, list.GetCount()}) EXPECT_EQ(list.FindIndex(outside), nullptr);
    list.RemoveAll();
    list.AddTail(7);
    EXPECT_EQ(list.GetHeadPosition(), list.GetTailPosition());
}

// A pair stays where it is while others come and go; a walk may remove what it was given.
TEST_F(RandomEdits, OfMapsMatchAModel) {
    CMap<CString, const char*, int, int> map;
    std::map<std::string, int> model;
    std::map<std::string, const void*> places;
    for (int step = 0; step < steps(); ++step) {
        const std::string key = "key" + std::to_string(below(300));
        switch (below(5)) {
            case 0:
                map.SetAt(key.c_str(), model[key] = step);
                break;
            case 1:
                ++map[key.c_str()], ++model[key];
                break;
            case 2:
                ASSERT_EQ(map.RemoveKey(key.c_str()) != FALSE, model.erase(key) != 0) << key;
                break;
            case 3: {
                if (below(1000)) break;
                CString walked;
                int value = 0;
                std::set<std::string> given;
                for (POSITION position = map.GetStartPosition(); position != nullptr;) {
                    map.GetNextAssoc(position, walked, value);
                    ASSERT_TRUE(given.insert(walked.GetString()).second) << "given twice: " << walked.GetString();
                    ASSERT_EQ(value, model.at(walked.GetString()));
                    if (value % 2) map.RemoveKey(walked);
                }
                ASSERT_EQ(given.size(), model.size());
                std::erase_if(model, [](const auto& pair) { return pair.second % 2 != 0; });
                break;
            }
            default: {
                int value = -7;
                const auto found = model.find(key);
                ASSERT_EQ(map.Lookup(key.c_str(), value) != FALSE, found != model.end()) << key;
                ASSERT_EQ(value, found != model.end() ? found->second : -7);
            }
        }
        ASSERT_EQ(static_cast<std::size_t>(map.GetCount()), model.size());
        std::erase_if(places, [&](const auto& place) { return !model.contains(place.first); });
        const auto* const pair = map.PLookup(key.c_str());
        ASSERT_EQ(pair != nullptr, model.contains(key));
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
    const CUIntArray& readOnly = array;
    EXPECT_TRUE(throwsException([&] { array[3]; }));
    EXPECT_TRUE(throwsException([&] { (void)readOnly[-1]; }));
    EXPECT_TRUE(throwsException([&] { array.SetAtGrow(-1, 1); }));
    EXPECT_TRUE(throwsException([&] { array.SetSize(-1); }));
    EXPECT_TRUE(throwsException([&] { array.InsertAt(-1, 1); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(2, 2); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(4, 0); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(1, std::numeric_limits<INT_PTR>::max()); }));
    EXPECT_EQ(array.GetSize(), 3);
    array.RemoveAll();
    EXPECT_EQ(array.GetData(), nullptr);

    CPtrList list;
    POSITION none = nullptr;
    EXPECT_TRUE(throwsException([&] { list.GetHead(); }));
    EXPECT_TRUE(throwsException([&] { list.RemoveTail(); }));
    EXPECT_TRUE(throwsException([&] { list.GetNext(none); }));
    EXPECT_TRUE(throwsException([&] { list.RemoveAt(none); }));
}

TEST(Map, BucketsAreSetWhileEmptyAndMadeByTheFirstInsert) {
    CMap<int, int, CString, const char*> map;
    EXPECT_EQ(map.GetHashTableSize(), 17u);
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    EXPECT_EQ(map.PLookup(1), nullptr);
    map.InitHashTable(100, FALSE);
    EXPECT_FALSE(map.RemoveKey(1));
    map.SetAt(1, "one");
    map.SetAt(-99, "in the same bucket");
    EXPECT_TRUE(throwsException([&] { map.InitHashTable(5); }));
    EXPECT_STREQ(map.PLookup(1)->value, "one");
    map.RemoveAll();
    EXPECT_EQ(map.GetHashTableSize(), 100u);
    EXPECT_TRUE(throwsException([&] { map.InitHashTable(0); }));
    POSITION none = nullptr;
    int key = 0;
    CString value;
    EXPECT_TRUE(throwsException([&] { map.GetNextAssoc(none, key, value); }));
    EXPECT_EQ(HashKey<const CString&>("GARAN"), HashKey<const char*>(std::string("GARAN").c_str()));
    EXPECT_EQ(HashKey<const char*>(nullptr), HashKey<const char*>(""));
}

}  // namespace

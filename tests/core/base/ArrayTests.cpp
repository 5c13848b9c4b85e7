#include "core/base/Throws.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

std::string dump(const CStringArray& array) {
    std::string text;
    for (INT_PTR i = 0; i < array.GetSize(); ++i) text += std::string(i > 0 ? " " : "") + array[i].GetString();
    return text;
}

void fill(CStringArray& array, std::initializer_list<LPCSTR> texts) {
    array.RemoveAll();
    for (const LPCSTR text : texts) array.Add(text);
}

TEST(Array, IndexesAndSizesOutsideThrow) {
    CUIntArray array;
    array.SetSize(3);
    const CUIntArray& readOnly = array;
    EXPECT_TRUE(throwsException([&] { array[3]; }));
    EXPECT_TRUE(throwsException([&] { (void)readOnly[-1]; }));
    EXPECT_TRUE(throwsException([&] { array.SetAt(3, 1); }));
    EXPECT_TRUE(throwsException([&] { array.SetAtGrow(-1, 1); }));
    EXPECT_TRUE(throwsException([&] { array.SetSize(-1); }));
    EXPECT_TRUE(throwsException([&] { array.InsertAt(-1, 1); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(2, 2); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(4, 0); }));
    EXPECT_TRUE(throwsException([&] { array.RemoveAt(1, std::numeric_limits<INT_PTR>::max()); }));
    EXPECT_EQ(array.GetSize(), 3);
}

TEST(Array, NewElementsAreZero) {
    CUIntArray array;
    array.SetSize(4);
    for (int i = 0; i < 4; ++i) array[i] = 7;
    array.SetSize(1);
    array.SetSize(3);
    array.SetAtGrow(5, 9);
    const UINT expected[] = {7, 0, 0, 0, 0, 9};
    ASSERT_EQ(array.GetSize(), 6);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(array[i], expected[i]) << i;
    EXPECT_EQ(array.GetUpperBound(), 5);
    array.RemoveAll();
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(Array, InsertAndRemoveShiftTheRest) {
    CStringArray array;
    fill(array, {"a", "b", "c"});
    array.InsertAt(1, "x", 2);
    EXPECT_EQ(dump(array), "a x x b c");
    array.InsertAt(5, "end");
    EXPECT_EQ(dump(array), "a x x b c end");
    array.InsertAt(7, "far");
    EXPECT_EQ(dump(array), "a x x b c end  far");
    array.RemoveAt(1, 2);
    array.RemoveAt(4, 2);
    EXPECT_EQ(dump(array), "a b c end");
    CStringArray other;
    fill(other, {"1", "2"});
    array.InsertAt(0, &other);
    EXPECT_EQ(array.Append(other), 6);
    EXPECT_EQ(dump(array), "1 2 a b c end 1 2");
    other.Copy(array);
    array.RemoveAll();
    EXPECT_EQ(dump(other), "1 2 a b c end 1 2");
    other.InsertAt(0, &array);
    EXPECT_EQ(other.GetSize(), 8);
}

TEST(Array, ArgumentsMayLieInTheArray) {
    CArray<CString> array;
    array.Add("only");
    for (int i = 0; i < 100; ++i) array.Add(array[0]);
    array.FreeExtra();
    array.SetAtGrow(array.GetSize(), array[0]);
    array.InsertAt(0, array[5], 3);
    for (INT_PTR i = 0; i < array.GetSize(); ++i) ASSERT_STREQ(array[i], "only") << i;
}

TEST(Array, RandomEditsMatchAVector) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    CArray<CString> array;
    std::vector<std::string> model;
    for (int step = 0; step < 5000; ++step) {
        const auto at = static_cast<INT_PTR>(random() % (model.size() + 1));
        const std::string text = std::to_string(step);
        switch (random() % 5) {
            case 0:
                array.InsertAt(at, text.c_str());
                model.insert(model.begin() + at, text);
                break;
            case 1:
                array.Add(text.c_str());
                model.push_back(text);
                break;
            case 2:
                if (at < array.GetSize()) {
                    array.RemoveAt(at);
                    model.erase(model.begin() + at);
                }
                break;
            case 3:
                if (random() % 20 == 0) {
                    array.SetSize(at, static_cast<INT_PTR>(random() % 8));
                    model.resize(static_cast<std::size_t>(at));
                }
                break;
            default:
                array.FreeExtra();
        }
        ASSERT_EQ(static_cast<std::size_t>(array.GetSize()), model.size());
    }
    for (std::size_t i = 0; i < model.size(); ++i) ASSERT_EQ(model[i], array[static_cast<INT_PTR>(i)].GetString());
}

}  // namespace

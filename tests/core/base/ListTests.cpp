#include "core/base/Throws.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string forward(const CStringList& list) {
    std::string text;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;) text += list.GetNext(position).GetString();
    return text;
}

std::string backward(const CStringList& list) {
    std::string text;
    for (POSITION position = list.GetTailPosition(); position != nullptr;) text += list.GetPrev(position).GetString();
    return text;
}

TEST(List, InsertionsKeepBothDirections) {
    CStringList list;
    const POSITION b = list.AddHead("b");
    list.AddTail("e");
    list.InsertBefore(b, "a");
    const POSITION c = list.InsertAfter(b, "c");
    list.InsertAfter(c, "d");
    list.InsertBefore(nullptr, "<");
    list.InsertAfter(nullptr, ">");
    EXPECT_EQ(forward(list), "<abcde>");
    EXPECT_EQ(backward(list), ">edcba<");
    EXPECT_EQ(list.GetCount(), 7);
    CStringList other;
    other.AddTail(&list);
    other.AddHead(&list);
    EXPECT_EQ(forward(other), "<abcde><abcde>");
}

TEST(List, RemovalMayFollowAWalk) {
    CList<int, int> list;
    for (int i = 0; i < 50; ++i) list.AddTail(i);
    for (POSITION position = list.GetHeadPosition(); position != nullptr;) {
        const POSITION current = position;
        if (list.GetNext(position) % 2 == 0) list.RemoveAt(current);
    }
    EXPECT_EQ(list.GetCount(), 25);
    EXPECT_EQ(list.RemoveHead(), 1);
    EXPECT_EQ(list.RemoveTail(), 49);
    EXPECT_EQ(list.GetAt(list.FindIndex(3)), 9);
    EXPECT_EQ(list.FindIndex(23), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
    const POSITION found = list.Find(9);
    list.SetAt(found, 10);
    list.AddTail(10);
    EXPECT_EQ(list.Find(10, found), list.GetTailPosition());
    EXPECT_EQ(list.Find(9), nullptr);
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    list.AddTail(1);
    EXPECT_EQ(list.GetHead(), list.GetTail());
}

TEST(List, EmptyEndsAndNullPositionsThrow) {
    CPtrList list;
    POSITION none = nullptr;
    EXPECT_TRUE(throwsException([&] { list.GetHead(); }));
    EXPECT_TRUE(throwsException([&] { list.RemoveTail(); }));
    EXPECT_TRUE(throwsException([&] { list.GetNext(none); }));
    EXPECT_TRUE(throwsException([&] { list.RemoveAt(none); }));
}

}  // namespace

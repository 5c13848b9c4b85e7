#include "core/base/Throws.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <utility>

namespace {

TEST(Strings, WritingToACopyLeavesTheOriginal) {
    const CString original("price");
    const auto changed = [&original](auto change) {
        CString copy(original);
        EXPECT_EQ(copy.GetString(), original.GetString()) << "a copy shares the text";
        change(copy);
        EXPECT_STREQ(original, "price");
        return copy;
    };
    EXPECT_STREQ(changed([](CString& s) { s.SetAt(0, 'P'); }), "Price");
    EXPECT_STREQ(changed([](CString& s) { s += 's'; }), "prices");
    EXPECT_STREQ(changed([](CString& s) { s.MakeUpper(); }), "PRICE");
    EXPECT_STREQ(changed([](CString& s) { s.MakeReverse(); }), "ecirp");
    EXPECT_STREQ(changed([](CString& s) { s.Delete(1, 2); }), "pce");
    EXPECT_STREQ(changed([](CString& s) { s.Remove('i'); }), "prce");
    EXPECT_STREQ(changed([](CString& s) { s.Replace('r', 'l'); }), "plice");
    EXPECT_STREQ(changed([](CString& s) { s.TrimLeft('p'); }), "rice");
    EXPECT_STREQ(changed([](CString& s) { s = "x"; }), "x");
    EXPECT_STREQ(changed([](CString& s) { s.GetBuffer()[4] = 'y'; }), "pricy");
    EXPECT_STREQ(changed([](CString& s) { s.Truncate(2); }), "pr");
}

TEST(Strings, EmptyStringsOwnNothingAndEnoughRoomIsKept) {
    CString text;
    for (const CString& empty : {text, CString(""), CString(static_cast<LPCSTR>(nullptr)), CString('x', 0)})
        EXPECT_EQ(empty.GetAllocLength(), 0);
    EXPECT_STREQ(text.Trim().MakeLower().MakeReverse(), "");
    EXPECT_EQ(text.Replace("a", "b") + text.Remove('a') + text.Delete(0) + text.Find("a") + text.ReverseFind('a'), -2);
    text += "";
    EXPECT_EQ(text.GetAllocLength(), 0);
    text = "1234.50";
    const LPCSTR before = text.GetString();
    for (const LPCSTR next : {"9.5", "", "1234.60"}) {
        text = next;
        EXPECT_STREQ(text, next);
    }
    text.Format("%d.%02d", 77, 5);
    EXPECT_EQ(text.GetString(), before);
}

TEST(Strings, SourcesMayLieInTheStringItself) {
    CString text("abcdef");
    const CString shared(text);
    text = text.GetString() + 3;
    EXPECT_STREQ(text, "def");
    EXPECT_STREQ(shared, "abcdef");
    for (int i = 0; i < 6; ++i) text += text;
    EXPECT_EQ(text.GetLength(), 3 * 64);
    text = text.Left(6);
    text.Insert(3, text);
    text.Format("<%s>", text.GetString());
    text = *&text;
    EXPECT_STREQ(text, "<defdefdefdef>");
    text.Append(text.GetString() + 10);
    CString moved(std::move(text));
    text = moved;
    EXPECT_STREQ(text, "<defdefdefdef>def>");
}

TEST(Strings, PositionsOutsideTheTextThrow) {
    CString text("abc");
    EXPECT_EQ(text[3], '\0');
    int start = -1;
    EXPECT_TRUE(throwsException([&] { text.GetAt(-1); }));
    EXPECT_TRUE(throwsException([&] { (void)text[4]; }));
    EXPECT_TRUE(throwsException([&] { text.SetAt(3, 'x'); }));
    EXPECT_TRUE(throwsException([&] { text.Truncate(4); }));
    EXPECT_TRUE(throwsException([&] { CString bad("abc", -1); }));
    EXPECT_TRUE(throwsException([&] { text.Tokenize(",", start); }));
    EXPECT_TRUE(throwsException([&] { text.GetBuffer(-1); }));
    EXPECT_TRUE(throwsException([&] { text.ReleaseBuffer(100000); }));
    EXPECT_STREQ(text, "abc");
}

TEST(Strings, PartsTrimsAndCases) {
    const CString text("abcdef");
    const std::pair<CString, const char*> parts[] = {{text.Mid(2), "cdef"},
                                                     {text.Mid(-3, 2), "ab"},
                                                     {text.Mid(9, 2), ""},
                                                     {text.Mid(4, std::numeric_limits<int>::max()), "ef"},
                                                     {text.Left(-1), ""},
                                                     {text.Left(9), "abcdef"},
                                                     {text.Right(2), "ef"},
                                                     {text.Right(9), "abcdef"},
                                                     {text.SpanIncluding("cba"), "abc"},
                                                     {text.SpanIncluding("x"), ""},
                                                     {text.SpanExcluding("ed"), "abc"},
                                                     {text.SpanExcluding("x"), "abcdef"}};
    const std::pair<CString, const char*> trims[] = {
        {CString(" \t\r\nx \v\f ").Trim(), "x"},   {CString(" x ").TrimRight(), " x"},
        {CString("1.500").TrimRight('0'), "1.5"},  {CString("000").TrimRight('0'), ""},
        {CString("\"a,\"").Trim("\","), "a"},      {CString("\xA0x").Trim(), "\xA0x"},
        {CString("aZ\xE4").MakeUpper(), "AZ\xE4"}, {CString("aZ\xC4[").MakeLower(), "az\xC4["}};
    for (const auto& [result, expected] : parts) EXPECT_STREQ(result, expected);
    for (const auto& [result, expected] : trims) EXPECT_STREQ(result, expected);
    EXPECT_EQ(CString("Symbol").CompareNoCase("sYMBOL"), 0);
    EXPECT_EQ(CString("\xC4").CompareNoCase("\xE4"), -1) << "letters are A to Z";
    EXPECT_EQ(CString("\xA7").Compare("z"), 1) << "bytes are unsigned";
    EXPECT_TRUE("abc" < CString("abd") && CString("b") > "a" && CString("a") == "a" && "a" != CString("b"));
}

TEST(Strings, FindReplaceInsertDelete) {
    CString text("a.b.c");
    const std::pair<int, int> found[] = {
        {text.Find('.', 2), 3}, {text.Find("b."), 2},       {text.Find('.', 6), -1},   {text.Find('a', -1), -1},
        {text.Find("", 5), 5},  {text.ReverseFind('.'), 3}, {text.FindOneOf("cb"), 2}, {text.FindOneOf("x"), -1}};
    for (const auto& [place, expected] : found) EXPECT_EQ(place, expected);
    EXPECT_EQ(text.Replace(".", "::"), 2);
    EXPECT_STREQ(text, "a::b::c");
    EXPECT_EQ(text.Replace("::", ""), 2);
    EXPECT_EQ(text.Replace("", "x"), 0);
    EXPECT_EQ(CString("aaa").Replace("aa", "b"), 1);
    EXPECT_EQ(text.Insert(-5, '<'), 4);
    EXPECT_EQ(text.Insert(99, ">>"), 6);
    EXPECT_STREQ(text, "<abc>>");
    EXPECT_EQ(text.Delete(4, 99), 4);
    EXPECT_EQ(text.Delete(-1), 3);
    EXPECT_EQ(text.Delete(3), 3);
    EXPECT_STREQ(text, "abc");
    std::string tokens;
    int start = 0;
    for (const CString list(",,a;b,c,"); start != -1;) tokens += list.Tokenize(",;", start) + "|";
    EXPECT_EQ(tokens, "a|b|c||") << "the last one is none";
    start = 0;
    EXPECT_STREQ(CString("a,b").Tokenize("", start), "a,b");
}

TEST(Strings, FormatWritesC99TextsOfAnyLengthAndBuffersKeepTheText) {
    CString text;
    text.Format("%d|%5.2f|%-4s|%lld|%llX", -1, 2.005, "ab", 1LL << 40, 0xFFFFFFFFFULL);
    EXPECT_STREQ(text, "-1| 2.00|ab  |1099511627776|FFFFFFFFF");
    text.AppendFormat("%.1f %e", 1e15, 12345.678);
    EXPECT_STREQ(text.Mid(37), "1000000000000000.0 1.234568e+04");
    for (const int length : {255, 256, 257, 70000}) {
        text.Format("%s", std::string(static_cast<std::size_t>(length), 'x').c_str());
        EXPECT_EQ(text.GetLength(), length);
    }
    text = "abc";
    std::strcpy(text.GetBuffer(100) + 3, "written");
    text.ReleaseBuffer();
    EXPECT_STREQ(text, "abcwritten");
    text.GetBuffer();
    text.ReleaseBuffer(3);
    text.Preallocate(500);
    EXPECT_GE(text.GetAllocLength(), 500);
    text.FreeExtra();
    EXPECT_LT(text.GetAllocLength(), 50);
    EXPECT_STREQ(text, "abc");
}

}  // namespace

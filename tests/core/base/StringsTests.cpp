#include "core/base/Throws.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> tokens(LPCSTR text, LPCSTR delimiters) {
    const CString source(text);
    std::vector<std::string> found;
    int start = 0;
    for (CString token = source.Tokenize(delimiters, start); start != -1; token = source.Tokenize(delimiters, start))
        found.emplace_back(token.GetString());
    return found;
}

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

TEST(Strings, EmptyStringsOwnNothing) {
    CString text;
    EXPECT_STREQ(text, "");
    EXPECT_EQ(text.GetAllocLength(), 0);
    EXPECT_EQ(CString("").GetAllocLength(), 0);
    EXPECT_EQ(CString(static_cast<LPCSTR>(nullptr)).GetAllocLength(), 0);
    EXPECT_EQ(CString('x', 0).GetAllocLength(), 0);
    EXPECT_STREQ(text.Trim().MakeLower().MakeReverse(), "");
    EXPECT_EQ(text.Replace("a", "b") + text.Remove('a') + text.Delete(0) + text.Find("a") + text.ReverseFind('a'), -2);
    text += "";
    EXPECT_EQ(text.GetAllocLength(), 0);
}

TEST(Strings, AssigningIntoEnoughRoomKeepsTheBuffer) {
    CString text("1234.50");
    const LPCSTR before = text.GetString();
    for (const LPCSTR next : {"1234.55", "9.5", "", "1234.60"}) {
        text = next;
        EXPECT_STREQ(text, next);
        EXPECT_EQ(text.GetString(), before);
    }
    text.Format("%d.%02d", 77, 5);
    EXPECT_STREQ(text, "77.05");
    EXPECT_EQ(text.GetString(), before);
}

TEST(Strings, SourcesMayLieInTheStringItself) {
    CString text("abcdef");
    text = text.GetString() + 2;
    EXPECT_STREQ(text, "cdef");
    const CString shared(text);
    text = text.GetString() + 1;
    EXPECT_STREQ(text, "def");
    EXPECT_STREQ(shared, "cdef");
    for (int i = 0; i < 6; ++i) text += text;
    EXPECT_EQ(text.GetLength(), 3 * 64);
    text = text.Left(6);
    text.Insert(3, text);
    EXPECT_STREQ(text, "defdefdefdef");
    text.Format("<%s>", text.GetString());
    EXPECT_STREQ(text, "<defdefdefdef>");
    text = *&text;
    EXPECT_STREQ(text, "<defdefdefdef>");
    text.Append(text.GetString() + 10);
    EXPECT_STREQ(text, "<defdefdefdef>def>");
}

TEST(Strings, EndsOfEveryLengthMoveToTheFront) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    for (std::size_t length = 0; length <= letters.size(); ++length)
        for (std::size_t cut = 0; cut <= length; ++cut) {
            const std::string whole = letters.substr(0, length), end = whole.substr(cut);
            CString text(whole.c_str());
            text = text.GetString() + cut;
            ASSERT_STREQ(text, end.c_str());
            text += whole.c_str();
            ASSERT_STREQ(text, (end + whole).c_str());
        }
}

TEST(Strings, MovedFromStringsAreUsable) {
    CString first("first");
    CString second(std::move(first));
    first = "again";
    second = std::move(first);
    EXPECT_STREQ(second, "again");
    first = second;
    EXPECT_STREQ(first, "again");
}

TEST(Strings, PositionsOutsideTheTextThrow) {
    CString text("abc");
    EXPECT_EQ(text[2], 'c');
    EXPECT_EQ(text[3], '\0');
    int start = -1;
    EXPECT_TRUE(throwsException([&] { text.GetAt(-1); }));
    EXPECT_TRUE(throwsException([&] { (void)text[4]; }));
    EXPECT_TRUE(throwsException([&] { text.SetAt(3, 'x'); }));
    EXPECT_TRUE(throwsException([&] { text.Truncate(4); }));
    EXPECT_TRUE(throwsException([&] { CString bad("abc", -1); }));
    EXPECT_TRUE(throwsException([&] { text.Tokenize(",", start); }));
    EXPECT_TRUE(throwsException([&] { text.GetBuffer(-1); }));
    EXPECT_STREQ(text, "abc");
}

TEST(Strings, PartsAreClampedToTheText) {
    const CString text("abcdef");
    EXPECT_STREQ(text.Mid(2), "cdef");
    EXPECT_STREQ(text.Mid(2, 3), "cde");
    EXPECT_STREQ(text.Mid(-3, 2), "ab");
    EXPECT_STREQ(text.Mid(4, 2147483647), "ef");
    EXPECT_STREQ(text.Mid(9, 2), "");
    EXPECT_STREQ(text.Left(-1), "");
    EXPECT_STREQ(text.Left(9), "abcdef");
    EXPECT_STREQ(text.Right(2), "ef");
    EXPECT_STREQ(text.Right(9), "abcdef");
    EXPECT_STREQ(text.SpanIncluding("cba"), "abc");
    EXPECT_STREQ(text.SpanIncluding("x"), "");
    EXPECT_STREQ(text.SpanExcluding("ed"), "abc");
    EXPECT_STREQ(text.SpanExcluding("x"), "abcdef");
}

TEST(Strings, CaseIsAToZAndBytesAreUnsigned) {
    EXPECT_STREQ(CString("aZ\xE4\xDF").MakeUpper(), "AZ\xE4\xDF");
    EXPECT_STREQ(CString("aZ\xC4[").MakeLower(), "az\xC4[");
    EXPECT_EQ(CString("Symbol").CompareNoCase("sYMBOL"), 0);
    EXPECT_EQ(CString("\xC4").CompareNoCase("\xE4"), -1);
    EXPECT_EQ(CString("ab").CompareNoCase("A"), 1);
    EXPECT_EQ(CString("\xA7").Compare("z"), 1);
    EXPECT_EQ(CString("a").Compare("b"), -1);
    EXPECT_TRUE("abc" < CString("abd") && CString("b") > "a" && CString("a") == "a" && "a" != CString("b"));
}

TEST(Strings, TrimmingTakesBlanksACharacterOrASet) {
    EXPECT_STREQ(CString(" \t\r\nx y\v\f ").Trim(), "x y");
    EXPECT_STREQ(CString("  x ").TrimRight(), "  x");
    EXPECT_STREQ(CString("00120").TrimLeft('0'), "120");
    EXPECT_STREQ(CString("1.500").TrimRight('0'), "1.5");
    EXPECT_STREQ(CString("\"a,\"").Trim("\","), "a");
    EXPECT_STREQ(CString("000").TrimRight('0'), "");
    EXPECT_STREQ(CString("\xA0x").Trim(), "\xA0x");
}

TEST(Strings, ReplaceInsertDelete) {
    CString text("a,b,,c");
    EXPECT_EQ(text.Replace(",", "::"), 3);
    EXPECT_STREQ(text, "a::b::::c");
    EXPECT_EQ(text.Replace("::", ""), 3);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text.Replace("", "x"), 0);
    EXPECT_EQ(CString("aaa").Replace("aa", "b"), 1);
    EXPECT_EQ(text.Insert(-5, '<'), 4);
    EXPECT_EQ(text.Insert(99, ">>"), 6);
    EXPECT_STREQ(text, "<abc>>");
    EXPECT_EQ(text.Delete(4, 99), 4);
    EXPECT_EQ(text.Delete(-1), 3);
    EXPECT_EQ(text.Delete(3), 3);
    EXPECT_STREQ(text, "abc");
}

TEST(Strings, Finding) {
    const CString text("a.b.c");
    EXPECT_EQ(text.Find('.'), 1);
    EXPECT_EQ(text.Find('.', 2), 3);
    EXPECT_EQ(text.Find("b."), 2);
    EXPECT_EQ(text.Find('.', 6), -1);
    EXPECT_EQ(text.Find('a', -1), -1);
    EXPECT_EQ(text.Find("", 5), 5);
    EXPECT_EQ(text.ReverseFind('.'), 3);
    EXPECT_EQ(text.FindOneOf("cb"), 2);
    EXPECT_EQ(text.FindOneOf("x"), -1);
}

TEST(Strings, TokensAreNeverEmpty) {
    using Tokens = std::vector<std::string>;
    EXPECT_EQ(tokens(",,a,,b,", ","), (Tokens{"a", "b"}));
    EXPECT_EQ(tokens("a", ","), (Tokens{"a"}));
    EXPECT_EQ(tokens("a;b,c", ",;"), (Tokens{"a", "b", "c"}));
    EXPECT_EQ(tokens("", ","), Tokens{});
    EXPECT_EQ(tokens(",,", ","), Tokens{});
    EXPECT_EQ(tokens("a,b", ""), (Tokens{"a,b"}));
}

TEST(Strings, FormatWritesC99TextsOfAnyLength) {
    CString text;
    text.Format("%d|%5.2f|%-4s|%lld|%llX", -1, 2.005, "ab", 1LL << 40, 0xFFFFFFFFFULL);
    EXPECT_STREQ(text, "-1| 2.00|ab  |1099511627776|FFFFFFFFF");
    text.AppendFormat("%s", "!");
    EXPECT_EQ(text.ReverseFind('!'), text.GetLength() - 1);
    for (const int length : {255, 256, 257, 70000}) {
        text.Format("%s", std::string(static_cast<std::size_t>(length), 'x').c_str());
        EXPECT_EQ(text.GetLength(), length);
    }
    text.Format("%.1f %e", 1e15, 12345.678);
    EXPECT_STREQ(text, "1000000000000000.0 1.234568e+04");
}

TEST(Strings, BuffersKeepTheTextAndTakeALength) {
    CString text("abc");
    LPSTR buffer = text.GetBuffer(100);
    EXPECT_STREQ(buffer, "abc");
    std::strcpy(buffer, "written");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 7);
    text.GetBuffer();
    text.ReleaseBuffer(3);
    EXPECT_STREQ(text, "wri");
    EXPECT_TRUE(throwsException([&] { text.ReleaseBuffer(100000); }));
    std::memcpy(text.GetBufferSetLength(2), "ok", 2);
    EXPECT_STREQ(text, "ok");
    text.Preallocate(500);
    EXPECT_GE(text.GetAllocLength(), 500);
    text.FreeExtra();
    EXPECT_LT(text.GetAllocLength(), 50);
    EXPECT_STREQ(text, "ok");
}

}  // namespace

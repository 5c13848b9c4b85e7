// CString: the framework's narrow string, one byte a character, code page 1252.
//
// Copies share one counted text until one of them is written to (copy on write). The count is not atomic: strings that
// share a text belong to one thread, and so a string is not handed to another thread by copying it, nor by passing it
// by value. CString(text.GetString()) shares nothing; any thread may make it while nobody changes `text`.
// An object is one pointer. The empty string is the null pointer: it never allocates, and a CString in zeroed memory is
// a valid empty one, so globals are usable before any constructor ran.
//
// Positions and lengths are bytes, from 0. Reading or writing a position outside the text throws the invalid-argument
// exception; the terminator may be read (GetAt(GetLength()) is 0). Null pointers count as empty texts. Case is A to Z,
// blanks are those of the C locale: nothing here depends on the locale.
//
// A CString must not be passed through `...`; give Format its GetString().
#pragma once

#include "quor/platform/base/Compiler.h"
#include "quor/platform/base/Exception.h"

#include <compare>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

class QUOR_FRAMEWORK_API CString {
public:
    constexpr CString() noexcept = default;
    CString(const CString& other) noexcept : m_text(other.m_text) {
        if (m_text != nullptr) ++header(m_text)->references;
    }
    CString(CString&& other) noexcept : m_text(other.m_text) { other.m_text = nullptr; }
    CString(LPCSTR text) { assign(viewOf(text)); }
    // The first `length` bytes of text, NULs included. A negative length throws.
    CString(LPCSTR text, int length) { assign(checkedView(text, length)); }
    explicit CString(char character, int repeat = 1);
    ~CString() { release(); }

    // Its own text is counted up before it is let go. NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    CString& operator=(const CString& other) noexcept {
        char* const shared = other.m_text;
        if (shared != nullptr) ++header(shared)->references;
        release();
        m_text = shared;
        return *this;
    }
    CString& operator=(CString&& other) noexcept {
        char* const mine = m_text;
        m_text = other.m_text;
        other.m_text = mine;
        return *this;
    }
    // Does not allocate when this text is unshared and has room. The argument may lie in this very string.
    CString& operator=(LPCSTR text) {
        assign(viewOf(text));
        return *this;
    }
    CString& operator=(char character) {
        assign({&character, 1});
        return *this;
    }

    operator LPCSTR() const noexcept { return GetString(); }
    LPCSTR GetString() const noexcept { return m_text != nullptr ? m_text : noText_; }
    int GetLength() const noexcept { return m_text != nullptr ? header(m_text)->length : 0; }
    BOOL IsEmpty() const noexcept { return GetLength() == 0; }
    // Bytes that this object may hold before it allocates again, terminator not counted.
    int GetAllocLength() const noexcept { return m_text != nullptr ? header(m_text)->capacity : 0; }
    void Empty() noexcept {
        release();
        m_text = nullptr;
    }

    char GetAt(int index) const {
        if (index < 0 || index > GetLength()) AfxThrowInvalidArgException();
        return GetString()[index];
    }
    char operator[](int index) const { return GetAt(index); }
    void SetAt(int index, char character);
    // Cuts to at most `length` bytes; a length outside 0..GetLength() throws.
    void Truncate(int length);

    void SetString(LPCSTR text) { assign(viewOf(text)); }
    void SetString(LPCSTR text, int length) { assign(checkedView(text, length)); }
    void Append(LPCSTR text) { append(viewOf(text)); }
    void Append(LPCSTR text, int length) { append(checkedView(text, length)); }
    void AppendChar(char character) { append({&character, 1}); }
    CString& operator+=(const CString& text) {
        append(text.view());
        return *this;
    }
    CString& operator+=(LPCSTR text) {
        append(viewOf(text));
        return *this;
    }
    CString& operator+=(char character) {
        append({&character, 1});
        return *this;
    }

    // strcmp's sign, by unsigned bytes; CompareNoCase folds A to Z.
    int Compare(LPCSTR text) const noexcept { return sign(view().compare(viewOf(text))); }
    int CompareNoCase(LPCSTR text) const noexcept;
    int Collate(LPCSTR text) const noexcept { return Compare(text); }

    // Counts and positions are clamped to the text; a negative count is 0.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    // The longest beginning made of bytes that are in `set`, or that are not.
    CString SpanIncluding(LPCSTR set) const;
    CString SpanExcluding(LPCSTR set) const;

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    // Removes blanks, one character, or any character of a set from one end or both.
    CString& Trim() { return TrimRight().TrimLeft(); }
    CString& Trim(char character) { return TrimRight(character).TrimLeft(character); }
    CString& Trim(LPCSTR set) { return TrimRight(set).TrimLeft(set); }
    CString& TrimLeft();
    CString& TrimLeft(char character);
    CString& TrimLeft(LPCSTR set);
    CString& TrimRight();
    CString& TrimRight(char character);
    CString& TrimRight(LPCSTR set);

    // How many were replaced or removed. Replacing an empty text does nothing.
    int Replace(char oldCharacter, char newCharacter);
    int Replace(LPCSTR oldText, LPCSTR newText);
    int Remove(char character);
    // The new length. A position below 0 is 0; beyond the end, the end.
    int Insert(int index, char character);
    int Insert(int index, LPCSTR text);
    int Delete(int index, int count = 1);

    // A position, or -1. A start outside the text finds nothing.
    int Find(char character, int start = 0) const noexcept;
    int Find(LPCSTR text, int start = 0) const noexcept;
    int ReverseFind(char character) const noexcept;
    int FindOneOf(LPCSTR set) const noexcept;

    // The next token from `start` on, which then stands behind the delimiter that ended it. Leading delimiters are
    // skipped, so there are no empty tokens. At the end: an empty string, and `start` is -1. A negative start throws.
    CString Tokenize(LPCSTR delimiters, int& start) const;

    // printf's texts as C99 has them, in both builds. The arguments may refer to this string.
    void Format(LPCSTR format, ...) QUOR_PRINTF(2, 3);
    void AppendFormat(LPCSTR format, ...) QUOR_PRINTF(2, 3);
    void FormatV(LPCSTR format, va_list arguments) QUOR_PRINTF(2, 0);
    void AppendFormatV(LPCSTR format, va_list arguments) QUOR_PRINTF(2, 0);

    // An unshared buffer with room for minimumLength bytes and a terminator. It is valid until the next call on this
    // object; ReleaseBuffer sets the length (-1: up to the first NUL) and must be called after writing.
    LPSTR GetBuffer(int minimumLength = 0);
    LPSTR GetBufferSetLength(int length);
    void ReleaseBuffer(int newLength = -1);
    // Room for `length` bytes without changing the text.
    void Preallocate(int length);
    // Gives room that is not needed back.
    void FreeExtra();

private:
    // Stands in front of the text in the same allocation.
    struct Header {
        int references;
        int length;
        int capacity;
    };

    static Header* header(char* text) noexcept { return reinterpret_cast<Header*>(text) - 1; }
    static std::string_view viewOf(LPCSTR text) noexcept {
        return text != nullptr ? std::string_view(text, lengthOf(text)) : std::string_view();
    }
    // strlen, without a call for the texts of cells. Byte by byte: a text that was just formatted so is slow to read in
    // larger pieces.
    static std::size_t lengthOf(LPCSTR text) noexcept {
        constexpr std::size_t kUsual = 16;
        if (!QUOR_KNOWS_LENGTH(text)) {
            for (std::size_t length = 0; length < kUsual; ++length)
                if (text[length] == '\0') return length;
        }
        return std::strlen(text);
    }
    static std::string_view checkedView(LPCSTR text, int length) {
        if (length < 0) AfxThrowInvalidArgException();
        return text != nullptr ? std::string_view(text, static_cast<std::size_t>(length)) : std::string_view();
    }
    static int sign(int value) noexcept { return (value > 0) - (value < 0); }
    static char* allocate(std::size_t capacity);

    std::string_view view() const noexcept {
        return m_text != nullptr ? std::string_view(m_text, static_cast<std::size_t>(header(m_text)->length))
                                 : std::string_view();
    }
    bool writable(std::size_t length) const noexcept {
        return m_text != nullptr && header(m_text)->references == 1 &&
               static_cast<std::size_t>(header(m_text)->capacity) >= length;
    }
    void release() noexcept {
        if (m_text != nullptr && --header(m_text)->references == 0) std::free(header(m_text));
    }
    void setLength(std::size_t length) noexcept {
        header(m_text)->length = static_cast<int>(length);
        m_text[length] = '\0';
    }
    void assign(std::string_view text) {
        if (!writable(text.size())) {
            assignAnew(text);
            return;
        }
        moveBytes(m_text, text.data(), text.size());
        setLength(text.size());
    }
    void append(std::string_view text) {
        if (text.empty()) return;
        const std::size_t old = view().size();
        if (!writable(old + text.size())) {
            appendAnew(text);
            return;
        }
        moveBytes(m_text + old, text.data(), text.size());
        setLength(old + text.size());
    }
    // memmove, without a call for the texts of cells: a walk over a grid's rows writes one after another.
    static void moveBytes(char* to, const char* from, std::size_t count) noexcept {
        if (count > 16) {
            std::memmove(to, from, count);
        } else if (count >= 8) {
            moveEnds<std::uint64_t>(to, from, count);
        } else if (count >= 4) {
            moveEnds<std::uint32_t>(to, from, count);
        } else if (count >= 2) {
            moveEnds<std::uint16_t>(to, from, count);
        } else if (count == 1) {
            *to = *from;
        }
    }
    // One to two words' bytes. Both are read before either is written: the texts may overlap. The first is written
    // last, so that whoever reads it next finds all of it in that one store.
    template <class Word>
    static void moveEnds(char* to, const char* from, std::size_t count) noexcept {
        Word first, last;
        std::memcpy(&first, from, sizeof first);
        std::memcpy(&last, from + count - sizeof last, sizeof last);
        std::memcpy(to + count - sizeof last, &last, sizeof last);
        std::memcpy(to, &first, sizeof first);
    }
    void assignAnew(std::string_view text);
    void appendAnew(std::string_view text);
    void makeWritable(std::size_t capacity);
    void keepRange(std::size_t first, std::size_t count);
    int insert(int index, std::string_view text);
    void print(LPCSTR format, va_list arguments, bool behind) QUOR_PRINTF(2, 0);
    CString slice(int first, int count) const;

    // What an empty string shows. No literal: the compiler would warn of every GetString() + n.
    static const char noText_[];

    char* m_text = nullptr;

    friend CString operator+(const CString& left, const CString& right) { return joined(left.view(), right.view()); }
    friend CString operator+(const CString& left, LPCSTR right) { return joined(left.view(), viewOf(right)); }
    friend CString operator+(LPCSTR left, const CString& right) { return joined(viewOf(left), right.view()); }
    friend CString operator+(const CString& left, char right) { return joined(left.view(), {&right, 1}); }
    friend CString operator+(char left, const CString& right) { return joined({&left, 1}, right.view()); }
    static CString joined(std::string_view left, std::string_view right);

    friend bool operator==(const CString& left, const CString& right) noexcept { return left.view() == right.view(); }
    friend bool operator==(const CString& left, LPCSTR right) noexcept { return left.view() == viewOf(right); }
    friend std::strong_ordering operator<=>(const CString& left, const CString& right) noexcept {
        return left.view() <=> right.view();
    }
    friend std::strong_ordering operator<=>(const CString& left, LPCSTR right) noexcept {
        return left.view() <=> viewOf(right);
    }
};

static_assert(sizeof(CString) == sizeof(void*));

using CStringA = CString;

// A cell's text is made and dropped for every paint and every test of a row, so strings avoid the heap: a text that
// fits its block is written in place, blocks are rounded up so that texts of one kind fit one another's, and only what
// is shared, or too small, is made anew.
#include "quor/platform/base/Strings.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kLongest = static_cast<std::size_t>(std::numeric_limits<int>::max()) - 64;
// The C locale's blanks.
constexpr LPCSTR kBlanks = " \t\n\v\f\r";

char upper(char character) noexcept {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}
char lower(char character) noexcept {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}
int position(std::size_t found) noexcept { return found == std::string_view::npos ? -1 : static_cast<int>(found); }

}  // namespace

const char CString::noText_[] = "";

// Rounds up so that short texts of one kind (prices, times) reuse their room.
char* CString::allocate(std::size_t capacity) {
    if (capacity > kLongest) AfxThrowMemoryException();
    const std::size_t bytes = (sizeof(Header) + capacity + 1 + 15) / 16 * 16;
    void* const memory = std::malloc(bytes);
    if (memory == nullptr) AfxThrowMemoryException();
    Header* const made = new (memory) Header{1, 0, static_cast<int>(bytes - sizeof(Header) - 1)};
    return reinterpret_cast<char*>(made + 1);
}

CString::CString(char character, int repeat) {
    if (repeat < 0) AfxThrowInvalidArgException();
    if (repeat == 0) return;
    m_text = allocate(static_cast<std::size_t>(repeat));
    std::memset(m_text, character, static_cast<std::size_t>(repeat));
    setLength(static_cast<std::size_t>(repeat));
}

// The source may lie in the text that is let go: copy first.
void CString::assignAnew(std::string_view text) {
    char* made = nullptr;
    if (!text.empty()) {
        made = allocate(text.size());
        std::memcpy(made, text.data(), text.size());
    }
    release();
    m_text = made;
    if (made != nullptr) setLength(text.size());
}

void CString::appendAnew(std::string_view text) {
    const std::string_view old = view();
    const std::size_t length = old.size() + text.size();
    if (length > kLongest) AfxThrowMemoryException();
    // Grows by half, so that appending byte by byte is linear; the first append takes what it needs.
    char* const made = allocate(old.empty() ? length : std::min(std::max(length, old.size() * 3 / 2), kLongest));
    if (!old.empty()) std::memcpy(made, old.data(), old.size());
    std::memcpy(made + old.size(), text.data(), text.size());
    release();
    m_text = made;
    setLength(length);
}

// Leaves an unshared text, unchanged, with room for `capacity` bytes.
void CString::makeWritable(std::size_t capacity) {
    if (writable(capacity)) return;
    const std::string_view old = view();
    char* const made = allocate(std::max(capacity, old.size()));
    if (!old.empty()) std::memcpy(made, old.data(), old.size());
    release();
    m_text = made;
    setLength(old.size());
}

void CString::keepRange(std::size_t first, std::size_t count) {
    if (first == 0 && count == view().size()) return;
    if (count == 0)
        Empty();
    else
        assign(view().substr(first, count));
}

CString CString::slice(int first, int count) const {
    const int length = GetLength();
    first = std::clamp(first, 0, length);
    count = std::clamp(count, 0, length - first);
    if (count == length) return *this;
    return CString(GetString() + first, count);
}

CString CString::joined(std::string_view left, std::string_view right) {
    CString result;
    if (left.size() + right.size() == 0) return result;
    result.m_text = allocate(left.size() + right.size());
    if (!left.empty()) std::memcpy(result.m_text, left.data(), left.size());
    if (!right.empty()) std::memcpy(result.m_text + left.size(), right.data(), right.size());
    result.setLength(left.size() + right.size());
    return result;
}

void CString::SetAt(int index, char character) {
    if (index < 0 || index >= GetLength()) AfxThrowInvalidArgException();
    makeWritable(view().size());
    m_text[index] = character;
}

void CString::Truncate(int length) {
    if (length < 0 || length > GetLength()) AfxThrowInvalidArgException();
    keepRange(0, static_cast<std::size_t>(length));
}

int CString::CompareNoCase(LPCSTR text) const noexcept {
    const std::string_view left = view();
    const std::string_view right = viewOf(text);
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = static_cast<unsigned char>(lower(left[i])) - static_cast<unsigned char>(lower(right[i]));
        if (difference != 0) return sign(difference);
    }
    return (left.size() > right.size()) - (left.size() < right.size());
}

CString CString::Mid(int first) const { return slice(first, GetLength()); }
CString CString::Mid(int first, int count) const { return slice(first, count); }
CString CString::Left(int count) const { return slice(0, count); }
CString CString::Right(int count) const {
    const int length = GetLength();
    count = std::clamp(count, 0, length);
    return slice(length - count, count);
}
CString CString::SpanIncluding(LPCSTR set) const {
    const int end = position(view().find_first_not_of(viewOf(set)));
    return end < 0 ? *this : Left(end);
}
CString CString::SpanExcluding(LPCSTR set) const {
    const int end = position(view().find_first_of(viewOf(set)));
    return end < 0 ? *this : Left(end);
}

CString& CString::MakeUpper() {
    if (IsEmpty()) return *this;
    makeWritable(view().size());
    std::transform(m_text, m_text + GetLength(), m_text, upper);
    return *this;
}
CString& CString::MakeLower() {
    if (IsEmpty()) return *this;
    makeWritable(view().size());
    std::transform(m_text, m_text + GetLength(), m_text, lower);
    return *this;
}
CString& CString::MakeReverse() {
    if (IsEmpty()) return *this;
    makeWritable(view().size());
    std::reverse(m_text, m_text + GetLength());
    return *this;
}

CString& CString::TrimLeft() { return TrimLeft(kBlanks); }
CString& CString::TrimLeft(char character) {
    const char set[2] = {character, '\0'};
    return TrimLeft(set);
}
CString& CString::TrimLeft(LPCSTR set) {
    const std::size_t first = std::min(view().find_first_not_of(viewOf(set)), view().size());
    keepRange(first, view().size() - first);
    return *this;
}
CString& CString::TrimRight() { return TrimRight(kBlanks); }
CString& CString::TrimRight(char character) {
    const char set[2] = {character, '\0'};
    return TrimRight(set);
}
CString& CString::TrimRight(LPCSTR set) {
    keepRange(0, view().find_last_not_of(viewOf(set)) + 1);
    return *this;
}

int CString::Replace(char oldCharacter, char newCharacter) {
    const std::string_view text = view();
    const auto count = std::count(text.begin(), text.end(), oldCharacter);
    if (count == 0 || oldCharacter == newCharacter) return oldCharacter == newCharacter ? 0 : static_cast<int>(count);
    makeWritable(text.size());
    std::replace(m_text, m_text + GetLength(), oldCharacter, newCharacter);
    return static_cast<int>(count);
}

int CString::Replace(LPCSTR oldText, LPCSTR newText) {
    const std::string_view text = view();
    const std::string_view from = viewOf(oldText);
    const std::string_view to = viewOf(newText);
    if (from.empty()) return 0;
    CString result;
    int count = 0;
    std::size_t done = 0;
    for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, done)) {
        result.append(text.substr(done, at - done));
        result.append(to);
        done = at + from.size();
        ++count;
    }
    if (count == 0) return 0;
    result.append(text.substr(done));
    *this = std::move(result);
    return count;
}

int CString::Remove(char character) {
    if (view().find(character) == std::string_view::npos) return 0;
    makeWritable(view().size());
    char* const end = std::remove(m_text, m_text + GetLength(), character);
    const int removed = static_cast<int>(m_text + GetLength() - end);
    setLength(static_cast<std::size_t>(end - m_text));
    return removed;
}

int CString::insert(int index, std::string_view text) {
    if (text.empty()) return GetLength();
    const std::size_t at = static_cast<std::size_t>(std::clamp(index, 0, GetLength()));
    CString result = joined(view().substr(0, at), text);
    result.append(view().substr(at));
    *this = std::move(result);
    return GetLength();
}
int CString::Insert(int index, char character) { return insert(index, {&character, 1}); }
int CString::Insert(int index, LPCSTR text) { return insert(index, viewOf(text)); }

int CString::Delete(int index, int count) {
    const int length = GetLength();
    index = std::clamp(index, 0, length);
    count = std::clamp(count, 0, length - index);
    if (count == 0) return length;
    makeWritable(view().size());
    std::memmove(m_text + index, m_text + index + count, static_cast<std::size_t>(length - index - count));
    setLength(static_cast<std::size_t>(length - count));
    return length - count;
}

int CString::Find(char character, int start) const noexcept {
    if (start < 0 || start > GetLength()) return -1;
    return position(view().find(character, static_cast<std::size_t>(start)));
}
int CString::Find(LPCSTR text, int start) const noexcept {
    if (text == nullptr || start < 0 || start > GetLength()) return -1;
    return position(view().find(text, static_cast<std::size_t>(start)));
}
int CString::ReverseFind(char character) const noexcept { return position(view().rfind(character)); }
int CString::FindOneOf(LPCSTR set) const noexcept { return position(view().find_first_of(viewOf(set))); }

CString CString::Tokenize(LPCSTR delimiters, int& start) const {
    if (start < 0) AfxThrowInvalidArgException();
    const std::string_view set = viewOf(delimiters);
    const std::size_t first = view().find_first_not_of(set, static_cast<std::size_t>(start));
    if (first == std::string_view::npos) {
        start = -1;
        return CString();
    }
    const std::size_t end = std::min(view().find_first_of(set, first), view().size());
    start = static_cast<int>(end) + 1;
    return CString(GetString() + first, static_cast<int>(end - first));
}

void CString::Format(LPCSTR format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(LPCSTR format, ...) {
    va_list arguments;
    va_start(arguments, format);
    AppendFormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(LPCSTR format, va_list arguments) { print(format, arguments, false); }
void CString::AppendFormatV(LPCSTR format, va_list arguments) { print(format, arguments, true); }

// Texts that fit in the local buffer, nearly all, are made once; longer ones a second time with the length known. The
// text is made beside this one, which may be among the arguments.
void CString::print(LPCSTR format, va_list arguments, bool behind) {
    if (format == nullptr) AfxThrowInvalidArgException();
    char shortText[256];
    CString longText;
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(shortText, sizeof shortText, format, arguments);
    std::string_view made(shortText, static_cast<std::size_t>(std::max(length, 0)));
    if (made.size() >= sizeof shortText) {
        std::vsnprintf(longText.GetBuffer(length), made.size() + 1, format, again);
        longText.ReleaseBuffer(length);
        made = longText.view();
    }
    va_end(again);
    if (length < 0) AfxThrowInvalidArgException();
    if (behind)
        append(made);
    else
        assign(made);
}

LPSTR CString::GetBuffer(int minimumLength) {
    if (minimumLength < 0) AfxThrowInvalidArgException();
    makeWritable(std::max(static_cast<std::size_t>(minimumLength), view().size()));
    return m_text;
}

LPSTR CString::GetBufferSetLength(int length) {
    GetBuffer(length);
    setLength(static_cast<std::size_t>(length));
    return m_text;
}

void CString::ReleaseBuffer(int newLength) {
    if (m_text == nullptr) return;
    const std::size_t capacity = static_cast<std::size_t>(header(m_text)->capacity);
    if (newLength > header(m_text)->capacity) AfxThrowInvalidArgException();
    m_text[capacity] = '\0';
    setLength(newLength < 0 ? std::strlen(m_text) : static_cast<std::size_t>(newLength));
}

void CString::Preallocate(int length) {
    if (length < 0) AfxThrowInvalidArgException();
    if (length > GetAllocLength()) makeWritable(static_cast<std::size_t>(length));
}

void CString::FreeExtra() {
    if (m_text == nullptr || header(m_text)->references > 1) return;
    const CString exact(GetString(), GetLength());
    if (exact.GetAllocLength() < GetAllocLength()) *this = exact;
}

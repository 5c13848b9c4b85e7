#include "quor/platform/win/FilterBarRecord.h"

#include <algorithm>
#include <cwchar>

namespace quor {

namespace {

constexpr UINT kTypeMask = 0x000F;

std::wstring widened(const char* text) {
    const int length = static_cast<int>(std::strlen(text));
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text, length, wide.data(), length)));
    return wide;
}

std::string narrowed(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    const int size = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

template <class Character>
void copyOut(const std::basic_string<Character>& text, Character* buffer, int size) {
    if (!buffer || size <= 0) return;
    const auto length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::copy_n(text.data(), length, buffer);
    buffer[length] = Character();
}

void writeText(FilterRecord& record, const void* filter, bool wide) {
    const auto* narrowText = static_cast<const HD_TEXTFILTERA*>(filter);
    const auto* wideText = static_cast<const HD_TEXTFILTERW*>(filter);
    const int size = wide ? wideText->cchTextMax : narrowText->cchTextMax;
    if (size > 0) record.longest = std::min(size - 1, FilterRecord::kLongest);
    if (wide)
        record.text = wideText->pszText ? wideText->pszText : L"";
    else
        record.text = narrowText->pszText ? widened(narrowText->pszText) : std::wstring();
    if (record.text.size() > static_cast<std::size_t>(record.longest))
        record.text.resize(static_cast<std::size_t>(record.longest));
}

}  // namespace

bool writeFilter(FilterRecord& record, const HDITEMW& item, bool wide) {
    const UINT type = item.type & kTypeMask;
    if (type != HDFT_ISSTRING && type != HDFT_ISNUMBER) return false;
    record.type = type;
    if ((item.type & HDFT_HASNOVALUE) || !item.pvFilter)
        record.text.clear();
    else if (record.isNumber())
        record.text = std::to_wstring(*static_cast<const int*>(item.pvFilter));
    else
        writeText(record, item.pvFilter, wide);
    return true;
}

bool readFilter(const FilterRecord& record, HDITEMW& item, bool wide) {
    if ((item.type & kTypeMask) != record.type) return false;
    item.type = record.type | (record.text.empty() ? HDFT_HASNOVALUE : 0u);
    if (!item.pvFilter) return true;
    if (record.isNumber()) {
        *static_cast<int*>(item.pvFilter) = static_cast<int>(std::wcstol(record.text.c_str(), nullptr, 10));
    } else if (wide) {
        const auto* filter = static_cast<const HD_TEXTFILTERW*>(item.pvFilter);
        copyOut(record.text, filter->pszText, filter->cchTextMax);
    } else {
        const auto* filter = static_cast<const HD_TEXTFILTERA*>(item.pvFilter);
        copyOut(narrowed(record.text), filter->pszText, filter->cchTextMax);
    }
    return true;
}

}  // namespace quor

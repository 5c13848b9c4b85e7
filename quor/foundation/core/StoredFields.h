// Reading the fields of a stored text, one after the other.
#pragma once

#include "quor/platform/Base.h"

#include <optional>
#include <string_view>

namespace quor::foundation {

// Takes a text apart as strtok does: delimiters in front of a field are skipped, so that there are no empty fields, and
// the one behind it is consumed. Each call may name another delimiter. A NUL ends the text, which is borrowed.
class StoredFields {
public:
    explicit StoredFields(const CString& text) : m_rest(text.GetString()) {}

    // The next field, or nothing at the end of the text.
    std::optional<CString> next(char delimiter = ',') {
        const std::size_t begin = m_rest.find_first_not_of(delimiter);
        if (begin == std::string_view::npos) {
            m_rest = {};
            return std::nullopt;
        }
        const std::size_t end = m_rest.find(delimiter, begin);
        const std::string_view field = m_rest.substr(begin, end == std::string_view::npos ? end : end - begin);
        m_rest = end == std::string_view::npos ? std::string_view() : m_rest.substr(end + 1);
        return CString(field.data(), static_cast<int>(field.size()));
    }

private:
    std::string_view m_rest;
};

}  // namespace quor::foundation

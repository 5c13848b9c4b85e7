#include "quor/bars/core/BrickTexts.h"

#include <algorithm>

namespace quor::bars {

namespace {

constexpr char kFieldDelimiter = '\xA7';
constexpr char kNotStored[] = "Settings not found";

// Takes a text apart; unlike StoredFields, between two delimiters stands an empty field.
class Fields {
public:
    Fields(const CString& text, char delimiter) : m_text(text), m_delimiter(delimiter) {}

    // Nothing once the text has ended.
    std::optional<CString> next() {
        if (m_start < 0) return std::nullopt;
        const int end = m_text.Find(m_delimiter, m_start);
        const CString field = end < 0 ? m_text.Mid(m_start) : m_text.Mid(m_start, end - m_start);
        // A delimiter at the very end is followed by an empty field.
        m_start = end < 0 ? -1 : end + 1;
        return field;
    }
    bool ended() const { return m_start < 0; }

private:
    const CString m_text;
    const char m_delimiter;
    int m_start = 0;
};

std::optional<BrickFont> parseFont(const CString& text) {
    Fields fields(text, ',');
    BrickFont font;
    for (int& number : font.numbers) number = quor::atoi(fields.next().value_or(CString()));
    if (fields.ended()) return std::nullopt;
    font.face = *fields.next();
    return font;
}

}  // namespace

CString recaptioned(CString title, const CString& oldCaption, const CString& newCaption, const CString& separator) {
    if (title.IsEmpty()) return newCaption + separator;
    title.Replace(oldCaption + separator, newCaption + separator);
    return title;
}

CString withoutSeparator(CString title, const CString& separator) {
    title.Replace(separator, "");
    return title;
}

CString formatBrick(const BrickRecord& brick) {
    CString text;
    text.Format("%d%c%d%c", brick.width, kFieldDelimiter, static_cast<std::int32_t>(brick.color), kFieldDelimiter);
    for (const int number : brick.font.numbers) text.AppendFormat("%d,", number);
    return text + brick.font.face;
}

StoredBrick parseBrick(const CString& text) {
    StoredBrick brick;
    if (text.IsEmpty() || text == kNotStored) return brick;
    Fields fields(text, kFieldDelimiter);
    const CString width = *fields.next();
    if (!width.IsEmpty()) brick.width = std::max(quor::atoi(width), 0);
    brick.complete = !fields.ended();
    if (!brick.complete) return brick;
    const CString color = *fields.next();
    if (!color.IsEmpty()) brick.color = static_cast<COLORREF>(quor::atol(color));
    brick.complete = !fields.ended();
    if (!brick.complete) return brick;
    const CString font = *fields.next();
    if (font.IsEmpty()) return brick;
    brick.font = parseFont(font);
    brick.complete = brick.font.has_value();
    return brick;
}

}  // namespace quor::bars

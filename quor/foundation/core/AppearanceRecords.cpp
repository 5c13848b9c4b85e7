// The texts were written and read with printf and scanf, and are on disks: signs, "0x", blanks and too many digits in a
// colour mean what they meant there. They are read by hand, since a C library's long has two widths.
#include "quor/foundation/core/AppearanceRecords.h"

#include "quor/foundation/core/StoredFields.h"

namespace quor::foundation {

namespace {

using Colors = CArray<DWORD, DWORD>;

constexpr DWORD kNoColor = 0xFFFFFFFF;

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// scanf's "%lX" with 32 bits: blanks, a sign, "0x", digits; more than fit become the largest value. False without a
// digit, and `value` stays.
bool readHex(const CString& field, DWORD& value) {
    const char* at = field.GetString();
    while (*at == ' ' || (*at >= '\t' && *at <= '\r')) ++at;
    const bool negative = *at == '-';
    if (*at == '-' || *at == '+') ++at;
    if (at[0] == '0' && (at[1] == 'x' || at[1] == 'X') && hexDigit(at[2]) >= 0) at += 2;
    if (hexDigit(*at) < 0) return false;
    constexpr DWORD kTopDigit = 0xF0000000;
    DWORD read = 0;
    for (; hexDigit(*at) >= 0; ++at) {
        if (read & kTopDigit) {
            value = kNoColor;
            return true;
        }
        read = read << 4 | static_cast<DWORD>(hexDigit(*at));
    }
    value = negative ? 0 - read : read;
    return true;
}

// A keyword's colour; a field that is no number is black.
DWORD colorOf(const CString& field) {
    DWORD color = 0;
    readHex(field, color);
    return color;
}

// Colours and font, with which both records begin.
void readLooks(StoredFields& fields, cCustomizedAppearanceSettings& settings) {
    for (COLORREF* color : {&settings.crBackground, &settings.crText}) {
        DWORD read = 0;
        const auto field = fields.next();
        if (field && readHex(*field, read)) *color = read;
    }
    for (CString* text : {&settings.csFontName, &settings.csFontSize}) {
        if (auto field = fields.next()) *text = *field;
    }
}

template <class Array>
void makeEmpty(Array*& array) {
    if (!array) array = new Array;
    array->RemoveAll();
}

void readColumn(const CString& field, int& column) {
    const CString digits = field.SpanIncluding(" \t\n\v\f\r+-0123456789");
    if (digits.FindOneOf("0123456789") >= 0) column = quor::atoi(field);
}

// Appends "%lX," for entry `index`, or for the last colour that there was.
void appendColor(CString& text, const Colors* colors, INT_PTR index, DWORD& last) {
    if (colors && index < colors->GetCount()) last = colors->GetAt(index);
    text.AppendFormat("%X,", static_cast<unsigned>(last));
}

}  // namespace

void parseAppearanceRecord(const CString& text, cCustomizedAppearanceSettings& settings) {
    StoredFields fields(text);
    readLooks(fields, settings);
    const auto column = fields.next();
    if (!column) return;
    readColumn(*column, settings.iKeywordColumn);
    auto keyword = settings.iKeywordColumn == -1 ? std::nullopt : fields.next();
    if (!keyword) return;
    makeEmpty(settings.pKeywords);
    makeEmpty(settings.pKeywordColors);
    for (; keyword; keyword = fields.next()) {
        const auto color = fields.next();
        if (!color) {
            settings.pKeywords->RemoveAll();
            settings.pKeywordColors->RemoveAll();
            return;
        }
        settings.pKeywords->Add(keyword->MakeUpper());
        settings.pKeywordColors->Add(colorOf(*color));
    }
}

void parseUserAppearanceRecord(const CString& text, cCustomizedAppearanceSettings& settings) {
    StoredFields fields(text);
    readLooks(fields, settings);
    auto keyword = fields.next();
    if (!keyword) return;
    makeEmpty(settings.pUserKeywords);
    makeEmpty(settings.pUserTextColors);
    makeEmpty(settings.pUserBackColors);
    for (; keyword; keyword = fields.next()) {
        const auto textColor = fields.next();
        const auto backColor = fields.next();
        if (!backColor) return;
        settings.pUserKeywords->Add(keyword->MakeUpper());
        settings.pUserTextColors->Add(colorOf(*textColor));
        settings.pUserBackColors->Add(colorOf(*backColor));
    }
}

CString formatLooks(const cCustomizedAppearanceSettings& settings) {
    CString text;
    text.Format("%X,%X,%s,%s", static_cast<unsigned>(settings.crBackground), static_cast<unsigned>(settings.crText),
                settings.csFontName.GetString(), settings.csFontSize.GetString());
    return text;
}

CString formatAppearanceRecord(const cCustomizedAppearanceSettings& settings) {
    CString text = formatLooks(settings);
    if (settings.iKeywordColumn < 0 || !settings.bKeywordsEnabled) return text;
    text.AppendFormat(",%d,", settings.iKeywordColumn);
    DWORD color = kNoColor;
    for (INT_PTR i = 0; settings.pKeywords && i < settings.pKeywords->GetCount(); ++i) {
        text.AppendFormat("%s,", settings.pKeywords->GetAt(i).GetString());
        appendColor(text, settings.pKeywordColors, i, color);
    }
    return text;
}

CString formatUserAppearanceRecord(const cCustomizedAppearanceSettings& settings) {
    CString text = formatLooks(settings);
    if (!settings.pUserKeywords || settings.pUserKeywords->GetCount() == 0) return text;
    text += ',';
    DWORD textColor = kNoColor, backColor = kNoColor;
    for (INT_PTR i = 0; i < settings.pUserKeywords->GetCount(); ++i) {
        text.AppendFormat("%s,", settings.pUserKeywords->GetAt(i).GetString());
        appendColor(text, settings.pUserTextColors, i, textColor);
        appendColor(text, settings.pUserBackColors, i, backColor);
    }
    return text;
}

}  // namespace quor::foundation

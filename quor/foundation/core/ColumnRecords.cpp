// Copies never free what they replace: hosts assign records while others still use the same arrays. A leak that an
// owner can prevent is borne; memory that is freed under a list is not.
#include "quor/foundation/core/ColumnRecords.h"

namespace {

constexpr int kUserColumnWidth = 80;

// A fresh copy of a source's array in place of the target's pointer, which is let go unfreed: others may share it.
template <class Array>
void replaceByCopy(Array*& target, const Array* source) {
    if (!source) return;
    Array* copy = new Array;
    for (INT_PTR i = 0; i < source->GetCount(); ++i) copy->Add(source->GetAt(i));
    target = copy;
}

template <class Array>
void freeArray(Array*& array) {
    delete array;
    array = nullptr;
}

}  // namespace

void setColumnName(sQuorColInfo& column, const char* name) {
    int length = 0;
    for (; length < kColumnNameSize - 1 && name[length] != '\0'; ++length) column.szColumnName[length] = name[length];
    column.szColumnName[length] = '\0';
}

sQuorColInfo makeUserColumn(const char* name, const char* expression, const char* toolTip) {
    sQuorColInfo column;
    setColumnName(column, name);
    column.iFormat = kFormatRight;
    column.iDataType = kTypeDecimal;
    column.iWidth = kUserColumnWidth;
    column.csExpression = expression;
    column.csToolTip = toolTip;
    return column;
}

cCustomizedAppearanceSettings& cCustomizedAppearanceSettings::operator=(const cCustomizedAppearanceSettings& source) {
    if (this == &source) return *this;
    crBackground = source.crBackground;
    crText = source.crText;
    replaceByCopy(pKeywordColors, source.pKeywordColors);
    replaceByCopy(pKeywords, source.pKeywords);
    replaceByCopy(pUserTextColors, source.pUserTextColors);
    replaceByCopy(pUserBackColors, source.pUserBackColors);
    replaceByCopy(pUserKeywords, source.pUserKeywords);
    iKeywordColumn = source.iKeywordColumn;
    bKeywordsEnabled = source.bKeywordsEnabled;
    csFontName = source.csFontName;
    csFontSize = source.csFontSize;
    return *this;
}

void cCustomizedAppearanceSettings::freeKeywordArrays() {
    freeArray(pKeywordColors);
    freeArray(pKeywords);
    freeArray(pUserTextColors);
    freeArray(pUserBackColors);
    freeArray(pUserKeywords);
}

// Keyword colours: of a whole row by the text of one of its cells, and of a text that the host asks about.
#include "quor/grid/FilterListCtrlInternal.h"

using namespace quor::grid;

namespace {

// A host may have seeded fewer colours than keywords; a keyword without one leaves the colour.
void takeColor(const CArray<DWORD, DWORD>* colors, int index, COLORREF& color) {
    if (colors && index >= 0 && index < colors->GetSize()) color = colors->GetAt(index);
}

}  // namespace

int CFilterListCtrl::GetTextColorForItem(DWORD_PTR data, COLORREF& color, int, int) {
    const int column = m_Appearance.iKeywordColumn;
    if (column < 0 || column >= m_arrColumns.GetSize() || !m_Appearance.pKeywords || m_Appearance.pKeywords->IsEmpty())
        return 1;
    const Presence presence(*this);
    CellAnswer cell;
    CallBackForText(data, column, cell.text, cell.colors.text, cell.colors.background, cell.icon, false);
    if (presence.objectWent()) return 1;
    m_parts->keywords.follow(m_Appearance.pKeywords);
    takeColor(m_Appearance.pKeywordColors, m_parts->keywords.firstIn(cell.text), color);
    return 1;
}

int CFilterListCtrl::GetProperty(COLORREF& textColor, COLORREF& backColor, CString& key) {
    m_parts->userKeywords.follow(m_Appearance.pUserKeywords);
    const int index = m_parts->userKeywords.indexOf(key);
    takeColor(m_Appearance.pUserTextColors, index, textColor);
    takeColor(m_Appearance.pUserBackColors, index, backColor);
    return 1;
}

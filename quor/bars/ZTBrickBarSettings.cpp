// What a brick bar keeps in the host's settings, a text a cell.
#include "quor/bars/ZTBrickBar.h"
#include "quor/bars/core/BrickTexts.h"
#include "quor/foundation/ControlBlock.h"
#include "quor/platform/tools/QuorTools.h"

using namespace quor::bars;

namespace {

constexpr char kSectionPrefix[] = "BRICK_BAR_";
constexpr char kWriteFailed[] = "Error while saving brick bar information";

enum Operation { kRead = 0, kWrite = 1 };

CString keyOf(int number) {
    CString key;
    key.Format("PANE_%d", number);
    return key;
}

BrickFont brickFont(const LOGFONT& font) {
    BrickFont brick;
    brick.numbers = {static_cast<int>(font.lfHeight),
                     static_cast<int>(font.lfWidth),
                     static_cast<int>(font.lfEscapement),
                     static_cast<int>(font.lfOrientation),
                     static_cast<int>(font.lfWeight),
                     font.lfItalic,
                     font.lfUnderline,
                     font.lfStrikeOut,
                     font.lfCharSet,
                     font.lfOutPrecision,
                     font.lfClipPrecision,
                     font.lfQuality,
                     font.lfPitchAndFamily};
    brick.face = font.lfFaceName;
    return brick;
}

LOGFONT logFont(const BrickFont& brick) {
    LOGFONT font{};
    const auto& numbers = brick.numbers;
    std::size_t next = 0;
    for (LONG* field : {&font.lfHeight, &font.lfWidth, &font.lfEscapement, &font.lfOrientation, &font.lfWeight})
        *field = numbers[next++];
    for (BYTE* field : {&font.lfItalic, &font.lfUnderline, &font.lfStrikeOut, &font.lfCharSet, &font.lfOutPrecision,
                        &font.lfClipPrecision, &font.lfQuality, &font.lfPitchAndFamily})
        *field = static_cast<BYTE>(numbers[next++]);
    strlcpy(font.lfFaceName, brick.face, LF_FACESIZE);
    return font;
}

}  // namespace

CString CZTBrickBar::section() const { return kSectionPrefix + m_strBarName; }

int CZTBrickBar::WriteToINI() {
    if (m_strBarName.IsEmpty() || !m_hWnd) return 0;
    const HWND self = m_hWnd;
    for (int number = 0; number < m_nPaneCount; ++number) {
        const sPaneInfo* info = pane(number);
        if (!info || !info->pView) continue;
        const bool written = writePane(number, *info);
        if (!written) AfxMessageBox(kWriteFailed);
        if (FromHandlePermanent(self) != this) return 0;  // the store runs anything, and the box pumps messages
    }
    return 1;
}

// True also where there is nothing to write: the cell's font cannot be read.
bool CZTBrickBar::writePane(int number, const sPaneInfo& info) {
    LOGFONT font{};
    const CFont* const shown = info.pView->GetTitleFont();
    if (!shown || !shown->GetLogFont(&font)) return true;
    BrickRecord brick;
    int least = 0;
    m_wndSplitter.GetColumnInfo(number, brick.width, least);
    brick.color = info.pView->GetTitleColor();
    brick.font = brickFont(font);
    CString text = formatBrick(brick);
    return g_pControlBlock->UserSetting(kWrite, section(), text, keyOf(number)) != 0;
}

int CZTBrickBar::ReadFromINI() {
    if (m_strBarName.IsEmpty() || !m_hWnd) return 0;
    for (int number = 0; number < m_nPaneCount; ++number) {
        const sPaneInfo* info = pane(number);
        if (info && info->pView && !readPane(number)) return 0;
    }
    m_wndSplitter.RecalcLayout();
    return 1;
}

// False: the stored text ends too early, or the store has ended the bar.
bool CZTBrickBar::readPane(int number) {
    CString text;
    const HWND self = m_hWnd;
    const bool read = g_pControlBlock->UserSetting(kRead, section(), text, keyOf(number)) != 0;
    if (FromHandlePermanent(self) != this) return false;
    if (!read) return true;
    const StoredBrick brick = parseBrick(text);
    if (brick.width) m_wndSplitter.SetColumnInfo(number, *brick.width, 0);
    if (brick.color) SetTextColor(number, *brick.color);
    if (brick.font) {
        auto* font = new CFont;
        const LOGFONT described = logFont(*brick.font);
        font->CreateFontIndirect(&described);
        SetFont(number, font);
    }
    return brick.complete;
}

// The menu of a brick and its commands, the close box, and what a holder forwards.
//
// A dialog that a command opens, and the notify window too, may end this view: what follows looks first whether it is
// still there.
#include "quor/bars/HolderView.h"
#include "quor/edits/ZTFontDlg.h"

namespace {

constexpr struct {
    UINT id;  // 0: a separator
    const char* text;
} kBrickMenu[] = {
    {kCommandBrickColor, "Set Color"},
    {kCommandBrickFont, "Set Font"},
    {0, nullptr},
    {kCommandAllBrickColors, "Set Color to All Bricks"},
    {kCommandAllBrickFonts, "Set Font to All Bricks"},
    {0, nullptr},
    {kCommandFitBricks, "Fit To Window"},
    {kCommandDefaultBricks, "Set Default Values"},
};

// Not those that a brick bar starts with.
constexpr int kDefaultHeight = 13, kDefaultWeight = 600;
constexpr BYTE kDefaultFamily = FF_SWISS;
constexpr char kDefaultFace[] = "Trebuchet MS";
constexpr DWORD kFontDialogFlags = CF_EFFECTS | CF_SCREENFONTS;

}  // namespace

// ---- The menu

void CHolderView::OnContextMenu(CWnd* window, CPoint point) {
    if (!(m_dwStyleZT & HV_BRICK)) return CView::OnContextMenu(window, point);
    if (point.x == -1 && point.y == -1) {  // by a key
        CRect place;
        GetWindowRect(&place);
        point = CPoint(place.left, place.bottom);
    }
    CMenu menu;
    menu.CreatePopupMenu();
    for (const auto& item : kBrickMenu) menu.AppendMenu(item.id ? MF_STRING : MF_SEPARATOR, item.id, item.text);
    menu.TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, point.x, point.y, this);
}

void CHolderView::OnSetFocus(CWnd* former) {
    CView::OnSetFocus(former);
    if (m_dwStyleZT & HV_BRICK)
        Invalidate();
    else if (CWnd* child = GetCtrlWnd())
        child->SetFocus();
}

void CHolderView::OnKillFocus(CWnd* next) {
    CView::OnKillFocus(next);
    if (m_dwStyleZT & HV_BRICK) Invalidate();
}

void CHolderView::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    CFlatSplitterWnd* around = m_dwStyleZT & HV_BRICK ? splitter() : nullptr;
    if (around && (key == VK_LEFT || key == VK_RIGHT))
        around->ActivateNext(key == VK_LEFT);
    else
        CView::OnKeyDown(key, repeat, flags);
}

// ---- Commands

BOOL CHolderView::OnCommand(WPARAM wParam, LPARAM lParam) {
    const HWND self = m_hWnd;
    const Other notify = m_pNotifyWnd;
    const bool isCommand = HIWORD(wParam) <= 1;  // of a menu, an accelerator, or a click on the close box
    if (isCommand) act(LOWORD(wParam));
    if (CWnd* window = notify.get()) {
        window->SendMessage(WM_COMMAND, wParam, lParam);
        return TRUE;
    }
    return FromHandlePermanent(self) != this || CView::OnCommand(wParam, lParam);
}

void CHolderView::act(UINT command) {
    switch (command) {
        case kCommandBrickColor:
            return chooseColor(Bricks::one);
        case kCommandAllBrickColors:
            return chooseColor(Bricks::all);
        case kCommandBrickFont:
            return chooseFont(Bricks::one);
        case kCommandAllBrickFonts:
            return chooseFont(Bricks::all);
        case kCommandFitBricks:
            return FitToWindow();
        case kCommandDefaultBricks:
            return takeDefaults();
        case kCommandCloseHolder:
            return closeThis();
    }
}

template <class Do>
void CHolderView::forBricks(Bricks which, Do change) {
    if (which == Bricks::one) return change(*this);
    CFlatSplitterWnd* around = splitter();
    for (int col = 0; around && col < around->GetColumnCount(); ++col)
        if (auto* view = dynamic_cast<CHolderView*>(around->GetPane(0, col))) change(*view);
}

void CHolderView::chooseColor(Bricks which) {
    if (which == Bricks::all && !splitter()) return;
    const HWND self = m_hWnd;
    CColorDialog dialog(m_clrTitle, 0, this);
    if (dialog.DoModal() != IDOK || FromHandlePermanent(self) != this) return;
    forBricks(which, [&](CHolderView& view) { view.SetTitleColor(dialog.GetColor()); });
}

void CHolderView::chooseFont(Bricks which) {
    if (which == Bricks::all && !splitter()) return;
    const HWND self = m_hWnd;
    LOGFONT font{};
    if (!m_pTitleFont || !m_pTitleFont->GetLogFont(&font))
        ::GetObjectA(::GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
    CZTFontDlg dialog(&font, kFontDialogFlags, nullptr, this);
    if (dialog.DoModal() != IDOK || FromHandlePermanent(self) != this) return;
    forBricks(which, [chosen = dialog.GetLogFont()](CHolderView& view) { view.makeFont(chosen); });
}

// The font object stays: its owner goes on owning it. A font that the system refuses changes nothing.
void CHolderView::makeFont(const LOGFONT& font) {
    CFont made;
    if (!made.CreateFontIndirect(&font)) return;
    if (!m_pTitleFont) {
        m_ownFont = std::make_unique<CFont>();
        m_pTitleFont = m_ownFont.get();
    }
    m_pTitleFont->DeleteObject();
    m_pTitleFont->Attach(made.Detach());
    Invalidate();
}

void CHolderView::takeDefaults() {
    LOGFONT font{};
    font.lfHeight = quor::platform::scaled(m_hWnd, kDefaultHeight);
    font.lfWeight = kDefaultWeight;
    font.lfPitchAndFamily = kDefaultFamily;
    ::lstrcpynA(font.lfFaceName, kDefaultFace, LF_FACESIZE);
    forBricks(Bricks::all, [&](CHolderView& view) { view.makeFont(font); });
}

void CHolderView::FitToWindow() {
    CFlatSplitterWnd* around = splitter();
    if (!around) return;
    const HWND self = m_hWnd;
    CRect room;
    around->GetParent()->GetClientRect(&room);
    const int width = room.Width() / around->GetColumnCount();
    for (int col = 0; FromHandlePermanent(self) == this && col < around->GetColumnCount(); ++col) {
        int current = 0, least = 0;
        around->GetColumnInfo(col, current, least);
        around->SetColumnInfo(col, width, least);
        around->RecalcLayout();
    }
}

// A last one hands over to the one before it, which asks for more than there is, as it does itself.
void CHolderView::closeThis() {
    CFlatSplitterWnd* around = splitter();
    int row = 0, col = 0, current = 0, least = 0;
    if (around && around->IsChildPane(this, &row, &col)) {
        const HWND self = m_hWnd;
        const bool hadFocus = ::GetFocus() == self || ::IsChild(self, ::GetFocus());
        CRect room;
        around->GetClientRect(&room);
        const int columns = around->GetColumnCount(), rows = around->GetRowCount();
        const auto askColumn = [&](int number, int width) {
            around->GetColumnInfo(number, current, least);
            around->SetColumnInfo(number, width, least);
        };
        const auto askRow = [&](int number, int height) {
            around->GetRowInfo(number, current, least);
            around->SetRowInfo(number, height, least);
        };
        if (columns > 1) {
            askColumn(col, col == columns - 1 ? room.Width() : 0);
            if (col == columns - 1) askColumn(col - 1, room.Width());
        }
        if (rows > 1) {
            askRow(row, row == rows - 1 ? room.Height() : 0);
            if (row == rows - 1) askRow(row - 1, room.Height());
        }
        around->RecalcLayout();
        if (FromHandlePermanent(self) != this) return;
        if (hadFocus) around->ActivateNext();
    }
    if (!m_pCloseButton || !m_pCloseButton->m_hWnd) return;
    m_pCloseButton->ModifyStyle(WS_BORDER, 0);
    m_pCloseButton->SendMessage(WM_KILLFOCUS);
}

// ---- Forwarding

BOOL CHolderView::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (asksForTipText(*header)) return giveTipText(lParam);
    const Other notify = m_pNotifyWnd;
    if (!notify.get()) return CView::OnNotify(wParam, lParam, result);
    // The control itself is asked first, as everywhere.
    if (ReflectLastMsg(header->hwndFrom, result)) return TRUE;
    if (CWnd* window = notify.get()) *result = window->SendMessage(WM_NOTIFY, wParam, lParam);
    return TRUE;
}

// A child's tips ask here too.
bool CHolderView::asksForTipText(const NMHDR& asked) const {
    const bool asks = asked.code == TTN_NEEDTEXTA || asked.code == TTN_NEEDTEXTW;
    return asks && (m_dwStyleZT & HV_BRICK) && asked.idFrom == kBrickTool;
}

// The system's tips ask in the form of the window that they were made for, whatever ours is.
BOOL CHolderView::giveTipText(LPARAM notification) {
    m_tipText = GetTitle().GetString();
    if (reinterpret_cast<const NMHDR*>(notification)->code == TTN_NEEDTEXTA) {
        reinterpret_cast<NMTTDISPINFOA*>(notification)->lpszText = m_tipText.data();
        return TRUE;
    }
    const int length = ::MultiByteToWideChar(CP_ACP, 0, m_tipText.c_str(), -1, nullptr, 0);
    m_wideTipText.resize(static_cast<std::size_t>(length));
    ::MultiByteToWideChar(CP_ACP, 0, m_tipText.c_str(), -1, m_wideTipText.data(), length);
    reinterpret_cast<NMTTDISPINFOW*>(notification)->lpszText = m_wideTipText.data();
    return TRUE;
}

LRESULT CHolderView::OnCheckClick(WPARAM wParam, LPARAM lParam) {
    if (CWnd* notify = GetNotifyWindow()) notify->SendMessage(WM_HOLDER_CHECK_CLICKED, wParam, lParam);
    return 1;
}

LRESULT CHolderView::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND self = m_hWnd;
    if (message == WM_HOLDER_FIRST || message == WM_HOLDER_SECOND) {
        if (CWnd* notify = GetNotifyWindow()) notify->SendMessage(message, wParam, lParam);
        if (FromHandlePermanent(self) != this) return 0;
    } else if (message == WM_HOLDER_TITLE_COLOR) {
        SetTitleColor(static_cast<DWORD>(wParam));
    }
    return CView::DefWindowProc(message, wParam, lParam);
}

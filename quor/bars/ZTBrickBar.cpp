// The bar's windows and texts; what it keeps is in ZTBrickBarSettings.cpp.
#include "quor/bars/ZTBrickBar.h"

#include "quor/bars/core/BrickTexts.h"
#include "quor/edits/core/DigitGroups.h"

using namespace quor::bars;
using quor::platform::scaled;

IMPLEMENT_DYNAMIC(CZTBrickBar, CFlatFrameWnd)

BEGIN_MESSAGE_MAP(CZTBrickBar, CFlatFrameWnd)
    ON_WM_DESTROY()
    ON_WM_ENDSESSION()
    ON_WM_SETFOCUS()
END_MESSAGE_MAP()

namespace {

constexpr UINT kPaneBuckets = 17;
constexpr int kFirstPaneSize = 100;
constexpr int kFontHeight = 18, kFontWeight = 400;
constexpr BYTE kFontFamily = FF_SWISS;
constexpr char kFontFace[] = "Trebuchet MS";
constexpr DWORD kSplitterEdges = WS_EX_DLGMODALFRAME | WS_EX_CLIENTEDGE;

}  // namespace

CZTBrickBar::CZTBrickBar() : m_mapPanes(kPaneBuckets) {}

CZTBrickBar::~CZTBrickBar() {
    try {
        if (m_hWnd) CFlatFrameWnd::DestroyWindow();  // OnDestroy writes
    } catch (...) {
        // The host's store refused to be written to; there is nobody left to tell.
    }
    FreeMap();
}

// ---- Windows

int CZTBrickBar::CreateBrickBars(CWnd* pParent, int nPanes, CArray<CString>& captions, RECT* pRect, int bResizable) {
    if (!pParent || !pRect || m_hWnd || nPanes <= 0 || captions.IsEmpty() || nPanes < captions.GetSize()) return 0;
    FreeMap();
    const CRect place(*pRect);
    bool made = createWindows(*pParent, nPanes, place);
    for (int i = 0; made && i < nPanes; ++i) made = makePane(i, i < captions.GetSize() ? captions[i] : CString());
    if (!made) {
        if (m_hWnd) CFlatFrameWnd::DestroyWindow();
        FreeMap();
        return 0;
    }
    m_hBrickWnd = m_hWnd;
    m_wndSplitter.MoveWindow(CRect(CPoint(), place.Size()));
    makeFonts(std::max(place.Width() / nPanes, 0));
    const HWND self = m_hWnd;
    ReadFromINI();
    if (FromHandlePermanent(self) != this) return 0;
    m_wndSplitter.SetResizable(bResizable);
    m_wndSplitter.RecalcLayout();
    m_wndSplitter.ShowWindow(SW_SHOW);
    return 1;
}

bool CZTBrickBar::createWindows(CWnd& parent, int panes, const CRect& place) {
    const LPCSTR windowClass =
        AfxRegisterWndClass(CS_VREDRAW | CS_HREDRAW, ::LoadCursorA(nullptr, IDC_ARROW),
                            static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)), ::LoadIconA(nullptr, IDI_APPLICATION));
    m_saved = true;  // a window that was not completed has nothing to keep
    if (!Create(windowClass, nullptr, WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place, &parent)) return false;
    ModifyStyleEx(0, WS_EX_DLGMODALFRAME);
    ShowWindow(SW_SHOW);
    m_nPaneCount = panes;
    if (!m_wndSplitter.CreateStatic(this, 1, panes, WS_CHILD | WS_VISIBLE, AFX_IDW_PANE_FIRST)) return false;
    m_wndSplitter.ModifyStyleEx(kSplitterEdges, 0);
    return true;
}

bool CZTBrickBar::makePane(int number, const CString& caption) {
    const CSize size(kFirstPaneSize, kFirstPaneSize);
    if (!m_wndSplitter.CreateView(0, number, RUNTIME_CLASS(CHolderView), size, nullptr)) return false;
    auto* info = new sPaneInfo;
    info->pView = static_cast<CHolderView*>(m_wndSplitter.GetPane(0, number));
    info->window = info->pView->m_hWnd;
    m_mapPanes.SetAt(number, info);
    info->pView->setNotifyWindow(this);
    info->pView->SetStyleZT(HV_BRICK);
    info->strCaption = caption;
    SetCaption(number, caption, 0);
    return true;
}

void CZTBrickBar::makeFonts(int width) {
    for (int number = 0; number < m_nPaneCount; ++number) {
        auto* font = new CFont;
        font->CreateFont(scaled(m_hWnd, kFontHeight), 0, 0, 0, kFontWeight, 0, 0, 0, 0, 0, 0, 0, kFontFamily,
                         kFontFace);
        m_wndSplitter.SetColumnInfo(number, width, 0);
        m_wndSplitter.RecalcLayout();
        SetFont(number, font);
    }
    m_saved = false;
}

BOOL CZTBrickBar::DestroyWindow() {
    const HWND self = m_hWnd;
    if (self && m_bSaveOnDestroy && !std::exchange(m_saved, true)) WriteToINI();
    const bool ended = self && FromHandlePermanent(self) != this;  // by the store
    return ended || CFlatFrameWnd::DestroyWindow();
}

// A bar that goes with its parent: its views are still there. The records stay, without views.
void CZTBrickBar::OnDestroy() {
    struct ViewsGo {
        CZTBrickBar& bar;
        ~ViewsGo() {
            for (int number = 0; number < bar.m_nPaneCount; ++number)
                if (sPaneInfo* info = bar.pane(number)) info->pView = nullptr;
        }
    };
    const ViewsGo afterwards{*this};
    if (m_bSaveOnDestroy && !std::exchange(m_saved, true)) WriteToINI();
    CFlatFrameWnd::OnDestroy();
}

void CZTBrickBar::OnEndSession(BOOL ending) {
    CFlatFrameWnd::OnEndSession(ending);
    if (ending && m_bSaveOnDestroy) WriteToINI();
}

void CZTBrickBar::OnSetFocus(CWnd* former) {
    if (GetActiveView())
        CFlatFrameWnd::OnSetFocus(former);
    else
        m_wndSplitter.ActivateNext();
}

void CZTBrickBar::FreeMap() {
    for (int number = 0; number < m_nPaneCount; ++number) {
        sPaneInfo* info = nullptr;
        if (!m_mapPanes.Lookup(number, info)) continue;
        takeFont(*info, nullptr);
        m_mapPanes.RemoveKey(number);
        delete info;
    }
    m_nPaneCount = 0;
}

// ---- Cells

// A view may go before the bar does.
CZTBrickBar::sPaneInfo* CZTBrickBar::pane(int number) const {
    sPaneInfo* info = nullptr;
    if (!m_mapPanes.Lookup(number, info)) return nullptr;
    if (info->pView && FromHandlePermanent(info->window) != info->pView) info->pView = nullptr;
    return info;
}

int CZTBrickBar::SetCaption(int nPane, CString caption, DWORD) {
    sPaneInfo* info = pane(nPane);
    if (!info) return 0;
    const CString former = std::exchange(info->strCaption, caption);
    if (!info->pView) return 1;
    const CString title = recaptioned(info->pView->GetTitle(), former, caption, m_strSeparator);
    info->pView->SetTitle(title, info->clrText);
    // A title with another separator has kept its caption, too.
    const CString front = caption + m_strSeparator;
    if (m_bRightAlignValues && title.Find(front) == 0) info->pView->SetTitleSplit(front.GetLength());
    return 1;
}

int CZTBrickBar::SetCaptionSeperator(CString separator) {
    m_strSeparator = separator;
    return 1;
}

int CZTBrickBar::SetText(int nPane, CString text, ...) {
    const sPaneInfo* info = pane(nPane);
    if (!info || !info->pView) return 0;
    m_title = info->strCaption;
    m_title += m_strSeparator;
    if (m_bRightAlignValues) info->pView->SetTitleSplit(m_title.GetLength());
    m_title += m_bGroupDigits ? GetCommaData(text) : text;
    info->pView->SetTitle(m_title, info->clrText);
    return 1;
}

int CZTBrickBar::SetTextColor(int nPane, DWORD color) {
    sPaneInfo* info = pane(nPane);
    if (!info) return 0;
    info->clrText = color;
    if (info->pView) info->pView->SendMessage(WM_HOLDER_TITLE_COLOR, color);
    return 1;
}

// A font that two cells were given ends with the last of them.
void CZTBrickBar::takeFont(sPaneInfo& info, CFont* font) {
    CFont* const former = std::exchange(info.pFont, font);
    bool used = former == font;
    for (int number = 0; number < m_nPaneCount; ++number)
        if (const sPaneInfo* other = pane(number)) used = used || other->pFont == former;
    if (!used) delete former;
}

int CZTBrickBar::SetFont(int nPane, CFont* font) {
    sPaneInfo* info = pane(nPane);
    if (!info || !font) return 0;
    if (info->pView) info->pView->SetTitleFont(font);
    takeFont(*info, font);
    return 1;
}

int CZTBrickBar::GetTextWithCaption(int nPane, CString& text) {
    const sPaneInfo* info = pane(nPane);
    const bool known = info && info->pView;
    text = known ? info->pView->GetTitle() : CString();
    return known;
}

int CZTBrickBar::GetText(int nPane, CString& text) {
    const int known = GetTextWithCaption(nPane, text);
    text = withoutSeparator(text, m_strSeparator);
    return known;
}

int CZTBrickBar::GetCaption(int nPane, CString& caption) {
    const sPaneInfo* info = pane(nPane);
    caption = info ? info->strCaption : CString();
    return info != nullptr;
}

CString CZTBrickBar::GetCommaData(CString& text) { return quor::edits::groupedNumber(text); }

// ---- Looks

void CZTBrickBar::UpdateUIData() {
    for (int number = 0; number < m_nPaneCount; ++number) {
        sPaneInfo* info = pane(number);
        if (!info || !info->pView) continue;
        info->clrText = info->pView->GetTitleColor();
        CFont* const font = info->pView->GetTitleFont();
        if (font && !info->pView->OwnsTitleFont()) takeFont(*info, font);
    }
}

void CZTBrickBar::FitToWindow() {
    const sPaneInfo* first = pane(0);
    if (first && first->pView) first->pView->FitToWindow();
}

BOOL CZTBrickBar::OnCommand(WPARAM wParam, LPARAM lParam) {
    switch (LOWORD(wParam)) {
        case kCommandDefaultBricks:
            for (int number = 0; number < m_nPaneCount; ++number) SetTextColor(number, 0);
            UpdateUIData();
            break;
        case kCommandBrickColor:
        case kCommandBrickFont:
        case kCommandAllBrickColors:
        case kCommandAllBrickFonts:
            UpdateUIData();
            break;
    }
    return CFlatFrameWnd::OnCommand(wParam, lParam);
}

BOOL CZTBrickBar::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return CFlatFrameWnd::OnNotify(wParam, lParam, result);
}

BOOL CZTBrickBar::PreTranslateMessage(MSG* message) { return CFlatFrameWnd::PreTranslateMessage(message); }

LRESULT CZTBrickBar::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return CFlatFrameWnd::DefWindowProc(message, wParam, lParam);
}

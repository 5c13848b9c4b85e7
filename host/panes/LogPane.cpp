#include "host/panes/LogPane.h"

#include "host/core/Utf8.h"
#include "host/panes/DarkMenus.h"
#include "host/panes/DarkScrollBars.h"
#include "host/panes/Theme.h"

#include <algorithm>

namespace terminal {

namespace {
constexpr UINT kEditId = 1;
constexpr int kTopPadding = 2;
constexpr int kMostCharacters = 200'000;  // beyond it the older half leaves the window; the file keeps everything

std::string stamped(const char* text) {
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    char stamp[24];
    std::snprintf(stamp, sizeof stamp, "%02d:%02d:%02d.%03d  ", now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    std::string line(stamp);
    for (const char* p = text; *p; ++p) line.push_back(*p == '\r' || *p == '\n' ? ' ' : *p);
    return line;
}
}  // namespace

Log& Log::instance() {
    static Log log;
    return log;
}

void Log::openFile(const std::string& path) {
    m_file.reset(terminal::openFile(path, "wb"));
    if (!m_file) return;
    for (const std::string& line : m_early) std::fprintf(m_file.get(), "%s\n", line.c_str());
    std::fflush(m_file.get());
}

void Log::add(const char* text) {
    if (!text) return;
    const std::string line = stamped(text);
    if (m_file) {
        std::fprintf(m_file.get(), "%s\n", line.c_str());
        std::fflush(m_file.get());
    }
    if (m_pane)
        m_pane->appendLine(line);
    else
        m_early.push_back(line);
}

void Log::attach(CLogPane* pane) {
    m_pane = pane;
    if (!pane) return;
    for (const std::string& line : m_early) pane->appendLine(line);
    m_early.clear();
}

BEGIN_MESSAGE_MAP(CLogPane, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_ERASEBKGND()
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

BOOL CLogPane::CreatePane(CWnd* parent, UINT id) {
    const CRect none(0, 0, 0, 0);
    return Create(AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), "",
                  WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, none, parent, id);
}

int CLogPane::OnCreate(CREATESTRUCT* create) {
    if (CWnd::OnCreate(create) == -1) return -1;
    m_brush.CreateSolidBrush(palette::kBackground);
    m_font.CreatePointFont(80, "Tahoma");
    // Not one of the framework's: a line may name a file that the code page has no name for.
    m_edit = ::CreateWindowExW(0, L"EDIT", L"",
                               WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 0, 0,
                               0, 0, m_hWnd, reinterpret_cast<HMENU>(kEditId), nullptr, nullptr);
    if (!m_edit) return -1;
    ::SendMessageW(m_edit, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.GetSafeHandle()), FALSE);
    ::SendMessageW(m_edit, EM_SETLIMITTEXT, 0, 0);
    darkenMenus(m_edit);
    darkenScrollBars(m_edit, [edit = m_edit](int bar, int positions) {
        if (bar == SB_VERT) ::SendMessageW(edit, EM_LINESCROLL, 0, positions);
    });
    Log::instance().attach(this);
    return 0;
}

void CLogPane::OnDestroy() {
    Log::instance().attach(nullptr);
    m_edit = nullptr;  // it goes with its parent
    CWnd::OnDestroy();
}

void CLogPane::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    const int left = quor::platform::scaled(m_hWnd, kCellPadding), top = quor::platform::scaled(m_hWnd, kTopPadding);
    if (!m_edit) return;
    const View before = view();  // the lines are broken anew
    ::MoveWindow(m_edit, left, top, (std::max)(0, width - left), (std::max)(0, height - top), TRUE);
    show(before);
}

void CLogPane::OnSetFocus(CWnd*) { ::SetFocus(m_edit); }

BOOL CLogPane::OnEraseBkgnd(CDC* dc) {
    CRect area;
    GetClientRect(&area);
    dc->FillSolidRect(&area, palette::kBackground);
    return TRUE;
}

HBRUSH CLogPane::OnCtlColor(CDC* dc, CWnd*, UINT) {
    dc->SetTextColor(palette::kDim);
    dc->SetBkColor(palette::kBackground);
    return m_brush;
}

CLogPane::View CLogPane::view() const {
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    const bool scrolls = ::GetScrollInfo(m_edit, SB_VERT, &bar) && bar.nMax > 0 && bar.nPage > 0;
    View now{!scrolls || bar.nPos + static_cast<int>(bar.nPage) > bar.nMax, 0, 0, 0};
    const LRESULT line = ::SendMessageW(m_edit, EM_GETFIRSTVISIBLELINE, 0, 0);
    now.top = static_cast<DWORD>(::SendMessageW(m_edit, EM_LINEINDEX, static_cast<WPARAM>(line), 0));
    ::SendMessageW(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&now.from), reinterpret_cast<LPARAM>(&now.to));
    return now;
}

void CLogPane::show(const View& view) {
    ::SendMessageW(m_edit, EM_SETSEL, view.from, view.to);
    const LRESULT top = ::SendMessageW(m_edit, EM_GETFIRSTVISIBLELINE, 0, 0);
    const LRESULT wanted = view.atEnd ? ::SendMessageW(m_edit, EM_GETLINECOUNT, 0, 0)
                                      : ::SendMessageW(m_edit, EM_LINEFROMCHAR, view.top, 0);
    ::SendMessageW(m_edit, EM_LINESCROLL, 0, wanted - top);
}

void CLogPane::appendLine(const std::string& line) {
    if (!m_edit) return;
    const auto replace = [this](int from, int to, LPCWSTR by) {
        ::SendMessageW(m_edit, EM_SETSEL, static_cast<WPARAM>(from), to);
        ::SendMessageW(m_edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(by));
    };
    View before = view();
    ::SendMessageW(m_edit, WM_SETREDRAW, FALSE, 0);
    if (const int length = ::GetWindowTextLengthW(m_edit); length > kMostCharacters) {
        const int gone = length / 2;
        replace(0, gone, L"");
        for (DWORD* const at : {&before.top, &before.from, &before.to})
            *at -= (std::min)(*at, static_cast<DWORD>(gone));
    }
    const int end = ::GetWindowTextLengthW(m_edit);
    replace(end, end, wideText(end ? "\r\n" + line : line).c_str());
    show(before);
    ::SendMessageW(m_edit, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(m_edit, nullptr, TRUE);
}

}  // namespace terminal

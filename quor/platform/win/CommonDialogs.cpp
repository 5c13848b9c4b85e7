#include "quor/platform/win/ControlsInternal.h"
#include "quor/platform/win/WndInternal.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)
IMPLEMENT_DYNAMIC(CFileDialog, CCommonDialog)
IMPLEMENT_DYNAMIC(CColorDialog, CCommonDialog)
IMPLEMENT_DYNAMIC(CFontDialog, CCommonDialog)

namespace {

// Many files may be chosen at once; the dialog fails when their names need more.
constexpr std::size_t kPathRoom = 64 * 1024;

// "Name|*.x||" to "Name\0*.x\0\0".
std::vector<char> filterOf(LPCTSTR filter) {
    std::vector<char> result(filter, filter + std::strlen(filter));
    std::replace(result.begin(), result.end(), '|', '\0');
    result.insert(result.end(), 2, '\0');
    return result;
}

// What a window's handler threw while the dialog ran is thrown again.
INT_PTR answer(BOOL chosen) {
    quor::throwKeptException();
    return chosen ? IDOK : IDCANCEL;
}

}  // namespace

CCommonDialog::CCommonDialog(CWnd* parent) { m_pParentWnd = parent; }

HWND CCommonDialog::ownerWindow() const { return handleOf(CWnd::GetSafeOwner(m_pParentWnd)); }

CFileDialog::CFileDialog(BOOL open, LPCTSTR defaultExtension, LPCTSTR fileName, DWORD flags, LPCTSTR filter,
                         CWnd* parent)
    : CCommonDialog(parent), m_open(open), m_defaultExtension(defaultExtension), m_path(kPathRoom) {
    if (fileName) ::lstrcpyn(m_path.data(), fileName, static_cast<int>(m_path.size()));
    if (filter) m_filter = filterOf(filter);
    m_ofn.lStructSize = sizeof(m_ofn);
    m_ofn.lpstrDefExt = defaultExtension ? m_defaultExtension.GetString() : nullptr;
    m_ofn.lpstrFilter = filter ? m_filter.data() : nullptr;
    m_ofn.nFilterIndex = 1;
    m_ofn.lpstrFile = m_path.data();
    m_ofn.nMaxFile = static_cast<DWORD>(m_path.size());
    m_ofn.Flags = flags | OFN_EXPLORER;
}

INT_PTR CFileDialog::DoModal() {
    m_ofn.hwndOwner = ownerWindow();
    const BOOL chosen = m_open ? ::GetOpenFileName(&m_ofn) : ::GetSaveFileName(&m_ofn);
    return answer(chosen);
}

CString CFileDialog::GetPathName() const { return CString(m_ofn.lpstrFile); }

CString CFileDialog::GetFileName() const {
    const CString path = GetPathName();
    return path.Mid(std::max(path.ReverseFind('\\'), path.ReverseFind('/')) + 1);
}

CString CFileDialog::GetFileExt() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot < 0 ? CString() : name.Mid(dot + 1);
}

CString CFileDialog::GetFileTitle() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot < 0 ? name : name.Left(dot);
}

CString CFileDialog::GetFolderPath() const {
    const CString path = GetPathName();
    return path.Left(std::max(path.ReverseFind('\\'), path.ReverseFind('/')));
}

// A position is an offset into the result plus one. One file: its path. Several: the folder, then the names, each
// ended by a NUL, and an empty name.
POSITION CFileDialog::GetStartPosition() const {
    return m_ofn.lpstrFile[0] ? reinterpret_cast<POSITION>(static_cast<INT_PTR>(1)) : nullptr;
}

CString CFileDialog::GetNextPathName(POSITION& position) const {
    const char* const text = m_ofn.lpstrFile;
    const std::size_t folderLength = std::strlen(text);
    const bool several = (m_ofn.Flags & OFN_ALLOWMULTISELECT) && text[folderLength + 1];
    std::size_t offset = static_cast<std::size_t>(reinterpret_cast<INT_PTR>(position)) - 1;
    if (!several) {
        position = nullptr;
        return text;
    }
    if (offset == 0) offset = folderLength + 1;
    const CString path = CString(text) + "\\" + (text + offset);
    offset += std::strlen(text + offset) + 1;
    position = text[offset] ? reinterpret_cast<POSITION>(static_cast<INT_PTR>(offset + 1)) : nullptr;
    return path;
}

CColorDialog::CColorDialog(COLORREF color, DWORD flags, CWnd* parent) : CCommonDialog(parent) {
    m_cc.lStructSize = sizeof(m_cc);
    m_cc.lpCustColors = GetSavedCustomColors();
    m_cc.rgbResult = color;
    m_cc.Flags = flags | CC_RGBINIT;
}

COLORREF* CColorDialog::GetSavedCustomColors() {
    static COLORREF colors[16];
    static const bool white = (std::fill(std::begin(colors), std::end(colors), RGB(255, 255, 255)), true);
    static_cast<void>(white);
    return colors;
}

INT_PTR CColorDialog::DoModal() {
    m_cc.hwndOwner = ownerWindow();
    return answer(::ChooseColor(&m_cc));
}

CFontDialog::CFontDialog(LPLOGFONT font, DWORD flags, CDC* printer, CWnd* parent) : CCommonDialog(parent) {
    if (font) m_lf = *font;
    m_cf.lStructSize = sizeof(m_cf);
    m_cf.lpLogFont = &m_lf;
    m_cf.lpszStyle = m_style;
    m_cf.Flags = flags | (font ? CF_INITTOLOGFONTSTRUCT : 0);
    if (printer) {
        m_cf.hDC = *printer;
        m_cf.Flags |= CF_PRINTERFONTS;
    }
}

INT_PTR CFontDialog::DoModal() {
    m_cf.hwndOwner = ownerWindow();
    return answer(::ChooseFont(&m_cf));
}

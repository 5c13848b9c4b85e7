#include "quor/edits/HotFontCombo.h"

#include "quor/edits/ButtonPaintInternal.h"
#include "quor/edits/core/Colours.h"
#include "quor/edits/core/FontNames.h"
#include "quor/foundation/RedrawScope.h"

#include <map>

using namespace quor::edits;
using quor::platform::scaled;

namespace {

constexpr DWORD kKindMask = 0xFFFF;  // a control's own style bits
constexpr DWORD kKind = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | CBS_AUTOHSCROLL;
constexpr int kRowGap = 4;
constexpr int kTextMargin = 4;
constexpr int kBytesOfAName = 24;

RecentNames& recentFonts() {
    static RecentNames names;
    return names;
}

int CALLBACK offerFont(const LOGFONTA* font, const TEXTMETRICA*, DWORD, LPARAM offer) {
    (*reinterpret_cast<const std::function<void(const LOGFONT&)>*>(offer))(*font);
    return TRUE;
}

}  // namespace

struct CHotFontCombo::Parts {
    std::vector<FontFace> faces;
    bool listed = false;
    int recentCount = 0;                          // names on top, which stand below once more
    std::vector<std::string> recent;              // as they were when they were put there
    std::map<int, std::unique_ptr<CFont>> drawn;  // by the number of the face
    TypeAhead typed;
    bool open = false;
    bool accepted = false;
};

IMPLEMENT_DYNAMIC(CHotFontCombo, CComboBox)

BEGIN_MESSAGE_MAP(CHotFontCombo, CComboBox)
    ON_CONTROL_REFLECT_EX(CBN_DROPDOWN, &CHotFontCombo::OnDropDown)
    ON_CONTROL_REFLECT_EX(CBN_CLOSEUP, &CHotFontCombo::OnCloseUp)
    ON_CONTROL_REFLECT_EX(CBN_SELENDOK, &CHotFontCombo::OnSelEndOk)
    ON_CONTROL_REFLECT_EX(CBN_SELENDCANCEL, &CHotFontCombo::OnSelEndCancel)
    ON_CONTROL_REFLECT_EX(CBN_KILLFOCUS, &CHotFontCombo::OnLeave)
    ON_WM_CHAR()
    ON_MESSAGE(WM_SETFONT, &CHotFontCombo::OnSetFont)
END_MESSAGE_MAP()

CHotFontCombo::CHotFontCombo() : m_parts(std::make_unique<Parts>()) {}

// While the parts are still there.
CHotFontCombo::~CHotFontCombo() {
    if (m_hWnd) DestroyWindow();
}

BOOL CHotFontCombo::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    if (!CComboBox::Create((style & ~kKindMask) | kKind, rect, parent, id)) return FALSE;
    SetItemHeight(0, static_cast<UINT>(itemHeight()));
    return TRUE;
}

void CHotFontCombo::PreSubclassWindow() {
    CComboBox::PreSubclassWindow();
    const HWND list = m_hWnd;
    if (!::SendMessageA(list, CB_GETITEMHEIGHT, 0, 0)) return;  // it is just being made
    for (const int part : {-1, 0}) SetItemHeight(part, static_cast<UINT>(itemHeight()));
}

LRESULT CHotFontCombo::OnSetFont(WPARAM, LPARAM) {
    const LRESULT result = Default();
    m_parts->drawn.clear();
    for (const int part : {-1, 0}) SetItemHeight(part, static_cast<UINT>(itemHeight()));
    return result;
}

// ---- The list

void CHotFontCombo::EnumerateFonts(const std::function<void(const LOGFONT&)>& offer) {
    LOGFONT all{};
    all.lfCharSet = DEFAULT_CHARSET;
    const CClientDC screen(nullptr);
    ::EnumFontFamiliesExA(screen.m_hDC, &all, &offerFont, reinterpret_cast<LPARAM>(&offer), 0);
}

void CHotFontCombo::needFonts() {
    if (!m_parts->listed) InitFonts();
}

void CHotFontCombo::InitFonts() {
    const CString selected = GetSelectedFont();
    std::vector<FontFace> faces;
    EnumerateFonts([&](const LOGFONT& font) { faces.push_back({font.lfFaceName, font.lfCharSet == SYMBOL_CHARSET}); });
    tidyFaces(faces);
    {
        const quor::foundation::RedrawScope off(*this);
        ResetContent();
        m_parts->drawn.clear();
        m_parts->faces = std::move(faces);
        m_parts->recentCount = 0;
        m_parts->recent.clear();
        m_parts->listed = true;
        SendMessage(CB_INITSTORAGE, m_parts->faces.size(), static_cast<LPARAM>(m_parts->faces.size()) * kBytesOfAName);
        for (std::size_t face = 0; face < m_parts->faces.size(); ++face)
            SetItemData(AddString(m_parts->faces[face].name.c_str()), face);
        refreshRecent();
    }
    if (!selected.IsEmpty()) SelectFont(selected);
}

// A font that was chosen elsewhere but is not offered here is left out.
void CHotFontCombo::refreshRecent() {
    if (m_parts->recent == recentFonts().names()) return;
    const CString selected = GetSelectedFont();
    m_parts->recent = recentFonts().names();
    for (; m_parts->recentCount > 0; --m_parts->recentCount) DeleteString(0);
    for (const std::string& name : m_parts->recent) {
        const int below = FindStringExact(m_parts->recentCount - 1, name.c_str());
        if (below < m_parts->recentCount) continue;
        const DWORD_PTR face = GetItemData(below);
        SetItemData(InsertString(m_parts->recentCount, m_parts->faces[face].name.c_str()), face);
        ++m_parts->recentCount;
    }
    if (!selected.IsEmpty()) SelectFont(selected);
}

BOOL CHotFontCombo::SelectFont(LPCTSTR name) {
    needFonts();
    const int found = FindStringExact(m_parts->recentCount - 1, name);
    return found >= 0 && SetCurSel(found) >= 0;
}

void CHotFontCombo::OfferMissingFont(LPCTSTR name) {
    needFonts();
    const std::size_t face = m_parts->faces.size();
    m_parts->faces.push_back({name, true});  // no letters of its own, as a symbol font
    SetItemData(InsertString(m_parts->recentCount, name), face);
}

CString CHotFontCombo::GetSelectedFont() const {
    CString name;
    if (const int selected = GetCurSel(); selected >= 0) GetLBText(selected, name);
    return name;
}

// ---- What the user does. The parent hears of it too.

BOOL CHotFontCombo::OnDropDown() {
    m_parts->open = true;
    m_parts->accepted = false;
    needFonts();
    refreshRecent();
    return FALSE;
}

BOOL CHotFontCombo::OnSelEndOk() {
    m_parts->accepted = true;
    return FALSE;
}

BOOL CHotFontCombo::OnSelEndCancel() {
    m_parts->accepted = false;
    return FALSE;
}

BOOL CHotFontCombo::OnCloseUp() {
    m_parts->open = false;
    m_parts->drawn.clear();
    if (m_parts->accepted) useSelection();
    return FALSE;
}

// Arrow keys on a closed list pass many fonts: the one that they leave is chosen.
BOOL CHotFontCombo::OnLeave() {
    if (m_parts->accepted) useSelection();
    return FALSE;
}

void CHotFontCombo::useSelection() {
    m_parts->accepted = false;
    recentFonts().use(std::string(GetSelectedFont()));
}

void CHotFontCombo::OnChar(UINT character, UINT repeat, UINT flags) {
    if (character < ' ') return CComboBox::OnChar(character, repeat, flags);
    needFonts();
    const std::string& beginning =
        m_parts->typed.type(static_cast<char>(character), static_cast<unsigned>(::GetMessageTime()));
    const int found = FindString(m_parts->recentCount - 1, beginning.c_str());
    if (found < 0 || found == GetCurSel()) return;
    SetCurSel(found);
    m_parts->accepted = true;
    GetParent()->SendMessage(WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), CBN_SELCHANGE), reinterpret_cast<LPARAM>(m_hWnd));
}

// ---- Drawing

int CHotFontCombo::itemHeight() {
    CClientDC dc(this);
    const SelectScope font(dc.m_hDC, reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
    TEXTMETRIC metrics{};
    dc.GetTextMetrics(&metrics);
    return static_cast<int>(metrics.tmHeight) + scaled(m_hWnd, kRowGap);
}

void CHotFontCombo::MeasureItem(LPMEASUREITEMSTRUCT item) { item->itemHeight = static_cast<UINT>(itemHeight()); }

// Null: the combo's own.
HFONT CHotFontCombo::faceOf(int item) {
    const auto number = static_cast<std::size_t>(GetItemData(item));
    if (number >= m_parts->faces.size() || m_parts->faces[number].symbol) return nullptr;
    auto& made = m_parts->drawn[static_cast<int>(number)];
    if (!made) {
        LOGFONT font{};
        ::GetObjectA(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)), sizeof font, &font);
        font.lfCharSet = DEFAULT_CHARSET;
        ::lstrcpynA(font.lfFaceName, m_parts->faces[number].name.c_str(), LF_FACESIZE);
        made = std::make_unique<CFont>();
        made->CreateFontIndirect(&font);
    }
    return *made;
}

void CHotFontCombo::DrawItem(LPDRAWITEMSTRUCT item) {
    CDC& dc = *CDC::FromHandle(item->hDC);
    const DcStateScope state(dc);
    const bool chosen = (item->itemState & ODS_SELECTED) != 0, disabled = (item->itemState & ODS_DISABLED) != 0;
    const CRect area = item->rcItem;
    const COLORREF ground = ::GetSysColor(chosen ? COLOR_HIGHLIGHT : disabled ? COLOR_BTNFACE : COLOR_WINDOW);
    dc.FillSolidRect(area, ground);
    const int index = static_cast<int>(item->itemID);
    if (index >= 0) {
        CString name;
        GetLBText(index, name);
        const SelectScope font(item->hDC, faceOf(index));
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextColor(disabled ? readableOn(ground, ::GetSysColor(COLOR_GRAYTEXT), kDisabledContrast)
                                 : ::GetSysColor(chosen ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        CRect text = area;
        text.DeflateRect(scaled(m_hWnd, kTextMargin), 0);
        dc.DrawText(name, text, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    }
    const bool inList = (item->itemState & ODS_COMBOBOXEDIT) == 0;
    if (inList && m_parts->recentCount > 0 && index == m_parts->recentCount - 1)
        dc.FillSolidRect(area.left, area.bottom - 1, area.Width(), 1, ::GetSysColor(COLOR_3DSHADOW));
    if ((item->itemState & ODS_FOCUS) && !(item->itemState & ODS_NOFOCUSRECT)) {
        dc.SetTextColor(0);
        dc.SetBkColor(0xFFFFFF);
        dc.DrawFocusRect(area);
    }
}

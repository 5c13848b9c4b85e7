// Colours, font, row height, and what is painted here: nothing but the area that no cell covers. Rows are painted by
// the owner window, or by a derived list.
#include "quor/foundation/core/Globals.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/core/ColumnArrays.h"
#include "quor/platform/tools/QuorTools.h"

#include <map>
#include <memory>

using namespace quor::list;

namespace {

// A computed height that is taken as no size at all.
constexpr int kRefusedHeight = -1;
// What a size change without moving, activation or restacking is announced with (534).
constexpr UINT kSizeOnly = SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOOWNERZORDER | SWP_NOZORDER;
// What stands for a record that could not be read.
constexpr char kNoRecord[] = "Settings not found";

void setFace(LOGFONT& font, const CString& face) { ::lstrcpynA(font.lfFaceName, face, LF_FACESIZE); }

CCommonListCtrl* liveList(CWnd* window) {
    if (!isLive(window)) return nullptr;
    return DYNAMIC_DOWNCAST(CCommonListCtrl, CWnd::FromHandlePermanent(window->m_hWnd));
}

// The font of a window that cannot keep one itself: until it gets the next, or is gone.
void lendFont(CWnd& window, const LOGFONT& description) {
    static auto& lent = *new std::map<HWND, std::unique_ptr<CFont>>;  // windows may outlive this module's statics
    std::erase_if(lent, [](const auto& loan) { return !::IsWindow(loan.first); });
    auto font = std::make_unique<CFont>();
    if (!font->CreateFontIndirect(&description)) return;
    window.SetFont(font.get());
    lent[window.m_hWnd].swap(font);
}

// Fills a keyword array that is empty, making it first; null values are skipped. True if it was filled.
template <class Array>
bool seed(Array*& array, const Array* values) {
    if (!values) return false;
    if (!array) array = new Array;
    return seedWhenEmpty(*array, *values);
}

}  // namespace

void CCommonListCtrl::SetDefaultAttributes(int keywordColumn, CStringArray* keywords, CArray<DWORD, DWORD>* colors) {
    if (seed(m_Appearance.pKeywords, keywords)) m_Appearance.iKeywordColumn = keywordColumn;
    seed(m_Appearance.pKeywordColors, colors);
}

void CCommonListCtrl::SetDefaultProperties(CStringArray* keywords, CArray<DWORD, DWORD>* textColors,
                                           CArray<DWORD, DWORD>* backColors) {
    seed(m_Appearance.pUserKeywords, keywords);
    seed(m_Appearance.pUserTextColors, textColors);
    seed(m_Appearance.pUserBackColors, backColors);
}

bool CCommonListCtrl::ReadRecoverySetting(const char* section, CString& record) {
    CString key, error;
    key.Format("%s-%d", m_csListName.GetString(), GetDlgCtrlID());
    return quoru_appdata_ini_file_operations(0, section, key, record, m_csGetRecoveryFile, error) != 0;
}

void CCommonListCtrl::ReadAppearance() {
    CString record;
    if (ReadRecoverySetting("CUSTOMIZE_LISTS", record)) {
        ReadCustomizeRecord(record);
        m_bCustomized = 1;
    } else {
        record = kNoRecord;
    }
    if (record == kNoRecord) m_Appearance = Get_Apperance_setting();
    ApplyAppearanceFont();
    if (m_bUseColors) ApplyAppearanceColors();
}

void CCommonListCtrl::ReadUserAppearance() {
    CString record;
    if (!ReadRecoverySetting("USER_CUSTOMIZE_LISTS", record)) return;
    ReadUserCustomizeRecord(record);
    if (m_bUseColors) ApplyAppearanceColors();
}

void CCommonListCtrl::ApplyAppearanceColors() {
    SetTextColor(m_Appearance.crText);
    SetBkColor(m_Appearance.crBackground);
    SetTextBkColor(m_Appearance.crBackground);
    Invalidate();
}

// Face and height alone, whatever font the control came with: a list looks the same on every road to its window.
void CCommonListCtrl::ApplyAppearanceFont() {
    LOGFONT font{};
    font.lfHeight = quor::platform::fontHeight(*this, quor::atoi(m_Appearance.csFontSize));
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    setFace(font, m_Appearance.csFontName);
    ReplaceFont(font);
}

// The old font goes when the control no longer uses it.
void CCommonListCtrl::ReplaceFont(const LOGFONT& description) {
    CFont font;
    if (!font.CreateFontIndirect(&description)) return;
    SetFont(&font);
    m_parts->font.DeleteObject();
    m_parts->font.Attach(font.Detach());
}

void CCommonListCtrl::SetListFontProperty(CWnd* list, int, CString name, CString size) {
    const CFont* present = isLive(list) ? list->GetFont() : nullptr;
    if (!present) return;
    LOGFONT font{};
    if (!present->GetLogFont(&font)) return;
    font.lfHeight = quor::platform::fontHeight(*list, quor::atoi(size));
    if (font.lfHeight == kRefusedHeight) return;
    setFace(font, name);
    if (CCommonListCtrl* const own = liveList(list)) {
        own->ReplaceFont(font);
    } else {
        lendFont(*list, font);
    }
}

void CCommonListCtrl::ApplyGeneralSettings(bool force) {
    const cCustomizedAppearanceSettings global = Get_Apperance_setting();
    for (INT_PTR i = 0; i < g_listRegistry.GetCount(); ++i) {
        CCommonListCtrl& list = *g_listRegistry.GetAt(i);
        if (!isLive(&list) || (list.m_bCustomized && !force)) continue;
        SetListFontProperty(&list, list.GetDlgCtrlID(), global.csFontName, global.csFontSize);
        list.m_Appearance.csFontName = global.csFontName;
        list.m_Appearance.csFontSize = global.csFontSize;
        if (list.m_bUseColors) {
            list.m_Appearance.crBackground = global.crBackground;
            list.m_Appearance.crText = global.crText;
            list.ApplyAppearanceColors();
        }
        if (list.m_bCustomized) list.WriteCustomizeRecord();
        list.RedrawWindow();
    }
}

int CCommonListCtrl::GetItemColor(int, int) { return 1; }

void CCommonListCtrl::SetItemColor(int, int, COLORREF) {}

void CCommonListCtrl::DrawItem(LPDRAWITEMSTRUCT item) {
    const std::shared_ptr<bool> isForwarding = m_parts->forwardingDrawItem;
    if (*isForwarding) return;
    const FlagScope forwarding(*isForwarding, true);
    if (CWnd* owner = GetOwner()) {
        owner->SendMessage(WM_DRAWITEM, static_cast<WPARAM>(GetDlgCtrlID()), reinterpret_cast<LPARAM>(item));
    }
}

void CCommonListCtrl::MeasureItem(LPMEASUREITEMSTRUCT item) {
    CClientDC dc(this);
    const SelectScope font(&dc, GetFont());
    TEXTMETRIC metrics{};
    dc.GetTextMetrics(&metrics);
    item->itemHeight = static_cast<UINT>(metrics.tmHeight + metrics.tmExternalLeading + 1);
}

LRESULT CCommonListCtrl::OnSetFont(WPARAM, LPARAM) {
    const LRESULT result = Default();
    RemeasureRows();
    return result;
}

void CCommonListCtrl::RemeasureRows() {
    CRect window;
    GetWindowRect(&window);
    WINDOWPOS position{};
    position.hwnd = m_hWnd;
    position.cx = window.Width();
    position.cy = window.Height();
    position.flags = kSizeOnly;
    SendMessage(WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
}

void CCommonListCtrl::OnPaint() {
    if (RowsAreNative()) WidenUpdate();
    Default();
}

bool CCommonListCtrl::IsHeaderPaint(LPARAM notification) const {
    const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(notification);
    const CHeaderCtrl* const header = GetHeaderCtrl();
    return header && draw.hdr.hwndFrom == header->m_hWnd && draw.dwDrawStage == CDDS_PREPAINT;
}

// Cells stand under their headings in every row. Of a dragged heading the control may keep the former place, for its
// grid lines, until it is told an order.
void CCommonListCtrl::FollowColumnOrder() {
    const CHeaderCtrl* const header = GetHeaderCtrl();
    std::vector<int> order(header ? static_cast<std::size_t>(header->GetItemCount()) : 0);
    if (!order.empty()) header->GetOrderArray(order.data(), static_cast<int>(order.size()));
    if (order == m_parts->paintedOrder) return;
    std::swap(m_parts->paintedOrder, order);
    if (order.size() == m_parts->paintedOrder.size())
        SetColumnOrderArray(static_cast<int>(order.size()), m_parts->paintedOrder.data());
    Invalidate();
}

// Owners paint the ground of a row up to the window's edge, where the control knows of no row. Below the rows nobody
// paints, so that part is erased. Grid lines stand everywhere, and the control leaves some behind when rows or columns
// move.
void CCommonListCtrl::WidenUpdate() {
    FollowColumnOrder();
    CRect update, client;
    if (!GetUpdateRect(&update)) return;
    GetClientRect(&client);
    const CRect rows = RowsInView();
    const CRect painted(rows.left, CListCtrl::GetTopIndex(), rows.right, 0);
    const bool moved = std::exchange(m_parts->paintedRows, painted) != painted;
    if (m_bGridLines && moved) update = client;
    update.left = client.left;
    update.right = client.right;
    InvalidateRect(&update, FALSE);
    update.top = std::max(update.top, rows.bottom);
    if (update.top < update.bottom) InvalidateRect(&update, TRUE);
}

void CCommonListCtrl::OnSize(UINT type, int width, int height) {
    CListCtrl::OnSize(type, width, height);
    if (CHeaderCtrl* header = GetHeaderCtrl()) header->Invalidate();
}

void CCommonListCtrl::OnSetFocus(CWnd* former) {
    CListCtrl::OnSetFocus(former);
    InvalidateFocusedRow();
}

void CCommonListCtrl::OnKillFocus(CWnd* next) {
    CListCtrl::OnKillFocus(next);
    InvalidateFocusedRow();
}

// The control had its owner draw it at once, over the grid lines, and even where no cell of it shows.
void CCommonListCtrl::InvalidateFocusedRow() {
    const int row = RowsAreNative() ? CListCtrl::GetNextItem(-1, LVNI_FOCUSED) : -1;
    CRect bounds, client;
    if (row == -1 || !CListCtrl::GetItemRect(row, bounds, LVIR_BOUNDS)) return;
    GetClientRect(&client);
    bounds.left = client.left;
    bounds.right = client.right;
    InvalidateRect(&bounds, TRUE);
}

LRESULT CCommonListCtrl::OnInsertRow(WPARAM, LPARAM) {
    const LRESULT row = Default();
    InvalidateFrom(static_cast<int>(row));
    return row;
}

LRESULT CCommonListCtrl::OnDeleteRow(WPARAM row, LPARAM) {
    const int top = CListCtrl::GetTopIndex();
    const LRESULT result = Default();
    if (CListCtrl::GetItemCount() == 0) {
        Invalidate();
    } else {
        InvalidateFrom(CListCtrl::GetTopIndex() == top ? static_cast<int>(row) : 0);
    }
    return result;
}

// The control moves the pixels of the rows behind.
void CCommonListCtrl::InvalidateFrom(int row) {
    if (!RowsAreNative()) return;
    const RowSpan span = m_parts->spanInView();
    CRect first, client;
    if (row > span.last || !CListCtrl::GetItemRect(std::max(row, span.first), first, LVIR_BOUNDS)) return;
    GetClientRect(&client);
    if (row > span.first) client.top = first.top;  // above the first row in view stands what has moved below the header
    InvalidateRect(&client, FALSE);
}

BOOL CCommonListCtrl::OnEraseBkgnd(CDC* dc) {
    if (!m_bFillEmptyArea) return CListCtrl::OnEraseBkgnd(dc);
    CRect client;
    GetClientRect(&client);
    const DcStateScope state(dc);
    for (const RECT& part : areaOutsideCells(client, RowsInView())) dc->FillSolidRect(&part, GetBkColor());
    return 0;
}

RowSpan CCommonListCtrl::Parts::spanInView() const {
    const CListCtrl& control = m_list;
    const int top = control.GetTopIndex();
    return {top, std::min(top + control.GetCountPerPage(), control.GetItemCount() - 1)};
}

CRect CCommonListCtrl::RowsInView() {
    CRect rows, last;
    const RowSpan span = m_parts->spanInView();
    if (span.last < span.first || !CListCtrl::GetItemRect(span.first, rows, LVIR_BOUNDS) ||
        !CListCtrl::GetItemRect(span.last, last, LVIR_BOUNDS)) {
        return {};
    }
    rows.bottom = last.bottom;
    return rows;
}

// Construction, the two roads to a living control, registries, rows, and the end.
//
// A list gets its window by Create or by subclassing a control of a dialog. PreSubclassWindow runs on both roads, but
// inside Create the control answers nothing yet: it would show the owner-draw style and ignore it. So the start of the
// list (styles, CommonInitList, row height) runs from PreSubclassWindow only where the control was there before, and
// after the framework's creation otherwise. Both end in StartOnLivingControl.
#include "quor/foundation/core/HostFiles.h"
#include "quor/list/AppearanceDialog.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/CommonListToolTip.h"
#include "quor/list/ListCommands.h"

using namespace quor::list;

IMPLEMENT_DYNAMIC(CCommonListCtrl, CListCtrl)
IMPLEMENT_DYNAMIC(CCommonListToolTip, CCommonListCtrl)

BEGIN_MESSAGE_MAP(CCommonListCtrl, CListCtrl)
    // Life
    ON_WM_DESTROY()
    // Painting
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_MESSAGE(LVM_INSERTITEMA, &CCommonListCtrl::OnInsertRow)
    ON_MESSAGE(LVM_INSERTITEMW, &CCommonListCtrl::OnInsertRow)
    ON_MESSAGE(LVM_DELETEITEM, &CCommonListCtrl::OnDeleteRow)
    ON_WM_MEASUREITEM_REFLECT()
    ON_MESSAGE(WM_SETFONT, &CCommonListCtrl::OnSetFont)
    // Sorting
    ON_NOTIFY_REFLECT(LVN_COLUMNCLICK, &CCommonListCtrl::OnLvnColumnclick)
    ON_WM_TIMER()
    // Commands
    ON_COMMAND(kFitColumnsToData, &CCommonListCtrl::ColFitToContent)
    ON_COMMAND(kFitColumnsToHeader, &CCommonListCtrl::ColFitToHeader)
    ON_COMMAND(kFitColumnsToWindow, &CCommonListCtrl::ColFitToWindow)
    ON_COMMAND(kGridLines, &CCommonListCtrl::GridLines)
    ON_COMMAND(kLockSorting, &CCommonListCtrl::OnLockUnlockSortCheck)
    ON_COMMAND(kMultiColumnSorting, &CCommonListCtrl::OnListColumnSortOrder)
    ON_COMMAND(kCopyToClipboard, &CCommonListCtrl::BuildTable)
    ON_COMMAND(kCustomizeAppearance, &CCommonListCtrl::OnCustomize)
    ON_COMMAND(kUserCustomize, &CCommonListCtrl::OnUserCustomize)
END_MESSAGE_MAP()

CString CCommonListCtrl::m_csGetDialogPosPath;
CString CCommonListCtrl::m_csGetRecoveryFile;
CArray<CCommonListCtrl*, CCommonListCtrl*> CCommonListCtrl::g_listRegistry;
CArray<CCommonListCtrl*, CCommonListCtrl*> CCommonListCtrl::g_groupListRegistry;

namespace {

using Registry = CArray<CCommonListCtrl*, CCommonListCtrl*>;

// Dialogs read both.
[[maybe_unused]] const bool g_filesShared = [] {
    quor::foundation::shareHostFiles(&CCommonListCtrl::m_csGetRecoveryFile, &CCommonListCtrl::m_csGetDialogPosPath);
    return true;
}();

INT_PTR find(const Registry& registry, const CCommonListCtrl* list) {
    INT_PTR i = registry.GetUpperBound();
    while (i >= 0 && registry.GetAt(i) != list) --i;
    return i;
}

// An object that gets a second window stays where it is.
void enter(Registry& registry, CCommonListCtrl* list) {
    if (find(registry, list) < 0) registry.Add(list);
}

void leave(Registry& registry, const CCommonListCtrl* list) {
    const INT_PTR index = find(registry, list);
    if (index >= 0) registry.RemoveAt(index);
}

}  // namespace

CCommonListCtrl::CCommonListCtrl() : m_parts(std::make_unique<Parts>(*this)) {}

CCommonListCtrl::~CCommonListCtrl() {
    if (m_hWnd) CCommonListCtrl::DestroyWindow();  // the window uses this object's font and images
    AppearanceDialog::forgetList(this);
    leave(g_listRegistry, this);
    leave(g_groupListRegistry, this);
    m_Appearance.freeKeywordArrays();
    FreeDealSlipProfiles();
}

BOOL CCommonListCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    BOOL created;
    {
        const FlagScope creating(m_parts->creating, true);
        created = CListCtrl::Create(style, rect, parent, id);
    }
    if (created) StartOnLivingControl();
    return 0;
}

BOOL CCommonListCtrl::CreateEx(DWORD exStyle, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    BOOL created;
    {
        const FlagScope creating(m_parts->creating, true);
        created = CListCtrl::CreateEx(exStyle, style, rect, parent, id);
    }
    if (created) StartOnLivingControl();
    return 0;
}

void CCommonListCtrl::PreSubclassWindow() {
    CListCtrl::PreSubclassWindow();
    if (!m_parts->creating) StartOnLivingControl();
}

// The control measures its rows when it is created and when its size changes, not when its style does: it is asked to.
void CCommonListCtrl::StartOnLivingControl() {
    SetExtendedStyle(GetExtendedStyle() | LVS_EX_FULLROWSELECT);
    ModifyStyle(0, LVS_OWNERDRAWFIXED | WS_CLIPCHILDREN);  // rows that are painted leave the header alone
    CommonInitList();
    RemeasureRows();
}

void CCommonListCtrl::CommonInitList() {
    if (m_parts->initialised == m_hWnd) return;
    m_parts->initialised = m_hWnd;
    m_parts->headerImages = sharedHeaderImages();
    if (CHeaderCtrl* header = GetHeaderCtrl()) {
        header->SetImageList(m_parts->headerImages.get());
        const bool checkBox = m_bHeaderCheckBox && m_nSortCol == 0;
        setHeaderImage(*header, m_nSortCol, checkBox ? kHeaderCheckSortFormat : kHeaderSortFormat, kHeaderImageRising);
        if (checkBox) SetHeaderCheckbox();
    }
    m_nLastSortCol = m_nSortCol;
    m_nSortOrder = -1;
    SetExtendedStyle(GetExtendedStyle() | LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
    const cCustomizedAppearanceSettings standard;
    SetTextColor(standard.crText);
    SetBkColor(standard.crBackground);
    SetTextBkColor(standard.crBackground);

    const CWnd* customisableParent = GetListCtrlDlgParent(this);
    if (m_bGroupList) enter(g_groupListRegistry, this);
    if (customisableParent && !m_bGroupList && m_bCustomizeEnabled) {
        enter(g_listRegistry, this);
        ReadAppearance();
    }
    ReadUserAppearance();
}

CWnd* CCommonListCtrl::GetListCtrlDlgParent(CWnd* list) {
    for (CWnd* parent = list->GetParent(); parent; parent = parent->GetParent()) {
        const bool customisable = parent->IsKindOf(RUNTIME_CLASS(CBCGPDialog)) ||
                                  parent->IsKindOf(RUNTIME_CLASS(CBCGPFormView)) ||
                                  parent->IsKindOf(RUNTIME_CLASS(CBCGPDialogBar));
        if (customisable && parent->m_hWnd) return parent;
    }
    return nullptr;
}

void CCommonListCtrl::SetRecoveryFiles(CString recoveryFile, CString dialogPositionFile) {
    m_csGetRecoveryFile = recoveryFile;
    m_csGetDialogPosPath = dialogPositionFile;
}

// Members of CWnd run on a permanent object only: a temporary one is not of the host's class.
CWnd* CCommonListCtrl::callbackOwner() const {
    const CWnd* const owner = GetOwner();
    return owner ? CWnd::FromHandlePermanent(owner->m_hWnd) : nullptr;
}

int CCommonListCtrl::GetUseFilter() const { return 0; }

int CCommonListCtrl::GetItemText(int row, int place, char* buffer, int size) {
    return CListCtrl::GetItemText(row, place, buffer, size);
}

CString CCommonListCtrl::GetItemText(int row, int place, bool, bool) { return CListCtrl::GetItemText(row, place); }

CString CCommonListCtrl::GetItemText(int row, int place) { return CListCtrl::GetItemText(row, place); }

DWORD_PTR CCommonListCtrl::GetItemData(int row) {
    if (row >= 0 && row < m_arrSavedItemData.GetCount()) return m_arrSavedItemData.GetAt(row);
    return CListCtrl::GetItemData(row);
}

int CCommonListCtrl::SetRowFocus(int row) {
    constexpr UINT kSelectedAndFocused = LVIS_SELECTED | LVIS_FOCUSED;
    CListCtrl::SetItemState(row, kSelectedAndFocused, kSelectedAndFocused);
    CListCtrl::EnsureVisible(row, FALSE);
    return 1;
}

BOOL CCommonListCtrl::DestroyWindow() { return CListCtrl::DestroyWindow(); }

void CCommonListCtrl::OnDestroy() {
    AppearanceDialog::forgetList(this);
    CListCtrl::OnDestroy();
    SaveState();
    m_autoSortRead = m_gridLinesRead = m_parts->sortLockMoved = false;
    m_arrColumns.RemoveAll();
    m_arrOrder.RemoveAll();
    m_arrWidth.RemoveAll();
    if (m_ToolTip.m_hWnd) m_ToolTip.DestroyWindow();
    CHeaderCtrl* header = GetHeaderCtrl();
    if (isLive(header)) {
        while (header->DeleteItem(0)) {
        }
    }
    m_parts->initialised = nullptr;
}

#include "quor/platform/win/WndInternal.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

CCmdTarget::CCmdTarget() = default;
CCmdTarget::~CCmdTarget() = default;

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

namespace {

const AFX_MSGMAP_ENTRY* findCommand(const AFX_MSGMAP* map, UINT message, UINT code, UINT id) {
    for (; map; map = map->baseMap ? map->baseMap() : nullptr)
        for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->thunk; ++entry)
            if (entry->message == message && entry->code == code && entry->id <= id && id <= entry->lastId)
                return entry;
    return nullptr;
}

}  // namespace

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    const UINT high = nCode == CN_UPDATE_COMMAND_UI ? 0 : HIWORD(nCode);
    const AFX_MSGMAP_ENTRY* entry = findCommand(GetMessageMap(), high ? high : WM_COMMAND, LOWORD(nCode), nID);
    if (!entry) return FALSE;
    if (pHandlerInfo) {
        *pHandlerInfo = {this, entry->thunk};
        return TRUE;
    }
    AFX_MSG_ARGS args;
    args.id = nID;
    args.code = nCode;
    args.extra = pExtra;
    return entry->thunk(this, args);
}

// --- Wait cursor ---------------------------------------------------------------------------------------------------

namespace {
int waitDepth = 0;
HCURSOR cursorBefore = nullptr;
}  // namespace

void CCmdTarget::BeginWaitCursor() {
    const HCURSOR previous = ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
    if (waitDepth++ == 0) cursorBefore = previous;
}

void CCmdTarget::EndWaitCursor() {
    if (waitDepth == 0) return;
    ::SetCursor(--waitDepth == 0 ? cursorBefore : ::LoadCursorA(nullptr, IDC_WAIT));
}

CWaitCursor::CWaitCursor() {
    CCmdTarget target;
    target.BeginWaitCursor();
}
CWaitCursor::~CWaitCursor() {
    CCmdTarget target;
    target.EndWaitCursor();
}
void CWaitCursor::Restore() { ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT)); }

// --- Command state -------------------------------------------------------------------------------------------------

CCmdUI::CCmdUI() = default;
CCmdUI::~CCmdUI() = default;

void CCmdUI::Enable(BOOL bOn) {
    m_bEnableChanged = TRUE;
    if (m_pMenu) {
        if (!m_pSubMenu) ::EnableMenuItem(*m_pMenu, m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : MF_GRAYED));
    } else if (m_pOther) {
        m_pOther->EnableWindow(bOn);
    }
}

void CCmdUI::SetCheck(int nCheck) {
    if (m_pMenu) {
        if (!m_pSubMenu) ::CheckMenuItem(*m_pMenu, m_nIndex, MF_BYPOSITION | (nCheck ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther && (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON)) {
        m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

void CCmdUI::SetRadio(BOOL bOn) {
    if (m_pMenu && bOn)
        ::CheckMenuRadioItem(*m_pMenu, m_nIndex, m_nIndex, m_nIndex, MF_BYPOSITION);
    else
        SetCheck(bOn ? 1 : 0);
}

void CCmdUI::SetText(LPCSTR lpszText) {
    if (m_pMenu) {
        if (m_pSubMenu) return;
        MENUITEMINFOA item{};
        item.cbSize = sizeof(item);
        item.fMask = MIIM_STRING;
        item.dwTypeData = const_cast<LPSTR>(lpszText);
        ::SetMenuItemInfoA(*m_pMenu, m_nIndex, TRUE, &item);
    } else if (m_pOther) {
        CString former;
        m_pOther->GetWindowText(former);
        if (former.Compare(lpszText) != 0) m_pOther->SetWindowText(lpszText);
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler) {
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF) return TRUE;  // separators and static controls
    m_bEnableChanged = FALSE;
    const BOOL answered = pTarget->OnCmdMsg(m_nID, CN_UPDATE_COMMAND_UI, this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged) {
        AFX_CMDHANDLERINFO handler{};
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, this, &handler));
    }
    return answered;
}

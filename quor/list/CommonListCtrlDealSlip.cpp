// Deal slip profiles in the host's store: the texts are made and read in core/.
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/ListSettings.h"
#include "quor/list/core/DealSlipText.h"

using namespace quor::list;

namespace {

constexpr char kNamesKey[] = "PROFILENAMES";
constexpr char kLastInvokedKey[] = "LASTINVOKEDPROFILE";
constexpr char kDefaultKey[] = "DEFAULTPROFILE";

// A host that refuses is reported in words of the key's own; the list stays as it is.
void writeOrTell(const CString& section, const char* key, const CString& value, const char* failure) {
    if (!writeListSetting(section, key, value)) AfxMessageBox(failure);
}

CString readName(const CString& section, const char* key) {
    CString name;
    return readListSetting(section, key, name) ? withoutDealSlipPrefix(name) : CString();
}

}  // namespace

void CCommonListCtrl::ReadDealSlipState() {
    CString names;
    if (!readListSetting(m_csListName, kNamesKey, names)) return;
    FreeDealSlipProfiles();
    m_arrProfileNames.RemoveAll();
    m_csLastInvokedProfile = readName(m_csListName, kLastInvokedKey);
    m_csDefaultProfile = readName(m_csListName, kDefaultKey);
    for (const CString& name : parseProfileNames(names)) {
        m_arrProfileNames.Add(name);
        CString text;
        CArray<int, int>* present = nullptr;
        if (m_mapDealSlipProfiles.Lookup(name, present)) continue;  // a name that is listed twice
        if (!readListSetting(m_csListName, withDealSlipPrefix(name), text)) continue;
        const auto places = parseDealSlipProfile(text);
        if (!places) continue;
        auto profile = std::make_unique<CArray<int, int>>();
        assign(*profile, *places);
        m_mapDealSlipProfiles.SetAt(name, profile.release());
    }
}

void CCommonListCtrl::FreeDealSlipProfiles() {
    for (POSITION position = m_mapDealSlipProfiles.GetStartPosition(); position;) {
        CString name;
        CArray<int, int>* places = nullptr;
        m_mapDealSlipProfiles.GetNextAssoc(position, name, places);
        delete places;
    }
    m_mapDealSlipProfiles.RemoveAll();
}

void CCommonListCtrl::SaveColumnProfileDealSlipReport(CString name) {
    CString text;
    CArray<int, int>* places = nullptr;
    if (m_bUseColumnProfile && m_mapDealSlipProfiles.Lookup(name, places)) {
        std::vector<ProfileEntry> entries = m_parts->currentProfile();
        for (ProfileEntry& entry : entries) {
            entry.place = entry.columnIndex < places->GetCount() ? places->GetAt(entry.columnIndex) : -1;
        }
        text = formatDealSlipProfile(entries);
    }
    writeOrTell(m_csListName, withDealSlipPrefix(name), text, "Error while saving column profile");
}

void CCommonListCtrl::DeleteProfile(CString name) {
    writeOrTell(m_csListName, withDealSlipPrefix(name), "", "Error while saving column profile");
}

void CCommonListCtrl::SaveLastInvokedProfile(CString name) {
    writeOrTell(m_csListName, kLastInvokedKey, withDealSlipPrefix(name),
                "Error while saving the last invoked profile.");
}

void CCommonListCtrl::SaveDefaultProfile(CString name) {
    writeOrTell(m_csListName, kDefaultKey, withDealSlipPrefix(name), "Error while saving default profile.");
}

void CCommonListCtrl::SaveDealSlipReportProfileNames(CStringArray& names) {
    std::vector<CString> list;
    for (INT_PTR i = 0; i < names.GetCount(); ++i) list.push_back(names.GetAt(i));
    writeOrTell(m_csListName, kNamesKey, formatProfileNames(list), "Error while saving profile names");
}

// The dialog of a list's looks: opened on a list of 60 columns until it has painted, then left by Cancel until it is
// hidden; and the same with its window made anew.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "quor/list/CommonListCtrl.h"
#include "quor/list/CustomizedAppearance.h"
#include "quor/resource/resource.h"

#include <cstdio>

namespace {

constexpr int kColumns = 60;
constexpr int kKeywords = 20;
constexpr int kRepeats = 21;
constexpr unsigned kListId = 100;

void check(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

void pumpMessages() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
        if (!AfxPumpMessage()) return;
}

class Customized {
public:
    Customized() {
        const CString windowClass = AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), nullptr, nullptr);
        m_owner.CreateEx(0, windowClass, "bench", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, CRect(0, 0, 1200, 800),
                         nullptr, 0);
        m_list.m_csListName = "bench";
        for (int i = 0; i < kColumns; ++i) {
            sQuorColInfo column;
            std::snprintf(column.szColumnName, sizeof column.szColumnName, "Column %d", i);
            column.iWidth = 40;
            m_list.m_arrColumns.Add(column);
        }
        m_list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(0, 0, 1000, 600), &m_owner, kListId);
        m_list.InsertColumnsForList(nullptr);
        CStringArray keywords;
        CArray<DWORD, DWORD> colors;
        for (int i = 0; i < kKeywords; ++i) keywords.Add("KEYWORD"), colors.Add(static_cast<DWORD>(i));
        m_list.SetDefaultAttributes(kColumns - 1, &keywords, &colors);
        m_list.m_Appearance.bKeywordsEnabled = 1;
        pumpMessages();
    }
    ~Customized() {
        m_list.DestroyWindow();
        m_owner.DestroyWindow();
    }

    void openAndCancel() {
        m_list.OnCustomize();
        pumpMessages();
        CCustomizedAppearance& shown = dialog();
        shown.RedrawWindow(nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const auto& columns = *static_cast<CComboBox*>(shown.GetDlgItem(IDC_KEYWORD_COLUMN));
        const auto& keywords = *static_cast<CListCtrl*>(shown.GetDlgItem(IDC_KEYWORDS));
        check(shown.IsWindowVisible() && !shown.GetUpdateRect(nullptr), "the dialog has not painted");
        check(columns.GetCount() == kColumns && columns.GetCurSel() == kColumns - 1, "it shows other columns");
        check(keywords.GetItemCount() == kKeywords, "it shows other keywords");
        shown.GetDlgItem(IDCANCEL)->SendMessage(BM_CLICK);
        pumpMessages();
        check(!shown.IsWindowVisible(), "Cancel does not hide it");
    }
    CCustomizedAppearance& dialog() { return *CCustomizedAppearance::shared(m_list); }

private:
    CWnd m_owner;
    CCommonListCtrl m_list;
};

}  // namespace

void benchDialog(Figures& figures) {
    Customized customized;
    customized.openAndCancel();
    const double open = medianSeconds(kRepeats, [&] { customized.openAndCancel(); });
    std::vector<double> first;
    for (int i = 0; i < kRepeats; ++i) {
        customized.dialog().DestroyWindow();
        pumpMessages();
        first.push_back(medianSeconds(1, [&] { customized.openAndCancel(); }));
    }
    customized.dialog().DestroyWindow();
    figures.push_back({"dialog_open_ms", open * 1e3, "ms", "60 columns, 20 keywords; painted, then hidden", 60, 25});
    figures.push_back({"dialog_first_ms", median(first) * 1e3, "ms", "the same, and the window made", 150, 60});
}

// AppearanceDialog: what the two dialogs of a list's looks have in common. They edit a working copy of the list's
// record, font, colours and keywords, and hand it over with Apply; what was not applied is lost when the dialog is
// filled again. Enter applies, or adds the keyword while its field has the focus; it never closes.
//
// A dialog borrows its list: a list that goes, or its window, is forgotten, and the dialog hides. Whatever runs a
// message loop or calls a host may end list and dialog; what is touched afterwards is looked up again.
#pragma once

#include "quor/edits/ClrButton.h"
#include "quor/edits/XListCtrl.h"
#include "quor/foundation/core/ColumnRecords.h"
#include "quor/framework/ZTDialog.h"

#include <optional>
#include <vector>

class CCommonListCtrl;

namespace quor::list {

struct KeywordRow;

class QUOR_CONTROLS_API AppearanceDialog : public CZTDialog {
    DECLARE_DYNAMIC(AppearanceDialog)

public:
    ~AppearanceDialog() override;

    // Takes the list, null for none, and fills the dialog from it if there is a window.
    void SetParentList(CCommonListCtrl* list);
    // The dialog with its title, on the list, shown and in front.
    void openOn(CCommonListCtrl& list);

    // To every dialog of the process: the list dies, or its columns were built anew.
    static void forgetList(const CCommonListCtrl* list);
    static void columnsRebuilt(const CCommonListCtrl* list);

    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    // What tells the dialogs apart.
    struct Kind {
        UINT dialogTemplate;
        const char* title;                  // the list's name follows
        const char* section;                // of the recovery settings
        int keywordList;                    // control id
        std::vector<const char*> headings;  // of its columns; all but the first hold colours
    };
    AppearanceDialog(const Kind& kind, CWnd* parent);

    // A moment to which a message loop or a host may return a dialog that is no longer the same.
    struct Moment {
        HWND window;
        CCommonListCtrl* list;
        unsigned filled;
    };
    Moment moment() const { return {m_hWnd, m_pParentList, m_filled}; }
    // Whether the dialog lives and shows the same list, not filled again. May be asked of a dialog that has died.
    bool isStill(const Moment& then) const;

    // Shows the list's record, of which m_record is a fresh copy.
    virtual void fill() = 0;
    // The list has other columns.
    virtual void fillColumns() {}
    // The steps of applying in which the dialogs differ: colours of the control; the keywords, as rows of the table,
    // into m_record and its text; what else the list shall know.
    virtual void applyColors(CCommonListCtrl& list) = 0;
    virtual CString takeRows(const std::vector<KeywordRow>& rows) = 0;
    virtual void applied(CCommonListCtrl&) {}

    void insertRow(int place, const KeywordRow& row);
    // A row that is added now.
    virtual KeywordRow newRow(const CString& keyword) const = 0;
    // The system's dialog, beginning with a colour. Nothing if it was left, or the dialog is not as it was.
    std::optional<COLORREF> pickColor(COLORREF present);

    void OnOK() override;
    afx_msg void OnShowWindow(BOOL show, UINT status);
    afx_msg void OnFont();
    afx_msg void OnAddKeyword();
    afx_msg void OnApply();
    afx_msg void OnKeywordKey(NMHDR* header, LRESULT* result);
    afx_msg LRESULT OnColorboxClicked(WPARAM row, LPARAM column);
    DECLARE_MESSAGE_MAP()

    CCommonListCtrl* m_pParentList = nullptr;
    cCustomizedAppearanceSettings m_record;  // the working copy, with arrays of its own
    CXListCtrl m_keywords;

private:
    void fillFromList();
    void forget();
    void storeAppearance(CCommonListCtrl& list, const CString& tail);
    std::vector<KeywordRow> rows() const;
    void keepFocusUsable();

    const Kind m_kind;
    CClrButton m_fontButton;
    unsigned m_filled = 0;  // how often
};

}  // namespace quor::list

// One pane of the frame: a form view that is filled by one list. The strip above it is its holder's (CPaneHolder).
//
// It is a form view so that its list finds a customisable parent: the list then registers itself, takes its font and
// hears of changes to it. The view deletes itself with its window, as views do; the list and the rows are its members.
#pragma once

#include "host/core/MarketText.h"
#include "host/panes/ColumnFill.h"
#include "quor/list/CommonListCtrl.h"
#include "quor/platform/Framework.h"

#include <functional>
#include <string>

namespace terminal {

// Puts `text` into a string of the framework without a new buffer where the old one has room.
void assignText(CString& text, std::string_view value);
// All bytes of a string, for as long as it is left alone.
inline std::string_view viewOf(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

// A number with separators between its thousands, behind any sign; any other text stays as it is.
void groupDigits(CCommonListCtrl& list, CString& number);
std::string grouped(CCommonListCtrl& list, std::string_view number);
// "1 row", "1,867 rows".
std::string countedIn(CCommonListCtrl& list, std::int64_t count, const char* what);

// A column of a list: heading, width on a screen of 96 dots an inch, list column format (0 left, 1 right, 2 centred),
// sort type.
struct ColumnSpec {
    const char* heading;
    int width;
    int format;
    int dataType;
};

class CListPane : public CBCGPFormView {
public:
    // `title` stands in the holder's strip, and is the name under which the list's settings are kept.
    explicit CListPane(const char* title);

    // Makes the pane, its list included, as a child of `parent`, and puts it in if that is a holder. FALSE: the system
    // gave no window.
    BOOL CreatePane(CWnd* parent, UINT id);

    virtual CCommonListCtrl& list() = 0;
    const char* title() const { return m_title; }
    // Writes what the list writes when its window goes, for a session that ends.
    virtual void saveState();
    // Called when the pane or its list loses its window, and before the view deletes itself.
    void setOnGone(std::function<void()> onGone) { m_onGone = std::move(onGone); }
    // Shown in the holder's strip.
    void setRemark(const std::string& remark);
    const std::string& remark() const { return m_remark; }
    // The remark of a pane that tells how many rows it shows.
    virtual void showCount() {}

    // Gives the columns their first widths again, widened in proportion where they leave room at the right. From then
    // on the last one takes what room there is.
    void fitColumns();
    // The same for a list that no former run has left a layout for.
    void fitNewColumns();
    // The width of the column at a place, as it would be in a list without room to spare.
    int ownWidth(int place) { return m_fill.ownWidth(place); }

protected:
    // The section of the settings in which the list's columns are kept.
    virtual std::string layoutSection() const { return m_title; }
    virtual BOOL createList() = 0;
    // Gives the list its name, columns and colours; for createList, before the list's window exists.
    void describeColumns(const ColumnSpec* columns, int count);

    void OnInitialUpdate() override;
    void PostNcDestroy() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    // Gives the list its place: all there is.
    virtual void layOut();
    // The context menu has closed, and the dialog with it that one of its items may have run.
    virtual void menuClosed() {}

private:
    BOOL paintLined(WPARAM wParam, LPARAM lParam, LRESULT* result);
    void darken();
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* former);
    BOOL OnEraseBkgnd(CDC* dc);
    void OnContextMenu(CWnd* window, CPoint point);
    void OnParentNotify(UINT message, LPARAM lParam);
    LRESULT OnFiltersChanged(WPARAM, LPARAM);

    const char* m_title;
    bool m_filtersChanged = false;  // the message that rebuilds the list is on its way
    std::string m_remark;
    ColumnFill m_fill;
    std::function<void()> m_onGone;

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal

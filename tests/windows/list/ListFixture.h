// Lists on a dialog of their owner's: a CBCGPDialog without a title, child of the test's frame, with one list view in
// its template. The owner paints rows by filling them, and records what reaches it.
#pragma once

#include "src/list/CommonListCtrl.h"
#include "support/CallRecorder.h"
#include "support/FakeHost.h"
#include "support/Road.h"
#include "support/WindowFixture.h"

namespace list_tests {

inline constexpr int kListId = 1001;
inline constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS;
inline const CRect kListRect(10, 10, 410, 210);

class Owner : public CBCGPDialog {
public:
    // Makes the window; the template's list view stands at kListRect.
    bool create(CWnd& parent);

    std::function<void(const DRAWITEMSTRUCT&)> paintsRow;  // in place of a fill
    bool paints = true;        // false: WM_DRAWITEM is left to the framework, which reflects it
    int drawn = 0;             // WM_DRAWITEM messages that were painted
    UINT extraRowHeight = 0;   // added to what the list answers to WM_MEASUREITEM
    test::CallRecorder calls;  // "rebuilt <id> <lParam>", "reordered <id> <lParam>"

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PostNcDestroy() override {}
};

// A list that tells what runs.
class TestList : public CCommonListCtrl {
public:
    test::CallRecorder calls;
    int drawItems = 0;

    void SaveColumnProfile() override { calls.record("save", m_arrColumns.GetCount()); }
    void ReadSortOrderProfile() override { calls.record("read sort order"); }
    void DrawItem(LPDRAWITEMSTRUCT item) override {
        ++drawItems;
        CCommonListCtrl::DrawItem(item);
    }
    using CCommonListCtrl::OnEraseBkgnd;
};

struct ListFixture : test::WindowFixture {
    ListFixture();
    void TearDown() override;

    // The two roads to a window.
    void subclass(CCommonListCtrl& list) { list.SubclassDlgItem(kListId, &owner); }
    void create(CCommonListCtrl& list, DWORD style = kListStyle);
    void createEx(CCommonListCtrl& list);
    // The one of `road`.
    void giveWindow(CCommonListCtrl& list) { road == test::Road::created ? create(list) : subclass(list); }

    static void addColumns(CCommonListCtrl& list, std::initializer_list<const char*> names, int width = 80);
    static void addRows(CCommonListCtrl& list, int count);
    // "name:width" for each header item, in index order.
    static std::string header(const CCommonListCtrl& list);
    static std::string ints(const CArray<int, int>& array);

    Owner owner;
    test::Road road = test::Road::subclassed;

private:
    void removeTemplateControl();
};

}  // namespace list_tests

// Lists in an owner, an empty CBCGPDialog that is a child of the test's frame. It paints rows by filling them and
// records what lists tell it.
#pragma once

#include "quor/list/CommonListCtrl.h"
#include "support/CallRecorder.h"
#include "support/FakeHost.h"
#include "support/Road.h"
#include "support/WindowFixture.h"

#include <functional>
#include <initializer_list>
#include <string>

namespace list_tests {

using test::Calls;

inline constexpr int kListId = 1001;
inline constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS;
inline const CRect kListRect(10, 10, 410, 210);

class Owner : public CBCGPDialog {
public:
    void create(CWnd& parent) {
        struct {
            DLGTEMPLATE dialog;
            WORD noMenu, noClass, noTitle;
        } empty{};
        empty.dialog.style = WS_CHILD | WS_VISIBLE;
        empty.dialog.cx = empty.dialog.cy = 300;
        EXPECT_TRUE(CreateIndirect(&empty.dialog, &parent));
        SetWindowText("Banks");
    }

    // Null: WM_DRAWITEM is left to the framework, which reflects it.
    std::function<void(const DRAWITEMSTRUCT&)> paintsRow = [](const DRAWITEMSTRUCT& item) {
        CDC::FromHandle(item.hDC)->FillSolidRect(&item.rcItem, RGB(40 * (item.itemID % 5), 90, 160));
    };
    int drawn = 0;             // how many came
    UINT extraRowHeight = 0;   // added to what the list answers to WM_MEASUREITEM
    test::CallRecorder calls;  // "rebuilt <id> <lParam>", "reordered <id> <lParam>"

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_DRAWITEM) {
            ++drawn;
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (paintsRow) {
                paintsRow(item);
                return TRUE;
            }
        }
        if (message == WM_USER + 123) calls.record("rebuilt", wParam, lParam);
        if (message == WM_USER + 500) calls.record("reordered", wParam, lParam);
        const LRESULT result = CBCGPDialog::WindowProc(message, wParam, lParam);
        if (message == WM_MEASUREITEM) reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight += extraRowHeight;
        return result;
    }
    void PostNcDestroy() override {}
};

// A list that tells what runs.
class TestList : public CCommonListCtrl {
public:
    bool marketWatch = false;
    test::CallRecorder calls;             // "imported", "levels sorted"; of a market watch "exported", "imported watch"
    std::function<void(int row)> onText;  // each reading of a text by its list

    CString GetItemText(int row, int place) override {
        if (onText) onText(row);
        return CCommonListCtrl::GetItemText(row, place);
    }
    using CCommonListCtrl::GetItemText;
    void SortListOnMultiplelevel() override { calls.record("levels sorted"); }

protected:
    bool IsMarketWatch() const override { return marketWatch; }
    bool ExportMarketWatch(const CString& name, const CString&) override {
        if (marketWatch) calls.record("exported", name.GetString());
        return marketWatch;
    }
    bool ImportMarketWatch(const CString&) override {
        if (marketWatch) calls.record("imported watch");
        return marketWatch;
    }
    void OnColumnsImported() override { calls.record("imported"); }
};

// "name:width" of each heading, as they stand on screen.
inline std::string header(const CListCtrl& list) {
    std::string shown;
    for (int place = 0; place < list.GetHeaderCtrl()->GetItemCount(); ++place) {
        char name[80] = "";
        LVCOLUMN column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = name;
        column.cchTextMax = sizeof name;
        list.GetColumn(list.GetHeaderCtrl()->OrderToIndex(place), &column);
        shown += (place ? " " : "") + std::string(name) + ":" + std::to_string(column.cx);
    }
    return shown;
}

// The texts of a column, from the top.
inline std::string column(CCommonListCtrl& list, int place) {
    std::string texts;
    for (int row = 0; row < list.GetItemCount(); ++row)
        texts += (row ? " " : "") + std::string(list.GetItemText(row, place).GetString());
    return texts;
}

inline std::string ints(const CArray<int, int>& array) {
    std::string text;
    for (INT_PTR i = 0; i < array.GetCount(); ++i) text += (i ? " " : "") + std::to_string(array.GetAt(i));
    return text;
}

// What the header shows, and the place of each column.
inline std::string columns(const CCommonListCtrl& list) { return header(list) + " | " + ints(list.m_arrOrder); }

// "locked column order".
inline std::string lock(const CCommonListCtrl& list) {
    CString text;
    text.Format("%d %d %d", list.m_bSortLocked, list.m_nLockSortColumn, list.m_nLockSortOrder);
    return text.GetString();
}

// Shows these columns, the first 40 pixels wide and each other one more.
inline void loadHeaders(CCommonListCtrl& list, std::initializer_list<int> shown) {
    CArray<int, int> numbers, widths;
    for (const int each : shown) widths.Add(40 + static_cast<int>(numbers.Add(each)));
    list.LoadHeaders(&numbers, &widths);
}

inline void addColumns(CCommonListCtrl& list, std::initializer_list<const char*> names, int width = 80) {
    for (const char* name : names) {
        sQuorColInfo record;
        setColumnName(record, name);
        record.iWidth = width;
        list.m_arrColumns.Add(record);
    }
}

inline void addRows(CCommonListCtrl& list, int count) {
    for (int row = 0; row < count; ++row) list.InsertItem(row, ("r" + std::to_string(row)).c_str());
}

struct ListFixture : test::WindowFixture {
    ListFixture() {
        resetFakeHost();
        CCommonListCtrl::SetRecoveryFiles("", "");
        owner.create(frame());
    }
    void TearDown() override {
        fakeHost().refuseWrites = false;
        if (list.m_hWnd) list.DestroyWindow();
        if (owner.m_hWnd) owner.DestroyWindow();
        WindowFixture::TearDown();
    }

    // The two roads to a window, and that of `road`.
    void create(CCommonListCtrl& made, DWORD style = kListStyle) {
        EXPECT_EQ(made.Create(style, kListRect, &owner, kListId), 0);
    }
    void subclass(CCommonListCtrl& taken, DWORD style = kListStyle) {
        ::CreateWindowExA(0, WC_LISTVIEWA, "", style, kListRect.left, kListRect.top, kListRect.Width(),
                          kListRect.Height(), owner.m_hWnd, reinterpret_cast<HMENU>(kListId), nullptr, nullptr);
        taken.SubclassDlgItem(kListId, &owner);
    }
    void giveWindow(CCommonListCtrl& some) { road == test::Road::created ? create(some) : subclass(some); }
    void start(CCommonListCtrl& some, std::initializer_list<const char*> names = {"Symbol", "Price", "Qty"}) {
        some.m_csListName = "orders";
        addColumns(some, names);
        giveWindow(some);
        some.InsertColumnsForList(nullptr);
    }
    // What the host keeps for lists that were started.
    static std::string& stored(const char* key) { return fakeHost().settings[{"orders", key}]; }

    test::Road road = test::Road::created;
    Owner owner;
    TestList list;
};

}  // namespace list_tests

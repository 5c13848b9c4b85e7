#include "ListFixture.h"

#include <cstring>

namespace list_tests {

namespace {

// A dialog template in memory: no title, no font, one list view.
std::vector<WORD> dialogTemplate() {
    std::vector<WORD> words;
    const auto put = [&](const auto& record) {
        const auto* bytes = reinterpret_cast<const WORD*>(&record);
        words.insert(words.end(), bytes, bytes + sizeof(record) / sizeof(WORD));
    };
    const auto putText = [&](const wchar_t* text) { words.insert(words.end(), text, text + std::wcslen(text) + 1); };
    DLGTEMPLATE dialog{};
    dialog.style = WS_CHILD | WS_VISIBLE;
    dialog.cdit = 1;
    dialog.cx = dialog.cy = 300;
    put(dialog);
    words.insert(words.end(), {0, 0, 0});  // menu, class, title
    if (words.size() % 2) words.push_back(0);
    DLGITEMTEMPLATE item{};
    item.style = kListStyle;
    item.cx = item.cy = 100;
    item.id = kListId;
    put(item);
    putText(L"SysListView32");
    words.insert(words.end(), {0, 0});  // title, creation data
    return words;
}

}  // namespace

bool Owner::create(CWnd& parent) {
    ::InitCommonControls();
    const std::vector<WORD> words = dialogTemplate();
    if (!CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(words.data()), &parent)) return false;
    GetDlgItem(kListId)->MoveWindow(kListRect);
    return true;
}

LRESULT Owner::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM && paints) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (paintsRow) {
            paintsRow(item);
        } else {
            CDC::FromHandle(item.hDC)->FillSolidRect(&item.rcItem, RGB(40 * (item.itemID % 5), 90, 160));
        }
        ++drawn;
        return TRUE;
    }
    if (message == WM_USER + 123) calls.record("rebuilt", wParam, lParam);
    if (message == WM_USER + 500) calls.record("reordered", wParam, lParam);
    const LRESULT result = CBCGPDialog::WindowProc(message, wParam, lParam);
    if (message == WM_MEASUREITEM) reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight += extraRowHeight;
    return result;
}

ListFixture::ListFixture() {
    resetFakeHost();
    CCommonListCtrl::SetRecoveryFiles("", "");
    EXPECT_TRUE(owner.create(frame()));
}

void ListFixture::TearDown() {
    if (owner.m_hWnd) owner.DestroyWindow();
    WindowFixture::TearDown();
}

void ListFixture::removeTemplateControl() {
    if (CWnd* control = owner.GetDlgItem(kListId)) control->DestroyWindow();
}

void ListFixture::create(CCommonListCtrl& list, DWORD style) {
    removeTemplateControl();
    EXPECT_EQ(list.Create(style, kListRect, &owner, kListId), 0);
}

void ListFixture::createEx(CCommonListCtrl& list) {
    removeTemplateControl();
    EXPECT_EQ(list.CreateEx(0, kListStyle, kListRect, &owner, kListId), 0);
}

void ListFixture::addColumns(CCommonListCtrl& list, std::initializer_list<const char*> names, int width) {
    for (const char* name : names) {
        sQuorColInfo column;
        setColumnName(column, name);
        column.iWidth = width;
        list.m_arrColumns.Add(column);
    }
}

void ListFixture::addRows(CCommonListCtrl& list, int count) {
    for (int row = 0; row < count; ++row) {
        CString text;
        text.Format("r%d", row);
        list.InsertItem(row, text);
    }
}

std::string ListFixture::header(const CCommonListCtrl& list) {
    std::string picture;
    for (int place = 0; place < list.GetHeaderCtrl()->GetItemCount(); ++place) {
        char name[80] = "";
        LVCOLUMN column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = name;
        column.cchTextMax = sizeof name;
        list.GetColumn(place, &column);
        picture += (place ? " " : "") + std::string(name) + ":" + std::to_string(column.cx);
    }
    return picture;
}

std::string ListFixture::ints(const CArray<int, int>& array) {
    std::string text;
    for (INT_PTR i = 0; i < array.GetCount(); ++i) text += (i ? " " : "") + std::to_string(array.GetAt(i));
    return text;
}

}  // namespace list_tests

// The dialogs of the library, open on lists of their own.
#include "host/gallery/Exhibits.h"
#include "quor/edits/FontSettingDlg.h"
#include "quor/grid/FilterListCtrl.h"
#include "quor/grid/FilterText.h"
#include "quor/grid/ListTrendSetting.h"
#include "quor/list/CustomizedAppearance.h"
#include "quor/list/UserCusomize.h"
#include "quor/resource/resource.h"

namespace gallery {

namespace {

constexpr UINT kListId = 100;
const CSize kNoStage(0, 0);
constexpr const char* kLongName = "A heading that is as long as a heading of a column may be, or so";
constexpr int kManyRows = 12;

// The entries of the property box.
constexpr int kText = 0;

struct Column {
    const char* name;
    int type;
};
const std::vector<Column> kColumns = {
    {"Symbol", kTypeText}, {"Price", kTypeDecimal}, {"Quantity", kTypeInteger}, {"Status", kTypeText}};

std::vector<Column> manyColumns() {
    std::vector<Column> columns(kManyRows, {"Another number", kTypeDecimal});
    columns.front().name = kLongName;
    return columns;
}

// Its dialogs hide when it goes.
template <class List>
List& listOn(Stage& stage, const std::vector<Column>& columns) {
    auto& list = stage.add<List>();
    list.m_csListName = "Orders";
    for (const Column& column : columns) {
        sQuorColInfo record;
        setColumnName(record, column.name);
        record.iDataType = column.type;
        list.m_arrColumns.Add(record);
    }
    list.Create(WS_CHILD | LVS_REPORT, CRect(0, 0, 0, 0), &stage.window, kListId);
    list.InsertColumnsForList(nullptr);
    list.m_Appearance.crBackground = RGB(13, 17, 23);
    list.m_Appearance.crText = RGB(214, 221, 229);
    return list;
}

template <class Dialog, class List>
Dialog* openOn(Stage& stage, List& list) {
    Dialog* const dialog = Dialog::shared(list);
    if (dialog) dialog->openOn(list);
    if (dialog) stage.dialog = *dialog;
    return dialog;
}

// The user's choice of an entry.
void choose(CWnd& dialog, int box, int entry) {
    CWnd& control = *dialog.GetDlgItem(box);
    control.SendMessage(CB_SETCURSEL, static_cast<WPARAM>(entry));
    dialog.SendMessage(WM_COMMAND, MAKEWPARAM(box, CBN_SELCHANGE), reinterpret_cast<LPARAM>(control.m_hWnd));
}

void press(CWnd& dialog, int button) { dialog.GetDlgItem(button)->SendMessage(BM_CLICK); }

void goTo(CWnd& dialog, int control) {
    dialog.SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.GetDlgItem(control)->m_hWnd), TRUE);
}

void chooseRow(CWnd& dialog, int table, int row) {
    goTo(dialog, table);
    static_cast<CXListCtrl&>(*dialog.GetDlgItem(table))
        .SetItemState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

// ---- A list's looks

struct Looks {
    bool colours = true;
    bool keywords = true;
};

void giveKeywords(CCommonListCtrl& list) {
    CStringArray words;
    CArray<DWORD, DWORD> colours;
    for (const char* word : {"PARTLY FILLED", "REJECTED", "OPEN"}) {
        words.Add(word);
        colours.Add(RGB(200, 60 * static_cast<int>(colours.GetSize()), 90));
    }
    list.SetDefaultAttributes(3, &words, &colours);
}

Exhibit appearance(const char* state, Looks looks, const std::function<void(CCommonListCtrl&)>& prepare,
                   const std::function<void(CWnd& dialog)>& use) {
    return {"CCustomizedAppearance", state, kNoStage, [=](Stage& stage) {
                auto& list = listOn<CCommonListCtrl>(stage, kColumns);
                giveKeywords(list);
                list.m_bUseColors = looks.colours;
                list.m_Appearance.bKeywordsEnabled = looks.keywords;
                prepare(list);
                if (CWnd* const dialog = openOn<CCustomizedAppearance>(stage, list)) use(*dialog);
            }};
}

Exhibit appearance(const char* state, Looks looks, const std::function<void(CWnd& dialog)>& use) {
    return appearance(
        state, looks, [](CCommonListCtrl&) {}, use);
}

void makeLong(CCommonListCtrl& list) {
    list.m_csListName = kLongName;
    list.m_Appearance.csFontName = "DejaVu Sans Mono Condensed";
    list.m_Appearance.csFontSize = "72";
    for (int i = 0; i < kManyRows; ++i) {
        list.m_Appearance.pKeywords->Add("A KEYWORD OF SOME LENGTH");
        list.m_Appearance.pKeywordColors->Add(RGB(20 * i, 120, 200));
    }
    setColumnName(list.m_arrColumns.ElementAt(3), kLongName);
}

Exhibit userAppearance(const char* state, int rows) {
    return {"CUserCusomize", state, kNoStage, [=](Stage& stage) {
                auto& list = listOn<CCommonListCtrl>(stage, kColumns);
                auto& record = list.m_Appearance;
                record.freeKeywordArrays();
                record.pUserKeywords = new CStringArray;
                record.pUserTextColors = new CArray<DWORD, DWORD>;
                record.pUserBackColors = new CArray<DWORD, DWORD>;
                for (int row = 0; row < rows; ++row) {
                    record.pUserKeywords->Add(row % 2 ? "REJECTED" : "PARTLY FILLED");
                    record.pUserTextColors->Add(row % 2 ? RGB(255, 255, 255) : RGB(0, 0, 0));
                    record.pUserBackColors->Add(row % 2 ? RGB(150, 30, 40) : RGB(240, 196, 90));
                }
                CWnd* const dialog = openOn<CUserCusomize>(stage, list);
                if (dialog && rows > 0) chooseRow(*dialog, IDC_USER_KEYWORDS, 1);
            }};
}

// ---- A grid's trends

Exhibit trendSettings(const char* state, const std::vector<Column>& columns, const std::vector<int>& chosen) {
    return {"CListTrendSetting", state, kNoStage, [=](Stage& stage) {
                auto& grid = listOn<CFilterListCtrl>(stage, columns);
                CArray<int, int> numbers;
                for (const int column : chosen) numbers.Add(column);
                grid.SetTrendColumns(&numbers);
                grid.TrendBackground = chosen.empty();
                grid.TrendInterval = chosen.empty() ? 0 : 9000;
                openOn<CListTrendSetting>(stage, grid);
            }};
}

// ---- The values of a column

Exhibit filterText(const char* state, const std::vector<const char*>& values) {
    return {"CFilterText", state, kNoStage, [=](Stage& stage) {
                CFilterText* const popup = CFilterText::shared(&stage.window);
                if (!popup) return;
                popup->ShowWindow(SW_SHOW);
                popup->values().ResetContent();
                for (const char* value : values) popup->values().AddString(value);
                popup->values().SetSel(1);
                stage.dialog = *popup;
            }};
}

// ---- A font

Exhibit fontSetting(const char* state, const char* name, const char* size) {
    return {"CFontSettingDlg", state, kNoStage,
            [=](Stage& stage) { CFontSettingDlg(name, size, &stage.window).DoModal(); }, true};
}

}  // namespace

std::vector<Exhibit> dialogExhibits() {
    return {
        appearance("background", {}, [](CWnd&) {}),
        appearance("text", {}, [](CWnd& dialog) { choose(dialog, IDC_PROPERTY, kText); }),
        appearance("keyword chosen", {},
                   [](CWnd& dialog) {
                       choose(dialog, IDC_PROPERTY, kText);
                       press(dialog, IDC_CHANGE_KEYWORD_COLUMN);
                       dialog.SetDlgItemText(IDC_NEW_KEYWORD, "CANCELLED");
                       chooseRow(dialog, IDC_KEYWORDS, 1);
                   }),
        appearance("no keywords", {.keywords = false}, [](CWnd& dialog) { choose(dialog, IDC_PROPERTY, kText); }),
        appearance("no colours", {.colours = false}, [](CWnd&) {}),
        appearance("long texts", {}, &makeLong, [](CWnd& dialog) { choose(dialog, IDC_PROPERTY, kText); }),
        userAppearance("empty", 0),
        userAppearance("keyword chosen", 2),
        userAppearance("many keywords", kManyRows),
        trendSettings("none chosen", kColumns, {}),
        trendSettings("two chosen", kColumns, {1, 2}),
        trendSettings("many columns", manyColumns(), {0}),
        filterText("few values", {"CANCELLED", "OPEN", "REJECTED"}),
        filterText("many values", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "A value that is wider than its list",
                                   "11", "12", "13", "14"}),
        fontSetting("normal", "DejaVu Serif", "14"),
        fontSetting("largest", "Liberation Sans Narrow", "72"),
        fontSetting("not installed", "A face that nobody has installed", "8"),
    };
}

}  // namespace gallery

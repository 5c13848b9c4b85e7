#include "ListFixture.h"
#include "platform/tools/QuorTools.h"
#include "src/foundation/core/Globals.h"

namespace {

using namespace list_tests;

struct Appearance : ListFixture {
    ~Appearance() override { Set_Apperance_setting(cCustomizedAppearanceSettings()); }

    static cCustomizedAppearanceSettings colors(COLORREF back, COLORREF text) {
        cCustomizedAppearanceSettings settings;
        settings.crBackground = back;
        settings.crText = text;
        settings.csFontName = "Tahoma";
        settings.csFontSize = "20";
        return settings;
    }
    static int fontHeight(const CWnd& list) {
        LOGFONT font{};
        list.GetFont()->GetLogFont(&font);
        return font.lfHeight;
    }
    static int heightOf(int points) {
        const CClientDC screen(nullptr);
        return -::MulDiv(points, screen.GetDeviceCaps(LOGPIXELSY), 72);
    }
};

TEST_F(Appearance, ListsStartWithTheApplicationsLooks) {
    Set_Apperance_setting(colors(0x111111, 0x222222));
    TestList list;
    subclass(list);
    EXPECT_EQ(list.GetBkColor(), 0x111111u);
    EXPECT_EQ(list.GetTextBkColor(), 0x111111u);
    EXPECT_EQ(list.GetTextColor(), 0x222222u);
    EXPECT_EQ(fontHeight(list), heightOf(20));
    EXPECT_EQ(list.m_bCustomized, 0);
}

TEST_F(Appearance, ColoursAreLeftAloneOnRequest) {
    Set_Apperance_setting(colors(0x111111, 0x222222));
    TestList list;
    list.m_bUseColors = 0;
    subclass(list);
    EXPECT_EQ(list.GetBkColor(), 0u);
    EXPECT_EQ(fontHeight(list), heightOf(20));
}

TEST_F(Appearance, ARecordOfItsOwnIsLookedForUnderNameAndId) {
    char folder[MAX_PATH];
    ::GetTempPathA(MAX_PATH, folder);
    CString file = CString(folder) + "list_tests.ini", value = "0,FF00,Tahoma,9", error;
    ASSERT_NE(quoru_appdata_ini_file_operations(1, "CUSTOMIZE_LISTS", "orders-1001", value, file, error), 0) << error;
    CCommonListCtrl::SetRecoveryFiles(file, "");
    Set_Apperance_setting(colors(0x111111, 0x222222));
    TestList list;
    list.m_csListName = "orders";
    subclass(list);
    EXPECT_EQ(list.m_bCustomized, 1);
    EXPECT_EQ(list.GetBkColor(), 0u);  // not the application's
    ::DeleteFileA(file);
}

TEST_F(Appearance, GeneralSettingsReachListsWithoutARecordOrAllByForce) {
    TestList plain, own;
    subclass(plain);
    own.Create(kListStyle, kListRect, &owner, 77);
    own.m_bCustomized = 1;
    Set_Apperance_setting(colors(0x333333, 0x444444));
    CCommonListCtrl::ApplyGeneralSettings(false);
    EXPECT_EQ(plain.GetBkColor(), 0x333333u);
    EXPECT_EQ(plain.m_Appearance.crText, 0x444444u);
    EXPECT_EQ(plain.m_Appearance.csFontSize, "20");
    EXPECT_EQ(fontHeight(plain), heightOf(20));
    EXPECT_EQ(own.GetBkColor(), 0u);
    plain.m_bUseColors = 0;
    Set_Apperance_setting(colors(0x555555, 0x666666));
    CCommonListCtrl::ApplyGeneralSettings(true);
    EXPECT_EQ(own.GetBkColor(), 0x555555u);
    EXPECT_EQ(plain.GetBkColor(), 0x333333u);
}

TEST_F(Appearance, FontOfAListIsReplacedOnlyByOneThatCanBeMade) {
    TestList list;
    subclass(list);
    CCommonListCtrl::SetListFontProperty(&list, kListId, "Tahoma", "15");
    EXPECT_EQ(fontHeight(list), heightOf(15));
    LOGFONT font{};
    list.GetFont()->GetLogFont(&font);
    EXPECT_STREQ(font.lfFaceName, "Tahoma");
    for (CWnd* nobody : {static_cast<CWnd*>(nullptr), static_cast<CWnd*>(&frame())}) {
        CCommonListCtrl::SetListFontProperty(nobody, 0, "Arial", "30");
    }
    CListCtrl plain;
    ASSERT_TRUE(plain.Create(WS_CHILD | LVS_REPORT, CRect(0, 0, 50, 50), &frame(), 9));
    plain.SetFont(list.GetFont());
    for (const int size : {20, 30}) {
        CCommonListCtrl::SetListFontProperty(&plain, 0, "Arial", std::to_string(size).c_str());
        EXPECT_EQ(fontHeight(plain), heightOf(size));
    }
    plain.DestroyWindow();
    if (heightOf(1) == -1) CCommonListCtrl::SetListFontProperty(&list, kListId, "Arial", "1");
    EXPECT_EQ(fontHeight(list), heightOf(15));
    list.DestroyWindow();
    CCommonListCtrl::SetListFontProperty(&list, kListId, "Arial", "30");
}

TEST_F(Appearance, DefaultKeywordsFillEmptyArraysOnly) {
    TestList list;
    CStringArray keywords;
    CArray<DWORD, DWORD> colours;
    keywords.Add("BUY");
    colours.Add(5);
    list.SetDefaultAttributes(4, &keywords, &colours);
    keywords.Add("SELL");
    list.SetDefaultAttributes(6, &keywords, &colours);
    EXPECT_EQ(list.m_Appearance.pKeywords->GetCount(), 1);
    EXPECT_EQ(list.m_Appearance.iKeywordColumn, 4);
    EXPECT_EQ(list.m_Appearance.pKeywordColors->GetAt(0), 5u);
    list.SetDefaultProperties(&keywords, &colours, nullptr);
    EXPECT_EQ(list.m_Appearance.pUserKeywords->GetCount(), 2);
    EXPECT_EQ(list.m_Appearance.pUserBackColors, nullptr);
}

}  // namespace

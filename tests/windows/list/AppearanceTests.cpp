#include "ListFixture.h"
#include "PictureMix.h"
#include "quor/foundation/core/Globals.h"
#include "quor/platform/tools/QuorTools.h"
#include "support/Canvas.h"

namespace {

using namespace list_tests;

struct Appearance : ListFixture {
    ~Appearance() override { Set_Apperance_setting(cCustomizedAppearanceSettings()); }

    static void setGeneral(COLORREF back, COLORREF text) {
        cCustomizedAppearanceSettings settings;
        settings.crBackground = back;
        settings.crText = text;
        settings.csFontName = "Tahoma";
        settings.csFontSize = "20";
        Set_Apperance_setting(settings);
    }
    // "face height", and that of a face in points.
    static std::string font(const CWnd& list) {
        LOGFONT description{};
        list.GetFont()->GetLogFont(&description);
        return description.lfFaceName + (" " + std::to_string(description.lfHeight));
    }
    static std::string font(const char* face, int points) {
        const CClientDC screen(nullptr);
        return face + (" " + std::to_string(-::MulDiv(points, screen.GetDeviceCaps(LOGPIXELSY), 72)));
    }
};

TEST_F(Appearance, RecordsOfItsOwnAreFoundUnderNameAndIdAndWinOverDefaults) {
    char folder[MAX_PATH];
    ::GetTempPathA(MAX_PATH, folder);
    CString file = CString(folder) + "list_tests.ini";
    const auto write = [&](const char* section, const char* text) {
        CString value = text, error;
        EXPECT_TRUE(quoru_appdata_ini_file_operations(1, section, "orders-1001", value, file, error)) << error;
    };
    write("CUSTOMIZE_LISTS", "10,FF,Arial,9,1,buy,AA,");
    write("USER_CUSTOMIZE_LISTS", "20,EE,Tahoma,12,sell,1,2,");
    CCommonListCtrl::SetRecoveryFiles(file, "");
    setGeneral(0x111111, 0x222222);
    start(list);
    ::DeleteFileA(file);
    EXPECT_EQ(list.m_bCustomized, 1);
    EXPECT_EQ(list.GetBkColor(), 0x20u);
    EXPECT_EQ(list.GetTextColor(), 0xEEu);
    EXPECT_TRUE(font(list).starts_with("Arial "));
    EXPECT_EQ(list.m_Appearance.pUserBackColors->GetAt(0), 2u);
    CStringArray keywords;
    CArray<DWORD, DWORD> colours;
    keywords.Add("HOLD");
    colours.Add(5);
    TestList without;
    for (TestList* each : {&list, &without}) {
        each->SetDefaultAttributes(4, &keywords, nullptr);
        each->SetDefaultProperties(nullptr, nullptr, &colours);
    }
    EXPECT_EQ(list.m_Appearance.pKeywords->GetAt(0), "BUY");
    EXPECT_EQ(without.m_Appearance.pKeywords->GetAt(0), "HOLD");
    EXPECT_EQ(without.m_Appearance.pUserBackColors->GetAt(0), 5u);
}

TEST_F(Appearance, ListsFollowTheApplicationsLooksUnlessTheyHaveTheirOwn) {
    TestList own, colourless;
    colourless.m_bUseColors = 0;
    setGeneral(0x111111, 0x222222);
    subclass(list);
    create(own);
    create(colourless);
    EXPECT_EQ(list.GetBkColor(), 0x111111u);
    EXPECT_EQ(list.GetTextColor(), 0x222222u);
    EXPECT_EQ(list.m_bCustomized, 0);
    EXPECT_EQ(font(list), font("Tahoma", 20));
    EXPECT_EQ(font(colourless), font("Tahoma", 20));
    own.m_bCustomized = list.m_bFillEmptyArea = 1;
    setGeneral(0x333333, 0x444444);
    CCommonListCtrl::ApplyGeneralSettings(false);
    test::Canvas canvas(list, {400, 200}, 0xFF);
    EXPECT_EQ(list.SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.dc.m_hDC)), 0);
    EXPECT_EQ(canvas.dc.GetPixel(5, 150), 0x333333u) << "its empty area";
    EXPECT_EQ(list.m_Appearance.crText, 0x444444u);
    EXPECT_EQ(own.GetBkColor(), 0x111111u);
    CCommonListCtrl::ApplyGeneralSettings(true);
    EXPECT_EQ(own.GetBkColor(), 0x333333u);
    EXPECT_EQ(colourless.GetBkColor(), 0u);
}

TEST_F(Appearance, FontOfAListIsReplacedOnlyByOneThatCanBeMade) {
    create(list);
    for (const char* points : {"20", "15"}) CCommonListCtrl::SetListFontProperty(&list, 0, "Tahoma", points);
    if (font("Arial", 1) == "Arial -1") CCommonListCtrl::SetListFontProperty(&list, 0, "Arial", "1");
    EXPECT_EQ(font(list), font("Tahoma", 15));
    list.DestroyWindow();
    CCommonListCtrl::SetListFontProperty(&list, 0, "Arial", "30");
    CCommonListCtrl::SetListFontProperty(nullptr, 0, "Arial", "30");
}

// What a list shows after anything that user and owner do.
struct Pictures : ListFixture, ::testing::WithParamInterface<unsigned> {};

TEST_P(Pictures, AreThoseOfAFullRepaint) {
    owner.paintsRow = [this](const DRAWITEMSTRUCT& item) { paintRow(list, item); };
    list.m_bFillEmptyArea = GetParam() % 2;
    start(list, {"a", "b", "c", "d"});
    if (GetParam() / 2 == 1) list.GridLines();
    int texts = 0;
    const auto text = [&] { return CString(std::to_string(++texts * 7919 % 1000).c_str()); };
    const auto onInsert = [&](int row) { list.InsertItem(row, text()); };
    const auto onChange = [&](int row) { list.SetItemText(row, texts % 4, text()); };
    EXPECT_EQ(PictureMix(list, {.insert = onInsert, .change = onChange}, GetParam()).run(), "");
}

INSTANTIATE_TEST_SUITE_P(, Pictures, ::testing::Range(0u, 4u));

}  // namespace

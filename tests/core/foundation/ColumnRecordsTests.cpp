#include "src/foundation/core/ColumnRecords.h"
#include "src/foundation/core/Globals.h"

#include <gtest/gtest.h>

namespace {

// Records free nothing themselves, so each test frees what it made.
struct OwnedAppearance : cCustomizedAppearanceSettings {
    using cCustomizedAppearanceSettings::operator=;
    ~OwnedAppearance() { freeKeywordArrays(); }
};

void giveKeywords(cCustomizedAppearanceSettings& settings) {
    settings.pKeywords = new CStringArray;
    settings.pKeywords->Add("BUY");
    settings.pKeywordColors = new CArray<DWORD, DWORD>;
    settings.pKeywordColors->Add(0x00FF00);
    settings.iKeywordColumn = 3;
    settings.bKeywordsEnabled = 1;
}

TEST(ColumnRecord, LongNamesAreCutAndTerminated) {
    sQuorColInfo column;
    const CString name('x', 200);
    setColumnName(column, name);
    EXPECT_STREQ(column.szColumnName, CString('x', 63));
    setColumnName(column, "Qty");
    EXPECT_STREQ(column.szColumnName, "Qty");
}

TEST(ColumnRecord, UserColumnsAreRightAlignedNumbersOfWidth80) {
    const sQuorColInfo column = makeUserColumn("Ratio", "F", "T");
    EXPECT_EQ(column.iFormat, 1);
    EXPECT_EQ(column.iDataType, 2);
    EXPECT_EQ(column.iWidth, 80);
    EXPECT_EQ(column.csExpression, "F");
    EXPECT_EQ(column.csToolTip, "T");
}

TEST(Appearance, StartsBlackGreenWithoutKeywords) {
    const cCustomizedAppearanceSettings settings;
    EXPECT_EQ(settings.crBackground, 0u);
    EXPECT_EQ(settings.crText, 65280u);
    EXPECT_EQ(settings.iKeywordColumn, -1);
    EXPECT_EQ(settings.csFontName, "MS Shell Dlg 2");
    EXPECT_EQ(settings.csFontSize, "8");
}

TEST(Appearance, AssignmentCopiesArraysDeeplyAndKeepsWhatTheSourceLacks) {
    OwnedAppearance source, target;
    giveKeywords(source);
    target = source;
    ASSERT_NE(target.pKeywords, nullptr);
    EXPECT_NE(target.pKeywords, source.pKeywords);
    source.pKeywords->SetAt(0, "SELL");
    EXPECT_EQ(target.pKeywords->GetAt(0), "BUY");
    EXPECT_EQ(target.pUserKeywords, nullptr);

    const CStringArray* kept = target.pKeywords;
    cCustomizedAppearanceSettings plain;
    plain.csFontName = "Tahoma";
    target = plain;
    EXPECT_EQ(target.pKeywords, kept);
    EXPECT_EQ(target.csFontName, "Tahoma");
    EXPECT_EQ(target.iKeywordColumn, -1);
}

TEST(Appearance, AssignmentLeavesTheOldArrayAliveForWhoSharesIt) {
    OwnedAppearance source, target;
    giveKeywords(source);
    giveKeywords(target);
    cCustomizedAppearanceSettings sharing(target);
    EXPECT_EQ(sharing.pKeywords, target.pKeywords);
    target = source;
    EXPECT_EQ(sharing.pKeywords->GetAt(0), "BUY");  // a read of freed memory if assignment freed it
    sharing.freeKeywordArrays();
}

TEST(Appearance, GlobalIsHandedOutSharedAndTakenInDeep) {
    OwnedAppearance mine;
    giveKeywords(mine);
    EXPECT_TRUE(Set_Apperance_setting(mine));
    const cCustomizedAppearanceSettings first = Get_Apperance_setting();
    EXPECT_NE(first.pKeywords, mine.pKeywords);
    EXPECT_EQ(first.pKeywords, Get_Apperance_setting().pKeywords);
    EXPECT_EQ(first.iKeywordColumn, 3);
    cCustomizedAppearanceSettings(first).freeKeywordArrays();  // the test ends the global's arrays with itself
}

TEST(ColumnMap, HoldsWhatIsPutInAtAnyBucketCount) {
    CZTMap<int, int, int, int> map(3, TRUE);
    CZTMap<CString, const char*, int, int> byName(kListMapBuckets);
    for (int i = 0; i < 50; ++i) map.SetAt(i, i * i);
    byName.SetAt("Price", -1);
    byName.SetAt("Price", 1);
    int value = 0;
    ASSERT_TRUE(map.Lookup(49, value));
    EXPECT_EQ(value, 2401);
    EXPECT_FALSE(map.Lookup(50, value));
    ASSERT_TRUE(byName.Lookup("Price", value));
    EXPECT_EQ(value, 1);
    EXPECT_EQ(byName.GetCount(), 1);
}

TEST(Globals, MarketWatchesStartWith112BuiltInColumns) {
    EXPECT_EQ(iMrktInfoColCount, 111);
    EXPECT_EQ(iNewDataArrCnt, 0);
}

}  // namespace

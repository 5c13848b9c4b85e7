// Which string of a user column is which, in every kind of list and every text that stores it: the record that a
// definition makes, the bytes that are written, the record that is read from them, what it evaluates and what it shows.
#include "quor/expression/core/CustomColumnText.h"
#include "quor/list/core/ColumnImport.h"
#include "quor/lists/core/WatchColumns.h"

#include <gtest/gtest.h>

using namespace quor::list;
using namespace quor::watch;
using namespace quor::expression;

namespace {

constexpr char kIdForm[] = " \"4\" * 2", kDisplayForm[] = " \"Rate\" * 2";

// A row of "0", "10", "20"...; the display form's heading would be column 0.
class Tens : public CustomCellSource {
public:
    bool cellText(int columnIndex, CString& text) override {
        text.Format("%d0", columnIndex);
        return true;
    }
};

// A record of column 112 as a definition makes it.
sQuorColInfo defined(ListFamily family) {
    sQuorColInfo record;
    setColumnName(record, "Twice");
    setExpressions(record, family, kIdForm, kDisplayForm);
    return record;
}

void expectRead(const sQuorColInfo& read, ListFamily family, int dataType) {
    EXPECT_STREQ(read.szColumnName, "Twice");
    EXPECT_EQ(read.csExpression, defined(family).csExpression);
    EXPECT_EQ(read.csToolTip, defined(family).csToolTip);
    EXPECT_EQ(read.iDataType, dataType);
    EXPECT_EQ(read.iFormat, kFormatRight);
    EXPECT_STREQ(displayExpression(read, family), kDisplayForm) << "what the header explains";
    Tens row;
    CString text;
    CustomColumnText cells;
    EXPECT_EQ(cells.evaluate(family, {1, 112}, idExpression(read, family), row, text), CustomCellOutcome::done);
    EXPECT_STREQ(text, "80.00");
}

TEST(CustomColumnFamilies, GridsAndMultiLineListsKeepTheIdFormFirst) {
    for (const ListFamily family : {ListFamily::grid, ListFamily::multiLine}) {
        const sQuorColInfo record = defined(family);
        EXPECT_STREQ(record.csExpression, kIdForm);
        const ProfileEntry entry{112, 0, 60, true, record.szColumnName, record.csExpression, record.csToolTip};
        const CString profile = formatColumnProfile({entry});
        EXPECT_STREQ(profile, "112,0,60,Twice# \"4\" * 2# \"Rate\" * 2");
        ColumnSetInput input;
        input.widths.assign(112, 80);
        input.hasProfile = true;
        input.profile = parseColumnProfile(profile, 112);
        expectRead(planColumnSet(input).userColumns.at(0).second, family, 2);

        const CString file = formatExchangeProfile({entry});
        EXPECT_STREQ(file, ",CUSTOMCOLUMN,112,0,60,Twice,Twice# \"4\" * 2# \"Rate\" * 2,");
        expectRead(planColumnImport({{"Rate", 80}}, parseExchangeProfile(file)).userColumns.at(0).second, family, 2);
    }
}

TEST(CustomColumnFamilies, WatchesKeepTheDisplayFormFirstAndStoreItLast) {
    const ListFamily family = ListFamily::marketWatch;
    const sQuorColInfo record = defined(family);
    EXPECT_STREQ(record.csExpression, kDisplayForm);
    const WatchColumn column{
        112, 0, 60, record.szColumnName, idExpression(record, family), displayExpression(record, family)};
    const CString store = formatWatchUserColumns({column}), file = formatWatchExport({column});
    EXPECT_STREQ(store, "112\247Twice\247 \"4\" * 2\247 \"Rate\" * 2");
    EXPECT_STREQ(file, ",CUSTOMCOLUMN,112\2470\24760\247Twice\247 \"4\" * 2\247 \"Rate\" * 2");
    expectRead(makeWatchUserColumn(parseWatchUserColumns(store).at(0), 80), family, 7);
    expectRead(importWatch(file, {}).userColumns.at(0), family, 7);
}

}  // namespace

// Which string of a user column is which, in every kind of list and every text that stores it: the record that a
// definition makes, the bytes that are written, the record that is read from them, what it evaluates and what it shows.
#include "src/expression/core/CustomColumnText.h"
#include "src/list/core/ColumnImport.h"
#include "src/lists/core/WatchColumns.h"

#include <gtest/gtest.h>

#include <string>

using namespace quor::list;
using namespace quor::watch;
using namespace quor::expression;

namespace {

constexpr char kIdForm[] = " \"4\" * 2", kDisplayForm[] = " \"Rate\" * 2";

// ---- The stored texts: how a record of column 112 is written, and the record that comes of a text.

ProfileEntry entryOf(const sQuorColInfo& record) {
    ProfileEntry entry;
    entry.columnIndex = 112;
    entry.place = 0;
    entry.width = 60;
    entry.isUserColumn = true;
    entry.name = record.szColumnName;
    entry.expression = record.csExpression;
    entry.toolTip = record.csToolTip;
    return entry;
}

WatchColumn watchColumnOf(const sQuorColInfo& record) {
    return {112,
            0,
            60,
            record.szColumnName,
            idExpression(record, ListFamily::marketWatch),
            displayExpression(record, ListFamily::marketWatch)};
}

CString writeProfile(const sQuorColInfo& record) { return formatColumnProfile({entryOf(record)}); }
sQuorColInfo readProfile(const CString& text) {
    ColumnSetInput input;
    input.widths.assign(112, 80);
    input.hasProfile = true;
    input.profile = parseColumnProfile(text, 112);
    return planColumnSet(input).userColumns.at(0).second;
}

CString writeExchange(const sQuorColInfo& record) { return formatExchangeProfile({entryOf(record)}); }
sQuorColInfo readExchange(const CString& text) {
    return planColumnImport({{"Rate", 80}}, parseExchangeProfile(text)).userColumns.at(0).second;
}

CString writeWatch(const sQuorColInfo& record) { return formatWatchUserColumns({watchColumnOf(record)}); }
sQuorColInfo readWatch(const CString& text) { return makeWatchUserColumn(parseWatchUserColumns(text).at(0), 80); }

CString writeWatchFile(const sQuorColInfo& record) { return formatWatchExport({watchColumnOf(record)}); }
sQuorColInfo readWatchFile(const CString& text) { return importWatch(text, {}).userColumns.at(0); }

struct Case {
    const char* name;
    ListFamily family;
    const char *first, *second;  // csExpression, csToolTip
    const char* stored;
    CString (*write)(const sQuorColInfo& record);
    sQuorColInfo (*read)(const CString& text);
    int dataType;
};

constexpr char kProfileText[] = "112,0,60,Twice# \"4\" * 2# \"Rate\" * 2";
constexpr char kExchangeText[] = ",CUSTOMCOLUMN,112,0,60,Twice,Twice# \"4\" * 2# \"Rate\" * 2,";

const Case kCases[] = {
    {"profile", ListFamily::grid, kIdForm, kDisplayForm, kProfileText, writeProfile, readProfile, 2},
    {"file", ListFamily::grid, kIdForm, kDisplayForm, kExchangeText, writeExchange, readExchange, 2},
    {"profile", ListFamily::multiLine, kIdForm, kDisplayForm, kProfileText, writeProfile, readProfile, 2},
    {"file", ListFamily::multiLine, kIdForm, kDisplayForm, kExchangeText, writeExchange, readExchange, 2},
    {"watches' store", ListFamily::marketWatch, kDisplayForm, kIdForm, "112\xA7Twice\xA7 \"4\" * 2\xA7 \"Rate\" * 2",
     writeWatch, readWatch, 7},
    {"watch's file", ListFamily::marketWatch, kDisplayForm, kIdForm,
     ",CUSTOMCOLUMN,112\xA7"
     "0\xA7"
     "60\xA7Twice\xA7 \"4\" * 2\xA7 \"Rate\" * 2",
     writeWatchFile, readWatchFile, 7},
};

// A row of "0", "10", "20"...; the display form's heading would be column 0.
class Tens : public CustomCellSource {
public:
    bool cellText(int columnIndex, CString& text) override {
        text.Format("%d0", columnIndex);
        return true;
    }
};

TEST(CustomColumnFamilies, EachKeepsWritesReadsAndEvaluatesItsOwnWay) {
    for (const Case& expected : kCases) {
        SCOPED_TRACE(expected.name + std::to_string(static_cast<int>(expected.family)));
        sQuorColInfo defined;
        setColumnName(defined, "Twice");
        setExpressions(defined, expected.family, kIdForm, kDisplayForm);
        EXPECT_STREQ(defined.csExpression, expected.first);
        EXPECT_STREQ(defined.csToolTip, expected.second);
        EXPECT_STREQ(expected.write(defined), expected.stored);

        const sQuorColInfo read = expected.read(expected.stored);
        EXPECT_STREQ(read.szColumnName, "Twice");
        EXPECT_STREQ(read.csExpression, expected.first);
        EXPECT_STREQ(read.csToolTip, expected.second);
        EXPECT_EQ(read.iDataType, expected.dataType);
        EXPECT_EQ(read.iFormat, kFormatRight);
        EXPECT_STREQ(displayExpression(read, expected.family), kDisplayForm) << "what the header explains";

        Tens row;
        CString text;
        CustomColumnText cells;
        EXPECT_EQ(cells.evaluate(expected.family, {1, 112}, idExpression(read, expected.family), row, text),
                  CustomCellOutcome::done);
        EXPECT_STREQ(text, "80.00");
    }
}

}  // namespace

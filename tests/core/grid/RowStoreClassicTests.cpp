// Classic mode as a table. Rows hold numbers as data; a picture shows them from top to bottom, "." without data.
#include "tests/core/grid/StoreHarness.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace quor::grid;

namespace {

const char* nameOf(ClassicOutcome outcome) {
    switch (outcome) {
        case ClassicOutcome::refused:
            return "refused";
        case ClassicOutcome::unknown:
            return "unknown";
        case ClassicOutcome::corrupt:
            return "corrupt";
        case ClassicOutcome::done:
            return "done";
        case ClassicOutcome::shown:
            return "shown";
        case ClassicOutcome::left:
            return "left";
        case ClassicOutcome::entered:
            return "entered";
        case ClassicOutcome::keptOut:
            return "kept out";
    }
    return "";
}

class Classic {
public:
    explicit Classic(bool reverse) { store.setReverse(reverse); }

    // Words: "i3" inserts at 3, "d3=7" gives row 3 the data 7, "x3" erases visual row 3, "h3" erases hidden map row 3,
    // "r3" re-tests map row 3, "v3" visual row 3, "hide7" makes 7 the data that fail.
    std::string run(const std::string& words) {
        std::istringstream stream(words);
        ClassicChange change;
        for (std::string word; stream >> word;) {
            if (word.rfind("hide", 0) == 0) {
                m_hidden = std::stoull(word.substr(4));
            } else {
                change = one(word);
            }
        }
        return nameOf(change.outcome);
    }

    std::string picture() {
        std::string text;
        for (int visual = 0; visual < store.displayCount(); ++visual) {
            const RowData data = store.dataOfVisual(visual);
            text += data == 0 ? "." : std::to_string(data);
        }
        return text;
    }

    std::string mapPicture() {
        std::string text;
        for (int i = 0; i < store.itemCount(); ++i) {
            const RowData data = store.dataOfMapIndex(i);
            text += data == 0 ? "." : std::to_string(data);
        }
        return text;
    }

    PretendedPort port;
    LiveRows store{port};

private:
    ClassicChange one(const std::string& word) {
        const int item = std::stoi(word.substr(1));
        switch (word[0]) {
            case 'i':
                return store.insertItem(item);
            case 'd':
                return store.setItemData(item, std::stoull(word.substr(word.find('=') + 1)), test());
            case 'x':
                return store.eraseVisual(item);
            case 'h':
                return store.eraseHidden(item);
            case 'r':
                return store.retestMapIndex(item, test());
            default:
                return store.retestVisual(item, test());
        }
    }
    RowTest test() const {
        return {[](const void* context, RowData data) { return data != *static_cast<const RowData*>(context); },
                &m_hidden};
    }

    RowData m_hidden = 0;
};

struct Case {
    const char* fact;
    bool reverse;
    const char* words;
    const char* display;
    const char* map;
    const char* outcome;
};

const Case table[] = {
    {"0 appends, and data for 0 goes to the last row", false, "i0 d0=1 i0 d0=2", "12", "12", "shown"},
    {"in reverse display the newest is on top", true, "i0 d0=1 i0 d0=2", "21", "12", "shown"},
    {"past the end appends", false, "i0 d0=1 i9", "1.", "1.", "done"},
    {"in the middle later rows move", false, "i0 d0=1 i0 d0=2 i1 d1=3", "132", "132", "shown"},
    {"a negative item is refused", false, "i0 d0=1 i-1", "1", "1", "refused"},
    {"data for a full last row replace those of row 0", false, "i0 d0=1 i0 d0=2 d0=3", "32", "32", "shown"},
    {"in reverse display row 0 is the last slot", true, "i0 d0=1 i0 d0=2 d0=3", "31", "13", "shown"},
    {"data past the end go to an empty last row", false, "i0 d0=1 i0 d7=2", "12", "12", "shown"},
    {"data past the end of full rows are refused", false, "i0 d0=1 d7=2", "1", "1", "refused"},
    {"data without rows are refused", false, "d0=1", "", "", "refused"},
    {"a row that fails stays in the map", false, "hide2 i0 d0=1 i0 d0=2", "1", "12", "left"},
    {"erasing lowers the map indices behind", false, "i0 d0=1 i0 d0=2 i0 d0=3 x0 x0", "3", "3", "done"},
    {"in reverse display the visual row goes", true, "i0 d0=1 i0 d0=2 i0 d0=3 x0", "21", "12", "done"},
    {"erasing past the end is refused", false, "i0 d0=1 x1", "1", "1", "refused"},
    {"a visual index below 0 is no row", false, "i0 d0=1 x-1", "1", "1", "unknown"},
    {"a hidden row goes from the map alone", false, "hide1 i0 d0=1 i0 d0=2 h0", "2", "2", "done"},
    {"a displayed row is not hidden", false, "i0 d0=1 h0", "1", "1", "refused"},
    {"a row that passes and is shown stays", false, "i0 d0=1 r0", "1", "1", "shown"},
    {"a row that fails leaves", false, "i0 d0=1 i0 d0=2 hide1 r0", "2", "12", "left"},
    {"by its visual index too", true, "i0 d0=1 i0 d0=2 hide1 v1", "2", "12", "left"},
    {"a row that passes again stands before the next map index", false, "hide2 i0 d0=1 i0 d0=2 i0 d0=3 hide9 r1", "123",
     "123", "entered"},
    {"or at the end", false, "hide2 i0 d0=1 i0 d0=2 hide9 r1", "12", "12", "entered"},
    {"a row without data is left alone", false, "i0 r0", ".", ".", "kept out"},
    {"a hidden row that fails still is left alone", false, "hide2 i0 d0=2 r0", "", "2", "kept out"},
    {"out of range", false, "i0 d0=1 r1", "1", "1", "refused"},
};

TEST(RowStoreClassic, StepsEndInThePicturesOfTheTable) {
    for (const Case& row : table) {
        SCOPED_TRACE(row.fact);
        Classic grid(row.reverse);
        EXPECT_EQ(grid.run(row.words), row.outcome);
        EXPECT_EQ(grid.picture(), row.display);
        EXPECT_EQ(grid.mapPicture(), row.map);
        EXPECT_EQ(grid.store.Check(), "");
    }
}

TEST(RowStoreClassic, ChecksFollowTheirRows) {
    Classic grid(true);
    grid.run("i0 d0=1 i0 d0=2 i0 d0=3");
    EXPECT_TRUE(grid.store.setCheckOfVisual(0, 1));  // the row 3
    EXPECT_TRUE(grid.store.setCheckOfMapIndex(0, 2));
    EXPECT_FALSE(grid.store.setCheckOfVisual(3, 1));
    EXPECT_FALSE(grid.store.setCheckOfMapIndex(-1, 1));
    grid.run("x1");
    EXPECT_EQ(grid.store.checkOfVisual(0), 1);
    EXPECT_EQ(grid.store.checkOfVisual(1), 2);
    EXPECT_EQ(grid.store.checkOfVisual(2), 0);
    EXPECT_EQ(grid.store.checkedCount(), 2);
    grid.store.resetChecks();
    EXPECT_EQ(grid.store.checkedCount(), 0);
}

}  // namespace

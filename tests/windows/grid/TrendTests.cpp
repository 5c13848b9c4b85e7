// Trend columns and keywords on real grids. What a cell shows is decided in the core; here: which pixels, which cells
// a fade repaints, whose trend it is, and what the store keeps.
#include "quor/foundation/TimerIds.h"
#include "windows/grid/GridFixture.h"

using namespace quor::grid;

namespace grid_tests {
namespace {

constexpr COLORREF kGround = 0x000000, kRise = 0x208020, kFall = 0x4040C0;
constexpr int kLong = 60'000;

class Trends : public GridFixture {
protected:
    void TearDown() override {
        grid.reset();
        GridFixture::TearDown();
    }
    void open(bool opti, bool reverse, const std::string& names) {
        grid = std::make_unique<CFilterListCtrl>();
        grid->m_csListName = "trends";
        const std::vector<Column> columns{{"name", 60}, {"last", 60, 0, 5}, {"change", 60, 0, 5}, {"text", 60}};
        opti ? createOpti(*grid, columns) : createClassic(*grid, columns);
        grid->SetReverseDisplay(reverse);
        grid->PosColor = kRise, grid->NegColor = kFall, grid->TrendInterval = kLong;
        for (const char name : names) {
            for (const int column : {1, 2, 3}) set({name}, column, 5);
            opti ? grid->AddRow(row({name}), false) : insert({name});
        }
        processEndofBatchUpdates();
    }
    int insert(const std::string& name, int item = 0) {
        grid->InsertItem(item, "");
        return grid->SetItemData(item, dataOf(row(name)));
    }
    void set(const std::string& name, int column, int value) { row(name)->cells[column] = std::to_string(value); }
    void trends(std::initializer_list<int> columns) {
        CArray<int, int> wanted;
        for (const int column : columns) wanted.Add(column);
        EXPECT_EQ(grid->SetTrendColumns(&wanted), 1);
        redraw();
    }
    void redraw() {
        pumpUntilIdle();
        grid->RedrawWindow();
    }
    CRect cell(int visual, int place, int part) {
        CRect rect;
        grid->GetSubItemRect(visual, place, part, rect);
        return rect;
    }
    // One letter a cell of the trend columns, row by row: the ground, else the text where that is coloured.
    std::string colours() {
        std::string text;
        CClientDC dc(grid.get());
        for (int i = 0; i < 3 * grid->GetDisplayCount(); ++i) {
            const CRect rect = cell(i / 3, i % 3 + 1, LVIR_LABEL);
            char letter = '.';
            for (int x = rect.left; x < rect.right; ++x)
                for (int y = rect.top; y < rect.bottom; ++y) {
                    const COLORREF color = ::GetPixel(dc, x, y);
                    letter = color == kRise ? 'r' : color == kFall ? 'f' : letter;
                }
            const bool isText = ::GetPixel(dc, rect.right - 1, rect.top) == kGround;
            text += isText ? letter : static_cast<char>(std::toupper(letter));
            if (i % 3 == 2) text += ' ';
        }
        return text;
    }
    bool hasTimer() { return grid->KillTimer(kTrendFadeTimer) != 0; }
    static FakeHost::Settings& settings() { return fakeHost().settings; }
    static std::string& stored(const char* key) { return settings()[{"trends", key}]; }

    std::unique_ptr<CFilterListCtrl> grid = std::make_unique<CFilterListCtrl>();
};

TEST_F(Trends, AChangeColoursItsCellAndNothingElse) {
    for (const bool reverse : {false, true}) {
        SCOPED_TRACE(reverse ? "reverse" : "forward");
        open(true, reverse, "abc");
        trends({1, 2});
        EXPECT_EQ(colours(), "... ... ... ") << "first seen";
        set("a", 1, 6), set("a", 3, 6), set("c", 2, 4);
        redraw();
        EXPECT_EQ(colours(), reverse ? ".F. ... R.. " : "R.. ... .F. ");
        grid->TrendBackground = false;
        redraw();
        EXPECT_EQ(colours(), reverse ? ".f. ... r.. " : "r.. ... .f. ") << "and the texts beside keep their colour";
        grid->TrendBackground = true;
        fakeHost().calls.clear();
        grid->SetDrawShades(true);
        redraw();
        EXPECT_EQ(fakeHost().calls.count("FillShadeRect " + std::to_string(kRise) + " 16777215 0"), 1);
        grid->TrendEnabled = false;
        redraw();
        EXPECT_EQ(colours(), "... ... ... ");
    }
}

TEST_F(Trends, TheFadeRepaintsTheCellsInViewWhoseChangeIsOver) {
    const auto faded = [&] {
        grid->ValidateRect(nullptr);
        grid->SendMessage(WM_TIMER, kTrendFadeTimer);
        CRgn region, expected;
        region.CreateRectRgn(0, 0, 0, 0);
        expected.CreateRectRgn(0, 0, 0, 0);
        ::GetUpdateRgn(*grid, region, FALSE);
        for (const auto& [visual, place] : {std::pair{2, 1}, {2, 3}, {4, 2}}) {
            CRgn one;
            one.CreateRectRgnIndirect(cell(visual, place, LVIR_BOUNDS));
            expected.CombineRgn(&expected, &one, RGN_OR);
        }
        CRect box;
        return region.EqualRgn(&expected) ? "cells" : region.GetRgnBox(&box) == NULLREGION ? "none" : "else";
    };
    const auto scrollTo = [&](int visual) {
        grid->SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(visual), FALSE);
        grid->UpdateWindow();
    };
    for (const bool reverse : {false, true}) {
        SCOPED_TRACE(reverse);
        open(true, reverse, "abcdefghijklmnopqrstuvwxyz");
        trends({1, 2, 3});
        const auto change = [&](int value) {
            const std::string third{reverse ? 'x' : 'c'}, fifth{reverse ? 'v' : 'e'};
            set(third, 1, value), set(third, 3, value), set(fifth, 2, value);
            redraw();
        };
        change(7);
        EXPECT_STREQ(faded(), "none") << "the interval runs";
        grid->TrendInterval = 0;
        EXPECT_STREQ(faded(), "cells");
        EXPECT_STREQ(faded(), "none");
        change(9);
        scrollTo(25);
        EXPECT_STREQ(faded(), "none") << "out of view";
        scrollTo(0);
        EXPECT_EQ(colours().find_first_of("RF"), std::string::npos) << "but ended";
    }
}

// A row that takes over another's record would show a change that it never had.
TEST_F(Trends, NoRowTakesOverTheTrendOfAnother) {
    const struct {
        bool opti;
        std::function<void()> act;
        const char *colours, *afterChange;  // of every number
    } table[] = {
        {false, [&] { grid->DeleteItem(0); }, "... ... ", "R.. R.. "},
        {false, [&] { insert("d", 1); }, "... ... ... ... ", "R.. R.. R.. R.. "},
        {true, [&] { grid->DeleteRow(row("a"), true), grid->AddRow(row("d"), true); }, "... ... ... ", "R.. R.. ... "},
        {true, [&] { grid->m_bRowDragEnabled = 1, grid->SortOn(1, 1), grid->SortOn(1, 1); }, "... ... ... ",
         "R.. R.. R.. "},
    };
    for (const auto& c : table) {
        SCOPED_TRACE(&c - table);
        int value = 0;
        const auto change = [&] {
            for (const char* name : {"a", "b", "c", "d"}) set(name, 1, 10 * ++value);
        };
        open(c.opti, false, "abc");
        change();
        trends({1});
        c.act();
        redraw();
        EXPECT_EQ(colours(), c.colours);
        change();
        redraw();
        redraw();
        EXPECT_EQ(colours(), c.afterChange);
    }
}

// ---- Settings

TEST_F(Trends, SettingsComeWithTheColumnsAndGoWithThem) {
    const auto inForce = [&] {
        CArray<int, int> columns;
        grid->GetTrendColumns(columns);
        CString text;
        for (INT_PTR i = 0; i < columns.GetSize(); ++i) text.AppendFormat("%d ", columns.GetAt(i));
        text.AppendFormat("%d %lu %lu %d", grid->TrendBackground, grid->NegColor, grid->PosColor, grid->TrendInterval);
        return std::string(text);
    };
    stored("TrendColumns") = "2 9999 1 2 ";
    stored("TrendType") = "FALSE";
    stored("NegColor") = "16";
    stored("Interval") = "3000";
    open(true, false, "a");
    grid->ReadTrendSettings("trends");
    EXPECT_EQ(inForce(), "2 9999 1 0 16 65280 3000");
    EXPECT_TRUE(hasTimer());
    settings().clear();
    grid->SaveState();
    std::string written;
    for (const char* key : {"TrendColumns", "TrendType", "NegColor", "PosColor", "Interval"})
        written += stored(key) + ";";
    EXPECT_EQ(written, "2 9999 1 ;FALSE;16;65280;3000;");

    settings().clear();
    grid->TrendEnabled = false;
    grid->SaveState();
    grid->TrendEnabled = true;
    EXPECT_EQ(grid->SetTrendColumns(nullptr), 1);
    trends({1});
    EXPECT_TRUE(hasTimer());
    trends({1});
    trends({});
    EXPECT_FALSE(hasTimer());
    grid->SaveState();
    EXPECT_FALSE(settings().contains({"trends", "TrendColumns"})) << "no columns, nothing written";
    stored("TrendType") = "false";
    grid->ReadTrendSettings("trends");
    EXPECT_EQ(inForce(), "1 255 65280 0");
}

TEST_F(Trends, AGridMayGoInAnyCallOfTheStore) {
    int calls = 1;
    for (int moment = 0; moment < calls; ++moment) {
        stored("TrendColumns") = "1 ";
        open(true, false, "a");
        calls = 0;
        fakeHost().onStore = [&](int) { return calls++ != moment || grid->DestroyWindow(); };
        grid->ReadTrendSettings("trends");
        grid->SaveState();
        fakeHost().onStore = {};
        EXPECT_EQ(stored("TrendColumns"), "1 ") << moment;
    }
    EXPECT_GT(calls, 9);
}

// ---- Keywords

CStringArray* words(std::initializer_list<const char*> texts) {
    auto* const array = new CStringArray;
    for (const char* text : texts) array->Add(text);
    return array;
}
CArray<DWORD, DWORD>* colors(std::initializer_list<DWORD> values) {
    auto* const array = new CArray<DWORD, DWORD>;
    for (const DWORD value : values) array->Add(value);
    return array;
}

TEST_F(Trends, TheFirstKeywordInTheTextColoursTheRow) {
    open(true, false, "abcd");
    row("a")->cells[3] = "is rejected", row("b")->cells[3] = "Reject", row("c")->cells[3] = "late",
    row("d")->text = kFall;
    cCustomizedAppearanceSettings& looks = grid->m_Appearance;
    const auto colorOf = [&](const char* name) {
        COLORREF color = kRise;
        EXPECT_EQ(grid->GetTextColorForItem(dataOf(row(name)), color, 0, 0), 1);
        return color;
    };
    EXPECT_EQ(colorOf("a"), kRise) << "no keywords";
    looks.pKeywords = words({"REJECTED", "REJECT", "LATE"});
    looks.pKeywordColors = colors({0x11, 0x22});
    owner.asked = 0;
    for (const int column : {-1, 4}) {
        looks.iKeywordColumn = column;
        EXPECT_EQ(colorOf("a"), kRise) << column;
    }
    EXPECT_EQ(owner.asked, 0) << "there is no such column";
    looks.iKeywordColumn = 3;
    EXPECT_EQ(colorOf("a"), 0x11u);
    EXPECT_EQ(colorOf("c"), kRise) << "a keyword without a colour";
    EXPECT_EQ(owner.asked, 2);
    looks.pKeywords->SetAt(0, "SENT");  // by a dialog, or a host
    EXPECT_EQ(colorOf("a"), 0x22u);

    looks.pKeywordColors->SetAt(1, kRise);
    for (const bool enabled : {false, true}) {
        looks.bKeywordsEnabled = enabled;
        redraw();
        EXPECT_EQ(colours(), enabled ? "rrr rrr ... fff " : "... ... ... fff ") << "over the host's colour, below none";
    }
    owner.onText = [&](DWORD_PTR, int) {
        owner.onText = {};
        grid->DestroyWindow();
    };
    colorOf("a");
    EXPECT_FALSE(grid->m_hWnd);
}

TEST_F(Trends, APropertyGivesBothColoursOfItsKey) {
    COLORREF text = 1, back = 2;
    const auto told = [&](CString key) {
        EXPECT_EQ(grid->GetProperty(text, back, key), 1);
        return std::pair(text, back);
    };
    using Told = std::pair<COLORREF, COLORREF>;
    EXPECT_EQ(told("Sent"), Told(1, 2));
    grid->m_Appearance.pUserKeywords = words({"LATE", "sent", "SENT", "SHORT"});
    grid->m_Appearance.pUserTextColors = colors({3, 4, 5});
    grid->m_Appearance.pUserBackColors = colors({6, 7, 8, 9});
    EXPECT_EQ(told("Sent"), Told(4, 7));
    EXPECT_EQ(told("short"), Told(4, 9)) << "the arrays have drifted apart";
}

}  // namespace
}  // namespace grid_tests

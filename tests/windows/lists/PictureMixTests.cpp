// What a market watch shows after anything that user and owner do.
#include "MarketWatchFixture.h"
#include "windows/list/PictureMix.h"

namespace watch_tests {
namespace {

struct WatchPictures : MarketWatch, ::testing::WithParamInterface<unsigned> {
    WatchPictures() {
        owner.paintsRow = [this](const DRAWITEMSTRUCT& item) { list_tests::paintRow(*list, item); };
        open([](CMrktWatchListCtrl& watch) {
            watch.MoveWindow(0, 0, 400, 200);
            watch.m_bGridLines = GetParam() % 2;
            watch.SetExtendedStyle(watch.GetExtendedStyle() | (GetParam() % 2 ? LVS_EX_GRIDLINES : 0));
        });
        for (int i = 0; i < 5; ++i) addRow("row", i);
    }
    void TearDown() override {
        owner.paintsRow = nullptr;
        MarketWatch::TearDown();
    }
    void insert(int row) {
        addRow("row", static_cast<double>(rows.size()));
        const int last = list->GetItemCount() - 1;
        const DWORD_PTR data = list->GetItemData(last);
        list->DeleteItem(last);
        list->SetItemData(list->InsertItem(row, ""), data);
        list->RedrawItems(row, row);
    }
    // A tick.
    void change(int row) {
        reinterpret_cast<HostRow*>(list->GetItemData(row))->price += 1;
        list->RedrawItems(row, row);
    }
};

TEST_P(WatchPictures, AreThoseOfAFullRepaint) {
    const list_tests::RowOwner owners{[this](int row) { insert(row); }, [this](int row) { change(row); }};
    EXPECT_EQ(list_tests::PictureMix(*list, owners, GetParam()).run(), "");
}

INSTANTIATE_TEST_SUITE_P(, WatchPictures, ::testing::Range(0u, 4u));

}  // namespace
}  // namespace watch_tests

// What a base list shows after anything that user and owner do.
#include "ListFixture.h"
#include "PictureMix.h"
#include "support/PictureOracle.h"

namespace list_tests {
namespace {

struct Pictures : ListFixture, ::testing::WithParamInterface<unsigned> {
    Pictures() {
        owner.paintsRow = [this](const DRAWITEMSTRUCT& item) { paintRow(list, item); };
        list.m_csListName = "Pictures";
        list.m_bFillEmptyArea = GetParam() % 2;
        addColumns(list, {"a", "b", "c", "d"});
        create(list, kListStyle & ~static_cast<DWORD>(GetParam() % 4 < 2 ? 0 : LVS_SHOWSELALWAYS));
        list.InsertColumnsForList(nullptr);
        if (GetParam() / 2 == 1) list.GridLines();
        for (int row = 0; row < 5; ++row) insert(row);
    }
    CString text() { return std::to_string(++texts * 7919 % 1000).c_str(); }
    void insert(int row) {
        list.InsertItem(row, text());
        list.SetItemData(row, static_cast<DWORD_PTR>(texts));
    }

    CCommonListCtrl list;
    int texts = 0;
};

TEST_P(Pictures, AreThoseOfAFullRepaint) {
    const RowOwner rows{[this](int row) { insert(row); },
                        [this](int row) { list.SetItemText(row, texts % 4, text()); }};
    EXPECT_EQ(PictureMix(list, rows, GetParam()).run(), "");
}

// As an owner does that asks the header and not the list.
TEST_P(Pictures, FollowAHeaderThatIsPutInOrder) {
    pumpUntilIdle();
    int order[] = {3, 1, 0, 2};
    list.GetHeaderCtrl()->SetOrderArray(4, order);
    pumpUntilIdle();
    EXPECT_EQ(test::stalePixels(list), "");
}

INSTANTIATE_TEST_SUITE_P(, Pictures, ::testing::Range(0u, 4u));

}  // namespace
}  // namespace list_tests

#include "support/HandleCounts.h"
#include "support/Input.h"
#include "support/WindowFixture.h"

using Smoke = test::WindowFixture;
TEST_F(Smoke, frame) {
    EXPECT_TRUE(::IsWindow(frame()));
    CListCtrl list;
    EXPECT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, client(), &frame(), 5));
    list.InsertColumn(0, "a", LVCFMT_LEFT, 100);
    pumpUntilIdle();
    test::MessageBoxAnswerer answer({IDYES});
    EXPECT_EQ(AfxMessageBox("really?", MB_YESNO), IDYES);
    EXPECT_EQ(answer.texts(), std::vector<std::string>{"really?"});
    std::cout << test::countHandles() << "\n";
}

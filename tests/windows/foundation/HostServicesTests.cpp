// The optional entry points of a host that has them all; NoHostTests.cpp is one that has none.
#include "quor/foundation/HostServices.h"
#include "support/FakeHost.h"

#include <gtest/gtest.h>
#include <utility>

using namespace quor::foundation;
using test::Calls;

namespace {

struct HostServices : testing::Test {
    HostServices() { resetFakeHost(); }
    FakeHost& host = fakeHost();
    CControlBlock& block = *g_pControlBlock;
};

TEST_F(HostServices, EveryEntryIsFound) {
    EXPECT_EQ(block.pReserved, nullptr);
    CString text;
    block.pu_get_application_iCon();
    block.pu_get_peer_data(text, text, text);
    block.UserSettingMWColumns(0, "MarketWatch", text);
    block.AddToTabbedLog("line", 0, 0);
    block.quoru_call_LoadLibrary("no such library.dll");
    block.quoru_add_extra_columns();
    block.MrktWatchGetColumnText(nullptr, nullptr, 3, text);
    block.UserSetting(0, "list", text, "key");
    block.quoru_get_app_status();
    block.pu_get_find_menu_item_in_roles(64169);
    block.pu_GetScreenSharingStatus();
    logToHost("a line");
    removeFromDisplayAffinity(nullptr);
    EXPECT_EQ(host.calls.take(),
              (Calls{"pu_get_application_iCon", "pu_get_peer_data", "UserSettingMWColumns 0 MarketWatch",
                     "AddToTabbedLog line 0 0", "quoru_call_LoadLibrary no such library.dll", "quoru_add_extra_columns",
                     "MrktWatchGetColumnText 3", "UserSetting 0 list key", "quoru_get_app_status",
                     "pu_get_find_menu_item_in_roles 64169", "pu_GetScreenSharingStatus", "AddToTabbedLog a line 0 0",
                     "pu_RemoveWindowFromDispAffinityWindowsMap"}));
    EXPECT_NE(block.FillShadeRect, nullptr);
    host.optimizedMarketWatch = 2;
    EXPECT_TRUE(hostRunsOptimizedMarketWatch());
}

TEST_F(HostServices, DialogsAreRegisteredOnlyWhileSharingIsOffByDefault) {
    EXPECT_EQ(registerForDisplayAffinity(nullptr), host.affinityResult);
    host.defaultSharingStatus = 0x7F00;  // only the low byte counts
    EXPECT_EQ(registerForDisplayAffinity(nullptr), host.affinityResult);
    host.defaultSharingStatus = 1;
    EXPECT_EQ(registerForDisplayAffinity(nullptr), 1);
    const auto entry = std::exchange(block.pu_GetDefaultScreenSharingStatus, nullptr);
    EXPECT_EQ(registerForDisplayAffinity(nullptr), 1) << "not known to be off";
    block.pu_GetDefaultScreenSharingStatus = entry;
    EXPECT_EQ(host.calls.count("pu_RegisterForWindowDisplayAffinity"), 2);
}

TEST_F(HostServices, HashTextIsAskedForWhileItIsEmpty) {
    host.hashText.clear();
    EXPECT_TRUE(appdataHashCode().IsEmpty());
    host.hashText = "hash";
    for (int time = 0; time < 2; ++time) EXPECT_EQ(appdataHashCode(), "hash");
    EXPECT_EQ(host.calls.count("pu_GetAppdataHashCode"), 2);
}

}  // namespace

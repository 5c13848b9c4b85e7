// An executable that exports nothing: a host that lacks every entry point.
#include "quor/foundation/HostServices.h"
#include "quor/foundation/Messages.h"

#include <gtest/gtest.h>
#include <utility>

using namespace quor::foundation;

namespace {

// Taken while this executable's statics are made, before main.
const CControlBlock* const blockBeforeMain = g_pControlBlock;

TEST(NoHost, TheBlockExistsBeforeMain) {
    EXPECT_NE(blockBeforeMain, nullptr);
    EXPECT_EQ(blockBeforeMain, g_pControlBlock);
    EXPECT_EQ(g_pControlBlock->hHost, ::GetModuleHandleA(nullptr));
    EXPECT_EQ(g_pControlBlock->UserSetting, nullptr);
    EXPECT_EQ(g_pControlBlock->MrktWatchGetColumnText, nullptr);
}

TEST(NoHost, OptionalServicesFallBack) {
    logToHost("nobody hears this");
    EXPECT_FALSE(hostRunsOptimizedMarketWatch());
    EXPECT_EQ(registerForDisplayAffinity(nullptr), 1);
    removeFromDisplayAffinity(nullptr);
    EXPECT_TRUE(appdataHashCode().IsEmpty());
    CControlBlock* const block = std::exchange(g_pControlBlock, nullptr);
    logToHost("too early: there is no block yet");
    g_pControlBlock = block;
}

TEST(NoHost, ARegisteredMessageHasTheSystemsIdOfItsName) {
    EXPECT_EQ(WM_FILTERGRID_BUILD_SORT_ORDER, ::RegisterWindowMessageA("WM_FILTERGRID_BUILD_SORT_ORDER"));
}

}  // namespace

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

TEST(RegisteredMessages, HaveTheSystemsIdOfTheirText) {
    const std::pair<UINT, const char*> messages[] = {
        {WM_FGRID_LOCK_SORT_ON_REPOS_COLUMN, "WM_FGRID_LOCK_SORT_ON_REPOS_COLUMN"},
        {WM_FGRID_SORT_ORDER_ON_REPOS_COLUMN, "WM_FGRID_SORT_ORDER_ON_REPOS_COLUMN"},
        {WM_FILTERGRID_BUILD_SORT_ORDER, "WM_FILTERGRID_BUILD_SORT_ORDER"},
        {WM_FILTERGRID_SAVE_SORT_ORDER_PROFILE, "WM_FILTERGRID_SAVE_SORT_ORDER_PROFILE"},
        {WM_FILTER_GRID_ON_SAVE_MULTI_SORT, "WM_FILTER_GRID_ON_SAVE_MULTI_SORT"},
        {WM_FILTERGRID_REMOVE_SORT_ALERT, "WM_FILTERGRID_REMOVE_SORT_ALERT"},
        {WM_MOD_FILTERGRID_CUSTOM_CELL, "WM_MOD_FILTERGRID_CUSTOM_CELL"},
        {WM_ZTD_DELAYED_SETFOCUS, "WM_ZTD_DELAYED_SETFOCUS"},
        {WM_XLISTCTRL_CHECKBOX_CLICKED, "WM_XLISTCTRL_CHECKBOX_CLICKED"},
        {WM_XLISTCTRL_COLORBOX_CLICKED, "WM_XLISTCTRL_COLORBOX_CLICKED"},
        {WM_XLISTCTRL_COMBO_SELECTION, "WM_XLISTCTRL_COMBO_SELECTION"},
        {FILTER_GRID_RIGHT_CLICK, "FILTER_GRID_RIGHT_CLICK"},
        {FILTER_GRID_CELL_FIRST_BTN_CLICK, "FILTER_GRID_CELL_FIRST_BTN_CLICK"},
        {FILTER_GRID_CELL_SECOND_BTN_CLICK, "FILTER_GRID_CELL_SECOND_BTN_CLICK"},
        {FILTER_GRID_PROCESS_PENDING_UPDATES, "FILTER_GRID_PROCESS_PENDING_UPDATES"},
        {FGM_ON_GRID_ITEM_CHANGED, "FGM_ON_GRID_ITEM_CHANGED"},
        {FGM_ON_DRAG_DROP_SUCCESS, "FGM_ON_DRAG_DROP_SUCCESS"},
        {FGM_ON_SORT_SUCCESS, "FGM_ON_SORT_SUCCESS"},
        {FGM_ON_ROW_POST_CHECKBOX_CLICKED, "FGM_ON_ROW_POST_CHECKBOX_CLICKED"},
    };
    for (const auto& [id, text] : messages) EXPECT_EQ(id, ::RegisterWindowMessageA(text)) << text;
    EXPECT_EQ(WM_LIST_COLUMNS_REBUILT, 1147u);
    EXPECT_EQ(WM_LIST_ROWS_REORDERED, 1524u);
}

}  // namespace

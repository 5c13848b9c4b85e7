// An executable that exports nothing: a host that lacks every entry point.
#include "src/foundation/HostServices.h"
#include "src/foundation/Messages.h"

#include <gtest/gtest.h>

#include <set>

using namespace quor::foundation;

namespace {

// Taken while this executable's statics are made, before main.
const CControlBlock* const blockBeforeMain = g_pControlBlock;

TEST(NoHost, TheBlockExistsBeforeMain) {
    EXPECT_NE(blockBeforeMain, nullptr);
    EXPECT_EQ(blockBeforeMain, g_pControlBlock);
    EXPECT_EQ(g_pControlBlock->hHost, ::GetModuleHandleA(nullptr));
    EXPECT_TRUE(g_pControlBlock->csAppdataHashCode.IsEmpty());
}

TEST(NoHost, EverySlotIsNull) {
    const CControlBlock& b = *g_pControlBlock;
    EXPECT_EQ(b.pReserved, nullptr);
    const bool found[] = {
        b.pu_get_application_iCon != nullptr,
        b.pu_get_peer_data != nullptr,
        b.UserSettingMWColumns != nullptr,
        b.AddToTabbedLog != nullptr,
        b.quoru_call_LoadLibrary != nullptr,
        b.FillShadeRect != nullptr,
        b.quoru_add_extra_columns != nullptr,
        b.MrktWatchGetColumnText != nullptr,
        b.UserSetting != nullptr,
        b.quoru_get_app_status != nullptr,
        b.pu_get_find_menu_item_in_roles != nullptr,
        b.IsOptimizedMWUpdate != nullptr,
        b.pu_RegisterForWindowDisplayAffinity != nullptr,
        b.pu_GetScreenSharingStatus != nullptr,
        b.pu_GetDefaultScreenSharingStatus != nullptr,
        b.pu_GetAppdataHashCode != nullptr,
        b.pu_RemoveWindowFromDispAffinityWindowsMap != nullptr,
    };
    for (std::size_t i = 0; i < std::size(found); ++i) EXPECT_FALSE(found[i]) << "entry " << i;
}

TEST(NoHost, OptionalServicesFallBack) {
    logToHost("nobody hears this");
    EXPECT_FALSE(hostRunsOptimizedMarketWatch());
    EXPECT_EQ(registerForDisplayAffinity(nullptr), 1);
    removeFromDisplayAffinity(nullptr);
    EXPECT_TRUE(appdataHashCode().IsEmpty());
}

TEST(NoHost, ALogLineBeforeTheBlockExistsIsLost) {
    CControlBlock* const block = g_pControlBlock;
    g_pControlBlock = nullptr;
    logToHost("too early");
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
    std::set<UINT> ids;
    for (const auto& [id, text] : messages) {
        EXPECT_EQ(id, ::RegisterWindowMessageA(text)) << text;
        ids.insert(id);
    }
    EXPECT_EQ(ids.size(), std::size(messages));
    EXPECT_EQ(WM_LIST_COLUMNS_REBUILT, 1147u);
    EXPECT_EQ(WM_LIST_ROWS_REORDERED, 1524u);
}

}  // namespace

// Ids of the demo terminal's own resources and commands. They keep clear of the ids that the library's lists use.
#pragma once

#define IDR_TERMINAL 41000
#define IDD_PANE 41001
#define IDD_ABOUT 41002

#define IDC_WATCH 41100
#define IDC_ORDERS 41101
#define IDC_TRADES 41102
#define IDC_LOG 41103
#define IDC_STATUS 41104
#define IDC_SPLIT 41106
#define IDC_WORKSPACES 41105
#define IDC_PANE_WATCH 41108
#define IDC_PANE_ORDERS 41109
#define IDC_PANE_TRADES 41110
#define IDC_CHAIN 41111
#define IDC_PANE_CHAIN 41112
#define IDC_WATCH_NAMES 41114
#define IDC_POSITIONS 41115
#define IDC_PANE_POSITIONS 41116

#define ID_FILE_PICTURES 41200
#define ID_FILE_EXIT 41201
#define ID_VIEW_ADD_WORKSPACE 41211
#define ID_VIEW_FIT_COLUMNS 41212
#define ID_VIEW_RESET_LAYOUT 41213
#define ID_VIEW_MULTI_MONITOR 41214
#define ID_FEED_PAUSE 41220
#define ID_FEED_SLOWER 41221
#define ID_FEED_FASTER 41222
#define ID_FEED_REAL_TIME 41223
#define ID_FEED_MAX 41224
#define ID_HELP_ABOUT 41230
#define ID_VIEW_ORDERS 41240  // the panes of a workspace, up to the log
#define ID_VIEW_TRADES 41241
#define ID_VIEW_CHAIN 41242
#define ID_VIEW_POSITIONS 41243
#define ID_VIEW_LOG 41244

// Numbers of resources, controls and commands. Menus and hosts refer to them by number: none may change.
#pragma once

// Dialog templates and their controls.
#define IDD_FILTER_TEXT 101
#define IDC_FILTER_VALUES 1670

#define IDD_FONT_SETTING 103
#define IDC_FONT_NAME 1671
#define IDC_FONT_SIZE 1672
#define IDC_FONT_SAMPLE 1673

// One list's colours, font and keywords.
#define IDD_CUSTOMIZE_APPEARANCE 466
#define IDC_APPLY_APPEARANCE 1696
#define IDC_PROPERTY 1694
#define IDC_PROPERTY_COLOR 1026
#define IDC_LIST_FONT 1695
#define IDC_FONT_LABEL 1042
#define IDC_APPEARANCE_GROUP 1041
#define IDC_KEYWORD_GROUP 1040
#define IDC_KEYWORD_COLUMN 1035
#define IDC_CHANGE_KEYWORD_COLUMN 1001
#define IDC_NEW_KEYWORD 1033
#define IDC_ADD_KEYWORD 2626
#define IDC_KEYWORDS_LABEL 1036
#define IDC_KEYWORDS 1032

// One list's colours and keywords as its user chose them; the other controls have the numbers above.
#define IDD_USER_CUSTOMIZE 701
#define IDC_BACKGROUND_COLOR 1965
#define IDC_USER_KEYWORDS 1034

// A grid's trend columns.
#define IDD_TREND_SETTINGS 616
#define IDC_TREND_COLUMNS 2001
#define IDC_TREND_BACKGROUND 1185
#define IDC_TREND_TEXT 33049
#define IDC_RISE_COLOR 2002
#define IDC_RISE_LABEL 2003
#define IDC_FALL_COLOR 2784
#define IDC_FALL_LABEL 2004
#define IDC_TREND_INTERVAL 1020
#define IDC_TREND_TIME 2005

// Commands of the grid's menu.
#define kCommandResetFilters 33757
#define kCommandMatchExactly 33815
#define kCommandSetTrendColumns 33500

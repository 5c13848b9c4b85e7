// Numbers of resources, controls and commands. Menus and hosts refer to them by number: none may change.
#pragma once

// Dialog templates and their controls.
#define IDD_FILTER_TEXT 101
#define IDC_FILTER_VALUES 1670

#define IDD_FONT_SETTING 103
#define IDC_FONT_NAME 1671
#define IDC_FONT_SIZE 1672
#define IDC_FONT_SAMPLE 1673

// Commands of the grid's menu.
#define kCommandResetFilters 33757
#define kCommandMatchExactly 33815

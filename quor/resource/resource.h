// Numbers of resources, controls and commands. Menus and hosts refer to them by number: none may change.
#pragma once

// Dialog templates and their controls.
#define IDD_FILTER_TEXT 101
#define IDC_FILTER_VALUES 1670

// Commands of the grid's menu.
#define kCommandResetFilters 33757
#define kCommandMatchExactly 33815

// The dialogs of the small controls' tests.
#pragma once

#define IDD_BUTTONS 101
#define IDC_TEXT 1001
#define IDC_COLOUR 1002
#define IDC_SPLIT 1003

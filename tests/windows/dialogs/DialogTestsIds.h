// The dialogs of these tests.
#pragma once

#define IDD_FIXED 201
#define IDD_SIZED 202
#define IDC_TEXT 1001
#define IDC_CLOSE 1002
#define IDC_CHOICE 1003
#define IDC_LIST 1004

// The dialogs of the framework's tests.
#pragma once

#define IDD_MODAL 101
#define IDD_MODELESS 102
#define IDD_PLACED 103
#define IDC_TEXT 1001

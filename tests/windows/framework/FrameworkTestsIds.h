// The dialogs of the framework's tests.
#pragma once

#define IDD_MODAL 101
#define IDC_TEXT 1001

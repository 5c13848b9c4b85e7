// Every command id of a list's menus. Hosts put them into menus of their own and forward the choice, so the numbers are
// part of the interface.
#pragma once

// Columns.
inline constexpr int kFitColumnsToData = 2129;
inline constexpr int kFitColumnsToHeader = 2130;
inline constexpr int kFitColumnsToWindow = 2131;
inline constexpr int kRepositionColumns = 2132;
inline constexpr int kRepositionColumnsInOpenGroups = 33709;
inline constexpr int kAddUserColumn = 32859;
inline constexpr int kEditUserColumn = 60338;
inline constexpr int kDeleteUserColumn = 33406;

// Sorting.
inline constexpr int kLockSorting = 2785;
inline constexpr int kMultiColumnSorting = 2786;

// Looks.
inline constexpr int kGridLines = 2222;
inline constexpr int kCustomizeAppearance = 33758;
inline constexpr int kUserCustomize = 35562;

// Copies and exports. The three lines are the owner's to act on.
inline constexpr int kCopyToClipboard = 33800;
inline constexpr int kWriteToExcel = 4006;
inline constexpr int kWriteWithExportFormat = 4007;
inline constexpr int kExportParentLine = 4010;
inline constexpr int kExportChildLine = 4011;
inline constexpr int kExportBothLines = 4012;

// Deal slips. In each range the first id is the default profile, the others stand for profile number id - first - 1.
inline constexpr int kConfigureDealSlip = 20001;
inline constexpr int kExportDealSlip = 20002;
inline constexpr int kExportDealSlipLast = 20013;
inline constexpr int kExportSelectedDealSlip = 20014;
inline constexpr int kExportSelectedDealSlipLast = 20025;
inline constexpr int kCopyDealSlip = 20026;
inline constexpr int kCopyDealSlipLast = 20037;

// Not a command: the value that the host's role check is asked about. Refused, export and copy are withheld.
inline constexpr int kExportRole = 64169;

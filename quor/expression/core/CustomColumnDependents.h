// Which user columns depend on which, and the arrays of a list that loses some: the rules behind the dialogs that
// define user columns.
//
// A formula names columns by heading in its display form; the id forms are never rewritten. A column that stays and
// that refers to a user column behind a deleted one therefore points one index too far afterwards: stored profiles
// carry the same numbers.
#pragma once

#include "quor/expression/core/CustomColumnText.h"

#include <set>
#include <vector>

namespace quor::expression {

// The user columns that a dialog works on. Borrowed: the arrays outlive the calls.
struct CustomColumnScope {
    const CArray<sQuorColInfo, sQuorColInfo>& columns;
    const CStringArray& customNames;  // headings that count as user columns
    ListFamily family = ListFamily::grid;
    int firstCustom = 0;  // columnIndex of the first user column
};

// Whether the column `name` is `selected` or reaches it through display forms. A name that is no user column's depends
// on nothing. The record of a name is the first of that heading, built-in ones included.
QUOR_CONTROLS_API bool CheckBaseColRecursively(const CustomColumnScope& scope, const CString& selected,
                                               const CString& name);

// Appends the columnIndex of every user column whose display form contains `quotedName` (with its quotes), or that
// depends on such a one: the deepest first, each once. `seen` holds what was appended; both start empty.
QUOR_CONTROLS_API void RemoveCustColRecursively(const CustomColumnScope& scope, const CString& quotedName,
                                                std::vector<int>& dependents, std::set<int>& seen);

// The arrays of the list that loses columns; null `widths`: that array keeps the entry, as one dialog has it.
struct ListColumnArrays {
    CArray<sQuorColInfo, sQuorColInfo>& columns;
    CArray<int, int>& order;
    CArray<int, int>* widths = nullptr;
};

// Takes the record out and closes the places up behind it. The place that the list's own column has to leave, -1 for a
// hidden one or an index outside the arrays, which changes nothing. A width is taken out for a shown column only.
// Several columns go from the highest index down.
int removeColumnRecord(const ListColumnArrays& arrays, int columnIndex);

// The visible array of an order array.
void rebuildVisible(const CArray<int, int>& order, CArray<sVisibleColumn, sVisibleColumn>& visible);

}  // namespace quor::expression

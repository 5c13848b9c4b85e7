// Dependence is read from display forms, not from id forms: after a deletion the numbers of an id form may mean other
// columns, while a heading means what the user sees. A formula that only quotes a heading as text counts as well: to
// warn once too often does no harm.
#include "quor/expression/core/CustomColumnDependents.h"

#include "quor/list/core/ColumnArrays.h"

namespace quor::expression {

namespace {

bool contains(const CStringArray& names, const CString& name) {
    for (INT_PTR i = 0; i < names.GetCount(); ++i)
        if (names.GetAt(i) == name) return true;
    return false;
}

CString formulaOf(const CustomColumnScope& scope, const CString& name) {
    for (INT_PTR i = 0; i < scope.columns.GetCount(); ++i)
        if (name == scope.columns.GetAt(i).szColumnName) return displayExpression(scope.columns.GetAt(i), scope.family);
    return {};
}

// `visited` changes no answer: a name that was looked through before did not reach the column. It ends the walk where
// a damaged profile has columns that contain each other.
bool reaches(const CustomColumnScope& scope, const CString& selected, const CString& name, std::set<CString>& visited) {
    if (!contains(scope.customNames, name)) return false;
    if (name == selected) return true;
    if (!visited.insert(name).second) return false;
    const CString formula = formulaOf(scope, name);
    int position = 0;
    // Every token, text or name: a heading that is also a piece of text counts.
    for (CString token = formula.Tokenize("\"", position); position != -1; token = formula.Tokenize("\"", position)) {
        if (token == selected) return true;
        if (contains(scope.customNames, token) && reaches(scope, selected, token, visited)) return true;
    }
    return false;
}

// `open` are the columns that the walk stands in; one that is met again there is a cycle, and passed over.
void collect(const CustomColumnScope& scope, const CString& quotedName, std::vector<int>& dependents,
             std::set<int>& seen, std::set<int>& open) {
    for (int i = scope.firstCustom; i < static_cast<int>(scope.columns.GetCount()); ++i) {
        const sQuorColInfo& column = scope.columns.GetAt(i);
        if (displayExpression(column, scope.family).Find(quotedName) < 0 || seen.contains(i)) continue;
        const CString name = column.szColumnName;
        if (!contains(scope.customNames, name) || !open.insert(i).second) continue;
        collect(scope, "\"" + name + "\"", dependents, seen, open);
        open.erase(i);
        dependents.push_back(i);
        seen.insert(i);
    }
}

}  // namespace

bool CheckBaseColRecursively(const CustomColumnScope& scope, const CString& selected, const CString& name) {
    std::set<CString> visited;
    return reaches(scope, selected, name, visited);
}

void RemoveCustColRecursively(const CustomColumnScope& scope, const CString& quotedName, std::vector<int>& dependents,
                              std::set<int>& seen) {
    std::set<int> open;
    collect(scope, quotedName, dependents, seen, open);
}

int removeColumnRecord(const ListColumnArrays& arrays, int columnIndex) {
    if (columnIndex < 0 || columnIndex >= arrays.columns.GetCount() || columnIndex >= arrays.order.GetCount())
        return -1;
    arrays.columns.RemoveAt(columnIndex);
    const int place = arrays.order.GetAt(columnIndex);
    if (place >= 0) {
        for (INT_PTR i = 0; i < arrays.order.GetCount(); ++i)
            if (arrays.order.GetAt(i) > place) arrays.order.SetAt(i, arrays.order.GetAt(i) - 1);
        if (arrays.widths && columnIndex < arrays.widths->GetCount()) arrays.widths->RemoveAt(columnIndex);
    }
    arrays.order.RemoveAt(columnIndex);
    return place;
}

void rebuildVisible(const CArray<int, int>& order, CArray<sVisibleColumn, sVisibleColumn>& visible) {
    visible.RemoveAll();
    for (INT_PTR i = 0; i < order.GetCount(); ++i)
        if (order.GetAt(i) >= 0) list::addVisibleColumn(visible, {order.GetAt(i), static_cast<int>(i)});
}

}  // namespace quor::expression

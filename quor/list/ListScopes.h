// What the sources of every list say in one word: a flag for a block, a window that still lives, and the framework's
// arrays of column numbers as plain ones.
#pragma once

#include "quor/foundation/RedrawScope.h"
#include "quor/foundation/core/ColumnRecords.h"

#include <vector>

namespace quor::list {

using foundation::RedrawScope;

// Sets a flag for a block and puts the former value back.
template <class Flag>
class FlagScope {
public:
    FlagScope(Flag& flag, Flag value) : m_flag(flag), m_former(flag) { flag = value; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;
    ~FlagScope() { m_flag = m_former; }

private:
    Flag& m_flag;
    Flag m_former;
};

// Copies numbers into a framework array.
inline void assign(CArray<int, int>& target, const std::vector<int>& source) {
    target.RemoveAll();
    for (const int value : source) target.Add(value);
}

inline void assign(CArray<sVisibleColumn, sVisibleColumn>& target, const std::vector<sVisibleColumn>& source) {
    target.RemoveAll();
    for (const sVisibleColumn& value : source) target.Add(value);
}

inline std::vector<int> toVector(const CArray<int, int>& source) {
    return {source.GetData(), source.GetData() + source.GetCount()};
}

inline bool isLive(const CWnd* window) { return window && window->m_hWnd && ::IsWindow(window->m_hWnd); }

}  // namespace quor::list

#include "quor/framework/core/FocusRecords.h"

#include <algorithm>

namespace quor::framework {

void FocusRecords::push(const FocusRecord& record) {
    for (std::size_t at = 0; record.flag != 0 && at < m_records.size(); ++at)
        if (m_records[at].window == record.window) m_records.erase(m_records.begin() + static_cast<std::ptrdiff_t>(at));
    m_records.push_back(record);
}

void FocusRecords::remove(const void* window) {
    const auto found = std::find_if(m_records.rbegin(), m_records.rend(),
                                    [window](const FocusRecord& record) { return record.window == window; });
    if (found != m_records.rend()) m_records.erase(std::next(found).base());
}

void FocusRecords::removeAll(const void* window) {
    std::erase_if(m_records, [window](const FocusRecord& record) { return record.window == window; });
}

}  // namespace quor::framework

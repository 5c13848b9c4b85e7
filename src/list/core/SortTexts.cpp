#include "src/list/core/SortTexts.h"

#include "platform/base/Numbers.h"

namespace {

constexpr int kMostColumns = 4096;
constexpr const char* kArrow = "->";
constexpr int kArrowLength = 2;

// Fields between commas, empty ones left out.
std::vector<CString> fields(const CString& text) {
    std::vector<CString> result;
    int position = 0;
    for (CString field = text.Tokenize(",", position); position >= 0; field = text.Tokenize(",", position)) {
        result.push_back(field);
    }
    return result;
}

}  // namespace

CString formatSortLock(const SortLock& lock) {
    CString text = "False,-1,0";
    if (lock.locked) text.Format("True,%d,%d", lock.columnIndex, lock.order);
    return text;
}

SortLock parseSortLock(const CString& text) {
    const std::vector<CString> parts = fields(text);
    if (parts.size() < 3 || parts[0] != "True") return {};
    const SortLock lock{true, quor::atoi(parts[1]), quor::atoi(parts[2])};
    return lock.columnIndex >= 0 && lock.columnIndex < kMostColumns ? lock : SortLock{};
}

CString formatSortLevels(const std::vector<SortLevelText>& levels, bool active) {
    CString text;
    for (const SortLevelText& level : levels) {
        CString part;
        part.Format("%d,", level.order);
        text += level.heading + kArrow + part;
    }
    if (text.IsEmpty()) return text;
    text.TrimRight(',');
    return text + (active ? "#1" : "#0");
}

SortLevelsText parseSortLevels(const CString& text) {
    SortLevelsText result;
    CString flag;
    for (CString field : fields(text)) {
        if (const int cut = field.Find('#'); cut >= 0) {
            flag = field.Mid(cut + 1);
            field = field.Left(cut);
        }
        const int arrow = field.Find(kArrow);
        if (arrow < 0) continue;
        CString heading = field.Left(arrow);
        result.levels.push_back({heading.Trim(), quor::atoi(field.Mid(arrow + kArrowLength))});
    }
    result.hasFlag = !flag.IsEmpty();
    result.active = result.hasFlag && quor::atoi(flag) == 1;
    return result;
}

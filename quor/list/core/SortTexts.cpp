#include "quor/list/core/SortTexts.h"

#include "quor/foundation/core/StoredFields.h"
#include "quor/list/core/ColumnProfileText.h"

namespace quor::list {

namespace {

constexpr const char* kArrow = "->";
constexpr int kArrowLength = 2;

}  // namespace

CString formatSortLock(const SortLock& lock) {
    CString text = "False,-1,0";
    if (lock.locked) text.Format("True,%d,%d", lock.columnIndex, lock.order);
    return text;
}

SortLock parseSortLock(const CString& text) {
    foundation::StoredFields fields(text);
    const auto word = fields.next(), column = fields.next(), order = fields.next();
    if (!order || *word != "True") return {};
    const SortLock lock{true, quor::atoi(*column), quor::atoi(*order)};
    return fitsColumnRange(lock.columnIndex, 0) ? lock : SortLock{};
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
    foundation::StoredFields fields(text);
    while (auto field = fields.next()) {
        if (const int cut = field->Find('#'); cut >= 0) {
            flag = field->Mid(cut + 1);
            field = field->Left(cut);
        }
        const int arrow = field->Find(kArrow);
        if (arrow < 0) continue;
        CString heading = field->Left(arrow);
        result.levels.push_back({heading.Trim(), quor::atoi(field->Mid(arrow + kArrowLength))});
    }
    result.hasFlag = !flag.IsEmpty();
    result.active = result.hasFlag && quor::atoi(flag) == 1;
    return result;
}

}  // namespace quor::list

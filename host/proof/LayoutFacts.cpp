#include "host/proof/LayoutFacts.h"

#include "host/panes/LevelsMenu.h"
#include "host/panes/ListPane.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace terminal {

namespace {

std::string headingOf(CCommonListCtrl& list, int columnIndex) {
    return columnIndex >= 0 && columnIndex < list.m_arrColumns.GetCount() ? list.m_arrColumns[columnIndex].szColumnName
                                                                          : "?";
}

std::string directed(CCommonListCtrl& list, int columnIndex, int order) {
    return headingOf(list, columnIndex) + (order < 0 ? " rising" : order > 0 ? " falling" : " in no order");
}

std::string arrowsOf(CCommonListCtrl& list, const std::vector<int>& items) {
    std::string text;
    for (const int item : items) {
        HDITEM record{};
        record.mask = HDI_FORMAT | HDI_IMAGE;
        if (!list.GetHeaderCtrl()->GetItem(item, &record) || !(record.fmt & HDF_IMAGE) || record.iImage > 1) continue;
        text += directed(list, list.GetOriginalColumnPosition(item), record.iImage == 0 ? -1 : 1) + "; ";
    }
    return text.empty() ? "none" : text;
}

std::vector<SortBy> sortOf(CCommonListCtrl& list) {
    std::vector<SortBy> by;
    if (list.m_bMultiSortActive)
        for (INT_PTR i = 0; i < list.m_arrSortOrder.GetCount(); ++i)
            by.push_back({list.m_arrSortOrder[i].iColumnIndex, list.m_arrSortOrder[i].iSortOrder});
    else if (list.m_bSortLocked)
        by.push_back({list.m_nLockSortColumn, list.m_nLockSortOrder});
    else if (list.m_bAutoSort || list.m_bSorted)
        by.push_back({list.GetOriginalColumnPosition(list.m_nSortCol), list.m_nSortOrder});
    return by;
}

// By a reading of its own, not by the list's: numbers as C reads them, other texts by their bytes (the columns that are
// sorted here hold one or the other).
int compared(const std::string& one, const std::string& other, int dataType) {
    if (dataType != 2 && dataType != 4 && dataType != 5) return one.compare(other);
    const double difference = std::atof(one.c_str()) - std::atof(other.c_str());
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

std::string userColumnsOf(CCommonListCtrl& list) {
    std::string text;
    for (INT_PTR i = list.m_nBaseColumnCount; i < list.m_arrColumns.GetCount(); ++i) {
        const sQuorColInfo& column = list.m_arrColumns[i];
        text.append("[").append(column.szColumnName).append("|").append(column.csExpression).append("|");
        text.append(column.csToolTip).append("] ");
    }
    return text;
}

std::string levelsText(CCommonListCtrl& list) {
    std::string text;
    for (const SortLevel& level : levelsOf(list))
        text += level.heading + (level.order < 0 ? " rising, " : " falling, ");
    return text + (list.m_bMultiSortActive ? "active" : "not active");
}

// How far two texts agree, for a message: the rest of each from a little before.
std::string restFrom(const std::string& text, std::size_t at) {
    constexpr std::size_t kBefore = 20, kShown = 160;
    return text.substr(at > kBefore ? at - kBefore : 0, kShown);
}

}  // namespace

int rowsOf(const CCommonListCtrl& list) {
    return static_cast<int>(::SendMessageA(list.GetSafeHwnd(), LVM_GETITEMCOUNT, 0, 0));
}

std::vector<int> itemsOf(CCommonListCtrl& list) {
    std::vector<int> items;
    const CHeaderCtrl* const header = list.GetHeaderCtrl();
    for (int i = 0; header && i < header->GetItemCount(); ++i) items.push_back(header->OrderToIndex(i));
    return items;
}

std::string rowsBy(CCommonListCtrl& list, const std::vector<SortBy>& by, bool withTexts) {
    const int count = rowsOf(list);
    std::vector<std::string> former;
    std::uint64_t digest = 14695981039346656037u;  // FNV-1a (Fowler, Noll, Vo)
    for (int row = 0; row < count; ++row) {
        std::vector<std::string> texts;
        int verdict = 0;
        for (std::size_t i = 0; i < by.size(); ++i) {
            const int place = list.m_arrOrder[by[i].columnIndex];
            texts.emplace_back(static_cast<const char*>(list.GetItemText(row, place)));
            for (const char c : texts.back() + '\n') digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211u;
            if (row > 0 && verdict == 0)
                verdict = -by[i].order * compared(former[i], texts[i], list.m_arrColumns[by[i].columnIndex].iDataType);
        }
        if (verdict > 0) return "row " + std::to_string(row) + " stands behind one that comes after it";
        former = std::move(texts);
    }
    return withTexts ? std::to_string(count) + " in order, texts " + std::to_string(digest) : "in order";
}

ListLayout layoutOf(const Subject& subject) {
    CCommonListCtrl& list = subject.list;
    const std::vector<int> items = itemsOf(list);
    const auto pane = dynamic_cast<CListPane*>(list.GetParent());  // other proofs change the room that it gives
    std::string columns, widths;
    for (const int item : items) {
        const std::string heading = headingOf(list, list.GetOriginalColumnPosition(item));
        columns += heading + "; ";
        widths += heading + " " + std::to_string(pane ? pane->ownWidth(item) : list.GetColumnWidth(item)) + "; ";
    }
    const std::vector<SortBy> by = sortOf(list);
    ListLayout layout{subject.name, {{"columns", columns}, {"widths", widths}, {"user columns", userColumnsOf(list)}}};
    const auto add = [&](const char* name, const std::string& value) { layout.facts.push_back({name, value}); };
    add("levels", levelsText(list));
    add("lock", list.m_bSortLocked ? directed(list, list.m_nLockSortColumn, list.m_nLockSortOrder) : "none");
    add("auto-sort", list.m_bAutoSort ? directed(list, by.empty() ? -1 : by[0].columnIndex, list.m_nSortOrder) : "off");
    add("arrows", arrowsOf(list, items));
    add("rows", by.empty() ? "as they came" : rowsBy(list, by, true));
    return layout;
}

std::vector<std::string> differences(const ListLayout& left, const ListLayout& found) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < left.facts.size(); ++i) {
        const LayoutFact& was = left.facts[i];
        const LayoutFact is = i < found.facts.size() ? found.facts[i] : LayoutFact{was.name, "nothing"};
        if (was == is) continue;
        const std::size_t at = static_cast<std::size_t>(
            std::mismatch(was.value.begin(), was.value.end(), is.value.begin(), is.value.end()).first -
            was.value.begin());
        lines.push_back(left.list + ": " + was.name + ": left \"" + restFrom(was.value, at) + "\", found \"" +
                        restFrom(is.value, at) + "\"");
    }
    return lines;
}

}  // namespace terminal

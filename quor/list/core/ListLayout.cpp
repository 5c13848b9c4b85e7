// Numbers are grouped as texts, so that a host's digits, however many, and its fraction stay as it wrote them.
#include "quor/list/core/ListLayout.h"

#include "quor/edits/core/DigitGroups.h"

#include <algorithm>
#include <cstddef>

namespace quor::list {

int fittedColumnWidth(FitTo fit, const ColumnMeasure& measure) {
    switch (fit) {
        case FitTo::data:
            return std::max(measure.data, kMinColumnWidth);
        case FitTo::header:
            return std::max(measure.header, kMinColumnWidth);
        case FitTo::window:
            return measure.client > 0 && measure.columnCount > 0 ? measure.client / measure.columnCount
                                                                 : kMinColumnWidth;
        case FitTo::dataAndHeader:
            break;
    }
    return std::max({measure.data, measure.header, kMinColumnWidth});
}

bool fitReadsData(FitTo fit) { return fit == FitTo::data || fit == FitTo::dataAndHeader; }

bool fitReadsHeadings(FitTo fit) { return fit == FitTo::header || fit == FitTo::dataAndHeader; }

Span headerItemSpan(const std::vector<int>& widths, const std::vector<int>& sequence, int item, int scroll) {
    int left = -scroll;
    for (const int standing : sequence) {
        const int width = widths[static_cast<std::size_t>(standing)];
        if (standing == item) return {left, left + width};
        left += width;
    }
    return {};
}

std::vector<RECT> areaOutsideCells(RECT client, RECT cells) {
    if (cells.right <= cells.left || cells.bottom <= cells.top) return {client};
    const RECT above{client.left, client.top, client.right, cells.top};
    const RECT beside{cells.right, cells.top, client.right, cells.bottom};
    const RECT below{client.left, cells.bottom, client.right, client.bottom};
    std::vector<RECT> parts;
    for (const RECT& part : {above, beside, below}) {
        if (part.left < part.right && part.top < part.bottom) parts.push_back(part);
    }
    return parts;
}

CString withThousandsSeparators(const CString& number) {
    const int point = number.Find('.');
    CString whole = point < 0 ? number : number.Left(point);
    if (!whole.IsEmpty() && whole[0] == '-') {
        whole.Remove('-');
        whole.Insert(0, '-');
    }
    return point < 0 ? edits::groupedWhole(whole) : edits::groupedWhole(whole) + number.Mid(point);
}

}  // namespace quor::list

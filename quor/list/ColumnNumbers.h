// What a list keeps by the numbers and places of its columns, taken down before these change.
#pragma once

#include "quor/list/HeaderImages.h"

#include <vector>

namespace quor::list {

struct ColumnNumbers {
    // A header item that shows an order.
    struct Arrow {
        int columnIndex = 0;
        int format = 0;
        HeaderImage image = kHeaderImageBlank;
    };

    std::vector<CString> headings;  // by columnIndex
    std::vector<Arrow> arrows;
    int sortColumn = -1;  // columnIndex at m_nSortCol, -1 none
    int lastSortColumn = -1;
};

}  // namespace quor::list

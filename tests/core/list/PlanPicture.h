// What a column set plan puts on screen, as one line of text.
#pragma once

#include <sstream>
#include <string>

#include "src/list/core/ColumnSetPlan.h"

using namespace quor::list;

// "column:width" for each insert, a star on user columns; then the order array.
inline std::string picture(const ColumnSetPlan& plan) {
    std::ostringstream text;
    for (const auto& insert : plan.inserts) {
        text << insert.columnIndex << ":" << insert.width << (insert.isUserColumn ? "* " : " ");
    }
    text << "|";
    for (const int place : plan.order) text << " " << place;
    return text.str();
}

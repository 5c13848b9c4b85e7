// Pictures of stored column texts, and random column sets to store.
#pragma once

#include "src/list/core/ColumnProfileText.h"

#include <random>
#include <string>

using namespace quor::list;

namespace column_texts {

// "index,place,width" for each entry, and what it carries in brackets.
inline std::string picture(const std::vector<ProfileEntry>& entries) {
    std::string text;
    for (const ProfileEntry& e : entries) {
        text += (text.empty() ? "" : " ") + std::to_string(e.columnIndex) + "," + std::to_string(e.place) + "," +
                std::to_string(e.width);
        if (e.isUserColumn) {
            text += std::string("[") + e.name.GetString() + "|" + e.expression.GetString() + "|" +
                    e.toolTip.GetString() + "]";
        } else if (!e.name.IsEmpty()) {
            text += std::string("[") + e.name.GetString() + "]";
        }
    }
    return text;
}

// One to thirty columns at distinct places without a gap, some hidden, at least one shown; those from a random index on
// are user columns. Names are distinct and hold any byte that a name may, but none of its text's separators.
inline std::vector<ProfileEntry> randomColumnSet(std::mt19937& random) {
    const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    const auto name = [&](int number) {
        std::string text = std::to_string(number);
        for (int i = below(12); i > 0; --i) {
            const char c = static_cast<char>(1 + below(255));
            text += c == ',' || c == '#' ? '.' : c;
        }
        return CString(text.c_str());
    };
    const int count = 1 + below(30);
    const int userFrom = 1 + below(static_cast<unsigned>(count));
    std::vector<ProfileEntry> set(static_cast<std::size_t>(count));
    std::vector<int> inOrder;
    for (int i = 0; i < count; ++i) {
        ProfileEntry& entry = set[static_cast<std::size_t>(i)];
        entry.columnIndex = i;
        entry.width = below(400);
        entry.isUserColumn = i >= userFrom;
        entry.name = name(i);
        if (entry.isUserColumn) {
            entry.expression = name(i);
            entry.toolTip = name(i);
        }
        if (i == 0 || below(3) != 0) inOrder.insert(inOrder.begin() + below(unsigned(inOrder.size()) + 1), i);
    }
    for (std::size_t place = 0; place < inOrder.size(); ++place) {
        set[static_cast<std::size_t>(inOrder[place])].place = static_cast<int>(place);
    }
    return set;
}

}  // namespace column_texts

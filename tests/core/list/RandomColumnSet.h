// Random column sets to store and to show.
#pragma once

#include "quor/list/core/ColumnProfileText.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

class RandomColumnSets {
public:
    static long rounds() { return test::rounds("QUOR_COLUMN_SETS", 20'000); }
    int below(std::size_t limit) { return static_cast<int>(engine() % limit); }

    // One to thirty columns at distinct places without a gap, some hidden, at least one shown; those from a random
    // index on are user columns. Names are distinct and hold any byte that a name may, but none of its text's
    // separators.
    std::vector<quor::list::ProfileEntry> next() {
        std::vector<quor::list::ProfileEntry> set(1 + engine() % 30);
        const int userFrom = 1 + below(set.size());
        std::vector<int> inOrder;
        for (int i = 0; i < static_cast<int>(set.size()); ++i) {
            quor::list::ProfileEntry& entry = set[static_cast<std::size_t>(i)];
            entry.columnIndex = i;
            entry.width = below(400);
            entry.isUserColumn = i >= userFrom;
            entry.name = name(i);
            if (entry.isUserColumn) {
                entry.expression = name(i);
                entry.toolTip = name(i);
            }
            if (i == 0 || below(3) != 0) inOrder.insert(inOrder.begin() + below(inOrder.size() + 1), i);
        }
        for (std::size_t place = 0; place < inOrder.size(); ++place)
            set[static_cast<std::size_t>(inOrder[place])].place = static_cast<int>(place);
        return set;
    }

private:
    CString name(int number) {
        std::string text = std::to_string(number) + ":";
        for (int i = below(12); i > 0; --i) {
            const char c = static_cast<char>(1 + below(255));
            text += c == ',' || c == '#' ? '.' : c;
        }
        return text.c_str();
    }

    const unsigned m_seed = test::anySeed();
    const testing::ScopedTrace m_told{__FILE__, __LINE__, "QUOR_SEED=" + std::to_string(m_seed)};

public:
    std::mt19937 engine{m_seed};
};

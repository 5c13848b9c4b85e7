// What a list really drew in its last paint: for each row that the paint touched, the row's number, the host's row and
// the texts of its cells. Filled while the rows are drawn, read by the self-check.
//
// The entries are kept from paint to paint, so a paint allocates nothing once the texts have had their room.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace terminal {

struct DrawnRow {
    int visual = -1;
    const void* row = nullptr;       // null: a row without data, or a list that keeps none
    std::vector<std::string> cells;  // by columnIndex
};

class DrawnRows {
public:
    void clear() { m_used = 0; }

    DrawnRow& begin(int visual, const void* row) {
        if (m_used == m_rows.size()) m_rows.emplace_back();
        DrawnRow& drawn = m_rows[m_used++];
        drawn.visual = visual;
        drawn.row = row;
        for (std::string& cell : drawn.cells) cell.clear();
        return drawn;
    }

    static void note(DrawnRow& drawn, int columnIndex, std::string_view text) {
        const auto index = static_cast<std::size_t>(columnIndex);
        if (index >= drawn.cells.size()) drawn.cells.resize(index + 1);
        drawn.cells[index].assign(text);
    }

    std::size_t size() const { return m_used; }
    const DrawnRow& operator[](std::size_t index) const { return m_rows[index]; }

private:
    std::vector<DrawnRow> m_rows;
    std::size_t m_used = 0;
};

}  // namespace terminal

// One cell of a user column: three texts of other columns into the formula, then its divisor, then the whole, then two
// decimals. The texts stand ready, so that what is measured is the library's part.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "quor/expression/core/CustomColumnText.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace quor::expression;

namespace {

constexpr int kRows = 1000;
constexpr int kCells = 500'000;
constexpr int kRepeats = 5;
constexpr char kFormula[] = " ( \"3\" - \"7\" ) / \"7\" * 100";

// Last price in column 3, close in column 7, of one row at a time.
class Quotes : public CustomCellSource {
public:
    Quotes() {
        std::uint32_t state = 42;
        const auto cents = [&state] {
            state ^= state << 13;
            state ^= state >> 17;
            state ^= state << 5;
            return 10'000 + state % 90'000;
        };
        for (int i = 0; i < kRows; ++i) {
            const unsigned last = cents(), close = cents();
            m_last.emplace_back(text(last));
            m_close.emplace_back(text(close));
            expected.push_back((static_cast<double>(last) - close) / close * 100);
        }
    }

    bool cellText(int columnIndex, CString& value) override {
        value = (columnIndex == 3 ? m_last : m_close)[row].GetString();
        return true;
    }

    std::size_t row = 0;
    std::vector<double> expected;

private:
    static CString text(unsigned cents) {
        CString made;
        made.Format("%u.%02u", cents / 100, cents % 100);
        return made;
    }

    std::vector<CString> m_last, m_close;
};

}  // namespace

void benchCustomColumn(Figures& figures) {
    Quotes quotes;
    CustomColumnText cells;
    const CString formula = kFormula;
    CString text;
    // All answers are looked at once, outside of the clock; within it, that the last one is of its row.
    for (quotes.row = 0; quotes.row < kRows; ++quotes.row) {
        cells.evaluate(ListFamily::grid, {quotes.row, 112}, formula, quotes, text);
        if (!(std::fabs(std::atof(text) - quotes.expected[quotes.row]) <= 0.00501))
            throw std::runtime_error("a user column shows a wrong number");
    }
    long wrong = 0;
    const double seconds = medianSeconds(kRepeats, [&] {
        for (int i = 0; i < kCells; ++i) {
            quotes.row = static_cast<std::size_t>(i % kRows);
            wrong +=
                cells.evaluate(ListFamily::grid, {quotes.row, 112}, formula, quotes, text) != CustomCellOutcome::done;
        }
    });
    if (wrong != 0) throw std::runtime_error("a user column was not computed");
    figures.push_back({"custom_cell_us", seconds * 1e6 / kCells, "us",
                       "one cell of ( \"3\" - \"7\" ) / \"7\" * 100; 500k cells, median of 5", 1.2, 0.5});
}

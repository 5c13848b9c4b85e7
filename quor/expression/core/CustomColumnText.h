// User columns without a window: which string of a record is which, and the text of one cell.
//
// A user column's formula exists in two forms. The display form names columns in quotes (` "Rate" * 2`); the id form,
// which is evaluated, has their columnIndex there (` "7" * 2`). Which string of the record holds which form depends on
// the family of the list, and stored profiles depend on that:
//                                   csExpression    csToolTip
//     market watches                display form    id form
//     all other lists               id form         display form
//
// A cell's text is made anew each time it is asked for: the quoted numbers are replaced by those columns' texts ("0"
// for a text that is no number), and the line of arithmetic that results is evaluated and shown with two decimals. The
// test for a zero divisor is crude and cells depend on it: it evaluates everything right of the first "/", so `10/2-2`
// and `(10/2)` count as divided by zero while `2/1+10/0` does not.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

#include <cstdint>
#include <deque>

namespace quor::expression {

// The first user column of a market watch; other lists count from their built-in columns.
inline constexpr int kFirstMarketWatchUserColumn = 112;

enum class ListFamily { grid, multiLine, marketWatch };

const CString& idExpression(const sQuorColInfo& column, ListFamily family);
const CString& displayExpression(const sQuorColInfo& column, ListFamily family);
// Puts both forms where the family keeps them.
void setExpressions(sQuorColInfo& column, ListFamily family, const CString& idForm, const CString& displayForm);

// A cell: the host's row, by its address or number, and the column.
struct CustomCell {
    std::uintptr_t row = 0;
    int columnIndex = 0;
    bool operator==(const CustomCell&) const = default;
};

// Where the texts of the referenced columns come from: the row of one list.
class CustomCellSource {
public:
    virtual ~CustomCellSource() = default;
    // False, `text` untouched: there is no such column, or no text, or the list is not there any more. The source may
    // evaluate another user column with the same CustomColumnText, which is asked for no cell inside itself.
    virtual bool cellText(int columnIndex, CString& text) = 0;
};

enum class CustomCellOutcome {
    done,        // the text was made, or left as the rules say
    noValue,     // a referenced column has no text: `text` keeps what it held
    invalid,     // the line holds two values without an operator between: the list shows kInvalidCustomExpression
    emptyValue,  // multi-line lists: a referenced cell is empty, and so this one stays empty
};

inline constexpr char kInvalidCustomExpression[] = "Invalid Expression,while calculating value";
inline constexpr char kDividedByZero[] = "Divided by ZERO error";

// Makes the texts of one list's user columns. It keeps nothing between calls but its buffers, one set for each level
// of columns inside columns, so that a cell allocates nothing once they have grown. A host that is asked for a text may
// come back with another cell, and may end the list: whoever calls keeps this object alive until evaluate returned.
class QUOR_CONTROLS_API CustomColumnText {
public:
    CustomColumnText() = default;
    CustomColumnText(const CustomColumnText&) = delete;
    CustomColumnText& operator=(const CustomColumnText&) = delete;

    // The text of a user column's cell, from the column's id form. `text` also receives the referenced texts one after
    // the other, and shows the last of them where the divisor cannot be evaluated; on a multi-line list it is emptied
    // first and holds nothing but the result. A cell that refers to one that is being made, itself or one that it
    // enters, has noValue: deleted columns and damaged profiles bring that about.
    CustomCellOutcome evaluate(ListFamily family, CustomCell cell, const CString& idForm, CustomCellSource& source,
                               CString& text);

private:
    struct Level {
        CustomCell cell;
        CString built, divisor, value;
    };
    class Descent;

    bool isBeingMade(CustomCell cell) const;
    CustomCellOutcome build(ListFamily family, const CString& idForm, CustomCellSource& source, Level& level,
                            CString& text);
    static CustomCellOutcome calculate(Level& level, CString& text);

    std::deque<Level> m_levels;  // a deque: levels stay where they are while one is added
    std::size_t m_depth = 0;
};

}  // namespace quor::expression

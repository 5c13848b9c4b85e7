// What both roads of the evaluator share: the operator table, character classes, the effect of an operator and the
// reading of a number. Not for callers of the evaluator.
#pragma once

#include "quor/expression/core/ExpressionEvaluator.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace quor::expression {

struct OperatorRow {
    std::string_view text;
    std::int32_t precedence;  // a bigger one binds tighter
};

// Row 0 is the operator character set. Lookup takes the first row that matches, so the second "^" (row 10) is dead, and
// so are the rows with "!", which is no operator character. Row order and dead rows are part of the stored language.
inline constexpr std::array<OperatorRow, 23> OperatorTable = {{
    {"<>=*/%+-^&|\\", -1},
    {"*", 19},
    {"^", 19},
    {"/", 19},
    {"\\", 19},
    {"%", 18},
    {"<<", 17},
    {">>", 17},
    {"-", 16},
    {"+", 16},
    {"^", 15},
    {"&", 15},
    {"|", 15},
    {"!|", 15},
    {"&&", 14},
    {"||", 14},
    {"!&", 15},
    {"==", 13},
    {"<", 13},
    {">", 13},
    {">=", 13},
    {"!=", 13},
    {"<=", 13},
}};

// Their numbers in the table.
enum Row : int {
    kRowNone = -1,
    kRowMultiply = 1,
    kRowPower,
    kRowDivide,
    kRowDivideWhole,
    kRowRemainder,
    kRowShiftLeft,
    kRowShiftRight,
    kRowSubtract,
    kRowAdd,
    kRowExclusiveOr,  // dead
    kRowAnd,
    kRowOr,
    kRowNor,  // dead
    kRowBothTrue,
    kRowEitherTrue,
    kRowNand,  // dead
    kRowEqual,
    kRowLess,
    kRowGreater,
    kRowGreaterEqual,
    kRowUnequal,  // dead
    kRowLessEqual
};

// The longest text of a row. A run of operator characters that is longer is no operator.
inline constexpr std::size_t kLongestOperator = 2;

enum CharacterClass : std::uint8_t { kClassSpace = 1, kClassOperand = 2, kClassOperator = 4 };

// Classes of the C locale, by byte: isspace; isalnum or a full stop; the operator character set.
constexpr std::array<std::uint8_t, 256> makeCharacterClasses() {
    std::array<std::uint8_t, 256> classes = {};
    for (unsigned char c : std::string_view(" \t\n\v\f\r")) classes[c] = kClassSpace;
    for (unsigned c = '0'; c <= '9'; ++c) classes[c] = kClassOperand;
    for (unsigned c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c + ('a' - 'A')] = kClassOperand;
    classes['.'] = kClassOperand;
    for (unsigned char c : OperatorTable[0].text) classes[c] = kClassOperator;
    return classes;
}
inline constexpr std::array<std::uint8_t, 256> kCharacterClasses = makeCharacterClasses();

inline bool isClass(char character, CharacterClass wanted) {
    return (kCharacterClasses[static_cast<unsigned char>(character)] & wanted) != 0;
}

// To a signed 32-bit integer toward zero; -2147483648 for what does not fit, infinity and NaN.
inline std::int32_t truncate(double value) {
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<std::int32_t>(value) : INT32_MIN;
}

// Computes `left` row `right`. False, with nothing written, only for % with a right side that truncates to 0.
bool applyOperator(int row, double left, double right, double& value);

// Reads the operand that is the first `length` characters of `text`; false unless the number reader takes them all.
bool readOperand(LPCSTR text, std::size_t length, double& value);

}  // namespace quor::expression

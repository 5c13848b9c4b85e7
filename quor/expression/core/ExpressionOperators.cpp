// Every row has a result for every pair of operands, also where C++ leaves it open (shifts, a remainder by -1, a value
// that no integer holds): a stored formula gives one number in every build and on every processor.
#include "quor/expression/core/ExpressionOperators.h"

#include <cmath>

namespace quor::expression {

namespace {

double truth(bool value) { return value ? 1.0 : 0.0; }

// Bits of the truncated operands. Shift counts are taken modulo 32; shifts of negative numbers are defined here.
double bitwise(int row, std::int32_t left, std::int32_t right) {
    const auto count = static_cast<std::uint32_t>(right) & 31u;
    switch (row) {
        case kRowShiftLeft:
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) << count);
        case kRowShiftRight:
            return left >> count;
        case kRowAnd:
            return left & right;
        case kRowOr:
            return left | right;
        case kRowExclusiveOr:
            return left ^ right;
        case kRowNor:
            return ~(left | right);
        default:
            return ~(left & right);  // kRowNand
    }
}

}  // namespace

bool applyOperator(int row, double left, double right, double& value) {
    switch (row) {
        case kRowMultiply:
            value = left * right;
            return true;
        case kRowPower:
            value = std::pow(left, right);
            return true;
        case kRowDivideWhole:
            value = truncate(left / right);
            return true;
        case kRowDivide:
            value = left / right;
            return true;
        case kRowRemainder: {
            const std::int32_t divisor = truncate(right);
            if (divisor == 0) return false;
            // By -1 the remainder is always 0; the processor traps on the smallest integer.
            value = divisor == -1 ? 0 : truncate(left) % divisor;
            return true;
        }
        case kRowAdd:
            value = left + right;
            return true;
        case kRowSubtract:
            value = left - right;
            return true;
        case kRowBothTrue:
            value = truth(left != 0.0 && right != 0.0);
            return true;
        case kRowEitherTrue:
            value = truth(left != 0.0 || right != 0.0);
            return true;
        case kRowEqual:
            value = truth(left == right);
            return true;
        case kRowLess:
            value = truth(left < right);
            return true;
        case kRowGreater:
            value = truth(left > right);
            return true;
        case kRowGreaterEqual:
            value = truth(left >= right);
            return true;
        case kRowUnequal:
            value = truth(left != right);
            return true;
        case kRowLessEqual:
            value = truth(left <= right);
            return true;
        default:
            value = bitwise(row, truncate(left), truncate(right));
            return true;
    }
}

bool readOperand(LPCSTR text, std::size_t length, double& value) {
    const LPCSTR operandEnd = text + length;
    LPCSTR end = text;
    value = quor::strtod(text, &end);
    // The reader saw the text behind the operand too. It went past the end in two cases: an exponent whose sign is no
    // part of the operand (`1e` of `1e-5`), which leaves a bad operand, and the parenthesis of `nan(...)`, behind which
    // the operand is "nan" all the same.
    return end == operandEnd || (end > operandEnd && std::isnan(value));
}

}  // namespace quor::expression

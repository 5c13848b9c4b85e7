// The evaluator of user-defined columns: one line of arithmetic text in, one double out. Two stages, infix to postfix
// and postfix to value, with the postfix form as text between them. Both texts are seen by callers, and stored
// expressions depend on every rule below, the odd ones included: the grammar is not to be tidied.
//
// An expression is a sequence of operands and operators with parentheses. All operators are left-associative; from the
// tightest to the loosest:
//     * ^ / \         (^ is power)
//     %
//     << >>
//     + -
//     & |
//     && ||
//     == < > >= <=
//
// Whether a character begins an operator is decided by the longest run of operator characters there, as a whole: in
// `2*-3` the run "*-" is no operator, so the text has none where one might look for it. A sign is part of a number if
// it stands first in the text, or behind an operator with blanks between them (`2* -3`); behind "(" it subtracts from
// an inserted zero. Integers of \ % << >> & | are 32-bit, truncated toward zero; what does not fit is -2147483648.
//
// Texts end at the first NUL. The time is proportional to the length of the text. The functions keep no state, so any
// thread may call them, with strings that no other thread's strings share their text with: a CString that is passed by
// value is one more copy, and copies count each other without a lock. Of a text that several threads know, pass
// GetString().
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>

// Callers compare with the numbers; 2 is never returned.
enum ExpressionResult : std::int32_t {
    EXPR_OK = 0,           // the result was written
    EXPR_MALFORMED = 1,    // unbalanced parentheses, or an operator found fewer than two values
    EXPR_BAD_OPERAND = 3,  // an operand is not wholly a number, or % met a right side that truncates to 0
    EXPR_LEFTOVER = 4      // more than one value remained; the last one was written all the same
};

// Evaluates a text. `*result` is written for EXPR_OK and EXPR_LEFTOVER and left alone otherwise; callers set it first.
// Division by zero is no failure: / gives infinity or NaN, \ gives -2147483648. Gives what the two stages below give
// one after the other, without building the text between them, and allocates nothing for texts of up to 64 tokens.
QUOR_CONTROLS_API ExpressionResult EvaluateExpression(CString expression, double* result);

// Writes the postfix form: every token behind one blank, a signed operand in parentheses (` (-3) 4 +`). Words are not
// looked up; what is no number is found by the second stage. EXPR_OK, or EXPR_MALFORMED for unbalanced parentheses, in
// which case `postfix` holds what was written so far.
QUOR_CONTROLS_API ExpressionResult ConvertToPostfix(CString expression, CString& postfix);

// Evaluates a postfix text. Blanks and parentheses separate tokens; an operator right behind "(" is a sign. Numbers are
// what the C library's strtod (C99: hexadecimal, "inf" and "nan" too) takes as a whole. `*result` as above.
QUOR_CONTROLS_API ExpressionResult EvaluatePostfix(const CString& postfix, double* result);

// The table row, 1 to 22, of the operator at the head of `text`: the row that equals the whole run of operator
// characters there. -1 if there is none. Rows with ! are never found: ! is no operator character. Null is empty.
QUOR_CONTROLS_API int FindOperator(LPCSTR text);

// The length of the operand at the head of `text`: one character, whatever it is, and every letter, digit and full
// stop behind it. 0 for an empty text or null.
QUOR_CONTROLS_API int GetOperandLength(LPCSTR text);

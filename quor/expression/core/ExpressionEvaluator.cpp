// The two stages as they are told to callers, with the text between them. EvaluateExpression does not come by here (see
// ExpressionFused.cpp), but must give what these two give.
#include "quor/expression/core/ExpressionEvaluator.h"

#include "quor/expression/core/ExpressionOperators.h"

#include <string>
#include <vector>

using namespace quor::expression;

int FindOperator(LPCSTR text) {
    if (!text) return kRowNone;
    // The whole run decides, not the longest row that fits: `*-` is no operator though `*` is. Counting stops where no
    // row could match any more, so that a long run costs no more than a short one.
    std::size_t run = 0;
    while (run <= kLongestOperator && isClass(text[run], kClassOperator)) ++run;
    if (run == 0) return kRowNone;
    for (std::size_t row = 1; row < OperatorTable.size(); ++row)
        if (OperatorTable[row].text == std::string_view(text, run)) return static_cast<int>(row);
    return kRowNone;
}

int GetOperandLength(LPCSTR text) {
    if (!text || !*text) return 0;
    int length = 1;
    while (isClass(text[length], kClassOperand)) ++length;
    return length;
}

namespace {

// Infix to postfix by an operator stack (Dijkstra's shunting yard), over texts.
class PostfixWriter {
public:
    explicit PostfixWriter(LPCSTR text) : m_begin(text), m_at(text) {}

    ExpressionResult run() {
        while (*m_at) {
            if (isClass(*m_at, kClassSpace)) {
                ++m_at;
            } else if (*m_at == '(') {
                m_operators.emplace_back("(");
                ++m_at;
            } else if (*m_at == ')') {
                if (!closeParenthesis()) return EXPR_MALFORMED;
                ++m_at;
            } else if (!takeToken()) {
                return EXPR_BAD_OPERAND;
            }
        }
        for (; !m_operators.empty(); m_operators.pop_back()) {
            if (m_operators.back() == "(") return EXPR_MALFORMED;
            append(m_operators.back());
        }
        return EXPR_OK;
    }

    const std::string& output() const { return m_output; }

private:
    void append(std::string_view token) { (m_output += ' ') += token; }

    bool closeParenthesis() {
        for (; !m_operators.empty(); m_operators.pop_back()) {
            if (m_operators.back() == "(") {
                m_operators.pop_back();
                return true;
            }
            append(m_operators.back());
        }
        return false;
    }

    // What FindOperator says of the text from the previous character on that is not blank, the current one included if
    // it follows at once; 1 if there is none. Positive means that a sign may stand here.
    int operatorBefore() const {
        LPCSTR before = m_at;
        while (before != m_begin && isClass(before[-1], kClassSpace)) --before;
        return before == m_begin ? 1 : FindOperator(before - 1);
    }

    bool takeToken() {
        const int row = FindOperator(m_at);
        const bool isSigned = row > 0 && operatorBefore() > 0;
        if (row > 0 && !isSigned) {
            takeOperator(row);
            return true;
        }
        const int length = GetOperandLength(m_at);
        if (length == 0) return false;
        m_lastToken.assign(m_at, static_cast<std::size_t>(length));
        append(isSigned ? "(" + m_lastToken + ")" : m_lastToken);
        m_at += length;
        return true;
    }

    void takeOperator(int row) {
        // The minus of `(-3)` and `2*(-3)` subtracts from this zero. The length counts: none after `<<` and its like.
        if (m_output.empty() || (m_lastToken.size() == 1 && FindOperator(m_lastToken.c_str()) > 0)) append("0");
        const OperatorRow& operatorRow = OperatorTable[static_cast<std::size_t>(row)];
        m_lastToken = operatorRow.text;
        m_at += operatorRow.text.size();
        for (; !m_operators.empty() && m_operators.back() != "("; m_operators.pop_back()) {
            if (precedenceOf(m_operators.back()) < operatorRow.precedence) break;
            append(m_operators.back());
        }
        m_operators.emplace_back(operatorRow.text);
    }

    static std::int32_t precedenceOf(const std::string& text) {
        const int row = FindOperator(text.c_str());
        return row > 0 ? OperatorTable[static_cast<std::size_t>(row)].precedence : 1;
    }

    LPCSTR m_begin;
    LPCSTR m_at;
    std::string m_output;
    std::string m_lastToken;
    std::vector<std::string> m_operators;
};

}  // namespace

ExpressionResult ConvertToPostfix(CString expression, CString& postfix) {
    PostfixWriter writer(expression.GetString());
    const ExpressionResult code = writer.run();
    postfix.SetString(writer.output().c_str(), static_cast<int>(writer.output().size()));
    return code;
}

ExpressionResult EvaluatePostfix(const CString& postfix, double* result) {
    const LPCSTR begin = postfix.GetString();
    std::vector<double> values;
    for (LPCSTR at = begin; *at;) {
        if (isClass(*at, kClassSpace) || *at == '(' || *at == ')') {
            ++at;
            continue;
        }
        const int row = FindOperator(at);
        if (row < 0 || (at != begin && at[-1] == '(')) {
            const auto length = static_cast<std::size_t>(GetOperandLength(at));
            double value = 0;
            if (!readOperand(at, length, value)) return EXPR_BAD_OPERAND;
            values.push_back(value);
            at += length;
            continue;
        }
        if (values.size() < 2) return EXPR_MALFORMED;
        const double right = values.back();
        values.pop_back();
        if (!applyOperator(row, values.back(), right, values.back())) return EXPR_BAD_OPERAND;
        at += OperatorTable[static_cast<std::size_t>(row)].text.size();
    }
    if (values.empty()) return EXPR_MALFORMED;
    *result = values.back();
    return values.size() == 1 ? EXPR_OK : EXPR_LEFTOVER;
}

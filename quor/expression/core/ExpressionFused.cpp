// EvaluateExpression in one pass: the walk of the first stage hands each token to the second stage at once, as a value
// or a table row instead of text. It is called for every visible cell of a user-defined column, several times a paint,
// hence the pass of its own. A differential test holds it to the two stages, token by token oddity by oddity.
//
// Three things need care. An error of the second stage must not be returned before the first has walked the whole text,
// since unbalanced parentheses come first. A lone operator character that the first stage took for an operand (its run
// is no operator) is an operator again in the postfix text, where a blank follows it. And a signed token is never an
// operator there, because of its parenthesis.
#include "quor/expression/core/ExpressionOperators.h"

#include <memory>
#include <utility>

using namespace quor::expression;

namespace {

// A stack whose first N items need no allocation.
template <typename T, std::size_t N>
class ShortStack {
public:
    bool empty() const { return m_size == 0; }
    std::size_t size() const { return m_size; }
    T& back() { return m_items[m_size - 1]; }
    void pop() { --m_size; }
    void push(T item) {
        if (m_size == m_capacity) grow();
        m_items[m_size++] = item;
    }

private:
    void grow() {
        auto bigger = std::make_unique<T[]>(m_capacity * 2);
        for (std::size_t i = 0; i < m_size; ++i) bigger[i] = m_items[i];
        m_heap = std::move(bigger);
        m_items = m_heap.get();
        m_capacity *= 2;
    }

    T m_inline[N];
    T* m_items = m_inline;
    std::size_t m_size = 0;
    std::size_t m_capacity = N;
    std::unique_ptr<T[]> m_heap;
};

constexpr std::size_t kTokensWithoutAllocation = 64;

// Row numbers of the one-character operators by character; of the two-character ones by comparison.
constexpr std::array<std::int8_t, 256> makeShortRows() {
    std::array<std::int8_t, 256> rows = {};
    for (auto& row : rows) row = kRowNone;
    for (std::size_t row = OperatorTable.size() - 1; row > 0; --row)  // backwards: the first row of a text stays
        if (OperatorTable[row].text.size() == 1)
            rows[static_cast<unsigned char>(OperatorTable[row].text[0])] = static_cast<std::int8_t>(row);
    return rows;
}
constexpr std::array<std::int8_t, 256> kShortRows = makeShortRows();

constexpr std::array<std::int32_t, OperatorTable.size()> makePrecedences() {
    std::array<std::int32_t, OperatorTable.size()> precedences = {};
    for (std::size_t row = 0; row < OperatorTable.size(); ++row) precedences[row] = OperatorTable[row].precedence;
    return precedences;
}
constexpr std::array<std::int32_t, OperatorTable.size()> kPrecedences = makePrecedences();

int shortRow(char character) { return kShortRows[static_cast<unsigned char>(character)]; }

int longRow(LPCSTR text) {
    if (isClass(text[2], kClassOperator)) return kRowNone;
    for (std::size_t row = 1; row < OperatorTable.size(); ++row) {
        const std::string_view candidate = OperatorTable[row].text;
        if (candidate.size() == 2 && candidate[0] == text[0] && candidate[1] == text[1]) return static_cast<int>(row);
    }
    return kRowNone;
}

// FindOperator, from the tables above.
int rowAt(LPCSTR text) {
    if (!isClass(text[0], kClassOperator)) return kRowNone;
    return isClass(text[1], kClassOperator) ? longRow(text) : shortRow(text[0]);
}

class FusedEvaluator {
public:
    explicit FusedEvaluator(LPCSTR text) : m_at(text) {}

    ExpressionResult run(double* result) {
        if (!walk()) return EXPR_MALFORMED;
        if (m_error != EXPR_OK) return m_error;
        if (m_values.empty()) return EXPR_MALFORMED;
        *result = m_values.back();
        return m_values.size() == 1 ? EXPR_OK : EXPR_LEFTOVER;
    }

private:
    static constexpr std::uint8_t kParenthesis = 0;  // on the operator stack; no row has this number

    // False if the parentheses do not match.
    bool walk() {
        for (;;) {
            const char character = *m_at;
            if (isClass(character, kClassOperand)) {
                takePlainOperand();
            } else if (isClass(character, kClassSpace)) {
                ++m_at;
            } else if (character == '(') {
                m_operators.push(kParenthesis);
                m_previous = m_at++;
            } else if (character == ')') {
                if (!closeParenthesis()) return false;
                m_previous = m_at++;
            } else if (character == '\0') {
                break;
            } else {
                takeToken();
            }
        }
        for (; !m_operators.empty(); m_operators.pop()) {
            if (m_operators.back() == kParenthesis) return false;
            emitOperator(m_operators.back());
        }
        return true;
    }

    bool closeParenthesis() {
        for (; !m_operators.empty(); m_operators.pop()) {
            if (m_operators.back() == kParenthesis) {
                m_operators.pop();
                return true;
            }
            emitOperator(m_operators.back());
        }
        return false;
    }

    void takeToken() {
        const int row = rowAt(m_at);
        const bool isSigned = row > 0 && (!m_previous || rowAt(m_previous) > 0);
        if (row > 0 && !isSigned) {
            takeOperator(row);
            return;
        }
        const std::string_view operand = operandHere();
        const int alone = operand.size() == 1 ? shortRow(operand[0]) : kRowNone;
        m_zeroWanted = alone > 0;
        if (alone > 0 && !isSigned)
            emitOperator(alone);
        else
            emitOperand(operand);
        pass(operand.size());
    }

    // An operand that begins with a letter, a digit or a full stop: no operator, no sign.
    void takePlainOperand() {
        m_zeroWanted = false;
        double value = 0;
        const std::size_t length = quor::readShortDecimal(m_at, value);
        if (length != 0 && !isClass(m_at[length], kClassOperand)) {
            emitValue(value);
            pass(length);
            return;
        }
        const std::string_view operand = operandHere();
        emitOperand(operand);
        pass(operand.size());
    }

    std::string_view operandHere() const {
        std::size_t length = 1;
        while (isClass(m_at[length], kClassOperand)) ++length;
        return {m_at, length};
    }

    void takeOperator(int row) {
        if (m_zeroWanted) emitValue(0.0);
        const bool isShort = !isClass(m_at[1], kClassOperator);
        m_zeroWanted = isShort;
        pass(isShort ? 1 : 2);
        const std::int32_t precedence = kPrecedences[static_cast<std::size_t>(row)];
        while (!m_operators.empty() && m_operators.back() != kParenthesis &&
               kPrecedences[m_operators.back()] >= precedence) {
            emitOperator(m_operators.back());
            m_operators.pop();
        }
        m_operators.push(static_cast<std::uint8_t>(row));
    }

    void pass(std::size_t length) {
        m_at += length;
        m_previous = m_at - 1;
    }

    void emitOperand(std::string_view operand) {
        double value = 0;
        if (m_error == EXPR_OK && !readOperand(operand.data(), operand.size(), value)) m_error = EXPR_BAD_OPERAND;
        emitValue(value);
    }

    void emitValue(double value) {
        if (m_error == EXPR_OK) m_values.push(value);
    }

    void emitOperator(int row) {
        if (m_error != EXPR_OK) return;
        if (m_values.size() < 2) {
            m_error = EXPR_MALFORMED;
            return;
        }
        const double right = m_values.back();
        m_values.pop();
        if (!applyOperator(row, m_values.back(), right, m_values.back())) m_error = EXPR_BAD_OPERAND;
    }

    LPCSTR m_at;
    LPCSTR m_previous = nullptr;  // the last character passed that is not blank
    // Whether the next binary operator gets a zero in front: nothing was written yet, or the last token was an operator
    // of one character.
    bool m_zeroWanted = true;
    ExpressionResult m_error = EXPR_OK;  // the second stage's first
    ShortStack<double, kTokensWithoutAllocation> m_values;
    ShortStack<std::uint8_t, kTokensWithoutAllocation> m_operators;
};

}  // namespace

ExpressionResult EvaluateExpression(CString expression, double* result) {
    return FusedEvaluator(expression.GetString()).run(result);
}

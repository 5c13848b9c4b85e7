// The text of a cell is made for every visible user column at every paint. So no token is copied, the texts of a level
// keep their room from cell to cell, and a value that is plainly a number is not parsed to learn whether it is zero.
// Columns inside columns come back through the host, so the levels are a stack of this object's, not of the program's.
#include "quor/expression/core/CustomColumnText.h"

#include "quor/expression/core/ExpressionEvaluator.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace quor::expression {

namespace {

constexpr int kPrecision = 2;
// Below it the fixed notation fits the local buffer and is what printf writes.
constexpr double kShortNumbers = 1e15;

std::string_view viewOf(const CString& text) { return {text.GetString(), static_cast<std::size_t>(text.GetLength())}; }

// The tokens of an id form, as CString::Tokenize gives them, without copies: runs between quotes. Empty at the end.
class Tokens {
public:
    explicit Tokens(const CString& text) : m_rest(viewOf(text)) {}
    std::string_view next() {
        const std::size_t first = std::min(m_rest.find_first_not_of('"'), m_rest.size());
        const std::size_t end = std::min(m_rest.find('"', first), m_rest.size());
        const std::string_view token = m_rest.substr(first, end - first);
        m_rest.remove_prefix(end);
        return token;
    }

private:
    std::string_view m_rest;
};

void append(CString& text, std::string_view piece) { text.Append(piece.data(), static_cast<int>(piece.size())); }

// The digits of a token end at its quote, as atoi needs it.
int referencedColumn(std::string_view token) { return quor::atoi(token.data()); }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Whether atof reads a text as 0: no digit but zeros. Only an exponent, which may make anything vanish, needs the
// number itself.
bool isZero(const CString& text) {
    const char* at = text.GetString();
    while (*at == ' ' || (*at >= '\t' && *at <= '\r')) ++at;
    if (*at == '-' || *at == '+') ++at;
    bool onlyZeros = true;
    for (bool point = false; isDigit(*at) || (*at == '.' && !point); ++at) {
        point = point || *at == '.';
        onlyZeros = onlyZeros && (*at == '0' || *at == '.');
    }
    if (onlyZeros) return true;
    return (*at == 'e' || *at == 'E') && quor::atof(text) == 0.0;
}

void showNumber(double value, CString& text) {
    if (!(std::fabs(value) < kShortNumbers)) {
        text = quor::formatDouble(value, kPrecision);
        return;
    }
    char buffer[32];
    *std::to_chars(buffer, buffer + sizeof buffer - 1, value, std::chars_format::fixed, kPrecision).ptr = '\0';
    text = buffer;
}

}  // namespace

const CString& idExpression(const sQuorColInfo& column, ListFamily family) {
    return family == ListFamily::marketWatch ? column.csToolTip : column.csExpression;
}

const CString& displayExpression(const sQuorColInfo& column, ListFamily family) {
    return family == ListFamily::marketWatch ? column.csExpression : column.csToolTip;
}

void setExpressions(sQuorColInfo& column, ListFamily family, const CString& idForm, const CString& displayForm) {
    column.csExpression = family == ListFamily::marketWatch ? displayForm : idForm;
    column.csToolTip = family == ListFamily::marketWatch ? idForm : displayForm;
}

// One level of columns inside columns, for as long as its cell is made.
class CustomColumnText::Descent {
public:
    Descent(CustomColumnText& owner, CustomCell cell) : m_owner(owner) {
        if (owner.m_depth == owner.m_levels.size()) owner.m_levels.emplace_back();
        level().cell = cell;
        ++owner.m_depth;
    }
    Descent(const Descent&) = delete;
    Descent& operator=(const Descent&) = delete;
    ~Descent() { --m_owner.m_depth; }

    Level& level() const { return m_owner.m_levels[m_index]; }

private:
    CustomColumnText& m_owner;
    std::size_t m_index = m_owner.m_depth;
};

bool CustomColumnText::isBeingMade(CustomCell cell) const {
    const auto end = m_levels.begin() + static_cast<std::ptrdiff_t>(m_depth);
    return std::any_of(m_levels.begin(), end, [cell](const Level& level) { return level.cell == cell; });
}

CustomCellOutcome CustomColumnText::evaluate(ListFamily family, CustomCell cell, const CString& idForm,
                                             CustomCellSource& source, CString& text) {
    if (isBeingMade(cell)) return CustomCellOutcome::noValue;
    const Descent descent(*this, cell);
    if (family == ListFamily::multiLine) text.Empty();
    const CustomCellOutcome built = build(family, idForm, source, descent.level(), text);
    return built == CustomCellOutcome::done ? calculate(descent.level(), text) : built;
}

// Text and references alternate, and the first token is text: stored formulas begin with a blank for that.
CustomCellOutcome CustomColumnText::build(ListFamily family, const CString& idForm, CustomCellSource& source,
                                          Level& level, CString& text) {
    const bool ownValue = family == ListFamily::multiLine;
    CString& value = ownValue ? level.value : text;
    level.built = "";  // keeps its room, as Empty would not
    Tokens tokens(idForm);
    for (std::string_view token = tokens.next(); !token.empty(); token = tokens.next()) {
        append(level.built, token);
        const std::string_view reference = tokens.next();
        if (reference.empty()) break;
        if (ownValue) value = "";
        const int column = referencedColumn(reference);
        if (isBeingMade({level.cell.row, column}) || !source.cellText(column, value)) return CustomCellOutcome::noValue;
        if (ownValue && value.IsEmpty()) return CustomCellOutcome::emptyValue;
        append(level.built, isZero(value) ? std::string_view("0") : viewOf(value));
    }
    return CustomCellOutcome::done;
}

// Codes below EXPR_LEFTOVER are no failures here: the number is then what it was before, 0 or the divisor.
CustomCellOutcome CustomColumnText::calculate(Level& level, CString& text) {
    double number = 0.0;
    const int slash = level.built.Find('/');
    if (slash >= 0) {
        level.divisor = "";
        append(level.divisor, viewOf(level.built).substr(static_cast<std::size_t>(slash) + 1));
        if (EvaluateExpression(level.divisor, &number) >= EXPR_BAD_OPERAND) return CustomCellOutcome::done;
        if (number == 0.0) {
            text = kDividedByZero;
            return CustomCellOutcome::done;
        }
    }
    if (EvaluateExpression(level.built, &number) >= EXPR_LEFTOVER) return CustomCellOutcome::invalid;
    showNumber(number, text);
    return CustomCellOutcome::done;
}

}  // namespace quor::expression

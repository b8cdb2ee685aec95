// A recursive-descent evaluator of GenICam formulas in doubles.
#include "FormulaCheck.h"
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace GenApiEngine {
namespace {

// Thrown for text the checker cannot read; the formula is then left unjudged.
struct SUnreadable {};

class CFormulaChecker {
public:
    CFormulaChecker(const std::string& text, const std::map<std::string, double>& variables,
                    const std::map<std::string, std::string>& expressions, int depth)
        : m_Text(text), m_Variables(variables), m_Expressions(expressions), m_Depth(depth) {}

    // The value of the whole text.
    double run() {
        const double value = ternary();
        skipSpace();
        if (m_Position != m_Text.size())
            throw SUnreadable();
        return value;
    }

private:
    void skipSpace() {
        while (m_Position < m_Text.size() && std::isspace(static_cast<unsigned char>(m_Text[m_Position])))
            ++m_Position;
    }
    bool take(const char* token) {
        skipSpace();
        const std::string expected(token);
        if (m_Text.compare(m_Position, expected.size(), expected) != 0)
            return false;
        m_Position += expected.size();
        return true;
    }
    // Takes a one-character operator unless it begins a longer one listed in `unless`.
    bool takeSingle(char symbol, const char* unless) {
        skipSpace();
        if (m_Position >= m_Text.size() || m_Text[m_Position] != symbol)
            return false;
        const char next = m_Position + 1 < m_Text.size() ? m_Text[m_Position + 1] : '\0';
        for (const char* other = unless; *other; ++other) {
            if (next == *other)
                return false;
        }
        ++m_Position;
        return true;
    }

    double ternary() {
        const double condition = logicalOr();
        if (!take("?"))
            return condition;
        const double whenTrue = ternary();
        if (!take(":"))
            throw SUnreadable();
        const double whenFalse = ternary();
        return condition != 0 ? whenTrue : whenFalse;
    }
    double logicalOr() {
        double value = logicalAnd();
        while (take("||")) {
            const double right = logicalAnd();
            value = (value != 0 || right != 0) ? 1 : 0;
        }
        return value;
    }
    double logicalAnd() {
        double value = bitOr();
        while (take("&&")) {
            const double right = bitOr();
            value = (value != 0 && right != 0) ? 1 : 0;
        }
        return value;
    }
    static long long integral(double value) { return static_cast<long long>(value); }
    double bitOr() {
        double value = bitXor();
        while (takeSingle('|', "|"))
            value = static_cast<double>(integral(value) | integral(bitXor()));
        return value;
    }
    double bitXor() {
        double value = bitAnd();
        while (takeSingle('^', ""))
            value = static_cast<double>(integral(value) ^ integral(bitAnd()));
        return value;
    }
    double bitAnd() {
        double value = equality();
        while (takeSingle('&', "&"))
            value = static_cast<double>(integral(value) & integral(equality()));
        return value;
    }
    double equality() {
        double value = relation();
        for (;;) {
            if (take("<>"))
                value = value != relation() ? 1 : 0;
            else if (takeSingle('=', ""))
                value = value == relation() ? 1 : 0;
            else
                return value;
        }
    }
    double relation() {
        double value = shift();
        for (;;) {
            if (take("<="))
                value = value <= shift() ? 1 : 0;
            else if (take(">="))
                value = value >= shift() ? 1 : 0;
            else if (takeSingle('<', "<>="))
                value = value < shift() ? 1 : 0;
            else if (takeSingle('>', ">="))
                value = value > shift() ? 1 : 0;
            else
                return value;
        }
    }
    double shift() {
        double value = additive();
        for (;;) {
            if (take("<<"))
                value = (std::ldexp(value, static_cast<int>(additive())));
            else if (take(">>"))
                value = (std::ldexp(value, -static_cast<int>(additive())));
            else
                return value;
        }
    }
    double additive() {
        double value = multiplicative();
        for (;;) {
            if (takeSingle('+', ""))
                value = (value + multiplicative());
            else if (takeSingle('-', ""))
                value = (value - multiplicative());
            else
                return value;
        }
    }
    // A division by zero is an infinity, 0/0 included, so that GenApi's infinity check catches it.
    static double divided(double numerator, double denominator) {
        if (denominator != 0)
            return numerator / denominator;
        return std::signbit(numerator) ? -HUGE_VAL : HUGE_VAL;
    }
    double multiplicative() {
        double value = power();
        for (;;) {
            if (takeSingle('*', "*"))
                value = (value * power());
            else if (takeSingle('/', ""))
                value = divided(value, power());
            else if (takeSingle('%', ""))
                value = (std::fmod(value, power()));
            else
                return value;
        }
    }
    double power() {
        const double base = unary();
        if (take("**"))
            return (std::pow(base, power()));
        return base;
    }
    double unary() {
        if (takeSingle('-', ""))
            return (-unary());
        if (takeSingle('+', ""))
            return unary();
        if (takeSingle('~', ""))
            return static_cast<double>(~integral(unary()));
        if (takeSingle('!', "="))
            return unary() == 0 ? 1 : 0;
        return primary();
    }
    double primary() {
        skipSpace();
        if (take("(")) {
            const double value = ternary();
            if (!take(")"))
                throw SUnreadable();
            return value;
        }
        if (m_Position < m_Text.size() &&
            (std::isdigit(static_cast<unsigned char>(m_Text[m_Position])) || m_Text[m_Position] == '.')) {
            return number();
        }
        return name();
    }
    double number() {
        const char* start = m_Text.c_str() + m_Position;
        char* end = nullptr;
        const bool hex = m_Text.compare(m_Position, 2, "0x") == 0 || m_Text.compare(m_Position, 2, "0X") == 0;
        const double value =
            hex ? static_cast<double>(std::strtoull(start, &end, 16)) : std::strtod(start, &end);
        if (end == start)
            throw SUnreadable();
        m_Position += static_cast<size_t>(end - start);
        return value;
    }
    double name() {
        const size_t start = m_Position;
        while (m_Position < m_Text.size() &&
               (std::isalnum(static_cast<unsigned char>(m_Text[m_Position])) || m_Text[m_Position] == '_'))
            ++m_Position;
        const std::string identifier = m_Text.substr(start, m_Position - start);
        if (identifier.empty())
            throw SUnreadable();
        if (take("("))
            return function(identifier);
        const auto variable = m_Variables.find(identifier);
        if (variable != m_Variables.end())
            return (variable->second);
        const auto expression = m_Expressions.find(identifier);
        if (expression == m_Expressions.end() || m_Depth > 16)
            throw SUnreadable();
        return CFormulaChecker(expression->second, m_Variables, m_Expressions, m_Depth + 1).run();
    }
    double function(const std::string& identifier) {
        if (identifier == "PI" || identifier == "E") {
            if (!take(")"))
                throw SUnreadable();
            return identifier == "PI" ? M_PI : M_E;
        }
        const double argument = ternary();
        double second = 0;
        if (identifier == "ROUND" && take(","))
            second = ternary();
        if (!take(")"))
            throw SUnreadable();
        return (apply(identifier, argument, second));
    }
    static double apply(const std::string& function, double x, double digits) {
        if (function == "SGN")
            return x > 0 ? 1 : (x < 0 ? -1 : 0);
        if (function == "NEG")
            return -x;
        if (function == "ABS")
            return std::fabs(x);
        if (function == "SQRT")
            return std::sqrt(x);
        if (function == "EXP")
            return std::exp(x);
        if (function == "LN")
            return std::log(x);
        if (function == "LG")
            return std::log10(x);
        if (function == "TRUNC")
            return std::trunc(x);
        if (function == "FLOOR")
            return std::floor(x);
        if (function == "CEIL")
            return std::ceil(x);
        if (function == "ROUND")
            return std::round(x * std::pow(10.0, digits)) / std::pow(10.0, digits);
        if (function == "SIN")
            return std::sin(x);
        if (function == "COS")
            return std::cos(x);
        if (function == "TAN")
            return std::tan(x);
        if (function == "ASIN")
            return std::asin(x);
        if (function == "ACOS")
            return std::acos(x);
        if (function == "ATAN")
            return std::atan(x);
        throw SUnreadable();
    }

    const std::string& m_Text;
    const std::map<std::string, double>& m_Variables;
    const std::map<std::string, std::string>& m_Expressions;
    int m_Depth;
    size_t m_Position = 0;
};

}  // namespace

bool evaluateFloatFormula(const std::string& formula, const std::map<std::string, double>& variables,
                          const std::map<std::string, std::string>& expressions, double& result) {
    try {
        result = CFormulaChecker(formula, variables, expressions, 0).run();
        return true;
    } catch (const SUnreadable&) {
        return false;
    }
}

std::string floatLiteralFraction(const std::string& formula) {
    const auto isWordCharacter = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
    };
    size_t position = 0;
    while (position < formula.size()) {
        const char c = formula[position];
        if (std::isalpha(static_cast<unsigned char>(c)) || c == '_') {
            while (position < formula.size() && isWordCharacter(formula[position]))
                ++position;
        } else if (std::isdigit(static_cast<unsigned char>(c))) {
            while (position < formula.size() && isWordCharacter(formula[position]))
                ++position;
            if (position < formula.size() && formula[position] == '.') {
                const size_t start = position++;
                while (position < formula.size() && isWordCharacter(formula[position]))
                    ++position;
                return formula.substr(start, position - start);
            }
        } else {
            ++position;
        }
    }
    return std::string();
}

}  // namespace GenApiEngine

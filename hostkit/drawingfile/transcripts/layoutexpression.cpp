#include "layoutexpression.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string>

namespace hostkit {

class LayoutExpression::Parser {
public:
    Parser(std::string_view text, const std::function<std::uint16_t(std::string_view)>& slotOf,
           std::vector<Step>& steps)
        : m_text(text)
        , m_slotOf(slotOf)
        , m_steps(steps) {}

    void run() {
        binary(0);
        skipBlanks();
        if (m_at != m_text.size()) fail();
    }

private:
    struct Operator {
        std::string_view sign;
        int rank;
        Kind kind;
    };
    // Longer signs before those that begin them.
    static constexpr std::array<Operator, 16> operators{{{"||", 1, Kind::either},
                                                         {"&&", 2, Kind::both},
                                                         {"|", 3, Kind::bitOr},
                                                         {"&", 4, Kind::bitAnd},
                                                         {"==", 5, Kind::equal},
                                                         {"!=", 5, Kind::unequal},
                                                         {"<<", 7, Kind::left},
                                                         {">>", 7, Kind::right},
                                                         {"<=", 6, Kind::lessEqual},
                                                         {">=", 6, Kind::moreEqual},
                                                         {"<", 6, Kind::less},
                                                         {">", 6, Kind::more},
                                                         {"+", 8, Kind::plus},
                                                         {"-", 8, Kind::minus},
                                                         {"*", 9, Kind::times},
                                                         {"/", 9, Kind::divided}}};

    [[noreturn]] void fail() const { throw std::logic_error("no expression: " + std::string(m_text)); }
    void skipBlanks() {
        while (m_at < m_text.size() && m_text[m_at] == ' ') ++m_at;
    }
    bool take(std::string_view sign) {
        skipBlanks();
        if (m_text.substr(m_at, sign.size()) != sign) return false;
        m_at += sign.size();
        return true;
    }

    void binary(int least) {
        unary();
        for (;;) {
            skipBlanks();
            const Operator* found = nullptr;
            for (const Operator& candidate : operators)
                if (m_text.substr(m_at, candidate.sign.size()) == candidate.sign) {
                    found = &candidate;
                    break;
                }
            if (!found || found->rank <= least) return;
            m_at += found->sign.size();
            binary(found->rank);
            m_steps.push_back({found->kind});
        }
    }

    void unary() {
        if (take("!")) {
            unary();
            m_steps.push_back({Kind::negate});
        } else if (take("-")) {
            unary();
            m_steps.push_back({Kind::opposite});
        } else if (take("(")) {
            binary(0);
            if (!take(")")) fail();
        } else {
            operand();
        }
    }

    void operand() {
        skipBlanks();
        const std::size_t begin = m_at;
        while (m_at < m_text.size() && (std::isalnum(static_cast<unsigned char>(m_text[m_at])) ||
                                        m_text[m_at] == '_' || m_text[m_at] == '.'))
            ++m_at;
        const std::string_view word = m_text.substr(begin, m_at - begin);
        if (word.empty()) fail();
        if (!std::isdigit(static_cast<unsigned char>(word.front())))
            return m_steps.push_back({Kind::name, m_slotOf(word)});
        const bool isHex = word.starts_with("0x");
        double number = 0.0;
        std::uint32_t whole = 0;
        const char* const end = word.data() + word.size();
        const auto result = isHex ? std::from_chars(word.data() + 2, end, whole, 16)
                                  : std::from_chars(word.data(), end, number);
        if (result.ptr != end) fail();
        m_steps.push_back({Kind::number, 0, isHex ? whole : number});
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    const std::function<std::uint16_t(std::string_view)>& m_slotOf;
    std::vector<Step>& m_steps;
};

LayoutExpression::LayoutExpression(std::string_view text,
                                   const std::function<std::uint16_t(std::string_view)>& slotOf) {
    Parser(text, slotOf, m_steps).run();
}

double LayoutExpression::applied(Kind kind, double a, double b) {
    const auto whole = [](double value) {
        return std::abs(value) < 9.0e18 ? static_cast<std::int64_t>(value) : 0;
    };
    switch (kind) {
    case Kind::either:
        return a != 0.0 || b != 0.0;
    case Kind::both:
        return a != 0.0 && b != 0.0;
    case Kind::bitOr:
        return static_cast<double>(whole(a) | whole(b));
    case Kind::bitAnd:
        return static_cast<double>(whole(a) & whole(b));
    case Kind::equal:
        return a == b;
    case Kind::unequal:
        return a != b;
    case Kind::less:
        return a < b;
    case Kind::lessEqual:
        return a <= b;
    case Kind::more:
        return a > b;
    case Kind::moreEqual:
        return a >= b;
    case Kind::left:
        return static_cast<double>(whole(a) << (whole(b) & 31));
    case Kind::right:
        return static_cast<double>(whole(a) >> (whole(b) & 63));
    case Kind::plus:
        return a + b;
    case Kind::minus:
        return a - b;
    case Kind::times:
        return a * b;
    case Kind::divided:
        return b == 0.0 ? 0.0 : a / b;
    case Kind::negate:
        return b == 0.0;
    case Kind::opposite:
        return -b;
    default:
        return 0.0;
    }
}

double LayoutExpression::value(std::span<const double> values) const {
    if (m_steps.empty()) return 0.0;
    const Step& first = m_steps.front();
    if (m_steps.size() == 1) return first.kind == Kind::number ? first.number : values[first.slot];
    std::array<double, 16> stack;
    std::size_t depth = 0;
    for (const Step& step : m_steps) {
        if (step.kind == Kind::number || step.kind == Kind::name) {
            if (depth == stack.size()) throw std::logic_error("an expression is too deep");
            stack[depth++] = step.kind == Kind::number ? step.number : values[step.slot];
            continue;
        }
        const double b = stack[--depth];
        const bool hasTwo = step.kind != Kind::negate && step.kind != Kind::opposite;
        const double a = hasTwo ? stack[--depth] : 0.0;
        stack[depth++] = applied(step.kind, a, b);
    }
    return stack[0];
}

bool LayoutExpression::isName(std::uint16_t& slot) const {
    if (m_steps.size() != 1 || m_steps[0].kind != Kind::name) return false;
    slot = m_steps[0].slot;
    return true;
}

} // namespace hostkit

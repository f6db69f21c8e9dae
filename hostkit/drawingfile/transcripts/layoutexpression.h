// Conditions and counts in the layouts of records.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace hostkit {

/// Arithmetic of C on numbers and named values: || && | & == != < <= > >= << >> + - * / ! ( ); a / 0 is 0.
class LayoutExpression {
public:
    LayoutExpression() = default;
    /// `slotOf` gives each name its place among the values. Throws std::logic_error where the text is no
    /// expression: the layouts stand in the program, so that this is a fault of theirs.
    LayoutExpression(std::string_view text, const std::function<std::uint16_t(std::string_view)>& slotOf);

    [[nodiscard]] bool empty() const { return m_steps.empty(); }
    [[nodiscard]] double value(std::span<const double> values) const;
    [[nodiscard]] bool holds(std::span<const double> values) const { return value(values) != 0.0; }
    /// The only name of an expression that is nothing else; false for others.
    [[nodiscard]] bool isName(std::uint16_t& slot) const;

private:
    enum class Kind : std::uint8_t {
        number,
        name,
        either,
        both,
        bitOr,
        bitAnd,
        equal,
        unequal,
        less,
        lessEqual,
        more,
        moreEqual,
        left,
        right,
        plus,
        minus,
        times,
        divided,
        negate,
        opposite
    };
    struct Step {
        Kind kind;
        std::uint16_t slot = 0;
        double number = 0.0;
    };
    class Parser;

    static double applied(Kind kind, double a, double b);

    std::vector<Step> m_steps; ///< operands before their operator
};

} // namespace hostkit

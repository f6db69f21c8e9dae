// What one group of a filter asks of a value: relations of numbers, points and patterns of texts; leaves out
// where the value comes from.
#pragma once

#include "adesk.h"
#include "wildcardpattern.h"

#include <array>
#include <optional>
#include <string_view>
#include <variant>

namespace hostkit {

enum class Relation : unsigned char {
    kAnything,
    kEqual,
    kNotEqual,
    kLess,
    kLessOrEqual,
    kGreater,
    kGreaterOrEqual,
    kAnyBit,
    kAllBits
};

/// By its sign: "*", "=", "!=", "/=", "<>", "<", "<=", ">", ">=", "&", "&=".
std::optional<Relation> relationOf(std::wstring_view sign);
constexpr bool isOfBits(Relation relation) { return relation >= Relation::kAnyBit; }

struct IntegerTest {
    Adesk::Int64 wanted = 0;
    Relation relation = Relation::kEqual;
    /// kAllBits of no bits holds, kAnyBit of none does not.
    bool takes(Adesk::Int64 value) const;
};

/// Equal means within AcGe::pointAllowance of the larger value; a value that is equal is neither less nor
/// greater, and one that is no number is not equal to anything.
struct RealTest {
    double wanted = 0.0;
    Relation relation = Relation::kEqual;
    bool takes(double value) const;
};

/// A place, by the point test of AcGeTol.
struct PointTest {
    std::array<double, 3> wanted{};
    bool takes(const std::array<double, 3>& value) const;
};

/// Each coordinate by itself.
struct CoordinatesTest {
    std::array<RealTest, 3> coordinates;
    bool takes(const std::array<double, 3>& value) const;
};

using ValueTest = std::variant<WildcardPattern, IntegerTest, RealTest, PointTest, CoordinatesTest>;

} // namespace hostkit

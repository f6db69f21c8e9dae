#include "filtervalue.h"

#include "gepnt3d.h"
#include "getol.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

std::optional<Relation> relationOf(std::wstring_view sign) {
    struct Sign {
        std::wstring_view text;
        Relation relation;
    };
    static constexpr Sign signs[] = {
        {L"*", Relation::kAnything},     {L"=", Relation::kEqual},     {L"!=", Relation::kNotEqual},
        {L"/=", Relation::kNotEqual},    {L"<>", Relation::kNotEqual}, {L"<", Relation::kLess},
        {L"<=", Relation::kLessOrEqual}, {L">", Relation::kGreater},   {L">=", Relation::kGreaterOrEqual},
        {L"&", Relation::kAnyBit},       {L"&=", Relation::kAllBits},
    };
    for (const Sign& each : signs)
        if (each.text == sign) return each.relation;
    return std::nullopt;
}

namespace {

/// `order` is negative, zero or positive as the value is below, at or above the wanted one.
bool holds(Relation relation, int order) {
    switch (relation) {
    case Relation::kEqual:
        return order == 0;
    case Relation::kNotEqual:
        return order != 0;
    case Relation::kLess:
        return order < 0;
    case Relation::kLessOrEqual:
        return order <= 0;
    case Relation::kGreater:
        return order > 0;
    case Relation::kGreaterOrEqual:
        return order >= 0;
    default:
        return true;
    }
}

AcGePoint3d pointOf(const std::array<double, 3>& coordinates) {
    return {coordinates[0], coordinates[1], coordinates[2]};
}

} // namespace

bool IntegerTest::takes(Adesk::Int64 value) const {
    if (relation == Relation::kAnyBit) return (value & wanted) != 0;
    if (relation == Relation::kAllBits) return (value & wanted) == wanted;
    return holds(relation, (value > wanted) - (value < wanted));
}

bool RealTest::takes(double value) const {
    if (std::isnan(value)) return relation == Relation::kAnything || relation == Relation::kNotEqual;
    const double magnitude = std::max(std::abs(value), std::abs(wanted));
    const bool isEqual = std::abs(value - wanted) <= AcGe::pointAllowance(AcGeTol(), magnitude);
    return holds(relation, isEqual ? 0 : value < wanted ? -1 : 1);
}

bool PointTest::takes(const std::array<double, 3>& value) const {
    return pointOf(value).isEqualTo(pointOf(wanted), AcGeTol());
}

bool CoordinatesTest::takes(const std::array<double, 3>& value) const {
    return coordinates[0].takes(value[0]) && coordinates[1].takes(value[1]) && coordinates[2].takes(value[2]);
}

} // namespace hostkit

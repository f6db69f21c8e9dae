// Stand-in for the host's AcGeInterval. Covers bounded and unbounded parameter ranges; leaves out interval algebra beyond the intersection.
#pragma once

#include "gegbl.h"

#include <limits>

/// A closed range of curve parameters; either side may be unbounded. Default is unbounded on both.
class AcGeInterval {
public:
    AcGeInterval() = default;
    AcGeInterval(double lower, double upper)
        : m_lower(lower)
        , m_upper(upper) {}

    AcGeInterval& set() { return *this = AcGeInterval(); }
    AcGeInterval& set(double lower, double upper) { return *this = AcGeInterval(lower, upper); }
    AcGeInterval& setLower(double lower) {
        m_lower = lower;
        return *this;
    }
    AcGeInterval& setUpper(double upper) {
        m_upper = upper;
        return *this;
    }
    /// Minus infinity and infinity where unbounded.
    double lowerBound() const { return m_lower; }
    double upperBound() const { return m_upper; }
    void getBounds(double& lower, double& upper) const {
        lower = m_lower;
        upper = m_upper;
    }
    Adesk::Boolean isBoundedBelow() const { return m_lower > -kInfinity; }
    Adesk::Boolean isBoundedAbove() const { return m_upper < kInfinity; }
    Adesk::Boolean isBounded() const { return isBoundedBelow() && isBoundedAbove(); }
    Adesk::Boolean isUnBounded() const { return !isBounded(); }
    /// Upper less lower bound; infinite when unbounded.
    double length() const { return m_upper - m_lower; }
    /// Ends included, widened by `tolerance` on each side.
    Adesk::Boolean contains(double parameter, double tolerance = 0.0) const {
        return parameter >= m_lower - tolerance && parameter <= m_upper + tolerance;
    }
    Adesk::Boolean contains(const AcGeInterval& other) const {
        return other.m_lower >= m_lower && other.m_upper <= m_upper;
    }
    double clamp(double parameter) const { return std::min(std::max(parameter, m_lower), m_upper); }
    /// False, and `result` untouched, when the two have no parameter in common.
    Adesk::Boolean intersectWith(const AcGeInterval& other, AcGeInterval& result) const {
        const AcGeInterval common(std::max(m_lower, other.m_lower), std::min(m_upper, other.m_upper));
        if (!(common.m_lower <= common.m_upper)) return Adesk::kFalse;
        result = common;
        return Adesk::kTrue;
    }

private:
    static constexpr double kInfinity = std::numeric_limits<double>::infinity();
    double m_lower = -kInfinity;
    double m_upper = kInfinity;
};

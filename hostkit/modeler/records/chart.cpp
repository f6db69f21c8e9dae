#include "chart.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace hostkit::modeler {

namespace {

using Kind = ShapeSurface::Kind;
constexpr double kHalfPi = std::numbers::pi / 2.0;
/// Nearer to an apex or pole than this, in radii, u says nothing.
constexpr double kSingular = 1e-7;

} // namespace

Chart::Chart(const ShapeSurface& surface)
    : m_surface(surface)
    , m_x(surface.major)
    , m_y(surface.axis.crossProduct(surface.major) * (surface.kind == Kind::cone ? surface.ratio : 1.0))
    , m_radius(surface.kind == Kind::cone ? surface.major.length() : std::abs(surface.radius)) {}

Chart::Place Chart::placeOf(const AcGePoint3d& point) const {
    const AcGeVector3d offset = point - m_surface.origin;
    const double x = offset.dotProduct(m_x) / m_x.lengthSqrd();
    const double y = offset.dotProduct(m_y) / m_y.lengthSqrd();
    const double height = offset.dotProduct(m_surface.axis);
    Place place{std::atan2(y, x), height, false};
    const double reach = std::hypot(x, y);
    if (m_surface.kind == Kind::cone) {
        place.isSingular = reach < kSingular;
    } else if (m_surface.kind == Kind::sphere) {
        place.v = std::atan2(height, reach);
        place.isSingular = reach < kSingular * m_radius;
    } else {
        place.v = std::atan2(height, reach - m_radius);
    }
    if (m_isSwapped) std::swap(place.u, place.v);
    return place;
}

AcGePoint3d Chart::at(double u, double v) const {
    if (m_isSwapped) std::swap(u, v);
    const AcGeVector3d radial = m_x * std::cos(u) + m_y * std::sin(u);
    if (m_surface.kind == Kind::cone)
        return m_surface.origin + radial * (1.0 + v * growth() / m_radius) + m_surface.axis * v;
    if (m_surface.kind == Kind::sphere)
        return m_surface.origin + radial * (m_radius * std::cos(v)) +
               m_surface.axis * (m_radius * std::sin(v));
    const double tube = tubeRadius();
    return m_surface.origin + radial * (m_radius + tube * std::cos(v)) +
           m_surface.axis * (tube * std::sin(v));
}

AcGeVector3d Chart::normalAt(double u, double v) const {
    if (m_isSwapped) std::swap(u, v);
    const AcGeVector3d radial = m_x * std::cos(u) + m_y * std::sin(u);
    const AcGeVector3d along = m_y * std::cos(u) - m_x * std::sin(u);
    if (m_surface.kind == Kind::cone) {
        const double factor = 1.0 + v * growth() / m_radius;
        return (along * factor).crossProduct(radial * (growth() / m_radius) + m_surface.axis);
    }
    const double tube = m_surface.kind == Kind::sphere ? m_radius : tubeRadius();
    const double middle = m_surface.kind == Kind::sphere ? 0.0 : m_radius;
    const AcGeVector3d normal =
        (along * (middle + tube * std::cos(v)))
            .crossProduct((m_surface.axis * std::cos(v) - radial * std::sin(v)) * tube);
    return m_isSwapped ? -normal : normal;
}

std::optional<double> Chart::singularAbove(bool isAbove) const {
    if (m_surface.kind == Kind::sphere) return isAbove ? kHalfPi : -kHalfPi;
    if (m_surface.kind != Kind::cone || m_surface.sine == 0.0) return {};
    const double apex = -m_radius / growth();
    if (isAbove == (apex > 0.0)) return apex;
    return {};
}

bool Chart::looksOut() const {
    if (m_surface.kind == Kind::cone) return m_surface.cosine > 0.0;
    return m_isSwapped !=
           ((m_surface.kind == Kind::sphere ? m_surface.radius : m_surface.minorRadius) >= 0.0);
}

double Chart::tubeRadius() const {
    return std::abs(m_surface.kind == Kind::torus ? m_surface.minorRadius : m_radius);
}
double Chart::largestRadius() const {
    return m_surface.kind == Kind::torus ? m_radius + tubeRadius() : m_radius;
}

} // namespace hostkit::modeler

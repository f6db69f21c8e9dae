// Curved surfaces in two parameters; leaves out planes.
#pragma once

#include "shape.h"

namespace hostkit::modeler {

/// u is the angle about the axis, v the height along a cone's axis, the latitude of a sphere, the angle about
/// a torus' tube. The normal du x dv points away from the axis, centre or middle circle.
class Chart {
public:
    explicit Chart(const ShapeSurface& surface);
    /// Of a torus: u is the angle about the tube and v that about the axis, so that the normal points inward.
    void swapParameters() { m_isSwapped = true; }

    struct Place {
        double u = 0.0, v = 0.0;
        bool isSingular = false; ///< an apex or a pole, where u says nothing
    };
    [[nodiscard]] Place placeOf(const AcGePoint3d& point) const;
    [[nodiscard]] AcGePoint3d at(double u, double v) const;
    [[nodiscard]] AcGeVector3d normalAt(double u, double v) const; ///< du x dv, as long as it is

    [[nodiscard]] bool isPeriodicInV() const { return m_surface.kind == ShapeSurface::Kind::torus; }
    [[nodiscard]] bool isRuled() const { return m_surface.kind == ShapeSurface::Kind::cone; }
    /// The v of the pole or apex above or below; nothing where there is none.
    [[nodiscard]] std::optional<double> singularAbove(bool isAbove) const;
    /// The surface's own normal is that of the chart.
    [[nodiscard]] bool looksOut() const;
    /// Of the circles along which u and v run.
    [[nodiscard]] double radiusOfU() const { return m_isSwapped ? tubeRadius() : largestRadius(); }
    [[nodiscard]] double radiusOfV() const { return m_isSwapped ? largestRadius() : tubeRadius(); }

private:
    [[nodiscard]] double largestRadius() const;
    [[nodiscard]] double tubeRadius() const;
    [[nodiscard]] double growth() const { return m_surface.sine / m_surface.cosine; }

    ShapeSurface m_surface;
    AcGeVector3d m_x, m_y; ///< a cone's as long as its radii
    double m_radius = 0.0;
    bool m_isSwapped = false;
};

} // namespace hostkit::modeler

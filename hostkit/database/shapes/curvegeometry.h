// Geometry curves behind drawing curves: lines, rays, segments, arcs, ellipses and splines without a heap
// object for all but splines; leaves out curves of several pieces.
#pragma once

#include "gearc3d.h"
#include "geell3d.h"
#include "geline3d.h"
#include "gelnsg3d.h"
#include "genurb3d.h"
#include "geray3d.h"

#include <variant>

namespace hostkit {

/// One geometry curve, held by value, and how its parameter and the drawing's go together.
class CurveGeometry {
public:
    template <typename Curve>
    void set(const Curve& curve, double drawingParameterPerOwn = 1.0) {
        m_curve.emplace<Curve>(curve);
        m_scale = drawingParameterPerOwn;
    }
    const AcGeCurve3d& curve() const {
        return std::visit([](const auto& held) -> const AcGeCurve3d& { return held; }, m_curve);
    }
    double scale() const { return m_scale; }
    /// A segment without length has the scale 0 and the one parameter 0.
    double toOwn(double drawingParameter) const {
        return m_scale != 0.0 ? drawingParameter / m_scale : drawingParameter;
    }
    double toDrawing(double ownParameter) const { return ownParameter * m_scale; }
    AcGeInterval interval() const {
        AcGeInterval own;
        curve().getInterval(own);
        return {own.lowerBound() * m_scale, own.upperBound() * m_scale};
    }
    /// Prolonged as its kind is: a segment or ray to its line, an arc to its circle.
    CurveGeometry extended() const;
    const AcGeCircArc3d* arc() const { return std::get_if<AcGeCircArc3d>(&m_curve); }
    /// Null unless the curve is straight.
    const AcGeLinearEnt3d* straight() const;

private:
    std::variant<AcGeLineSeg3d, AcGeLine3d, AcGeRay3d, AcGeCircArc3d, AcGeEllipArc3d, AcGeNurbCurve3d>
        m_curve;
    double m_scale = 1.0;
};

/// Parameters closer than this, for parameters up to 1, are the same cut; the bound grows with the parameter.
inline constexpr double kParameterTolerance = 1e-12;

inline bool isSameParameter(double a, double b) {
    return std::isfinite(a - b) &&
           std::abs(a - b) <= kParameterTolerance * std::max({1.0, std::abs(a), std::abs(b)});
}

} // namespace hostkit

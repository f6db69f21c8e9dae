#include "dbcurve.h"

#include "curvegeometry.h"
#include "curveintersection.h"
#include "entitycoordinates.h"

#include "gebndblock3d.h"
#include "geplane.h"

#include <memory>
#include <vector>

using hostkit::CurveGeometry;

HOSTKIT_KIT_ABSTRACT_CLASS(AcDbCurve, AcDbEntity)

namespace {

constexpr double kTwoPi = AcGe::kTwoPi;

/// Brings a parameter that lies outside by rounding, or by whole turns of a circle's or ellipse's angle, into
/// the interval. False for one that is outside all the same.
bool bringInside(const CurveGeometry& geometry, double& parameter) {
    const AcGeInterval interval = geometry.interval();
    const double slack = hostkit::kParameterTolerance * std::max(1.0, std::abs(parameter));
    const bool isAngle =
        geometry.curve().isKindOf(AcGe::kCircArc3d) || geometry.curve().isKindOf(AcGe::kEllipArc3d);
    if (isAngle && !interval.contains(parameter, slack) && std::isfinite(parameter)) {
        const double turns = std::ceil((interval.lowerBound() - slack - parameter) / kTwoPi);
        parameter += turns * kTwoPi;
    }
    if (!interval.contains(parameter, slack) || std::isinf(parameter)) return false;
    parameter = interval.clamp(parameter);
    return true;
}

} // namespace

namespace hostkit {

CurveGeometry CurveGeometry::extended() const {
    CurveGeometry result(*this);
    if (const AcGeLinearEnt3d* line = straight()) {
        const AcGeVector3d direction = line->direction();
        if (!direction.isZeroLength()) result.set(AcGeLine3d(line->pointOnLine(), direction));
    } else if (AcGeCircArc3d* arc = std::get_if<AcGeCircArc3d>(&result.m_curve)) {
        arc->setAngles(0.0, kTwoPi);
    } else if (AcGeEllipArc3d* ellipse = std::get_if<AcGeEllipArc3d>(&result.m_curve)) {
        ellipse->setAngles(0.0, kTwoPi);
    }
    return result;
}

const AcGeLinearEnt3d* CurveGeometry::straight() const {
    if (const auto* segment = std::get_if<AcGeLineSeg3d>(&m_curve)) return segment;
    if (const auto* line = std::get_if<AcGeLine3d>(&m_curve)) return line;
    return std::get_if<AcGeRay3d>(&m_curve);
}

} // namespace hostkit

bool AcDbCurve::geometry(CurveGeometry&) const { return false; }
AcDbCurve* AcDbCurve::piece(double, double) const { return nullptr; }

Adesk::Boolean AcDbCurve::isClosed() const {
    CurveGeometry own;
    return geometry(own) && own.curve().isClosed();
}

Adesk::Boolean AcDbCurve::isPeriodic() const {
    CurveGeometry own;
    double period = 0.0;
    return geometry(own) && own.curve().isPeriodic(period);
}

Acad::ErrorStatus AcDbCurve::getStartParam(double& parameter) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    const AcGeInterval interval = own.interval();
    if (!interval.isBoundedBelow()) return Acad::eNotApplicable;
    parameter = interval.lowerBound();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getEndParam(double& parameter) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    const AcGeInterval interval = own.interval();
    if (!interval.isBoundedAbove()) return Acad::eNotApplicable;
    parameter = interval.upperBound();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    return own.curve().hasStartPoint(point) ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    return own.curve().hasEndPoint(point) ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbCurve::getPointAtParam(double parameter, AcGePoint3d& point) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    if (!bringInside(own, parameter)) return Acad::eInvalidInput;
    point = own.curve().evalPoint(own.toOwn(parameter));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& parameter) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    double found = 0.0;
    if (!own.curve().isOn(point, found)) return Acad::eInvalidInput;
    const AcGeInterval interval = own.interval();
    parameter = interval.clamp(own.toDrawing(found));
    // A point that is an end to the allowance has the end's parameter, so that a cut there leaves no sliver.
    for (const double end : {interval.lowerBound(), interval.upperBound()}) {
        if (!std::isfinite(end) || !own.curve().evalPoint(own.toOwn(end)).isEqualTo(point)) continue;
        const double apart = own.curve().length(own.toOwn(end), own.toOwn(parameter));
        if (apart > AcGe::pointAllowance(AcGeContext::gTol, point.largestCoordinate())) continue;
        parameter = own.curve().isClosed() ? interval.lowerBound() : end;
        break;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtParam(double parameter, double& distance) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    const AcGeInterval interval = own.interval();
    if (!interval.isBoundedBelow()) return Acad::eNotApplicable;
    if (!bringInside(own, parameter)) return Acad::eInvalidInput;
    distance = own.curve().length(own.toOwn(interval.lowerBound()), own.toOwn(parameter));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtDist(double distance, double& parameter) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    const AcGeInterval interval = own.interval();
    if (!interval.isBoundedBelow()) return Acad::eNotApplicable;
    const double start = own.toOwn(interval.lowerBound());
    const double whole = interval.isBoundedAbove()
                             ? own.curve().length(start, own.toOwn(interval.upperBound()))
                             : std::numeric_limits<double>::max();
    const double slack = hostkit::kParameterTolerance * std::max(1.0, std::abs(distance));
    if (!(distance >= -slack && distance <= whole + slack)) return Acad::eInvalidInput;
    const double found = own.curve().paramAtLength(start, std::max(0.0, distance));
    parameter = interval.clamp(own.toDrawing(found));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& distance) const {
    double parameter = 0.0;
    const Acad::ErrorStatus status = getParamAtPoint(point, parameter);
    return status == Acad::eOk ? getDistAtParam(parameter, distance) : status;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double distance, AcGePoint3d& point) const {
    double parameter = 0.0;
    const Acad::ErrorStatus status = getParamAtDist(distance, parameter);
    return status == Acad::eOk ? getPointAtParam(parameter, point) : status;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(double parameter, AcGeVector3d& derivative) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    if (!bringInside(own, parameter)) return Acad::eInvalidInput;
    if (own.scale() == 0.0) return Acad::eDegenerateGeometry;
    AcGeVector3dArray derivatives;
    (void)own.curve().evalPoint(own.toOwn(parameter), 1, derivatives);
    derivative = derivatives[0] / own.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const {
    double parameter = 0.0;
    const Acad::ErrorStatus status = getParamAtPoint(point, parameter);
    return status == Acad::eOk ? getFirstDeriv(parameter, derivative) : status;
}

Acad::ErrorStatus AcDbCurve::getSecondDeriv(double parameter, AcGeVector3d& derivative) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    if (!bringInside(own, parameter)) return Acad::eInvalidInput;
    if (own.scale() == 0.0) return Acad::eDegenerateGeometry;
    AcGeVector3dArray derivatives;
    (void)own.curve().evalPoint(own.toOwn(parameter), 2, derivatives);
    derivative = derivatives[1] / (own.scale() * own.scale());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                               Adesk::Boolean extend) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    if (!hostkit::isFinite(given)) return Acad::eInvalidInput;
    closest = extend ? own.extended().curve().closestPointTo(given) : own.curve().closestPointTo(given);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                               AcGePoint3d& closest, Adesk::Boolean extend) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    if (!hostkit::isFinite(given) || direction.isZeroLength()) return Acad::eInvalidInput;
    closest = extend ? own.extended().curve().projClosestPointTo(given, direction)
                     : own.curve().projClosestPointTo(given, direction);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getArea(double& area) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eDegenerateGeometry;
    const AcGeInterval interval = own.interval();
    if (!interval.isBounded()) return Acad::eNotApplicable;
    return own.curve().area(own.toOwn(interval.lowerBound()), own.toOwn(interval.upperBound()), area)
               ? Acad::eOk
               : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbCurve::cutParameters(const AcGeDoubleArray& parameters, AcGeDoubleArray& cuts) const {
    double start = -std::numeric_limits<double>::infinity();
    double end = std::numeric_limits<double>::infinity();
    if (parameters.isEmpty() || getStartParam(start) == Acad::eDegenerateGeometry) return Acad::eInvalidInput;
    (void)getEndParam(end);
    const bool closed = isClosed();
    AcGeDoubleArray sorted;
    for (double parameter : parameters) {
        AcGePoint3d point;
        if (getPointAtParam(parameter, point) != Acad::eOk) return Acad::eInvalidInput;
        const bool atStart = hostkit::isSameParameter(parameter, start);
        const bool atEnd = hostkit::isSameParameter(parameter, end);
        if (!closed && (atStart || atEnd)) continue;
        sorted.append(closed && (atStart || atEnd) ? start : parameter);
    }
    std::sort(sorted.begin(), sorted.end());
    cuts.removeAll();
    if (!closed) cuts.append(start);
    for (const double parameter : sorted)
        if (cuts.isEmpty() || !hostkit::isSameParameter(cuts.last(), parameter)) cuts.append(parameter);
    cuts.append(closed ? cuts.first() + (end - start) : end);
    return closed || cuts.length() > 2 ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGeDoubleArray& parameters,
                                            AcDbVoidPtrArray& curves) const {
    AcGeDoubleArray cuts;
    const Acad::ErrorStatus status = cutParameters(parameters, cuts);
    if (status != Acad::eOk) return status;
    std::vector<std::unique_ptr<AcDbCurve>> parts;
    for (int i = 0; i + 1 < cuts.length(); ++i) {
        std::unique_ptr<AcDbCurve> part(piece(cuts[i], cuts[i + 1]));
        if (!part) return Acad::eNotApplicable;
        (void)part->setPropertiesFrom(this);
        parts.push_back(std::move(part));
    }
    curves.setPhysicalLength(curves.length() + static_cast<int>(parts.size()));
    for (std::unique_ptr<AcDbCurve>& part : parts) curves.append(part.release());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& curves) const {
    AcGeDoubleArray parameters;
    for (const AcGePoint3d& point : points) {
        double parameter = 0.0;
        const Acad::ErrorStatus status = getParamAtPoint(point, parameter);
        if (status != Acad::eOk) return status;
        parameters.append(parameter);
    }
    return getSplitCurves(parameters, curves);
}

Acad::ErrorStatus AcDbCurve::getProjectedCurve(const AcGePlane&, const AcGeVector3d&, AcDbCurve*&) const {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbCurve::getOrthoProjectedCurve(const AcGePlane& plane, AcDbCurve*& projected) const {
    return getProjectedCurve(plane, plane.normal(), projected);
}

Acad::ErrorStatus AcDbCurve::reverseCurve() { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbCurve::getAcGeCurve(AcGeCurve3d*& curve) const {
    CurveGeometry own;
    if (!geometry(own)) return Acad::eNotApplicable;
    curve = own.curve().copy();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getGeomExtents(AcDbExtents& extents) const {
    CurveGeometry own;
    if (!geometry(own) || !own.interval().isBounded()) return Acad::eInvalidExtents;
    AcGePoint3d minimum;
    AcGePoint3d maximum;
    own.curve().orthoBoundBlock().getMinMaxPoints(minimum, maximum);
    return extents.set(minimum, maximum) == Acad::eOk ? Acad::eOk : Acad::eInvalidExtents;
}

bool AcDbCurve::pieces(hostkit::CurvePieces& pieces, bool extend) const {
    CurveGeometry own;
    if (!geometry(own)) return false;
    pieces.add(extend ? own.extended() : own, 0.0);
    pieces.setClosed(isClosed());
    return true;
}

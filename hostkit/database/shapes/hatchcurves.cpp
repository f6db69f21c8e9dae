#include "hatchcurves.h"

#include "ellipseangle.h"

#include "gearc2d.h"
#include "gebndblock2d.h"
#include "geell2d.h"
#include "geintrvl.h"
#include "gelnsg2d.h"
#include "genurb2d.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace hostkit {
namespace {

AcGePoint2dArray arrayOf(const std::vector<AcGePoint2d>& points) {
    AcGePoint2dArray array(static_cast<int>(points.size()));
    for (const AcGePoint2d& point : points) array.append(point);
    return array;
}

AcGeDoubleArray arrayOf(const std::vector<double>& values) {
    AcGeDoubleArray array(static_cast<int>(values.size()));
    for (const double value : values) array.append(value);
    return array;
}

std::unique_ptr<AcGeCurve2d> splineOf(const HatchEdge& edge) {
    const std::size_t points = edge.controlPoints.size();
    if (points == 0 && edge.fitPoints.size() > 1)
        return std::make_unique<AcGeNurbCurve2d>(arrayOf(edge.fitPoints), edge.startTangent, edge.endTangent);
    const bool fits = edge.degree > 0 && points > static_cast<std::size_t>(edge.degree) &&
                      edge.knots.size() == points + static_cast<std::size_t>(edge.degree) + 1 &&
                      (!edge.isRational || edge.weights.size() == points);
    if (!fits) return nullptr;
    const AcGeKnotVector knots(arrayOf(edge.knots), edge.knotTolerance);
    auto curve = edge.isRational
                     ? std::make_unique<AcGeNurbCurve2d>(edge.degree, knots, arrayOf(edge.controlPoints),
                                                         arrayOf(edge.weights), edge.isPeriodic)
                     : std::make_unique<AcGeNurbCurve2d>(edge.degree, knots, arrayOf(edge.controlPoints),
                                                         edge.isPeriodic);
    if (curve->isEmpty()) return nullptr;
    return curve;
}

/// A turned full circle has angles that rounding may leave a little more than a turn apart; more than a turn
/// would be taken as the rest. Equal angles are the full circle.
double endWithinTurn(double start, double end) {
    constexpr double fullTurnTolerance = 1e-10;
    return std::abs(end - start - AcGe::kTwoPi) <= fullTurnTolerance ? start : end;
}

std::unique_ptr<AcGeCurve2d> circleOf(const HatchEdge& edge) {
    return std::make_unique<AcGeCircArc2d>(edge.center, edge.radius, edge.startAngle,
                                           endWithinTurn(edge.startAngle, edge.endAngle),
                                           AcGeVector2d::kXAxis, !edge.isCounterClockwise);
}

std::unique_ptr<AcGeCurve2d> ellipseOf(const HatchEdge& edge) {
    if (edge.given) return std::make_unique<AcGeEllipArc2d>(*edge.given);
    const double radius = edge.majorAxis.length();
    AcGeVector2d minor = edge.majorAxis.perpVector();
    if (!edge.isCounterClockwise) minor.negate();
    const double start = ellipseParameter(edge.startAngle, edge.ratio);
    const double end = ellipseParameter(edge.endAngle, edge.ratio);
    return std::make_unique<AcGeEllipArc2d>(edge.center, edge.majorAxis, minor, radius, radius * edge.ratio,
                                            start, endWithinTurn(start, end));
}

void appendSegment(LoopCurves& curves, const AcGePoint2d& start, const AcGePoint2d& end, double bulge) {
    if (start.x == end.x && start.y == end.y) return;
    if (bulge == 0.0)
        curves.push_back(std::make_unique<AcGeLineSeg2d>(start, end));
    else
        curves.push_back(std::make_unique<AcGeCircArc2d>(start, end, bulge));
}

void setArc(const AcGeCircArc2d& arc, HatchEdge& edge) {
    const double reference = std::atan2(arc.refVec().y, arc.refVec().x);
    const double offset = arc.isClockWise() ? -reference : reference;
    edge.kind = HatchEdge::kCircArc;
    edge.center = arc.center();
    edge.radius = arc.radius();
    edge.isCounterClockwise = !arc.isClockWise();
    edge.startAngle = arc.startAng() + offset;
    edge.endAngle = arc.endAng() + offset;
}

// The format wants the longer axis as the major one; turning to the other shifts the parameter by a quarter
// turn.
void setEllipse(const AcGeEllipArc2d& arc, HatchEdge& edge) {
    const bool isSwapped = arc.minorRadius() > arc.majorRadius();
    const double shift = isSwapped ? -AcGe::kPi / 2.0 : 0.0;
    const double longer = isSwapped ? arc.minorRadius() : arc.majorRadius();
    const double shorter = isSwapped ? arc.majorRadius() : arc.minorRadius();
    edge.kind = HatchEdge::kEllipArc;
    edge.center = arc.center();
    edge.majorAxis = (isSwapped ? arc.minorAxis() : arc.majorAxis()) * longer;
    edge.ratio = longer > 0.0 ? shorter / longer : 1.0;
    edge.isCounterClockwise = !arc.isClockWise();
    edge.startAngle = ellipseAngle(arc.startAng() + shift, edge.ratio);
    edge.endAngle = ellipseAngle(arc.endAng() + shift, edge.ratio);
    edge.given = std::make_shared<const AcGeEllipArc2d>(arc);
}

void setSpline(const AcGeNurbCurve2d& curve, HatchEdge& edge) {
    edge.kind = HatchEdge::kSpline;
    edge.degree = static_cast<short>(curve.degree());
    edge.isRational = curve.isRational();
    double period = 0.0;
    edge.isPeriodic = curve.isPeriodic(period);
    edge.knotTolerance = curve.knots().tolerance();
    for (int i = 0; i < curve.numKnots(); ++i) edge.knots.push_back(curve.knotAt(i));
    for (int i = 0; i < curve.numControlPoints(); ++i) {
        edge.controlPoints.push_back(curve.controlPointAt(i));
        if (edge.isRational) edge.weights.push_back(curve.weightAt(i));
    }
}

} // namespace

std::unique_ptr<AcGeCurve2d> curveOf(const HatchEdge& edge) {
    switch (edge.kind) {
    case HatchEdge::kLine:
        return std::make_unique<AcGeLineSeg2d>(edge.start, edge.end);
    case HatchEdge::kCircArc:
        return circleOf(edge);
    case HatchEdge::kEllipArc:
        return ellipseOf(edge);
    case HatchEdge::kSpline:
        return splineOf(edge);
    }
    return nullptr;
}

LoopCurves curvesOf(const HatchLoop& loop) {
    LoopCurves curves;
    for (const HatchEdge& edge : loop.edges)
        if (auto curve = curveOf(edge)) curves.push_back(std::move(curve));
    const std::size_t count = loop.vertices.size();
    const std::size_t segments = count < 2 ? 0 : loop.isClosed ? count : count - 1;
    for (std::size_t i = 0; i < segments; ++i)
        appendSegment(curves, loop.vertices[i], loop.vertices[(i + 1) % count],
                      loop.hasBulges ? loop.bulges[i] : 0.0);
    return curves;
}

namespace {

template <class Values>
bool areFinite(const Values& values) {
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

bool isFinite(const HatchEdge& edge) {
    const auto isPointFinite = [](const AcGePoint2d& point) {
        return std::isfinite(point.x) && std::isfinite(point.y);
    };
    return areFinite(std::initializer_list<double>{edge.start.x, edge.start.y, edge.end.x, edge.end.y,
                                                   edge.center.x, edge.center.y, edge.majorAxis.x,
                                                   edge.majorAxis.y, edge.radius, edge.ratio, edge.startAngle,
                                                   edge.endAngle, edge.knotTolerance}) &&
           areFinite(edge.knots) && areFinite(edge.weights) &&
           std::all_of(edge.controlPoints.begin(), edge.controlPoints.end(), isPointFinite);
}

} // namespace

bool edgeOf(const AcGeCurve2d& curve, HatchEdge& edge) {
    HatchEdge made;
    switch (curve.type()) {
    case AcGe::kLineSeg2d:
        made.start = static_cast<const AcGeLineSeg2d&>(curve).startPoint();
        made.end = static_cast<const AcGeLineSeg2d&>(curve).endPoint();
        break;
    case AcGe::kCircArc2d:
        setArc(static_cast<const AcGeCircArc2d&>(curve), made);
        break;
    case AcGe::kEllipArc2d:
        setEllipse(static_cast<const AcGeEllipArc2d&>(curve), made);
        break;
    case AcGe::kNurbCurve2d:
        if (static_cast<const AcGeNurbCurve2d&>(curve).isEmpty()) return false;
        setSpline(static_cast<const AcGeNurbCurve2d&>(curve), made);
        break;
    default:
        return false;
    }
    if (!isFinite(made)) return false;
    edge = std::move(made);
    return true;
}

double reachAlong(const LoopCurves& curves, const AcGeVector2d& direction) {
    const double length = direction.length();
    double reach = -std::numeric_limits<double>::infinity();
    if (length == 0.0) return curves.empty() ? reach : 0.0;
    if (direction.x == 0.0 || direction.y == 0.0) { // turning would cost digits
        for (const auto& curve : curves) {
            const AcGeBoundBlock2d block = curve->orthoBoundBlock();
            const AcGePoint2d corner(direction.x > 0.0 ? block.maxPoint().x : block.minPoint().x,
                                     direction.y > 0.0 ? block.maxPoint().y : block.minPoint().y);
            reach = std::max(reach, corner.asVector().dotProduct(direction));
        }
        return reach;
    }
    AcGeMatrix2d turn;
    turn.setToRotation(-std::atan2(direction.y, direction.x));
    for (const auto& curve : curves) {
        const std::unique_ptr<AcGeCurve2d> turned(curve->copy());
        turned->transformBy(turn);
        reach = std::max(reach, turned->orthoBoundBlock().maxPoint().x * length);
    }
    return reach;
}

} // namespace hostkit

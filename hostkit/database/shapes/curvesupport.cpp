#include "curvesupport.h"

#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"

#include "geell3d.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

/// An ellipse seen from its edge runs to and fro on its one axis that is left.
AcDbCurve* lineOf(const AcGeEllipArc3d& ellipse) {
    AcGeInterval range;
    ellipse.getInterval(range);
    const bool majorLeft = ellipse.majorRadius() >= ellipse.minorRadius();
    const AcGeVector3d axis = majorLeft ? ellipse.majorAxis() : ellipse.minorAxis();
    double least = 0.0;
    double most = 0.0;
    bool hasAny = false;
    const auto take = [&](double parameter) {
        const double along = (ellipse.evalPoint(parameter) - ellipse.center()).dotProduct(axis);
        least = hasAny ? std::min(least, along) : along;
        most = hasAny ? std::max(most, along) : along;
        hasAny = true;
    };
    take(range.lowerBound());
    take(range.upperBound());
    const double first = majorLeft ? 0.0 : AcGe::kPi / 2.0;
    const double turns = std::ceil((range.lowerBound() - first) / AcGe::kPi);
    for (int i = 0; i < 3; ++i) {
        const double extreme = first + (turns + i) * AcGe::kPi;
        if (extreme < range.upperBound()) take(extreme);
    }
    return new AcDbLine(ellipse.center() + axis * least, ellipse.center() + axis * most);
}

AcDbCurve* roundCurveOf(const AcGeEllipArc3d& ellipse) {
    const AcGeVector3d normal = ellipse.normal();
    if (ellipse.isClosed()) return new AcDbCircle(ellipse.center(), normal, ellipse.majorRadius());
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
    AcGe::arbitraryAxes(normal, xAxis, yAxis);
    const AcGeVector3d reference = ellipse.majorAxis();
    const double shift = std::atan2(reference.dotProduct(yAxis), reference.dotProduct(xAxis));
    return new AcDbArc(ellipse.center(), normal, ellipse.majorRadius(), ellipse.startAng() + shift,
                       ellipse.endAng() + shift);
}

} // namespace

double angleWithinTurn(double angle) {
    if (angle >= 0.0 && angle < AcGe::kTwoPi) return angle;
    const double rest = std::fmod(angle, AcGe::kTwoPi);
    const double positive = rest < 0.0 ? rest + AcGe::kTwoPi : rest;
    return positive < AcGe::kTwoPi ? positive : 0.0;
}

bool canProject(const AcGePlane& plane, const AcGeVector3d& direction) {
    const double size = direction.length();
    if (!std::isfinite(size) || size <= AcGeContext::gTol.equalVector()) return false;
    return std::abs(direction.dotProduct(plane.normal())) > AcGeContext::gTol.equalVector() * size;
}

AcDbCurve* drawingCurveOf(const AcGeEllipArc3d& ellipse) {
    const double allowance = pointAllowance(ellipse.center());
    const double larger = std::max(ellipse.majorRadius(), ellipse.minorRadius());
    const double smaller = std::min(ellipse.majorRadius(), ellipse.minorRadius());
    if (!(larger > allowance)) return nullptr;
    if (smaller <= allowance) return lineOf(ellipse);
    if (larger - smaller <= allowance) return roundCurveOf(ellipse);
    const bool swapped = ellipse.minorRadius() > ellipse.majorRadius();
    const double quarter = swapped ? AcGe::kPi / 2.0 : 0.0;
    const AcGeVector3d major = (swapped ? ellipse.minorAxis() : ellipse.majorAxis()) * larger;
    AcDbEllipse* result = new AcDbEllipse(ellipse.center(), ellipse.normal(), major, smaller / larger);
    if (ellipse.isClosed()) return result;
    const double start = angleWithinTurn(ellipse.startAng() - quarter);
    (void)result->setEndParam(start + (ellipse.endAng() - ellipse.startAng()));
    (void)result->setStartParam(start);
    return result;
}

Acad::ErrorStatus projectEllipse(const AcDbCurve& source, const AcGeEllipArc3d& ellipse,
                                 const AcGePlane& plane, const AcGeVector3d& direction,
                                 AcDbCurve*& projected) {
    if (!canProject(plane, direction)) return Acad::eInvalidInput;
    AcGeEllipArc3d image(ellipse);
    image.transformBy(AcGeMatrix3d::projection(plane, direction));
    AcDbCurve* made = drawingCurveOf(image);
    if (!made) return Acad::eDegenerateGeometry;
    projected = withPropertiesOf(source, made);
    return Acad::eOk;
}

} // namespace hostkit

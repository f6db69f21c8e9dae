#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "contourareas.h"
#include "contourboxchain.h"
#include "contoursplitting.h"

#include "cvxlogentry.h"
#include "dbpolyline.h"
#include "dbxline.h"
#include "geline3d.h"
#include "geplane.h"

#include <algorithm>
#include <memory>
#include <vector>

using namespace VEXOGeometryTools;
using namespace vexo;

namespace {

/// A point this near to a contour's start or end is that end.
constexpr double kEndTolerance = 1e-8;

std::unique_ptr<AcDbCurve> cloneOf(const AcDbCurve* curve) {
    return std::unique_ptr<AcDbCurve>(curve ? AcDbCurve::cast(curve->clone()) : nullptr);
}

/// Parameter of the point, or of the curve's end when the point is there, or of the nearest point.
bool parameterNear(const AcDbCurve& curve, const AcGePoint3d& point, bool isFirst, double& parameter) {
    if (curve.getParamAtPoint(point, parameter) == Acad::eOk) {
        AcGePoint3d end;
        const Acad::ErrorStatus status = isFirst ? curve.getStartPoint(end) : curve.getEndPoint(end);
        if (status != Acad::eOk || !point.isEqualTo(end, pointToleranceOf(kEndTolerance))) return true;
        return curve.getParamAtPoint(end, parameter) == Acad::eOk;
    }
    AcGePoint3d closest;
    return curve.getClosestPointTo(point, closest, Adesk::kFalse) == Acad::eOk &&
           curve.getParamAtPoint(closest, parameter) == Acad::eOk;
}

/// Asks getParamAtPoint for many points on one polyline. Each is put to the segments that it is near to, one
/// at a time in their order, as a polyline of that segment alone: the first that has the point gives the
/// parameter, to the bit.
class PointParameters {
public:
    explicit PointParameters(const AcDbPolyline& polyline)
        : m_polyline(polyline)
        , m_plane(AcGePoint3d::kOrigin, polyline.normal())
        , m_chain(boxesOf(polyline)) {}

    bool of(const AcGePoint3d& point, double& parameter) const {
        const AcGePoint2d place = point.convert2d(m_plane);
        bool found = false;
        m_chain.forEachMeeting({place.x, place.x, place.y, place.y}, [&](std::size_t i) {
            found = found || onSegment(static_cast<unsigned int>(i), point, parameter);
        });
        return found;
    }

private:
    /// More than the point test bridges, at the coordinates and the radius of a segment.
    static constexpr double kAllowances = 8.0;

    static std::vector<BoxChain::Box> boxesOf(const AcDbPolyline& polyline) {
        const unsigned int vertices = polyline.numVerts();
        const unsigned int count = vertices > 0 && !polyline.isClosed() ? vertices - 1 : vertices;
        std::vector<BoxChain::Box> boxes;
        AcGePoint2d start;
        AcGePoint2d end;
        if (count > 0) (void)polyline.getPointAt(0, start);
        for (unsigned int i = 0; i < count; ++i, start = end) {
            double bulge = 0.0;
            (void)polyline.getPointAt(i + 1 < vertices ? i + 1 : 0, end);
            (void)polyline.getBulgeAt(i, bulge);
            const double half = start.distanceTo(end) * 0.5;
            const double size = std::abs(bulge);
            const double radius = bulge == 0.0 ? 0.0 : half * (size + 1.0 / size);
            const double magnitude = std::max({start.largestCoordinate(), end.largestCoordinate(), radius});
            const double slack = kAllowances * AcGe::pointAllowance(AcGeContext::gTol, magnitude);
            BoxChain::Box box{std::min(start.x, end.x), std::max(start.x, end.x), std::min(start.y, end.y),
                              std::max(start.y, end.y)};
            const AcGePoint2d middle = start + (end - start) * 0.5;
            const double reach = half * std::max(1.0, size);
            if (bulge != 0.0) box = {middle.x - reach, middle.x + reach, middle.y - reach, middle.y + reach};
            boxes.push_back(box.widened(slack));
        }
        if (boxes.empty()) boxes.push_back(BoxChain::emptyBox());
        return boxes;
    }
    bool onSegment(unsigned int index, const AcGePoint3d& point, double& parameter) const {
        const unsigned int next = index + 1 < m_polyline.numVerts() ? index + 1 : 0;
        AcGePoint2d start;
        AcGePoint2d end;
        double bulge = 0.0;
        (void)m_polyline.getPointAt(index, start);
        (void)m_polyline.getPointAt(next, end);
        (void)m_polyline.getBulgeAt(index, bulge);
        AcDbPolyline segment(2);
        (void)segment.setNormal(m_polyline.normal());
        (void)segment.addVertexAt(0, start, bulge);
        (void)segment.addVertexAt(1, end);
        double fraction = 0.0;
        if (segment.getParamAtPoint(point, fraction) != Acad::eOk) return false;
        AcGePoint3d seam;
        const bool isAtSeam = next == 0 && fraction == 1.0 && segment.getEndPoint(seam) == Acad::eOk &&
                              point.isEqualTo(seam, AcGeContext::gTol);
        parameter = isAtSeam ? 0.0 : static_cast<double>(index) + fraction;
        return true;
    }

    const AcDbPolyline& m_polyline;
    AcGePlane m_plane;
    BoxChain m_chain;
};

/// A clone of a contour and its pieces between two points: none when the points have no place on it.
struct CutContour {
    std::unique_ptr<AcDbCurve> clone;
    AcArray<void*> pieces;
    bool isReversed = false; ///< the second point comes before the first

    CutContour(const AcDbCurve* contour, const AcGePoint3d& first, const AcGePoint3d& second)
        : clone(cloneOf(contour)) {
        double parameter1 = 0.0;
        double parameter2 = 0.0;
        if (!clone || !parameterNear(*clone, first, true, parameter1) ||
            !parameterNear(*clone, second, false, parameter2))
            return;
        isReversed = isDefinitelyLess(parameter2, parameter1);
        AcGeDoubleArray parameters;
        parameters.append(isReversed ? parameter2 : parameter1);
        parameters.append(isReversed ? parameter1 : parameter2);
        (void)clone->getSplitCurves(parameters, pieces);
    }
    CutContour(const CutContour&) = delete;
    CutContour& operator=(const CutContour&) = delete;
    ~CutContour() { deleteCurves(pieces); }

    AcDbCurve* piece(int i) const { return static_cast<AcDbCurve*>(pieces[i]); }
    AcDbCurve* takePiece(int i) {
        AcDbCurve* taken = piece(i);
        pieces.removeAt(i);
        return taken;
    }
};

/// Distance from the point to the first meeting of the curve with the line through it along y.
bool distanceAlongY(const AcDbCurve& curve, const AcGePoint3d& point, double& distance) {
    const AcDbXline line = lineAlongY(point);
    AcGePoint3dArray points;
    (void)curve.intersectWith(&line, AcDb::kOnBothOperands, points);
    if (points.isEmpty()) return false;
    distance = point.distanceTo(points.first());
    return true;
}

/// The meetings of a curve with a line, ordered along `dir`. They are brought on to the line to the last
/// digit: where a line cuts an arc near its outermost point they lie so close together that the rounding of
/// points on arcs would turn their order.
AcArray<AcGePoint3d> orderedMeetings(const AcDbCurve& curve, const AcDbXline& line, const AcGeVector3d& dir) {
    AcGePoint3dArray points;
    (void)curve.intersectWith(&line, AcDb::kOnBothOperands, points);
    points = getClosestPointsToLine(AcGeLine3d(line.basePoint(), line.unitDir()), points, AcGeContext::gTol);
    orderPointsByDir(dir, points, true);
    return points;
}

bool runsClockwise(const AcDbCurve& contour) {
    const std::unique_ptr<AcDbPolyline> polyline(ConvertToPolyline(&contour));
    if (!polyline) return false;
    return (signedArea(loopOf(*polyline)) < 0.0) != (polyline->normal().z < 0.0);
}

enum class Side { kUpper, kLower };

/// The run of a closed contour from one point to another that bounds what lies above, or below, the way from
/// left to right. Counter-clockwise the upper run leads from right to left. The contour itself when both
/// points have one place; null when a point has none.
std::unique_ptr<AcDbCurve> runOnSide(const AcGePoint3d& left, const AcGePoint3d& right,
                                     const AcDbCurve& contour, Side side) {
    CutContour cut(&contour, left, right);
    if (cut.pieces.length() == 1) return std::move(cut.clone);
    if (cut.pieces.length() != 2) return nullptr;
    const bool wantsFromRight = (side == Side::kUpper) != runsClockwise(contour);
    const bool firstIsFromRight = cut.isReversed;
    return std::unique_ptr<AcDbCurve>(cut.takePiece(wantsFromRight == firstIsFromRight ? 0 : 1));
}

/// One strip between a contour and the upper or lower side of a hole; null when the hole's side does not meet
/// the contour twice.
std::unique_ptr<AcDbCurve> stripOnSide(const AcGePoint3d& left, const AcGePoint3d& right,
                                       AcDbPolyline* contour, AcDbCurve* hole, Side side, bool& isPlain) {
    std::unique_ptr<AcDbCurve> holePart = runOnSide(left, right, *hole, side);
    if (!holePart) return nullptr;
    setLastBulgeToZero(holePart.get());
    AcArray<AcGePoint3d> crossings = intersectPolyLines(holePart.get(), contour);
    if (crossings.length() < 2) return nullptr;
    if (crossings.length() > 2) isPlain = false;
    filterArray(crossings);
    std::unique_ptr<AcDbCurve> outerPart = runOnSide(crossings[0], crossings[1], *contour, side);
    setLastBulgeToZero(outerPart.get());
    if (std::unique_ptr<AcDbCurve> shorter = runOnSide(crossings[0], crossings[1], *hole, side)) {
        holePart = std::move(shorter);
        setLastBulgeToZero(holePart.get());
    }
    if (!outerPart) return nullptr;
    std::unique_ptr<AcDbCurve> whole(concatenateCurves(outerPart.get(), holePart.get(), true));
    return whole ? std::move(whole) : std::move(outerPart);
}

} // namespace

namespace vexo {

AcDbXline lineAlongY(const AcGePoint3d& through) {
    AcDbXline line;
    (void)line.setBasePoint(through);
    (void)line.setUnitDir(AcGeVector3d::kYAxis);
    return line;
}

void deleteCurves(AcArray<void*>& curves) {
    for (void* curve : curves) delete static_cast<AcDbCurve*>(curve);
    curves.removeAll();
}

AcArray<void*> stripsBetweenLines(AcDbPolyline* contour, AcDbCurve* hole, const AcDbXline& left,
                                  const AcDbXline& right, bool& isPlain) {
    AcArray<void*> strips;
    const AcArray<AcGePoint3d> onLeft = orderedMeetings(*hole, left, left.unitDir());
    const AcArray<AcGePoint3d> onRight = orderedMeetings(*hole, right, right.unitDir());
    if (onLeft.isEmpty() || onRight.isEmpty()) return strips;
    const auto append = [&](const AcGePoint3d& a, const AcGePoint3d& b, Side side) {
        if (std::unique_ptr<AcDbCurve> strip = stripOnSide(a, b, contour, hole, side, isPlain)) {
            strips.append(strip.get());
            (void)strip.release();
        }
    };
    append(onLeft.last(), onRight.last(), Side::kUpper);
    append(onLeft.first(), onRight.first(), Side::kLower);
    return strips;
}

} // namespace vexo

namespace VEXOGeometryTools {

AcArray<void*> splitPolyLineByPoints(AcDbCurve* curve, AcArray<AcGePoint3d> points) {
    CVxLogEntry entry(L"VEXOGeometryTools::splitPolyLineByPoints");
    AcArray<void*> pieces;
    const std::unique_ptr<AcDbPolyline> polyline(ConvertToPolyline(curve));
    if (!polyline) return pieces;
    removeRepeats(points, AcGeContext::gTol);
    AcGeDoubleArray parameters;
    const PointParameters onPolyline(*polyline);
    for (const AcGePoint3d& point : points) {
        double parameter = 0.0;
        if (onPolyline.of(point, parameter)) parameters.append(parameter);
    }
    std::sort(parameters.begin(), parameters.end());
    (void)polyline->getSplitCurves(parameters, pieces);
    return pieces;
}

AcDbCurve* giveMeSplitContourByPoints(AcGePoint3d first, AcGePoint3d second, AcDbCurve* contour,
                                      bool nearPart) {
    CVxLogEntry entry(L"VEXOGeometryTools::giveMeSplitContourByPoints");
    CutContour cut(contour, first, second);
    if (cut.pieces.length() == 1) return cut.clone.release();
    AcGePoint3d middle;
    if (cut.pieces.length() != 2 || cut.piece(0)->getStartPoint(middle) != Acad::eOk) return nullptr;
    middle.x = (first.x + second.x) / 2.0;
    double distanceA = 0.0;
    double distanceB = 0.0;
    if (!distanceAlongY(*cut.piece(0), middle, distanceA) ||
        !distanceAlongY(*cut.piece(1), middle, distanceB))
        return cut.takePiece(0);
    const double slack = std::abs(distanceB) * kComparisonTolerance + kComparisonTolerance;
    const bool firstIsFar = distanceA >= distanceB - slack;
    return cut.takePiece(firstIsFar == nearPart ? 1 : 0);
}

AcArray<void*> splitContourByLine(AcDbPolyline* contour, AcDbXline& line) {
    CVxLogEntry entry(L"VEXOGeometryTools::splitContourByLine");
    AcArray<void*> halves;
    if (!contour) return halves;
    const AcArray<AcGePoint3d> points = orderedMeetings(*contour, line, AcGeVector3d::kYAxis);
    AcGeDoubleArray parameters(2);
    parameters.setLogicalLength(2);
    if (points.length() < 2 || contour->getParamAtPoint(points[0], parameters[0]) != Acad::eOk ||
        contour->getParamAtPoint(points[1], parameters[1]) != Acad::eOk)
        return halves;
    if (isDefinitelyLess(parameters[1], parameters[0])) parameters.swap(0, 1);
    (void)contour->getSplitCurves(parameters, halves);
    auto* first = halves.length() == 2 ? AcDbPolyline::cast(static_cast<AcDbCurve*>(halves[0])) : nullptr;
    auto* second = halves.length() == 2 ? AcDbPolyline::cast(static_cast<AcDbCurve*>(halves[1])) : nullptr;
    if (!first || !second) {
        deleteCurves(halves);
        return halves;
    }
    setLastBulgeToZero(first);
    setLastBulgeToZero(second);
    const bool runsBack = !(points[1] - points[0]).isCodirectionalTo(line.unitDir(), AcGeContext::gTol);
    const AcGePoint3d from = points[runsBack ? 1 : 0];
    const AcGePoint3d to = points[runsBack ? 0 : 1];
    if (!isPerpVectorOrientedInsideContour(from, to, first)) halves.reverse();
    first->setClosed(Adesk::kTrue);
    second->setClosed(Adesk::kTrue);
    return halves;
}

AcArray<void*> splitContourByLine2(AcDbPolyline* contour, AcDbCurve* hole, AcDbXline& left,
                                   AcDbXline& right) {
    CVxLogEntry entry(L"VEXOGeometryTools::splitContourByLine2");
    if (!contour || !hole) return AcArray<void*>();
    bool isPlain = true;
    return stripsBetweenLines(contour, hole, left, right, isPlain);
}

} // namespace VEXOGeometryTools

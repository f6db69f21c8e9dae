// The splitting of contours as its contract tells it, step by step on the drawing's curves, with none of the
// library's own splitting. What the strips of a slab are where these steps do not meet an opening.
#pragma once

#include "contourcases.h"

#include "dbline.h"
#include "dbxline.h"
#include "geline3d.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace plaincontour {

using contourcases::boxOf;
using contourcases::endOf;
using contourcases::startOf;
using contourcases::toleranceOf;

using Owned = std::unique_ptr<AcDbCurve>;
using Points = AcArray<AcGePoint3d>;

inline bool isDefinitelyLess(double a, double b) { return a + std::abs(a) * 1e-10 + 1e-10 < b; }

inline Owned cloneOf(const AcDbCurve& curve) { return Owned(AcDbCurve::cast(curve.clone())); }

inline Points meetingsWith(const AcDbCurve& curve, const AcDbCurve& other) {
    Points points;
    (void)curve.intersectWith(&other, AcDb::kOnBothOperands, points);
    return points;
}

inline AcDbXline lineAt(const AcGePoint3d& base, const AcGeVector3d& direction) {
    AcDbXline line;
    (void)line.setBasePoint(base);
    (void)line.setUnitDir(direction);
    return line;
}

inline void order(const AcGeVector3d& dir, Points& points, bool onLine) {
    if (dir.isZeroLength(toleranceOf(1e-10, 1e-10)) || points.isEmpty()) return;
    Points keys(points);
    const AcGePoint3d base = points[0];
    for (AcGePoint3d& key : keys)
        if (!onLine) key = AcGeLine3d(base, dir).closestPointTo(key);
    for (int i = 0; i < points.length(); ++i)
        for (int j = i + 1; j < points.length(); ++j)
            if (!(keys[j] - keys[i]).isCodirectionalTo(dir)) {
                std::swap(points[i], points[j]);
                std::swap(keys[i], keys[j]);
            }
}

/// Every segment against every segment, every point against every point.
inline Points meetingsOfSegments(const AcDbPolyline& a, const AcDbPolyline& b) {
    const AcGeTol tolerance = toleranceOf(1e-6, 1e-6);
    Points points;
    for (unsigned int i = 0; i + (a.isClosed() ? 0 : 1) < a.numVerts(); ++i)
        for (unsigned int j = 0; j + (b.isClosed() ? 0 : 1) < b.numVerts(); ++j)
            for (const AcGePoint3d& point : contourcases::meetingsOf(a, i, b, j, tolerance))
                points.append(point);
    for (int i = 0; i < points.length(); ++i)
        for (int j = points.length() - 1; j > i; --j)
            if (points[j].isEqualTo(points[i], tolerance)) points.removeAt(j);
    return points;
}

inline void keepOuterTwo(Points& points) {
    const AcGePoint3d first = points.first(), last = points.last();
    const bool isBack = (last - first).dotProduct(AcGeVector3d::kXAxis) < -1e-10;
    points = contourcases::pointsOf({isBack ? last : first, isBack ? first : last});
}

inline void straightenLast(AcDbCurve* curve) {
    if (auto* polyline = AcDbPolyline::cast(curve)) (void)polyline->setBulgeAt(polyline->numVerts() - 1, 0.0);
}

inline std::vector<Owned> piecesAt(const AcDbCurve& curve, double a, double b) {
    AcGeDoubleArray cuts;
    cuts.append(isDefinitelyLess(b, a) ? b : a);
    cuts.append(isDefinitelyLess(b, a) ? a : b);
    AcArray<void*> made;
    (void)curve.getSplitCurves(cuts, made);
    std::vector<Owned> pieces;
    for (void* piece : made) pieces.emplace_back(static_cast<AcDbCurve*>(piece));
    return pieces;
}

inline bool parameterOf(const AcDbCurve& curve, const AcGePoint3d& point, const AcGePoint3d& end,
                        double& parameter) {
    if (curve.getParamAtPoint(point, parameter) == Acad::eOk)
        return !point.isEqualTo(end, toleranceOf(1e-8)) || curve.getParamAtPoint(end, parameter) == Acad::eOk;
    AcGePoint3d closest;
    return curve.getClosestPointTo(point, closest) == Acad::eOk &&
           curve.getParamAtPoint(closest, parameter) == Acad::eOk;
}

inline Owned partBetween(const AcGePoint3d& first, const AcGePoint3d& second, const AcDbCurve& contour,
                         bool nearPart) {
    Owned clone = cloneOf(contour);
    double parameter1 = 0.0, parameter2 = 0.0;
    if (!parameterOf(*clone, first, startOf(*clone), parameter1) ||
        !parameterOf(*clone, second, endOf(*clone), parameter2))
        return nullptr;
    std::vector<Owned> pieces = piecesAt(*clone, parameter1, parameter2);
    if (pieces.size() == 1) return clone;
    if (pieces.size() != 2) return nullptr;
    AcGePoint3d middle = startOf(*pieces[0]);
    middle.x = (first.x + second.x) / 2;
    const AcDbXline along = lineAt(middle, AcGeVector3d::kYAxis);
    const Points onA = meetingsWith(*pieces[0], along), onB = meetingsWith(*pieces[1], along);
    if (onA.isEmpty() || onB.isEmpty()) return std::move(pieces[0]);
    const double dA = middle.distanceTo(onA[0]), dB = middle.distanceTo(onB[0]);
    const bool isFirstFar = dA >= dB - (std::abs(dB) * 1e-10 + 1e-10);
    return std::move(pieces[isFirstFar == nearPart ? 1 : 0]);
}

inline bool pointsInside(const AcGePoint3d& first, const AcGePoint3d& second, const AcDbCurve& contour) {
    const AcGeVector3d up = (first - second).perpVector();
    const AcGePoint3d middle = first + (second - first) / 2;
    int onA = 0, onB = 0;
    for (const AcGePoint3d& point : meetingsWith(contour, lineAt(middle, up)))
        ++((point - middle).isCodirectionalTo(up) ? onA : onB);
    return onB % 2 == 1 && onA % 2 == 0;
}

inline std::vector<Owned> halvesAt(const AcDbPolyline& contour, const AcDbXline& line) {
    Points points = meetingsWith(contour, line);
    order(AcGeVector3d::kYAxis, points, true);
    double parameter1 = 0.0, parameter2 = 0.0;
    if (points.length() < 2 || contour.getParamAtPoint(points[0], parameter1) != Acad::eOk ||
        contour.getParamAtPoint(points[1], parameter2) != Acad::eOk)
        return {};
    std::vector<Owned> halves = piecesAt(contour, parameter1, parameter2);
    if (halves.size() != 2) return {};
    for (const Owned& half : halves) straightenLast(half.get());
    if (!(points[1] - points[0]).isCodirectionalTo(line.unitDir())) std::swap(points[0], points[1]);
    if (!pointsInside(points[0], points[1], *halves[0])) std::swap(halves[0], halves[1]);
    for (const Owned& half : halves) AcDbPolyline::cast(half.get())->setClosed(true);
    return halves;
}

/// Vertices of polylines in the XY plane.
inline Owned joined(const AcDbPolyline& first, const AcDbPolyline& second, bool close) {
    using contourcases::verticesOf;
    const AcGeTol tolerance = toleranceOf(1e-6);
    const auto point = [](const std::array<double, 3>& v) { return AcGePoint3d(v[0], v[1], 0); };
    auto result = contourcases::polylineOf(verticesOf(first), first.isClosed());
    const bool isBackward = endOf(first).isEqualTo(endOf(second), tolerance) ||
                            startOf(first).isEqualTo(startOf(second), tolerance);
    contourcases::Vertices walk = verticesOf(second);
    if (isBackward) {
        const contourcases::Vertices given = walk;
        const std::size_t count = given.size();
        for (std::size_t k = 0; k < count; ++k) {
            walk[k] = given[count - 1 - k];
            walk[k][2] = k + 1 < count ? -given[count - 2 - k][2] : 0.0;
        }
    }
    for (std::size_t k = 0; k < walk.size(); ++k) {
        const bool isLast = k + 1 == walk.size();
        if (!isLast && point(walk[k]).isEqualTo(point(walk[k + 1]), tolerance)) continue;
        const unsigned int count = result->numVerts();
        AcGePoint3d place;
        (void)result->getPointAt(isLast ? 0 : count - 1, place);
        const bool isThere = point(walk[k]).isEqualTo(place, tolerance);
        if (!isThere)
            (void)result->addVertexAt(count, {walk[k][0], walk[k][1]}, walk[k][2]);
        else if (!isLast)
            (void)result->setBulgeAt(count - 1, walk[k][2]);
    }
    if (close) result->setClosed(true);
    return result;
}

inline std::vector<Owned> stripsBetween(const AcDbPolyline& contour, const AcDbPolyline& hole,
                                        const AcDbXline& left, const AcDbXline& right) {
    Points onLeft = meetingsWith(hole, left), onRight = meetingsWith(hole, right);
    order(left.unitDir(), onLeft, true);
    order(right.unitDir(), onRight, true);
    std::vector<Owned> strips;
    if (onLeft.isEmpty() || onRight.isEmpty()) return strips;
    for (const bool isUpper : {true, false}) {
        const AcGePoint3d a = isUpper ? onLeft.last() : onLeft.first();
        const AcGePoint3d b = isUpper ? onRight.last() : onRight.first();
        Owned holePart = partBetween(a, b, hole, isUpper);
        if (!holePart) continue;
        straightenLast(holePart.get());
        Points crossings = meetingsOfSegments(*AcDbPolyline::cast(holePart.get()), contour);
        if (crossings.length() < 2) continue;
        keepOuterTwo(crossings);
        Owned outerPart = partBetween(crossings[0], crossings[1], contour, isUpper);
        straightenLast(outerPart.get());
        if (Owned shorter = partBetween(crossings[0], crossings[1], hole, isUpper)) {
            straightenLast(shorter.get());
            holePart = std::move(shorter);
        }
        if (!outerPart) continue;
        strips.push_back(
            joined(*AcDbPolyline::cast(outerPart.get()), *AcDbPolyline::cast(holePart.get()), true));
    }
    // Nearness to the middle takes the upper runs for the lower ones in the lower half of a slab.
    const auto height = [](const Owned& strip) {
        return boxOf(*strip).minPoint().y + boxOf(*strip).maxPoint().y;
    };
    if (strips.size() == 2 && height(strips[0]) < height(strips[1])) std::swap(strips[0], strips[1]);
    return strips;
}

inline bool liesOutside(const AcDbCurve& first, const AcDbCurve& second) {
    const AcDbExtents a = boxOf(first), b = boxOf(second);
    AcDbExtents both = a;
    both.addExt(b);
    const AcGeTol tolerance = toleranceOf(1e-8);
    if (both.minPoint().isEqualTo(a.minPoint(), tolerance) &&
        both.maxPoint().isEqualTo(a.maxPoint(), tolerance))
        return false;
    if (meetingsWith(first, second).isEmpty()) return true;
    const auto hasCornerIn = [](const AcDbExtents& of, const AcDbExtents& in) {
        bool isInside = false;
        for (const double x : {of.minPoint().x, of.maxPoint().x})
            for (const double y : {of.minPoint().y, of.maxPoint().y})
                isInside = isInside ||
                           (isDefinitelyLess(in.minPoint().x, x) && isDefinitelyLess(x, in.maxPoint().x) &&
                            isDefinitelyLess(in.minPoint().y, y) && isDefinitelyLess(y, in.maxPoint().y));
        return isInside;
    };
    if (hasCornerIn(a, b) || hasCornerIn(b, a)) return false;
    return meetingsWith(AcDbLine(a.minPoint(), a.maxPoint()), AcDbLine(b.minPoint(), b.maxPoint())).isEmpty();
}

inline bool isLevelInX(const AcGePoint3d& point, const AcDbExtents& box) {
    const AcGePoint3d x(point.x, 0, 0);
    return x.isEqualTo({box.minPoint().x, 0, 0}, toleranceOf(1e-6)) ||
           x.isEqualTo({box.maxPoint().x, 0, 0}, toleranceOf(1e-6));
}

/// A slab in the XY plane around one closed opening.
inline std::vector<Owned> splitAround(const AcGePoint3d& base, const AcGeVector3d& dir,
                                      const AcDbPolyline& slab, const AcDbPolyline& opening) {
    const double angle = dir.angleTo(AcGeVector3d::kXAxis, AcGeVector3d::kZAxis);
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis, base);
    Owned contour = cloneOf(slab), hole = cloneOf(opening);
    (void)contour->transformBy(turn);
    (void)hole->transformBy(turn);
    std::vector<Owned> parts;
    if (liesOutside(*contour, *hole)) return parts;
    const AcGeLine3d along(base, turn * dir);
    AcGePoint3d left = along.closestPointTo(boxOf(*hole).minPoint());
    AcGePoint3d right = along.closestPointTo(boxOf(*hole).maxPoint());
    if (!(right - left).isCodirectionalTo(turn * dir)) std::swap(left, right);
    if (meetingsWith(*hole, lineAt(left, AcGeVector3d::kYAxis)).isEmpty()) left.x += 1e-8;
    if (meetingsWith(*hole, lineAt(right, AcGeVector3d::kYAxis)).isEmpty()) right.x -= 1e-8;
    const AcDbXline leftLine = lineAt(left, AcGeVector3d::kYAxis);
    const AcDbXline rightLine = lineAt(right, AcGeVector3d::kYAxis);
    const auto asPolyline = [](const Owned& curve) -> const AcDbPolyline& {
        return *AcDbPolyline::cast(curve.get());
    };
    for (const bool isLeft : {true, false}) {
        if (isLevelInX(isLeft ? left : right, boxOf(*contour))) continue;
        std::vector<Owned> halves = halvesAt(asPolyline(contour), isLeft ? leftLine : rightLine);
        if (halves.size() != 2) continue;
        parts.push_back(std::move(halves[isLeft ? 0 : 1]));
        contour = std::move(halves[isLeft ? 1 : 0]);
    }
    for (Owned& strip : stripsBetween(asPolyline(contour), asPolyline(hole), leftLine, rightLine))
        parts.push_back(std::move(strip));
    for (const Owned& part : parts) (void)part->transformBy(turn.inverse());
    return parts;
}

} // namespace plaincontour

#include "contourareas.h"

#include "contourarrangement.h"

#include "dbpolyline.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vexo {

namespace {

constexpr double kRelativeTolerance = 1e-10;
constexpr double kToleranceUlps = 16.0;
/// Squares of what is larger, and of its square, would leave the range of numbers.
constexpr double kLargestCoordinate = 1e60;
/// Below this bulge the area between arc and chord comes from its series: the closed form loses digits.
constexpr double kSmallBulge = 0.05;
/// Where pieces cross beside their nodes, a coarser or a finer tolerance comes to other nodes.
constexpr double kToleranceScales[] = {1.0, 8.0, 0.125, 64.0};

/// The area between an arc and its chord, as a share of the chord's square; the bulge's sign.
/// Closed form: ((1+b^2)^2 atan b - b (1-b^2)) / (8 b^2), from R = c (1+b^2) / (4 b) and R^2 (t - sin t) / 2.
double segmentShare(double bulge) {
    const double square = bulge * bulge;
    if (std::abs(bulge) < kSmallBulge)
        return bulge *
               (1.0 / 3.0 +
                square * (1.0 / 15.0 - square * (1.0 / 105.0 - square * (1.0 / 315.0 - square / 693.0))));
    const double sum = 1.0 + square;
    return (sum * sum * std::atan(bulge) - bulge * (1.0 - square)) / (8.0 * square);
}

bool isOrdinary(double coordinate) { return std::abs(coordinate) <= kLargestCoordinate; }

/// A box around the segment that leaves a vertex.
PlaneBox segmentBox(const ContourVertex& vertex, const ContourVertex& next) {
    const AcGePoint2d start(vertex.x, vertex.y);
    const AcGePoint2d end(next.x, next.y);
    const double bulge = vertex.bulge;
    if (std::abs(bulge) <= 1.0) return boxOfSegment(start, end, bulge);
    const AcGeVector2d chord = end - start;
    const double square = bulge * bulge;
    const AcGePoint2d center = start + chord * 0.5 + chord.perpVector() * ((1.0 - square) / (4.0 * bulge));
    const double radius = chord.length() * (1.0 + square) / (4.0 * std::abs(bulge));
    return {center.x - radius, center.x + radius, center.y - radius, center.y + radius};
}

ContourArea counterClockwise(const ContourLoop& loop) {
    return {signedArea(loop) < 0.0 ? reversed(loop) : loop};
}

/// What a loop runs round in either sense, and what an area's loops bound.
bool isRound(int winding) { return winding != 0; }
bool isBounded(int winding) { return winding > 0; }

std::optional<PlaneBox> joined(const std::optional<PlaneBox>& first, const std::optional<PlaneBox>& second) {
    if (!first || !second) return first ? first : second;
    PlaneBox box = *first;
    box.extend(*second);
    return box;
}

template <typename Inside>
ContourArea partWhere(const ContourArea& first, const ContourArea& second, const std::optional<PlaneBox>& box,
                      const Inside& isInside) {
    const double tolerance = areaTolerance(box);
    std::optional<ContourArea> result;
    for (const double scale : kToleranceScales) {
        const ContourArrangement arrangement(first, second, box, scale * tolerance);
        if (arrangement.isConsistent()) return arrangement.areaWhere(isInside);
        if (!result) result = arrangement.areaWhere(isInside);
    }
    return *result;
}

template <bool (*isInside)(int)>
ContourArea commonPart(const ContourArea& first, const ContourArea& second) {
    const std::optional<PlaneBox> one = boxOf(first);
    const std::optional<PlaneBox> two = boxOf(second);
    if (!one || !two || !one->meets(*two)) return {};
    return partWhere(first, second, joined(one, two),
                     [](const int windings[2]) { return isInside(windings[0]) && isInside(windings[1]); });
}

template <bool (*isInside)(int)>
ContourArea remainder(const ContourArea& first, const ContourArea& second) {
    return partWhere(first, second, boxOf(first, second),
                     [](const int windings[2]) { return isInside(windings[0]) && !isInside(windings[1]); });
}

template <bool (*isInside)(int)>
ContourArea unitedPart(const ContourArea& first, const ContourArea& second) {
    return partWhere(first, second, boxOf(first, second),
                     [](const int windings[2]) { return isInside(windings[0]) || isInside(windings[1]); });
}

/// The segment from `before` to `after` when the two that meet at `vertex` are one line or circle.
bool isStraightThrough(const ContourVertex& before, const ContourVertex& vertex, const ContourVertex& after,
                       double tolerance, double& bulge) {
    if (before.bulge * vertex.bulge >= 1.0) return false; // a full turn
    if (before.bulge == 0.0 && vertex.bulge == 0.0) {     // a clear corner of two lines
        const double across =
            (vertex.x - before.x) * (after.y - before.y) - (vertex.y - before.y) * (after.x - before.x);
        const double apart = std::abs(after.x - before.x) + std::abs(after.y - before.y);
        if (std::abs(across) > 2.0 * tolerance * apart) return false;
    }
    bulge = (before.bulge + vertex.bulge) / (1.0 - before.bulge * vertex.bulge);
    const AcGePoint2d start(before.x, before.y);
    const AcGePoint2d middle(vertex.x, vertex.y);
    const AcGePoint2d end(after.x, after.y);
    // The longer one of a line and a bit of an arc says what the whole is: no arc of a boundless radius.
    const bool isLineLonger =
        start.distanceTo(middle) > middle.distanceTo(end) ? before.bulge == 0.0 : vertex.bulge == 0.0;
    if (isLineLonger) bulge = 0.0;
    if (start.distanceTo(middle) <= tolerance || middle.distanceTo(end) <= tolerance ||
        start.distanceTo(end) <= tolerance)
        return false;
    const PlaneSegment whole(start, end, bulge);
    if (!(std::abs(whole.distanceLeft(middle)) <= tolerance)) return false;
    if (std::abs(bulge) <= 1.0 ? !whole.isBeside(middle) : before.bulge * vertex.bulge < 0.0) return false;
    const auto isOn = [&](const PlaneSegment& part) {
        return part.isStraight() || std::abs(whole.distanceLeft(part.middle())) <= tolerance;
    };
    return isOn(PlaneSegment(start, middle, before.bulge)) && isOn(PlaneSegment(middle, end, vertex.bulge));
}

std::vector<ContourVertex> withoutRepeatedVertices(const ContourLoop& loop, double tolerance) {
    std::vector<ContourVertex> vertices;
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        const ContourVertex& vertex = loop.vertices[i];
        const ContourVertex& next = loop.vertices[(i + 1) % loop.vertices.size()];
        const double chord = AcGePoint2d(vertex.x, vertex.y).distanceTo({next.x, next.y});
        if (std::max(1.0, std::abs(vertex.bulge)) * chord > tolerance) vertices.push_back(vertex);
    }
    return vertices;
}

} // namespace

bool bounds(const ContourLoop& loop) {
    return loop.vertices.size() > 1 &&
           std::all_of(loop.vertices.begin(), loop.vertices.end(), [](const ContourVertex& vertex) {
               return isOrdinary(vertex.x) && isOrdinary(vertex.y) && isOrdinary(vertex.bulge);
           });
}

std::optional<PlaneBox> boxOf(const ContourArea& area) {
    std::optional<PlaneBox> box;
    for (const ContourLoop& loop : area) {
        if (!bounds(loop)) continue;
        const std::size_t count = loop.vertices.size();
        if (!box) box = segmentBox(loop.vertices[0], loop.vertices[1]);
        for (std::size_t i = 0; i < count; ++i)
            box->extend(segmentBox(loop.vertices[i], loop.vertices[i + 1 < count ? i + 1 : 0]));
    }
    return box;
}

std::optional<PlaneBox> boxOf(const ContourArea& first, const ContourArea& second) {
    return joined(boxOf(first), boxOf(second));
}

ContourLoop reversed(const ContourLoop& loop) {
    ContourLoop result;
    const std::size_t count = loop.vertices.size();
    result.vertices.reserve(count);
    for (std::size_t i = count; i-- > 0;) {
        const ContourVertex& vertex = loop.vertices[i];
        const double bulge = loop.vertices[(i + count - 1) % count].bulge;
        result.vertices.push_back({vertex.x, vertex.y, bulge == 0.0 ? 0.0 : -bulge});
    }
    return result;
}

double signedArea(const ContourLoop& loop) {
    const std::size_t count = loop.vertices.size();
    if (count < 2) return 0.0;
    const ContourVertex& base = loop.vertices.front();
    double twice = 0.0;
    double beside = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const ContourVertex& vertex = loop.vertices[i];
        const ContourVertex& next = loop.vertices[i + 1 < count ? i + 1 : 0];
        const AcGeVector2d start(vertex.x - base.x, vertex.y - base.y);
        const AcGeVector2d end(next.x - base.x, next.y - base.y);
        twice += start.crossProduct(end);
        if (vertex.bulge != 0.0) beside += (end - start).lengthSqrd() * segmentShare(vertex.bulge);
    }
    return 0.5 * twice + beside;
}

double trueArea(const ContourLoop& loop) { return std::abs(signedArea(loop)); }

double trueArea(const ContourArea& area) {
    double sum = 0.0;
    for (const ContourLoop& loop : area) sum += signedArea(loop);
    return sum;
}

double areaTolerance(const ContourArea& first, const ContourArea& second) {
    return areaTolerance(boxOf(first, second));
}

double areaTolerance(const std::optional<PlaneBox>& box) {
    if (!box) return kRelativeTolerance;
    const double largest = std::max(std::max(std::abs(box->lowX), std::abs(box->highX)),
                                    std::max(std::abs(box->lowY), std::abs(box->highY)));
    return std::max(kRelativeTolerance * box->largerSide(), kToleranceUlps * AcGe::ulpOf(largest));
}

ContourArea commonArea(const ContourArea& first, const ContourArea& second) {
    return commonPart<isBounded>(first, second);
}
ContourArea areaWithout(const ContourArea& first, const ContourArea& second) {
    return remainder<isBounded>(first, second);
}
ContourArea joinedArea(const ContourArea& first, const ContourArea& second) {
    return unitedPart<isBounded>(first, second);
}

ContourArea commonArea(const ContourLoop& first, const ContourLoop& second) {
    return commonPart<isRound>(counterClockwise(first), counterClockwise(second));
}
ContourArea areaWithout(const ContourLoop& first, const ContourLoop& second) {
    return remainder<isRound>(counterClockwise(first), counterClockwise(second));
}
ContourArea joinedArea(const ContourLoop& first, const ContourLoop& second) {
    return unitedPart<isRound>(counterClockwise(first), counterClockwise(second));
}

ContourArea wronglyCovered(const ContourArea& area, const ContourArea& parts) {
    return partWhere(area, parts, boxOf(area, parts),
                     [](const int windings[2]) { return windings[1] != (windings[0] > 0 ? 1 : 0); });
}

ContourLoop withoutStraightVertices(const ContourLoop& loop) {
    const double tolerance = areaTolerance({loop}, {});
    std::vector<ContourVertex> kept;
    double bulge = 0.0;
    for (const ContourVertex& vertex : withoutRepeatedVertices(loop, tolerance)) {
        kept.push_back(vertex);
        const std::size_t count = kept.size();
        if (count < 3 || !isStraightThrough(kept[count - 3], kept[count - 2], vertex, tolerance, bulge))
            continue;
        kept[count - 3].bulge = bulge;
        kept.erase(kept.end() - 2);
    }
    // The last vertex, then the first.
    if (kept.size() > 2 && isStraightThrough(kept[kept.size() - 2], kept.back(), kept[0], tolerance, bulge)) {
        kept.pop_back();
        kept.back().bulge = bulge;
    }
    if (kept.size() > 2 && isStraightThrough(kept.back(), kept[0], kept[1], tolerance, bulge)) {
        kept.back().bulge = bulge;
        kept.erase(kept.begin());
    }
    return {std::move(kept)};
}

ContourLoop loopOf(const AcDbPolyline& polyline) {
    ContourLoop loop;
    loop.vertices.reserve(polyline.numVerts());
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint2d point;
        double bulge = 0.0;
        (void)polyline.getPointAt(i, point);
        (void)polyline.getBulgeAt(i, bulge);
        loop.vertices.push_back({point.x, point.y, bulge});
    }
    return loop;
}

std::unique_ptr<AcDbPolyline> polylineOf(const ContourLoop& loop, const AcGeVector3d& normal,
                                         double elevation) {
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(loop.vertices.size()));
    for (const ContourVertex& vertex : loop.vertices)
        (void)polyline->addVertexAt(polyline->numVerts(), {vertex.x, vertex.y}, vertex.bulge);
    polyline->setClosed(Adesk::kTrue);
    (void)polyline->setNormal(normal);
    (void)polyline->setElevation(elevation);
    return polyline;
}

} // namespace vexo

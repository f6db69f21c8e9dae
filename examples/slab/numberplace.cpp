#include "numberplace.h"

#include <algorithm>
#include <cmath>
#include <queue>

namespace {

constexpr double wantedShare = 0.01; // of the radius that may be missing
constexpr int mostCells = 20000;     // a strip that is all corners has its place by then

/// A segment of the outline with the circle of an arc.
struct Side {
    AcGePoint2d start;
    AcGePoint2d end;
    double bulge = 0.0;
    AcGePoint2d center;
    double radius = 0.0;

    /// Is the point on the arc's side of its chord.
    bool isAcross(const AcGePoint2d& point) const {
        return (end - start).crossProduct(point - start) * bulge < 0.0;
    }
    double distanceTo(const AcGePoint2d& point) const {
        const AcGeVector2d chord = end - start;
        const double ends = std::min(point.distanceTo(start), point.distanceTo(end));
        if (bulge != 0.0) {
            const AcGeVector2d out = point - center;
            const double length = out.length();
            if (length == 0.0) return radius;
            return isAcross(center + out * (radius / length)) ? std::abs(length - radius) : ends;
        }
        const double square = chord.lengthSqrd();
        const double share = square > 0.0 ? (point - start).dotProduct(chord) / square : 0.0;
        return share > 0.0 && share < 1.0 ? point.distanceTo(start + chord * share) : ends;
    }
    /// Does the side turn inside and outside of the contour round for the point: its chord is crossed by the
    /// point's ray to the right, and once more for a point between chord and arc.
    bool turns(const AcGePoint2d& point) const {
        bool isTurned = false;
        if ((start.y > point.y) != (end.y > point.y)) {
            const double x = start.x + (end.x - start.x) * ((point.y - start.y) / (end.y - start.y));
            isTurned = x > point.x;
        }
        const bool isBetween = bulge != 0.0 && isAcross(point) && point.distanceTo(center) < radius;
        return isTurned != isBetween;
    }
};

std::vector<Side> sidesOf(const AcDbPolyline& strip) {
    std::vector<Side> sides;
    const unsigned count = strip.numVerts();
    for (unsigned i = 0; i < count; ++i) {
        AcGePoint3d start, end;
        Side side;
        strip.getPointAt(i, start);
        strip.getPointAt((i + 1) % count, end);
        strip.getBulgeAt(i, side.bulge);
        if (strip.normal().z < 0.0) side.bulge = -side.bulge;
        side.start.set(start.x, start.y);
        side.end.set(end.x, end.y);
        const AcGeVector2d chord = side.end - side.start;
        if (chord.length() == 0.0) continue;
        if (side.bulge != 0.0) {
            const double aside = (1.0 - side.bulge * side.bulge) / (4.0 * side.bulge);
            side.center = side.start + chord * 0.5 + chord.perpVector() * aside;
            side.radius = side.center.distanceTo(side.start);
        }
        sides.push_back(side);
    }
    return sides;
}

/// A square, the free distance at its middle, and the most that any point of it may have.
struct Cell {
    AcGePoint2d middle;
    double half = 0.0;
    double distance = 0.0;

    double most() const { return distance + half * std::sqrt(2.0); }
    bool operator<(const Cell& other) const { return most() < other.most(); }
};

/// Squares are halved as long as one may hold a larger circle, the most promising first.
class Search {
public:
    Search(const AcDbPolyline& strip, const AcDbExtents& box, const std::vector<TakenBox>& taken)
        : m_sides(sidesOf(strip)) {
        for (const TakenBox& each : taken)
            if (each.low.x < box.maxPoint().x && each.high.x > box.minPoint().x &&
                each.low.y < box.maxPoint().y && each.high.y > box.minPoint().y)
                m_taken.push_back(each);
    }

    FreeCircle largest(const AcDbExtents& box) {
        const double width = box.maxPoint().x - box.minPoint().x;
        const double height = box.maxPoint().y - box.minPoint().y;
        const double half = std::min(width, height) / 2.0;
        if (!(half > 0.0)) return {};
        const int columns = static_cast<int>(std::min(std::ceil(width / (2.0 * half)), 1000.0));
        const int rows = static_cast<int>(std::min(std::ceil(height / (2.0 * half)), 1000.0));
        const double cell = std::max(width / columns, height / rows) / 2.0;
        for (int i = 0; i < columns; ++i)
            for (int k = 0; k < rows; ++k)
                add({box.minPoint().x + (2 * i + 1) * width / (2 * columns),
                     box.minPoint().y + (2 * k + 1) * height / (2 * rows)},
                    cell);
        for (int looked = 0; !m_cells.empty() && looked < mostCells; ++looked) {
            const Cell best = m_cells.top();
            m_cells.pop();
            if (best.most() <= m_best.radius * (1.0 + wantedShare)) break;
            for (const double x : {-best.half / 2.0, best.half / 2.0})
                for (const double y : {-best.half / 2.0, best.half / 2.0})
                    add({best.middle.x + x, best.middle.y + y}, best.half / 2.0);
        }
        return m_best;
    }

private:
    /// To the next boundary or text; below 0 outside the strip and in a text.
    double distanceAt(const AcGePoint2d& point) const {
        double distance = 1e300;
        bool isInside = false;
        for (const Side& side : m_sides) {
            distance = std::min(distance, side.distanceTo(point));
            isInside = isInside != side.turns(point);
        }
        if (!isInside) return -distance;
        for (const TakenBox& box : m_taken) {
            const double x = std::max(box.low.x - point.x, point.x - box.high.x);
            const double y = std::max(box.low.y - point.y, point.y - box.high.y);
            const double away =
                std::max(x, y) > 0.0 ? std::hypot(std::max(x, 0.0), std::max(y, 0.0)) : std::max(x, y);
            distance = std::min(distance, away);
        }
        return distance;
    }
    void add(const AcGePoint2d& middle, double half) {
        const Cell cell{middle, half, distanceAt(middle)};
        if (cell.distance > m_best.radius) m_best = {middle, cell.distance};
        if (cell.most() > m_best.radius * (1.0 + wantedShare)) m_cells.push(cell);
    }

    std::vector<Side> m_sides;
    std::vector<TakenBox> m_taken;
    std::priority_queue<Cell> m_cells;
    FreeCircle m_best;
};

} // namespace

FreeCircle largestFreeCircle(const AcDbPolyline& strip, const std::vector<TakenBox>& taken) {
    AcDbExtents box;
    if (strip.getGeomExtents(box) != Acad::eOk) return {};
    return Search(strip, box, taken).largest(box);
}

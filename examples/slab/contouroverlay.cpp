#include "contouroverlay.h"

#include "contour.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double flattestBulge = 1e-12; // of an arc; a flatter one is its chord to the last place
constexpr double sameStop = 1e-13;      // stops closer than this, of the whole sweep, are one

double halfHeight(double radius, double offset) {
    return std::sqrt(std::max(0.0, (radius - offset) * (radius + offset)));
}

} // namespace

// Counted from the left end, so that a flat arc with a far centre keeps its digits.
double ContourOverlay::Piece::yAt(double x) const {
    if (x <= left.x) return left.y;
    if (x >= right.x) return right.y;
    if (side == 0) return left.y + (right.y - left.y) * ((x - left.x) / (right.x - left.x));
    const double sum = halfHeight(radius, x - center.x) + std::abs(left.y - center.y);
    if (sum == 0.0) return left.y;
    return left.y + side * (left.x - x) * ((left.x - center.x) + (x - center.x)) / sum;
}

// Near its own ends the piece is taken up to them: where a circle turns back, a last place of x is half the
// places of y.
double ContourOverlay::Piece::areaBelow(double from, double to, double nearEnd) const {
    if (std::abs(from - left.x) <= nearEnd) from = left.x;
    if (std::abs(to - right.x) <= nearEnd) to = right.x;
    const double low = yAt(from);
    const double high = yAt(to);
    const double trapezoid = (low + high) / 2.0 * (to - from);
    if (side == 0) return trapezoid;
    const double chord = std::hypot(to - from, high - low);
    const double angle = chord < radius ? 2.0 * std::asin(chord / (2.0 * radius))
                                        : 2.0 * std::atan2(chord / 2.0, chordDistance(from, low, to, high));
    return trapezoid + side * radius * radius / 2.0 * angleMinusSine(angle);
}

// Of the chord's middle from the centre. Near half a circle it tells the angle, which the chord does not.
double ContourOverlay::Piece::chordDistance(double fromX, double fromY, double toX, double toY) const {
    return std::hypot((fromX + toX) / 2.0 - center.x, (fromY + toY) / 2.0 - center.y);
}

double ContourOverlay::Piece::lowest() const {
    if (side < 0 && left.x <= center.x && center.x <= right.x) return center.y - radius;
    return std::min(left.y, right.y);
}

double ContourOverlay::Piece::highest() const {
    if (side > 0 && left.x <= center.x && center.x <= right.x) return center.y + radius;
    return std::max(left.y, right.y);
}

int ContourOverlay::add(const AcDbPolyline& contour) {
    const unsigned count = contour.numVerts();
    const double turn = contour.normal().z < 0.0 ? -1.0 : 1.0;
    const auto vertex = [&](unsigned index) {
        AcGePoint3d point;
        contour.getPointAt(index % count, point);
        if (!m_hasOrigin) m_origin.set(point.x, point.y);
        m_hasOrigin = true;
        return AcGePoint2d(point.x - m_origin.x, point.y - m_origin.y);
    };
    for (unsigned i = 0; i < count; ++i) {
        double bulge = 0.0;
        contour.getBulgeAt(i, bulge);
        const AcGePoint2d from = vertex(i);
        const AcGePoint2d to = vertex(i + 1);
        if (std::abs(bulge) <= flattestBulge || from == to)
            addStraight(from, to);
        else
            addArc(from, to, turn * bulge);
    }
    return m_count++;
}

void ContourOverlay::addStraight(const AcGePoint2d& from, const AcGePoint2d& to) {
    if (from.x == to.x) return; // nothing lies below an upright line
    Piece piece;
    piece.left = from.x < to.x ? from : to;
    piece.right = from.x < to.x ? to : from;
    piece.contour = m_count;
    m_pieces.push_back(piece);
}

// Cut where it turns back in x.
void ContourOverlay::addArc(const AcGePoint2d& from, const AcGePoint2d& to, double bulge) {
    const AcGeVector2d chord = to - from;
    // https://en.wikipedia.org/wiki/Sagitta_(geometry): the centre lies to the left of the chord for a bulge
    // above 0 and below 1.
    const double toCenter = (1.0 - bulge * bulge) / (4.0 * bulge);
    const AcGePoint2d center = from + chord * 0.5 + AcGeVector2d(-chord.y, chord.x) * toCenter;
    const double radius = chord.length() * (1.0 + bulge * bulge) / (4.0 * std::abs(bulge));
    const double sweep = 4.0 * std::atan(bulge);
    const double start = std::atan2(from.y - center.y, from.x - center.x);
    const double end = start + sweep;
    const auto sideBetween = [](double a, double b) { return std::sin((a + b) / 2.0) > 0.0 ? 1 : -1; };
    AcGePoint2d last = from;
    double lastAngle = start;
    const int firstTurn = static_cast<int>(std::ceil(std::min(start, end) / pi));
    const int lastTurn = static_cast<int>(std::floor(std::max(start, end) / pi));
    for (int i = 0; i <= lastTurn - firstTurn; ++i) {
        const int turn = sweep > 0.0 ? firstTurn + i : lastTurn - i;
        const AcGePoint2d point(center.x + (turn % 2 ? -radius : radius), center.y);
        addHalfArc(last, point, center, radius, sideBetween(lastAngle, turn * pi));
        last = point;
        lastAngle = turn * pi;
    }
    addHalfArc(last, to, center, radius, sideBetween(lastAngle, end));
}

void ContourOverlay::addHalfArc(const AcGePoint2d& from, const AcGePoint2d& to, const AcGePoint2d& center,
                                double radius, int side) {
    if (from.x == to.x) return;
    Piece piece;
    piece.left = from.x < to.x ? from : to;
    piece.right = from.x < to.x ? to : from;
    piece.center = center;
    piece.radius = radius;
    piece.side = side;
    piece.contour = m_count;
    m_pieces.push_back(piece);
}

// A stop too many does no harm, so the halves of the circles are not looked at.
void ContourOverlay::addCrossings(const Piece& a, const Piece& b, std::vector<double>& stops) {
    const double low = std::max(a.left.x, b.left.x);
    const double high = std::min(a.right.x, b.right.x);
    const auto add = [&](double x) {
        if (x > low && x < high) stops.push_back(x);
    };
    if (a.side == 0 && b.side == 0) {
        const double below = a.yAt(low) - b.yAt(low);
        const double above = a.yAt(high) - b.yAt(high);
        if (below * above < 0.0) add(low + (high - low) * (below / (below - above)));
        return;
    }
    if (a.side != 0 && b.side != 0) {
        const AcGeVector2d between = b.center - a.center;
        const double distance = between.length();
        if (distance == 0.0) return;
        const double along = (distance + (a.radius - b.radius) * ((a.radius + b.radius) / distance)) / 2.0;
        const double across = halfHeight(a.radius, along);
        const double middle = a.center.x + between.x * (along / distance);
        add(middle - between.y * (across / distance));
        add(middle + between.y * (across / distance));
        return;
    }
    const Piece& arc = a.side != 0 ? a : b;
    const AcGeVector2d line = a.side != 0 ? b.right - b.left : a.right - a.left;
    const AcGeVector2d from = (a.side != 0 ? b.left : a.left) - arc.center;
    const double length = line.length();
    const double along = from.dotProduct(line) / length;
    const double across = (line.x * from.y - line.y * from.x) / length;
    if (std::abs(across) > arc.radius) return;
    const double half = halfHeight(arc.radius, across);
    const double foot = arc.center.x + from.x - along * (line.x / length);
    add(foot - half * (line.x / length));
    add(foot + half * (line.x / length));
}

std::vector<double> ContourOverlay::stops() const {
    std::vector<const Piece*> pieces;
    for (const Piece& piece : m_pieces) pieces.push_back(&piece);
    std::sort(pieces.begin(), pieces.end(),
              [](const Piece* a, const Piece* b) { return a->left.x < b->left.x; });
    std::vector<double> stops;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece& a = *pieces[i];
        stops.push_back(a.left.x);
        stops.push_back(a.right.x);
        const double lowest = a.lowest();
        const double highest = a.highest();
        for (std::size_t j = i + 1; j < pieces.size() && pieces[j]->left.x < a.right.x; ++j)
            if (pieces[j]->lowest() <= highest && pieces[j]->highest() >= lowest)
                addCrossings(a, *pieces[j], stops);
    }
    std::sort(stops.begin(), stops.end());
    if (stops.empty()) return stops;
    const double same = sameStop * (stops.back() - stops.front());
    stops.erase(std::unique(stops.begin(), stops.end(), [same](double a, double b) { return b - a <= same; }),
                stops.end());
    return stops;
}

void ContourOverlay::forEachCell(const std::function<void(const Cell&)>& visit) const {
    struct Crossed {
        double y;
        const Piece* piece;
    };
    std::vector<const Piece*> waiting;
    for (const Piece& piece : m_pieces) waiting.push_back(&piece);
    std::sort(waiting.begin(), waiting.end(),
              [](const Piece* a, const Piece* b) { return a->left.x > b->left.x; });
    const std::vector<double> all = stops();
    const double nearEnd = all.empty() ? 0.0 : sameStop * (all.back() - all.front());
    std::vector<const Piece*> active;
    std::vector<Crossed> crossed;
    std::vector<int> inside;
    for (std::size_t i = 0; i + 1 < all.size(); ++i) {
        const double middle = (all[i] + all[i + 1]) / 2.0;
        for (; !waiting.empty() && waiting.back()->left.x < middle; waiting.pop_back())
            active.push_back(waiting.back());
        std::erase_if(active, [middle](const Piece* each) { return each->right.x <= middle; });
        crossed.clear();
        for (const Piece* piece : active) crossed.push_back({piece->yAt(middle), piece});
        std::sort(crossed.begin(), crossed.end(),
                  [](const Crossed& a, const Crossed& b) { return a.y < b.y; });
        inside.clear();
        double below = 0.0;
        for (const Crossed& each : crossed) {
            const double area = each.piece->areaBelow(all[i], all[i + 1], nearEnd);
            if (!inside.empty()) visit({area - below, inside});
            below = area;
            const auto place = std::find(inside.begin(), inside.end(), each.piece->contour);
            if (place == inside.end())
                inside.push_back(each.piece->contour);
            else
                inside.erase(place);
        }
    }
}

double overlaidArea(const AcDbPolyline& contour) {
    ContourOverlay overlay;
    overlay.add(contour);
    double area = 0.0;
    overlay.forEachCell([&](const ContourOverlay::Cell& cell) { area += cell.area; });
    return area;
}

double commonArea(const AcDbPolyline& first, const AcDbPolyline& second) {
    ContourOverlay overlay;
    overlay.add(first);
    overlay.add(second);
    double area = 0.0;
    overlay.forEachCell([&](const ContourOverlay::Cell& cell) {
        if (cell.contours.size() == 2) area += cell.area;
    });
    return area;
}

#include "contourpiecepairs.h"

#include <cmath>

namespace vexo {

namespace {

/// The rounding of a slanted box's numbers, relative to the coordinates that they are computed from.
constexpr double kRounding = 1e-14;

/// The unit vector at half the angle of the vector (cosine, sine); the x axis for a zero one.
AcGeVector2d halfTurnOf(double cosine, double sine) {
    const double size = std::sqrt(cosine * cosine + sine * sine);
    if (size == 0.0) return AcGeVector2d::kXAxis;
    const double larger = std::sqrt((1.0 + std::abs(cosine) / size) / 2.0);
    const double smaller = sine / (2.0 * size * larger);
    return cosine >= 0.0 ? AcGeVector2d(larger, smaller) : AcGeVector2d(smaller, larger);
}

struct PlacedBox {
    double x;
    double y;
    std::size_t number;
};

/// Halves the range across its longer side, at whole groups of the largest power of the fan-out, and goes on
/// with both halves.
void putInPlaneOrder(PlacedBox* from, PlacedBox* to, std::size_t fanOut) {
    const auto count = static_cast<std::size_t>(to - from);
    if (count <= fanOut) return;
    std::size_t group = fanOut;
    while (group * fanOut < count) group *= fanOut;
    PlacedBox* const middle = from + group * ((count + group - 1) / group / 2);
    const auto [lowX, highX] =
        std::minmax_element(from, to, [](const PlacedBox& a, const PlacedBox& b) { return a.x < b.x; });
    const auto [lowY, highY] =
        std::minmax_element(from, to, [](const PlacedBox& a, const PlacedBox& b) { return a.y < b.y; });
    const bool isWide = highX->x - lowX->x > highY->y - lowY->y;
    std::nth_element(from, middle, to, [isWide](const PlacedBox& a, const PlacedBox& b) {
        return isWide ? a.x < b.x : a.y < b.y;
    });
    putInPlaneOrder(from, middle, fanOut);
    putInPlaneOrder(middle, to, fanOut);
}

} // namespace

std::vector<std::size_t> PiecePairs::planeOrder(const std::vector<Box>& boxes) {
    std::vector<PlacedBox> places;
    places.reserve(boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const double x = boxes[i].lowX + boxes[i].highX;
        const double y = boxes[i].lowY + boxes[i].highY;
        // One without a place, which meets nothing, stands anywhere.
        const bool hasPlace = std::isfinite(x) && std::isfinite(y);
        places.push_back({hasPlace ? x : 0.0, hasPlace ? y : 0.0, i});
    }
    putInPlaneOrder(places.data(), places.data() + places.size(), kFanOut);
    std::vector<std::size_t> order;
    order.reserve(places.size());
    for (const PlacedBox& place : places) order.push_back(place.number);
    return order;
}

void PiecePairs::addLevels() {
    while (m_levels.back().runs.size() > 1) {
        const std::vector<Run>& below = m_levels.back().runs;
        std::vector<Run> runs;
        runs.reserve((below.size() + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < below.size(); i += kFanOut) {
            Run run = below[i];
            for (std::size_t k = i + 1; k < std::min(i + kFanOut, below.size()); ++k) {
                run.box.extend(below[k].box);
                run.headings &= below[k].headings;
            }
            runs.push_back(run);
        }
        m_levels.push_back({std::move(runs), {}});
    }
}

PiecePairs::SlantedBox::SlantedBox(const Hull& hull) {
    const AcGeVector2d chord = hull.end - hull.start;
    const double length = chord.length();
    if (length > 0.0) axis = chord / length;
    center = hull.start + (chord + hull.rise) / 2.0;
    const AcGeVector2d across = axis.perpVector();
    const double slack = hull.reach + kRounding * (center.largestCoordinate() + length);
    halfAlong = (length + std::abs(hull.rise.dotProduct(axis))) / 2.0 + slack;
    halfAcross = std::abs(hull.rise.dotProduct(across)) / 2.0 + slack;
}

// Along the mean direction of the children, opposite ones taken as one, weighed by their elongation. A child
// that is not finite makes a box that has nothing beyond it.
PiecePairs::SlantedBox::SlantedBox(const SlantedBox* children, std::size_t count) {
    double cosine = 0.0;
    double sine = 0.0;
    for (const SlantedBox* child = children; child != children + count; ++child) {
        const double weight = child->halfAlong * child->halfAlong - child->halfAcross * child->halfAcross;
        cosine += weight * (child->axis.x * child->axis.x - child->axis.y * child->axis.y);
        sine += weight * 2.0 * child->axis.x * child->axis.y;
    }
    axis = halfTurnOf(cosine, sine);
    const AcGeVector2d across = axis.perpVector();
    const AcGePoint2d base = children->center;
    double low[2] = {0.0, 0.0};
    double high[2] = {0.0, 0.0};
    for (const SlantedBox* child = children; child != children + count; ++child) {
        const AcGeVector2d offset = child->center - base;
        const double turnAlong = std::abs(child->axis.dotProduct(axis));
        const double turnAcross = std::abs(child->axis.dotProduct(across));
        const double at[2] = {offset.dotProduct(axis), offset.dotProduct(across)};
        const double half[2] = {child->halfAlong * turnAlong + child->halfAcross * turnAcross,
                                child->halfAlong * turnAcross + child->halfAcross * turnAlong};
        for (int k = 0; k < 2; ++k) {
            low[k] = std::min(low[k], at[k] - half[k]);
            high[k] = std::max(high[k], at[k] + half[k]);
        }
    }
    center = base + axis * ((low[0] + high[0]) / 2.0) + across * ((low[1] + high[1]) / 2.0);
    const double slack = kRounding * (center.largestCoordinate() + high[0] - low[0] + high[1] - low[1]);
    halfAlong = (high[0] - low[0]) / 2.0 + slack;
    halfAcross = (high[1] - low[1]) / 2.0 + slack;
}

bool PiecePairs::SlantedBox::hasBeyond(const SlantedBox& other) const {
    const AcGeVector2d between = other.center - center;
    const double turnAlong = std::abs(other.axis.dotProduct(axis));
    const double turnAcross = std::abs(other.axis.crossProduct(axis));
    return std::abs(between.crossProduct(axis)) >
               halfAcross + other.halfAlong * turnAcross + other.halfAcross * turnAlong ||
           std::abs(between.dotProduct(axis)) >
               halfAlong + other.halfAlong * turnAlong + other.halfAcross * turnAcross;
}

void PiecePairs::gatherSlantedBoxes() {
    const std::vector<SlantedBox>* below = &m_slantedPieces;
    for (Level& level : m_levels) {
        level.slanted.reserve(level.runs.size());
        for (std::size_t i = 0; i < below->size(); i += kFanOut)
            level.slanted.emplace_back(&(*below)[i], std::min(kFanOut, below->size() - i));
        below = &level.slanted;
    }
}

} // namespace vexo

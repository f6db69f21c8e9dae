#include "piecepairs.h"

#include <algorithm>
#include <cmath>

namespace {

/// The rounding of a slanted box's numbers, relative to the coordinates that they are computed from.
constexpr double kRounding = 1e-14;

} // namespace

PiecePairs::PiecePairs(std::vector<Box> boxes, std::vector<std::uint8_t> headings) {
    m_levels.push_back({std::move(boxes), std::move(headings), {}});
    while (m_levels.back().boxes.size() > 1) {
        const Level& below = m_levels.back();
        const std::size_t count = below.boxes.size();
        Level level;
        level.boxes.reserve((count + kFanOut - 1) / kFanOut);
        level.headings.reserve((count + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < count; i += kFanOut) {
            Box box = below.boxes[i];
            std::uint8_t heading = below.headings[i];
            for (std::size_t k = i + 1; k < std::min(i + kFanOut, count); ++k) {
                box.extend(below.boxes[k]);
                heading &= below.headings[k];
            }
            level.boxes.push_back(box);
            level.headings.push_back(heading);
        }
        m_levels.push_back(std::move(level));
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

// Along the mean direction of the children, opposite ones taken as one, weighed by their elongation.
PiecePairs::SlantedBox::SlantedBox(const SlantedBox* children, std::size_t count) {
    double cosine = 0.0;
    double sine = 0.0;
    const SlantedBox* some = nullptr;
    for (const SlantedBox* child = children; child != children + count; ++child) {
        if (child->halfAlong < 0.0) continue;
        some = child;
        const double weight = child->halfAlong * child->halfAlong - child->halfAcross * child->halfAcross;
        cosine += weight * (child->axis.x * child->axis.x - child->axis.y * child->axis.y);
        sine += weight * 2.0 * child->axis.x * child->axis.y;
    }
    if (!some) return;
    const double angle = std::atan2(sine, cosine) / 2.0;
    axis.set(std::cos(angle), std::sin(angle));
    const AcGeVector2d across = axis.perpVector();
    const AcGePoint2d base = some->center;
    double low[2] = {0.0, 0.0};
    double high[2] = {0.0, 0.0};
    for (const SlantedBox* child = children; child != children + count; ++child) {
        if (child->halfAlong < 0.0) continue;
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

void PiecePairs::addSlantedBoxes(std::vector<SlantedBox> pieces) {
    m_levels.front().slanted = std::move(pieces);
    for (std::size_t k = 1; k < m_levels.size(); ++k) {
        const std::vector<SlantedBox>& below = m_levels[k - 1].slanted;
        std::vector<SlantedBox>& own = m_levels[k].slanted;
        own.reserve(m_levels[k].boxes.size());
        for (std::size_t i = 0; i < below.size(); i += kFanOut)
            own.emplace_back(&below[i], std::min(kFanOut, below.size() - i));
    }
}

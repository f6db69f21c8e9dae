#include "workframe.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

// The middle of the others, rounded to a power of two of their extent, so that points of a grid stay points
// of a grid. Zero while the origin is near.
AcGeVector3d middleOf(const std::vector<Box>& boxes) {
    Box others;
    for (std::size_t i = 1; i < boxes.size(); ++i) others.add(boxes[i]);
    const Box& box = others.empty() ? boxes[0] : others;
    const double extent = std::sqrt(box.diagonalSquared());
    AcGeVector3d middle;
    if (!(extent > 0)) return middle;
    const double unit = std::exp2(std::floor(std::log2(extent)));
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double place = (box.low[axis] + box.high[axis]) / 2;
        if (std::abs(place) > 8 * extent) middle[axis] = std::round(place / unit) * unit;
    }
    return middle;
}

/// The directions of edges, and how much runs along each.
class Directions {
public:
    // Some edges of each body are enough.
    void add(const Polyhedron& body, std::size_t most) {
        const std::size_t loops = body.loopCount();
        const std::size_t step = std::max<std::size_t>(1, loops * 4 / most);
        for (std::size_t loop = 0; loop < loops; loop += step) {
            const auto first = body.loopStarts[loop];
            const auto last = std::min(body.loopStarts[loop + 1], first + 8);
            for (auto i = first; i + 1 < last; ++i)
                add(body.points[body.corners[i + 1]] - body.points[body.corners[i]]);
        }
    }
    bool find(AcGeVector3d& main, AcGeVector3d& second) const {
        double most = 0;
        for (const Run& run : m_runs)
            if (run.length > most) {
                most = run.length;
                main = run.direction;
            }
        double widest = 0;
        for (const Run& run : m_runs) {
            const double width = run.length * main.crossProduct(run.direction).length();
            if (width <= widest) continue;
            widest = width;
            second = run.direction;
        }
        return widest > 1e-6 * most;
    }

private:
    struct Run {
        AcGeVector3d direction;
        double length;
    };

    void add(const AcGeVector3d& edge) {
        constexpr std::size_t mostRuns = 32;
        constexpr double same = 1 - 1e-9;
        const double length = edge.length();
        if (!(length > 0)) return;
        const AcGeVector3d direction = edge / length;
        for (Run& run : m_runs)
            if (std::abs(run.direction.dotProduct(direction)) > same) {
                run.length += length;
                return;
            }
        if (m_runs.size() < mostRuns) {
            m_runs.push_back({direction, length});
            return;
        }
        const auto shortest = std::min_element(
            m_runs.begin(), m_runs.end(), [](const Run& a, const Run& b) { return a.length < b.length; });
        if (shortest->length < length) *shortest = {direction, length};
    }

    std::vector<Run> m_runs;
};

bool isAlongAxis(const AcGeVector3d& v) {
    constexpr double near = 1e-6;
    return std::abs(v[v.largestElement()]) > 1 - near * near;
}

} // namespace

WorkFrame::WorkFrame(std::span<const Polyhedron* const> bodies, const std::vector<Box>& boxes)
    : m_shift(middleOf(boxes)) {
    constexpr std::size_t mostBodies = 8;
    constexpr std::size_t mostEdges = 256;
    Directions directions;
    for (std::size_t i = 0; i < std::min(mostBodies, bodies.size()); ++i)
        directions.add(*bodies[i], mostEdges);
    AcGeVector3d main;
    AcGeVector3d second;
    if (!directions.find(main, second)) return;
    AcGeVector3d third = main.crossProduct(second);
    third = third / third.length();
    if (isAlongAxis(main) && isAlongAxis(third)) return;
    m_turned = true;
    m_axes = {main, third.crossProduct(main), third};
}

AcGePoint3d WorkFrame::placeInside(const AcGePoint3d& p) const {
    const AcGePoint3d near = p - m_shift;
    if (!m_turned) return near;
    const AcGeVector3d v = directionInside(near.asVector());
    return {v.x, v.y, v.z};
}

AcGePoint3d WorkFrame::placeOutside(const AcGePoint3d& p) const {
    if (!m_turned) return p + m_shift;
    const AcGeVector3d v = m_axes[0] * p.x + m_axes[1] * p.y + m_axes[2] * p.z;
    return AcGePoint3d(v.x, v.y, v.z) + m_shift;
}

AcGeVector3d WorkFrame::directionInside(const AcGeVector3d& v) const {
    if (!m_turned) return v;
    return {m_axes[0].dotProduct(v), m_axes[1].dotProduct(v), m_axes[2].dotProduct(v)};
}

} // namespace hostkit::modeler

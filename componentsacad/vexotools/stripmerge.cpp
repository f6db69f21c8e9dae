#include "stripmerge.h"

#include "contourcleanmerge.h"
#include "contourpointgrid.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "dbpolyline.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <queue>
#include <utility>

namespace vexo {

namespace {

/// Segments whose ends are this near to each other, for coordinates up to 1, are looked at; the bound grows
/// with the coordinates. Ten times the tolerance of the merge.
constexpr double kEndTolerance = 1e-9;

using Pair = std::pair<int, int>;
using Strips = std::vector<ContourLoop>;

double largestCoordinate(const Strips& strips) {
    double largest = 1.0;
    for (const ContourLoop& strip : strips)
        for (const ContourVertex& vertex : strip.vertices)
            largest = std::max(largest, PointGrid::ordinaryCoordinate({vertex.x, vertex.y, 0.0}));
    return largest;
}

int segmentCount(const Strips& strips) {
    std::size_t count = 0;
    for (const ContourLoop& strip : strips) count += strip.vertices.size();
    return static_cast<int>(count);
}

/// The merge by areas, for what is not clear from the segments alone.
bool mergeByAreas(const ContourLoop& first, const ContourLoop& second, ContourLoop& merged) {
    const std::unique_ptr<AcDbPolyline> one = polylineOf(first, AcGeVector3d::kZAxis, 0.0);
    const std::unique_ptr<AcDbPolyline> two = polylineOf(second, AcGeVector3d::kZAxis, 0.0);
    const std::unique_ptr<AcDbCurve> both(
        VEXOGeometryTools::MergeContoursIfTheyHaveOneComonSegment(one.get(), two.get()));
    const AcDbPolyline* polyline = AcDbPolyline::cast(both.get());
    if (polyline) merged = loopOf(*polyline);
    return polyline != nullptr;
}

bool merge(const ContourLoop& first, const ContourLoop& second, ContourLoop& merged) {
    switch (mergeCleanly(first, second, merged)) {
    case CleanMerge::kNone:
        return false;
    case CleanMerge::kMerged:
        return true;
    case CleanMerge::kUnclear:
        break;
    }
    return mergeByAreas(first, second, merged);
}

/// The strips in work. A merged strip gets the next number, so that numbers give the order of the list.
class Merging {
public:
    explicit Merging(Strips& strips)
        : m_largest(largestCoordinate(strips))
        , m_tolerance(pointToleranceOf(kEndTolerance * m_largest))
        , m_middles(m_tolerance.equalPoint(), m_largest, 2 * segmentCount(strips)) {
        for (ContourLoop& strip : strips) add(std::move(strip));
    }
    void run() {
        while (!m_candidates.empty()) {
            const auto [a, b] = m_candidates.top();
            m_candidates.pop();
            if (isGone(a) || isGone(b)) continue;
            ContourLoop merged;
            if (!merge(at(a), at(b), merged)) continue;
            at(a).vertices.clear();
            at(b).vertices.clear();
            add(std::move(merged));
        }
    }
    Strips result() {
        Strips left;
        for (ContourLoop& strip : m_strips)
            if (!strip.vertices.empty()) left.push_back(std::move(strip));
        return left;
    }

private:
    ContourLoop& at(int number) { return m_strips[static_cast<std::size_t>(number)]; }
    bool isGone(int number) { return at(number).vertices.empty(); }

    struct Segment {
        AcGePoint3d start;
        AcGePoint3d end;
        int strip;

        AcGePoint3d middle() const { return start + (end - start) * 0.5; }
        bool hasEndsOf(const Segment& other, const AcGeTol& tolerance) const {
            return (start.isEqualTo(other.end, tolerance) && end.isEqualTo(other.start, tolerance)) ||
                   (start.isEqualTo(other.start, tolerance) && end.isEqualTo(other.end, tolerance));
        }
    };

    /// Gives the strip its number, and pairs it with the earlier ones that have a segment in the same place.
    /// A segment that a merged strip has from one that is gone keeps its entry.
    void add(ContourLoop strip) {
        const int number = static_cast<int>(m_strips.size());
        const std::size_t count = strip.vertices.size();
        const auto segmentAt = [&](std::size_t i) {
            const ContourVertex& start = strip.vertices[i];
            const ContourVertex& end = strip.vertices[i + 1 < count ? i + 1 : 0];
            return Segment{{start.x, start.y, 0.0}, {end.x, end.y, 0.0}, number};
        };
        for (std::size_t i = 0; i < std::min<std::size_t>(PointGrid::kAhead, count); ++i)
            m_middles.announce(segmentAt(i).middle());
        for (std::size_t i = 0; i < count; ++i) {
            if (i + PointGrid::kAhead < count) m_middles.announce(segmentAt(i + PointGrid::kAhead).middle());
            const Segment segment = segmentAt(i);
            bool isKnown = false;
            m_middles.anyNear(segment.middle(), [&](int index) {
                Segment& other = m_segments[static_cast<std::size_t>(index)];
                if (other.strip == number || !other.hasEndsOf(segment, m_tolerance)) return false;
                if (isGone(other.strip)) {
                    other.strip = number;
                    isKnown = true;
                } else {
                    m_candidates.emplace(other.strip, number);
                }
                return false;
            });
            if (isKnown) continue;
            m_middles.add(segment.middle(), static_cast<int>(m_segments.size()));
            m_segments.push_back(segment);
        }
        m_strips.push_back(std::move(strip));
    }

    double m_largest;
    AcGeTol m_tolerance;
    Strips m_strips;
    std::vector<Segment> m_segments; ///< of strips that are there, and of some that are gone
    PointGrid m_middles;
    /// In the order in which the plain loops come to them, some more than once.
    std::priority_queue<Pair, std::vector<Pair>, std::greater<Pair>> m_candidates;
};

} // namespace

void mergeStrips(Strips& strips) {
    Merging merging(strips);
    merging.run();
    strips = merging.result();
}

} // namespace vexo

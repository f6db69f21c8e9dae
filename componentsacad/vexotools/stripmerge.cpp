#include "stripmerge.h"

#include "pointgrid.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "dbpolyline.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <utility>

namespace VEXOGeometryTools {

namespace {

/// Segments whose ends are this near to each other, for coordinates up to 1, are looked at; the bound grows
/// with the coordinates. Ten times the tolerance of the merge.
constexpr double kEndTolerance = 1e-9;

using Pair = std::pair<int, int>;
using Strips = std::vector<std::unique_ptr<AcDbPolyline>>;

double largestCoordinate(const Strips& strips) {
    double largest = 1.0;
    for (const auto& strip : strips)
        for (unsigned int i = 0; i < strip->numVerts(); ++i) {
            AcGePoint3d point;
            (void)strip->getPointAt(i, point);
            largest = std::max(largest, PointGrid::ordinaryCoordinate(point));
        }
    return largest;
}

int segmentCount(const Strips& strips) {
    unsigned int count = 0;
    for (const auto& strip : strips) count += strip->numVerts();
    return static_cast<int>(count);
}

/// The strips in work. A merged strip gets the next number, so that numbers give the order of the list.
class Merging {
public:
    explicit Merging(Strips& strips)
        : m_largest(largestCoordinate(strips))
        , m_tolerance(pointToleranceOf(kEndTolerance * m_largest))
        , m_middles(m_tolerance.equalPoint(), m_largest, 2 * segmentCount(strips)) {
        for (auto& strip : strips) add(std::move(strip));
    }
    void run() {
        while (!m_candidates.empty()) {
            const auto [a, b] = m_candidates.top();
            m_candidates.pop();
            if (!at(a) || !at(b)) continue;
            AcDbCurve* merged = MergeContoursIfTheyHaveOneComonSegment(at(a).get(), at(b).get());
            AcDbPolyline* polyline = AcDbPolyline::cast(merged);
            if (!polyline) {
                delete merged;
                continue;
            }
            at(a).reset();
            at(b).reset();
            add(std::unique_ptr<AcDbPolyline>(polyline));
        }
    }
    Strips result() {
        Strips left;
        for (auto& strip : m_strips)
            if (strip) left.push_back(std::move(strip));
        return left;
    }

private:
    std::unique_ptr<AcDbPolyline>& at(int number) { return m_strips[static_cast<std::size_t>(number)]; }

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
    void add(std::unique_ptr<AcDbPolyline> strip) {
        const int number = static_cast<int>(m_strips.size());
        const std::size_t first = m_segments.size();
        const unsigned int count = strip->numVerts();
        for (unsigned int i = 0; i < count; ++i) {
            Segment segment{{}, {}, number};
            (void)strip->getPointAt(i, segment.start);
            (void)strip->getPointAt(i + 1 < count ? i + 1 : 0, segment.end);
            m_segments.push_back(segment);
        }
        for (std::size_t k = first; k < m_segments.size(); ++k)
            m_middles.anyNear(m_segments[k].middle(), [&](int index) {
                const Segment& other = m_segments[static_cast<std::size_t>(index)];
                if (at(other.strip) && other.hasEndsOf(m_segments[k], m_tolerance))
                    m_candidates.emplace(other.strip, number);
                return false;
            });
        for (std::size_t k = first; k < m_segments.size(); ++k)
            m_middles.add(m_segments[k].middle(), static_cast<int>(k));
        m_strips.push_back(std::move(strip));
    }

    double m_largest;
    AcGeTol m_tolerance;
    Strips m_strips;
    std::vector<Segment> m_segments; ///< of all strips that there ever were
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

} // namespace VEXOGeometryTools

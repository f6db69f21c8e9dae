#include "stripmerge.h"

#include "pointgrid.h"
#include "vexogeometrytools.h"

#include "dbpolyline.h"

#include <algorithm>
#include <set>
#include <utility>

namespace VEXOGeometryTools {

namespace {

/// Middles of segments this near to each other, for coordinates up to 1, are looked at; the bound grows with
/// the coordinates. Wider than any tolerance of the merge.
constexpr double kMiddleTolerance = 1e-6;

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
        , m_tolerance(kMiddleTolerance * m_largest)
        , m_middles(m_tolerance, m_largest, 2 * segmentCount(strips)) {
        for (auto& strip : strips) add(std::move(strip));
    }
    void run() {
        while (!m_candidates.empty()) {
            const auto [a, b] = *m_candidates.begin();
            m_candidates.erase(m_candidates.begin());
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

    /// Gives the strip its number, and pairs it with the earlier ones that have a segment in the same place.
    void add(std::unique_ptr<AcDbPolyline> strip) {
        const int number = static_cast<int>(m_strips.size());
        std::vector<AcGePoint3d> middles;
        const unsigned int count = strip->numVerts();
        for (unsigned int i = 0; i < count; ++i) {
            AcGePoint3d start;
            AcGePoint3d end;
            (void)strip->getPointAt(i, start);
            (void)strip->getPointAt(i + 1 < count ? i + 1 : 0, end);
            middles.push_back(start + (end - start) * 0.5);
        }
        for (const AcGePoint3d& middle : middles)
            m_middles.anyNear(middle, [&](int other) {
                if (at(other)) m_candidates.emplace(other, number);
                return false;
            });
        for (const AcGePoint3d& middle : middles) m_middles.add(middle, number);
        m_strips.push_back(std::move(strip));
    }

    double m_largest;
    double m_tolerance;
    Strips m_strips;
    PointGrid m_middles;
    std::set<std::pair<int, int>> m_candidates; ///< in the order in which the plain loops come to them
};

} // namespace

void mergeStrips(Strips& strips) {
    Merging merging(strips);
    merging.run();
    strips = merging.result();
}

} // namespace VEXOGeometryTools

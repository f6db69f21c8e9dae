#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "contourpointgrid.h"

#include "cvxlogentry.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbpolyline.h"
#include "geplane.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

using namespace vexo;

namespace {

/// Ends and vertices closer than this are one where curves are joined.
constexpr double kJoinTolerance = 1e-06;
/// How close a curve's end must be to the chain's end to be the next one.
constexpr double kChainTolerance = 1e-10;
/// Ends and centres closer than this coincide in a view.
constexpr double kCoincidence = 1e-05;
/// The tolerance of ConcatenateLineSegments is a thousandth of what its caller gives.
constexpr double kToleranceShare = 0.001;

// ---- joining two polylines ----

struct ChainVertex {
    AcGePoint2d point;
    double bulge;
};

/// The vertices in the order of the walk, each with the bulge of the segment that leaves it, in the axes of
/// `normal`.
std::vector<ChainVertex> verticesInWalk(const AcDbPolyline& polyline, bool backward,
                                        const AcGeVector3d& normal) {
    std::vector<ChainVertex> walk;
    const unsigned int count = polyline.numVerts();
    walk.reserve(count);
    const bool sameAxes = polyline.normal().isCodirectionalTo(normal, AcGeContext::gTol);
    const bool mirrored = !sameAxes && polyline.normal().dotProduct(normal) < 0.0;
    for (unsigned int k = 0; k < count; ++k) {
        const unsigned int i = backward ? count - 1 - k : k;
        ChainVertex vertex{{}, 0.0};
        (void)polyline.getPointAt(i, vertex.point);
        if (!sameAxes) {
            AcGePoint3d world;
            (void)polyline.getPointAt(i, world);
            vertex.point = world.convert2d(AcGePlane(AcGePoint3d::kOrigin, normal));
        }
        if (!backward) (void)polyline.getBulgeAt(i, vertex.bulge);
        if (backward && i > 0 && polyline.getBulgeAt(i - 1, vertex.bulge) == Acad::eOk)
            vertex.bulge = -vertex.bulge;
        if (mirrored) vertex.bulge = -vertex.bulge;
        walk.push_back(vertex);
    }
    return walk;
}

void appendChainVertex(AcDbPolyline& result, const ChainVertex& vertex) {
    (void)result.addVertexAt(result.numVerts(), vertex.point, vertex.bulge, -1.0, -1.0);
}

bool areEndsEqual(const AcDbCurve& first, const AcDbCurve& second, bool atStart, const AcGeTol& tolerance) {
    AcGePoint3d a;
    AcGePoint3d b;
    const bool readable = atStart
                              ? first.getStartPoint(a) == Acad::eOk && second.getStartPoint(b) == Acad::eOk
                              : first.getEndPoint(a) == Acad::eOk && second.getEndPoint(b) == Acad::eOk;
    return readable && a.isEqualTo(b, tolerance);
}

/// Adds the vertices of second behind those of result.
void joinPolylines(AcDbPolyline& result, const AcDbPolyline& second, bool close) {
    const AcGeTol tolerance = pointToleranceOf(kJoinTolerance);
    const bool backward =
        areEndsEqual(result, second, false, tolerance) || areEndsEqual(result, second, true, tolerance);
    const std::vector<ChainVertex> walk = verticesInWalk(second, backward, result.normal());
    for (std::size_t k = 0; k < walk.size(); ++k) {
        AcGePoint2d place;
        if (k + 1 == walk.size()) {
            const bool closesUp =
                result.getPointAt(0, place) == Acad::eOk && walk[k].point.isEqualTo(place, tolerance);
            if (!closesUp) appendChainVertex(result, walk[k]);
            break;
        }
        if (walk[k].point.isEqualTo(walk[k + 1].point, tolerance)) continue;
        const unsigned int count = result.numVerts();
        const bool isAtEnd = count > 0 && result.getPointAt(count - 1, place) == Acad::eOk &&
                             walk[k].point.isEqualTo(place, tolerance);
        if (isAtEnd)
            (void)result.setBulgeAt(count - 1, walk[k].bulge);
        else
            appendChainVertex(result, walk[k]);
    }
    if (close) result.setClosed(Adesk::kTrue);
}

// ---- ends of many curves ----

struct CurveEnds {
    bool known = false;
    AcGePoint3d start;
    AcGePoint3d end;
};

double largestOf(const CurveEnds& ends) {
    if (!ends.known) return 0.0;
    return std::max(PointGrid::ordinaryCoordinate(ends.start), PointGrid::ordinaryCoordinate(ends.end));
}

CurveEnds endsOf(const AcDbCurve* curve) {
    CurveEnds ends;
    ends.known =
        curve && curve->getStartPoint(ends.start) == Acad::eOk && curve->getEndPoint(ends.end) == Acad::eOk;
    return ends;
}

/// The ends of curves or segments by place. collect() gives the numbers of all that may have an end at a
/// point; the caller puts the plain loop's own question to them, in the loop's order.
class EndIndex {
public:
    EndIndex(const std::vector<CurveEnds>& ends, double tolerance)
        : m_grid(tolerance, largestCoordinate(ends), static_cast<int>(ends.size() * 2)) {
        for (std::size_t i = 0; i < ends.size(); ++i) {
            announce(ends, i + PointGrid::kAhead);
            if (!ends[i].known) continue;
            m_grid.add(ends[i].start, static_cast<int>(i));
            m_grid.add(ends[i].end, static_cast<int>(i));
        }
    }
    /// A question about these ends will follow.
    void announce(const std::vector<CurveEnds>& ends, std::size_t i) const {
        if (i >= ends.size() || !ends[i].known) return;
        m_grid.announce(ends[i].start);
        m_grid.announce(ends[i].end);
    }
    template <typename Filter>
    void collect(const AcGePoint3d& place, const Filter& isOpen, std::vector<int>& found) const {
        m_grid.anyNear(place, [&](int number) {
            if (isOpen(number)) found.push_back(number);
            return false;
        });
    }
    /// The same, but false, with some of them, where many curves have an end near the place.
    template <typename Filter>
    bool collectFew(const AcGePoint3d& place, const Filter& isOpen, std::vector<int>& found) const {
        int left = kFew;
        return !m_grid.anyNear(place, [&](int number) {
            if (isOpen(number)) found.push_back(number);
            return --left == 0;
        });
    }
    static double largestCoordinate(const std::vector<CurveEnds>& ends) {
        double largest = 0.0;
        for (const CurveEnds& both : ends) largest = std::max(largest, largestOf(both));
        return largest;
    }

private:
    static constexpr int kFew = 32;

    PointGrid m_grid;
};

/// In the order of the plain loop, each once.
const std::vector<int>& inOrder(std::vector<int>& found) {
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

/// The same for opposite vectors, no longer than they are. Moves three times as much as the vector at most.
AcGeVector3d senselessOf(const AcGeVector3d& vector) {
    const double length = vector.length();
    if (!(length > 0.0)) return AcGeVector3d::kIdentity;
    return vector * (vector.dotProduct(AcGeVector3d(0.55, 0.73, 0.41)) / length);
}

// ---- collinear segments ----

AcGeLineSeg3d* segmentAt(const AcArray<void*>& segments, int index) {
    auto* curve = static_cast<AcGeCurve3d*>(segments[index]);
    return curve && curve->isKindOf(AcGe::kLineSeg3d) ? static_cast<AcGeLineSeg3d*>(curve) : nullptr;
}

enum class MergeResult { kNoCommonEnd, kRefused, kMerged };

/// Tries the four pairs of ends; the merged segment runs as `first` does.
MergeResult mergeSegments(const AcGeLineSeg3d& first, const AcGeLineSeg3d& second, const AcGeTol& tolerance,
                          AcGeLineSeg3d& merged) {
    struct EndPair {
        bool secondAtEnd;
        bool firstAtEnd;
    };
    constexpr EndPair order[] = {{true, false}, {true, true}, {false, false}, {false, true}};
    for (const EndPair pair : order) {
        const AcGePoint3d touching2 = pair.secondAtEnd ? second.endPoint() : second.startPoint();
        const AcGePoint3d touching1 = pair.firstAtEnd ? first.endPoint() : first.startPoint();
        if (!touching2.isEqualTo(touching1, tolerance)) continue;
        const AcGePoint3d far2 = pair.secondAtEnd ? second.startPoint() : second.endPoint();
        const AcGePoint3d far1 = pair.firstAtEnd ? first.startPoint() : first.endPoint();
        const AcGeLineSeg3d touch(touching2, touching1);
        if (touch.isOn(far2, tolerance) || touch.isOn(far1, tolerance)) return MergeResult::kRefused;
        if (pair.firstAtEnd)
            merged.set(far1, far2);
        else
            merged.set(far2, far1);
        return MergeResult::kMerged;
    }
    return MergeResult::kNoCommonEnd;
}

/// Segments by their ends, and by their directions where many have one place.
class CollinearIndex {
public:
    CollinearIndex(const std::vector<CurveEnds>& ends, double tolerance)
        : m_ends(ends)
        , m_tolerance(tolerance)
        , m_all(ends, tolerance) {}

    /// A question about this segment will follow.
    void announce(std::size_t i) const { m_all.announce(m_ends, i); }
    /// The numbers of those that may be collinear with a segment and have an end in common with it.
    template <typename Filter>
    const std::vector<int>& candidates(const AcGeLineSeg3d& segment, const Filter& isOpen) {
        const CurveEnds given{true, segment.startPoint(), segment.endPoint()};
        m_found.clear();
        if (m_all.collectFew(given.start, isOpen, m_found) && m_all.collectFew(given.end, isOpen, m_found))
            return inOrder(m_found);
        m_found.clear();
        if (!isClear(given)) {
            collectBoth(m_all, given, isOpen);
            return inOrder(m_found);
        }
        if (!m_clear) gatherByDirection();
        collectBoth(*m_clear, withDirection(given), isOpen);
        collectBoth(*m_unclear, given, isOpen);
        return inOrder(m_found);
    }

private:
    /// A direction is clear when rounding turns it by less than this; clear ones that are parallel for the
    /// geometry kit are within twice that of each other.
    static constexpr double kClearAngle = 1e-8;
    /// What a key is moved by for its direction, in reaches: a turn by a clear angle moves it by less than
    /// half of one.
    static constexpr double kDirectionReaches = 1e7;
    static constexpr double kPlaceShare = 2.0; ///< reaches between keys of equal places and directions

    void gatherByDirection() {
        const double own = std::isnan(m_tolerance) ? 0.0 : std::abs(m_tolerance);
        m_reach = std::max(own, AcGe::kPointUlps * AcGe::ulpOf(EndIndex::largestCoordinate(m_ends)));
        std::vector<CurveEnds> keys(m_ends.size());
        std::vector<CurveEnds> unclear(m_ends.size());
        for (std::size_t i = 0; i < m_ends.size(); ++i) {
            if (!m_ends[i].known) continue;
            if (isClear(m_ends[i]))
                keys[i] = withDirection(m_ends[i]);
            else
                unclear[i] = m_ends[i];
        }
        m_clear.emplace(keys, kPlaceShare * m_reach);
        m_unclear.emplace(unclear, m_tolerance);
    }
    template <typename Filter>
    void collectBoth(const EndIndex& index, const CurveEnds& places, const Filter& isOpen) {
        index.collect(places.start, isOpen, m_found);
        index.collect(places.end, isOpen, m_found);
    }
    static bool isClear(const CurveEnds& ends) {
        const double magnitude = std::max(ends.start.largestCoordinate(), ends.end.largestCoordinate());
        const double length = ends.start.distanceTo(ends.end);
        return length > AcGeContext::gTol.equalPoint() &&
               AcGe::kPointUlps * AcGe::ulpOf(magnitude) <= kClearAngle * length &&
               AcGeContext::gTol.equalVector() <= kClearAngle;
    }
    CurveEnds withDirection(const CurveEnds& ends) const {
        const AcGeVector3d run = ends.end - ends.start;
        const AcGeVector3d shift = senselessOf(run / run.length()) * (kDirectionReaches * m_reach);
        return {true, ends.start + shift, ends.end + shift};
    }

    const std::vector<CurveEnds>& m_ends;
    double m_tolerance;
    EndIndex m_all;
    double m_reach = 0.0;
    std::optional<EndIndex> m_clear; ///< where they are needed
    std::optional<EndIndex> m_unclear;
    std::vector<int> m_found;
};

/// Merges the first later segment that is collinear with segment i and touches it; false when there is none,
/// or when that one refuses.
bool mergeWithPartner(AcArray<void*>& segments, int i, CollinearIndex& index, std::vector<char>& gone,
                      const AcGeTol& tolerance) {
    const AcGeLineSeg3d* first = segmentAt(segments, i);
    if (!first) return false;
    const auto isLater = [&](int j) { return j > i && !gone[static_cast<std::size_t>(j)]; };
    for (const int j : index.candidates(*first, isLater)) {
        const AcGeLineSeg3d* second = segmentAt(segments, j);
        AcGeLineSeg3d merged;
        if (!first->isColinearTo(*second, AcGeContext::gTol)) continue;
        const MergeResult result = mergeSegments(*first, *second, tolerance, merged);
        if (result == MergeResult::kNoCommonEnd) continue;
        if (result == MergeResult::kRefused) return false;
        segments[i] = static_cast<AcGeCurve3d*>(merged.copy());
        gone[static_cast<std::size_t>(j)] = 1;
        if (second != first) delete second;
        delete first;
        return true;
    }
    return false;
}

// ---- coincidence in a view ----

/// What RemoveDuplicates compares of a projected curve.
struct Footprint {
    CurveEnds ends;
    AcGePoint3d center;
    bool isOpen = false;
};

AcGePoint3d centerOf(const AcDbCurve& curve) {
    if (const auto* arc = AcDbArc::cast(&curve)) return arc->center();
    if (const auto* circle = AcDbCircle::cast(&curve)) return circle->center();
    if (const auto* ellipse = AcDbEllipse::cast(&curve)) return ellipse->center();
    return AcGePoint3d::kOrigin;
}

Footprint footprintOf(const AcDbCurve* curve, const AcGePlane& plane, const AcGeVector3d& viewDir) {
    Footprint footprint;
    AcDbCurve* projected = nullptr;
    if (!curve || curve->getProjectedCurve(plane, viewDir, projected) != Acad::eOk) return footprint;
    const std::unique_ptr<AcDbCurve> owner(projected);
    footprint.ends = endsOf(projected);
    footprint.center = centerOf(*projected);
    footprint.isOpen =
        footprint.ends.known && !footprint.ends.start.isEqualTo(footprint.ends.end, AcGeContext::gTol);
    return footprint;
}

/// A place that coinciding curves share, and curves with only an end or the middle in common do not: the
/// middle, moved by the direction; seven times as far apart as the ends at most. Nowhere for far curves.
AcGePoint3d placeOf(const CurveEnds& ends) {
    const double largest = std::max(ends.start.largestCoordinate(), ends.end.largestCoordinate());
    if (largestOf(ends) != largest) {
        constexpr double nowhere = std::numeric_limits<double>::infinity();
        return {nowhere, nowhere, nowhere};
    }
    const AcGeVector3d run = ends.end - ends.start;
    return ends.start + run * 0.5 + senselessOf(run);
}
constexpr double kPlacesPerEnd = 8.0;

bool coincide(const Footprint& a, const Footprint& b, const AcGeTol& tolerance) {
    if (!a.center.isEqualTo(b.center, tolerance)) return false;
    return (a.ends.start.isEqualTo(b.ends.start, tolerance) && a.ends.end.isEqualTo(b.ends.end, tolerance)) ||
           (a.ends.start.isEqualTo(b.ends.end, tolerance) && a.ends.end.isEqualTo(b.ends.start, tolerance));
}

// ---- the chain of createPolyLineFromCurves ----

/// A clone of the first curve that turns into a polyline with the first curve joined to it, and grows from
/// then on: the same vertices as if every step converted and copied the chain, at the cost of the new ones.
class GrowingChain {
public:
    explicit GrowingChain(const AcDbCurve& first)
        : m_chain(AcDbCurve::cast(first.clone())) {}

    bool end(AcGePoint3d& point) const { return m_chain && m_chain->getEndPoint(point) == Acad::eOk; }
    bool add(const AcDbCurve& curve, bool close) {
        if (!m_polyline) {
            std::unique_ptr<AcDbPolyline> converted(VEXOGeometryTools::ConvertToPolyline(m_chain.get()));
            if (!converted) return false;
            const std::unique_ptr<AcDbPolyline> second(VEXOGeometryTools::ConvertToPolyline(&curve));
            if (!second) return false;
            joinPolylines(*converted, *second, close);
            m_polyline = converted.get();
            m_chain = std::move(converted);
            return true;
        }
        const std::unique_ptr<AcDbPolyline> second(VEXOGeometryTools::ConvertToPolyline(&curve));
        if (!second) return false;
        joinPolylines(*m_polyline, *second, close);
        return true;
    }
    AcDbCurve* release() { return m_chain.release(); }

private:
    std::unique_ptr<AcDbCurve> m_chain;
    AcDbPolyline* m_polyline = nullptr; ///< the chain, once it is a polyline made here
};

} // namespace

namespace VEXOGeometryTools {

void ConcatenateLineSegments(AcArray<void*>& segments, const double& tolerance) {
    CVxLogEntry entry(L"VEXOGeometryTools::ConcatenateLineSegments");
    const AcGeTol local = toleranceOf(tolerance * kToleranceShare);
    const int length = segments.length();
    std::vector<CurveEnds> ends(static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i)
        if (const AcGeLineSeg3d* segment = segmentAt(segments, i))
            ends[static_cast<std::size_t>(i)] = {true, segment->startPoint(), segment->endPoint()};
    CollinearIndex index(ends, local.equalPoint());
    std::vector<char> gone(static_cast<std::size_t>(length), 0);
    for (int i = 0; i < length; ++i) {
        index.announce(static_cast<std::size_t>(i) + PointGrid::kAhead);
        if (gone[static_cast<std::size_t>(i)]) continue;
        while (mergeWithPartner(segments, i, index, gone, local)) {
        }
    }
    int kept = 0;
    for (int i = 0; i < length; ++i)
        if (!gone[static_cast<std::size_t>(i)]) segments[kept++] = segments[i];
    segments.setLogicalLength(kept);
}

AcDbCurve* concatenateCurves(AcDbCurve* first, AcDbCurve* second, bool close) {
    CVxLogEntry entry(L"VEXOGeometryTools::concatenateCurves");
    std::unique_ptr<AcDbPolyline> result(ConvertToPolyline(first));
    const std::unique_ptr<AcDbPolyline> other(ConvertToPolyline(second));
    if (!result || !other) return nullptr;
    joinPolylines(*result, *other, close);
    return result.release();
}

AcDbCurve* createPolyLineFromCurves(AcArray<void*> curves) {
    CVxLogEntry entry(L"VEXOGeometryTools::createPolyLineFromCurves");
    if (curves.isEmpty() || !curves[0]) return nullptr;
    const AcGeTol tolerance = pointToleranceOf(kChainTolerance);
    const int length = curves.length();
    std::vector<CurveEnds> ends;
    ends.reserve(static_cast<std::size_t>(length));
    for (void* curve : curves) ends.push_back(endsOf(static_cast<const AcDbCurve*>(curve)));
    const EndIndex index(ends, tolerance.equalPoint());
    std::vector<int> found;
    std::vector<char> used(static_cast<std::size_t>(length), 0);
    used[0] = 1;
    int usedCount = 1;
    GrowingChain chain(*static_cast<const AcDbCurve*>(curves[0]));
    bool grew = true;
    AcGePoint3d chainEnd;
    while (grew && chain.end(chainEnd)) {
        grew = false;
        const auto isUnused = [&](int i) { return !used[static_cast<std::size_t>(i)]; };
        found.clear();
        index.collect(chainEnd, isUnused, found);
        for (const int i : inOrder(found)) {
            const CurveEnds& candidate = ends[static_cast<std::size_t>(i)];
            if (!chainEnd.isEqualTo(candidate.start, tolerance) &&
                !chainEnd.isEqualTo(candidate.end, tolerance))
                continue;
            if (!chain.add(*static_cast<const AcDbCurve*>(curves[i]), usedCount + 1 == length)) continue;
            used[static_cast<std::size_t>(i)] = 1;
            ++usedCount;
            grew = true;
            break;
        }
    }
    return chain.release();
}

void RemoveDuplicates(AcArray<void*>& curves, const AcGeVector3d& viewDir) {
    CVxLogEntry entry(L"VEXOGeometryTools::RemoveDuplicates");
    const AcGeTol tolerance = pointToleranceOf(kCoincidence);
    const AcGePlane plane(AcGePoint3d::kOrigin, viewDir);
    std::vector<Footprint> footprints;
    footprints.reserve(static_cast<std::size_t>(curves.length()));
    double largest = 0.0;
    for (void* curve : curves) {
        footprints.push_back(footprintOf(static_cast<const AcDbCurve*>(curve), plane, viewDir));
        largest = std::max(largest, largestOf(footprints.back().ends));
    }
    PointGrid places(kPlacesPerEnd * tolerance.equalPoint(), kPlacesPerEnd * largest, curves.length());
    std::vector<AcDbCurve*> repeats;
    int kept = 0;
    for (int j = 0; j < curves.length(); ++j) {
        const Footprint& footprint = footprints[static_cast<std::size_t>(j)];
        const AcGePoint3d place = footprint.isOpen ? placeOf(footprint.ends) : AcGePoint3d();
        AcDbCurve* curve = static_cast<AcDbCurve*>(curves[j]);
        AcDbCurve* twin = nullptr;
        const bool repeated = footprint.isOpen && places.anyNear(place, [&](int i) {
            twin = static_cast<AcDbCurve*>(curves[i]);
            return coincide(footprints[static_cast<std::size_t>(i)], footprint, tolerance);
        });
        if (repeated) {
            if (twin != curve) repeats.push_back(curve); // listed twice, it loses its second entry only
            continue;
        }
        footprints[static_cast<std::size_t>(kept)] = footprint;
        curves[kept] = curve;
        if (footprint.isOpen) places.add(place, kept);
        ++kept;
    }
    std::sort(repeats.begin(), repeats.end());
    repeats.erase(std::unique(repeats.begin(), repeats.end()), repeats.end());
    for (const AcDbCurve* curve : repeats) delete curve;
    curves.setLogicalLength(kept);
}

} // namespace VEXOGeometryTools

#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "contourpointgrid.h"

#include "cvxlogentry.h"

#include <algorithm>
#include <memory>
#include <vector>

using namespace vexo;

namespace {

/// The local tolerance is a thousandth of what the caller gives.
constexpr double kToleranceShare = 0.001;

/// Points that equal their follower go with their bulge; the last one's follower is the first that stays.
void dropZeroLengths(AcArray<AcGePoint3d>& points, AcArray<AcGeVector3d>& bulges) {
    const int count = points.length();
    const int bulgeCount = bulges.length();
    int kept = 0;
    int keptBulges = 0;
    for (int i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        const AcGePoint3d& follower = isLast ? (kept > 0 ? points[0] : points[i]) : points[i + 1];
        if (points[i].isEqualTo(follower, AcGeContext::gTol)) continue;
        points[kept++] = points[i];
        if (i < bulgeCount) bulges[keptBulges++] = bulges[i];
    }
    points.setLogicalLength(kept);
    bulges.setLogicalLength(keptBulges);
}

/// Makes the side ready to be taken apart; false for lengths that do not belong together.
bool prepareSide(AcArray<AcGePoint3d>& points, AcArray<AcGeVector3d>& bulges, bool flatten) {
    const int count = points.length();
    if (count <= 1 || count > bulges.length() + 1 || bulges.length() > count) return false;
    if (flatten)
        for (AcGePoint3d& point : points) point.z = 0.0;
    dropZeroLengths(points, bulges);
    return points.length() == bulges.length();
}

/// A list of kit curves in the form that ConcatenateLineSegments works on.
class SegmentList {
public:
    SegmentList(const AcArray<AcGePoint3d>& points, const AcArray<AcGeVector3d>& bulges,
                const AcGeTol& tolerance) {
        const int count = points.length();
        m_segments.setPhysicalLength(count);
        for (int i = 0; i < count; ++i)
            add(points[i], points[i + 1 < count ? i + 1 : 0], bulges[i], tolerance);
    }
    ~SegmentList() {
        for (int i = 0; i < m_segments.length(); ++i) delete &at(i);
    }
    SegmentList(const SegmentList&) = delete;
    SegmentList& operator=(const SegmentList&) = delete;

    int length() const { return m_segments.length(); }
    const AcGeCurve3d& at(int i) const { return *static_cast<const AcGeCurve3d*>(m_segments[i]); }
    void concatenate(double tolerance) { VEXOGeometryTools::ConcatenateLineSegments(m_segments, tolerance); }

private:
    void add(const AcGePoint3d& start, const AcGePoint3d& end, const AcGeVector3d& bulge,
             const AcGeTol& tolerance) {
        if (start.isEqualTo(end, tolerance)) return;
        AcGeCurve3d* segment = nullptr;
        if (isArcBulge(bulge)) {
            const AcGeCircArc3d arc(start, start + (end - start) / 2 + bulge, end);
            // Too flat to be told from its chord: the segment is straight.
            if (arc.radius() > 0.0) segment = arc.copy();
        }
        if (!segment) segment = new AcGeLineSeg3d(start, end);
        m_segments.append(segment);
    }

    AcArray<void*> m_segments;
};

/// What is compared of a segment, in its own sense.
struct SegmentEnds {
    bool isArc;
    AcGePoint3d start;
    AcGePoint3d end;
    AcGePoint3d middle; ///< of arcs only
};

std::vector<SegmentEnds> endsOf(const SegmentList& segments) {
    std::vector<SegmentEnds> ends;
    ends.reserve(static_cast<std::size_t>(segments.length()));
    for (int i = 0; i < segments.length(); ++i) {
        const AcGeCurve3d& curve = segments.at(i);
        if (curve.isKindOf(AcGe::kLineSeg3d)) {
            const auto& line = static_cast<const AcGeLineSeg3d&>(curve);
            ends.push_back({false, line.startPoint(), line.endPoint(), {}});
            continue;
        }
        const auto& arc = static_cast<const AcGeCircArc3d&>(curve);
        ends.push_back(
            {true, arc.startPoint(), arc.endPoint(), arc.evalPoint((arc.startAng() + arc.endAng()) / 2)});
    }
    return ends;
}

/// The same segment, in the same sense or the other.
bool doMatch(const SegmentEnds& a, const SegmentEnds& b, const AcGeTol& tolerance) {
    if (a.isArc != b.isArc || (a.isArc && !a.middle.isEqualTo(b.middle, tolerance))) return false;
    return (a.start.isEqualTo(b.start, tolerance) && a.end.isEqualTo(b.end, tolerance)) ||
           (a.start.isEqualTo(b.end, tolerance) && a.end.isEqualTo(b.start, tolerance));
}

/// Gives every segment of the first list, in order, the first segment of the second that is left and matches.
/// True when none is left without a partner; the lists are equally long.
bool doAllMatch(const std::vector<SegmentEnds>& first, const std::vector<SegmentEnds>& second,
                const AcGeTol& tolerance) {
    double largest = 0.0;
    for (const auto* list : {&first, &second})
        for (const SegmentEnds& ends : *list)
            for (const AcGePoint3d& point : {ends.start, ends.end})
                largest = std::max(largest, PointGrid::ordinaryCoordinate(point));
    PointGrid grid(tolerance.equalPoint(), largest, static_cast<int>(second.size() * 2));
    for (std::size_t j = 0; j < second.size(); ++j) {
        grid.add(second[j].start, static_cast<int>(j));
        grid.add(second[j].end, static_cast<int>(j));
    }
    std::vector<char> used(second.size(), 0);
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (i + PointGrid::kAhead < first.size()) grid.announce(first[i + PointGrid::kAhead].start);
        std::size_t partner = second.size();
        grid.anyNear(first[i].start, [&](int number) {
            const auto j = static_cast<std::size_t>(number);
            if (!used[j] && j < partner && doMatch(first[i], second[j], tolerance)) partner = j;
            return false;
        });
        if (partner == second.size()) return false;
        used[partner] = 1;
    }
    return true;
}

} // namespace

namespace VEXOGeometryTools {

bool ComparePointsAndBulgesForClosedContours(AcArray<AcGePoint3d> points1, AcArray<AcGeVector3d> bulges1,
                                             AcArray<AcGePoint3d> points2, AcArray<AcGeVector3d> bulges2,
                                             double tolerance, bool flatten) {
    CVxLogEntry entry(L"VEXOGeometryTools::ComparePointsAndBulgesForClosedContours");
    const AcGeTol local = toleranceOf(tolerance * kToleranceShare);
    if (!prepareSide(points1, bulges1, flatten) || !prepareSide(points2, bulges2, flatten)) return false;
    SegmentList first(points1, bulges1, local);
    SegmentList second(points2, bulges2, local);
    first.concatenate(tolerance);
    second.concatenate(tolerance);
    return first.length() == second.length() && doAllMatch(endsOf(first), endsOf(second), local);
}

} // namespace VEXOGeometryTools

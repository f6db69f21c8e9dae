#include "curveintersection.h"

#include "boxtree.h"
#include "dbcurve.h"

#include "gebndblock3d.h"
#include "gecint3d.h"
#include "geplane.h"

#include <algorithm>
#include <limits>

namespace hostkit {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Meeting {
    double parameter; ///< on the first curve
    AcGePoint3d point;
};

/// A stretch that both curves have in common. One across the start of a closed curve runs from the higher
/// parameter to the lower.
struct Run {
    Meeting from;
    Meeting to;
};

/// A straight curve that runs along an arc's tangent at one point.
struct Touch {
    Meeting meeting;
    AcGeVector3d toCenter;
};

double allowanceOf(const CurvePieces::Piece& piece) {
    double magnitude = 0.0;
    for (unsigned int axis = 0; axis < 3; ++axis)
        for (const double side : {piece.minimum[axis], piece.maximum[axis]})
            if (std::isfinite(side)) magnitude = std::max(magnitude, std::abs(side));
    return AcGe::pointAllowance(AcGeContext::gTol, magnitude);
}

/// Points are sorted along a direction in which those of a contour, rarely aslant to the axes by just these
/// angles, do not fall together.
double sortKey(const AcGePoint3d& point) { return 0.55 * point.x + 0.73 * point.y + 0.41 * point.z; }

/// Points that are equal have keys no farther apart.
double keyReach(const AcGePoint3d& point) {
    return 4.0 * AcGe::pointAllowance(AcGeContext::gTol, 2.0 * point.largestCoordinate());
}

/// The piece's box with room for the point test.
SearchBox searchBoxOf(const CurvePieces::Piece& piece) {
    const double allowed = allowanceOf(piece);
    SearchBox box;
    for (unsigned int axis = 0; axis < 3; ++axis) {
        box.low[axis] = piece.minimum[axis] - allowed;
        box.high[axis] = piece.maximum[axis] + allowed;
    }
    return box;
}

/// A box that the unbounded line of a straight curve passes at a distance.
bool passesBy(const AcGeLinearEnt3d& line, const CurvePieces::Piece& piece) {
    const AcGeVector3d diagonal = piece.maximum - piece.minimum;
    const double radius = diagonal.length() * 0.5;
    if (!std::isfinite(radius)) return false;
    const AcGeVector3d direction = line.direction();
    const AcGeVector3d toMiddle = piece.minimum + diagonal * 0.5 - line.pointOnLine();
    const double off = toMiddle.crossProduct(direction).length();
    const double reach = radius + 2.0 * AcGe::pointAllowance(AcGeContext::gTol, toMiddle.length() + radius);
    return !direction.isZeroLength() && off > reach * (1.0 + 1e-9);
}

/// Finds and gathers the meetings of two curves, piece by piece.
class Intersector {
public:
    Intersector(const CurvePieces& first, const CurvePieces& second)
        : m_first(first)
        , m_second(second) {}

    void meetAll();
    void giveTo(AcArray<AcGePoint3d>& points);

private:
    void meetPair(std::size_t i, std::size_t j);
    bool isTouch(const CurveGeometry& a, const CurveGeometry& b, Meeting& meeting,
                 AcGeVector3d& toCenter) const;
    void settleTouches();
    void joinRuns();
    void joinAcrossStart();
    bool liesWithinRun(const Meeting& meeting) const;
    std::vector<Meeting> withoutRepeats(std::vector<Meeting> meetings) const;

    const CurvePieces& m_first;
    const CurvePieces& m_second;
    std::vector<Meeting> m_meetings;
    std::vector<Run> m_runs;
    std::vector<Touch> m_touches;
    // The pieces in work as geometry curves. Pairs come grouped by the first curve's piece; the second curve
    // is a single line more often than not.
    CurveGeometry m_curve1;
    CurveGeometry m_curve2;
    std::size_t m_curve1Index = static_cast<std::size_t>(-1);
    std::size_t m_curve2Index = static_cast<std::size_t>(-1);
};

void Intersector::meetAll() {
    std::vector<SearchBox> boxes;
    boxes.reserve(m_second.count());
    for (std::size_t j = 0; j < m_second.count(); ++j) boxes.push_back(searchBoxOf(m_second.at(j)));
    const BoxTree tree(std::move(boxes));
    for (std::size_t i = 0; i < m_first.count(); ++i)
        tree.forEachMeeting(searchBoxOf(m_first.at(i)), [&](std::size_t j) { meetPair(i, j); });
}

bool Intersector::isTouch(const CurveGeometry& a, const CurveGeometry& b, Meeting& meeting,
                          AcGeVector3d& toCenter) const {
    const AcGeLinearEnt3d* line = a.straight() ? a.straight() : b.straight();
    const AcGeCircArc3d* arc = a.arc() ? a.arc() : b.arc();
    if (!line || !arc) return false;
    const AcGeVector3d direction = line->direction();
    const AcGeVector3d offset = line->pointOnLine() - arc->center();
    const AcGeVector3d toLine = offset - direction * offset.dotProduct(direction);
    const double magnitude = std::max({arc->coordinateMagnitude(), meeting.point.largestCoordinate()});
    const double allowed = 2.0 * AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    toCenter = -toLine;
    const bool inPlane = std::abs(direction.dotProduct(arc->normal())) <= AcGeContext::gTol.equalVector();
    return inPlane && toLine.length() >= arc->radius() - allowed;
}

void Intersector::meetPair(std::size_t i, std::size_t j) {
    if (m_curve2Index != j) {
        m_curve2 = m_second.curveOf(j);
        m_curve2Index = j;
    }
    if (const AcGeLinearEnt3d* line = m_curve2.straight(); line && passesBy(*line, m_first.at(i))) return;
    if (m_curve1Index != i) {
        m_curve1 = m_first.curveOf(i);
        m_curve1Index = i;
    }
    if (const AcGeLinearEnt3d* line = m_curve1.straight(); line && passesBy(*line, m_second.at(j))) return;
    const AcGeCurveCurveInt3d found(m_curve1.curve(), m_curve2.curve());
    const auto meetingAt = [&](double param1, const AcGePoint3d& point) {
        return Meeting{m_first.drawingParameter(i, m_curve1, param1), point};
    };
    for (int k = 0; k < found.numIntPoints(); ++k) {
        double param1 = 0.0;
        double param2 = 0.0;
        found.getIntParams(k, param1, param2);
        Meeting meeting = meetingAt(param1, found.intPoint(k));
        AcGeVector3d toCenter;
        if (isTouch(m_curve1, m_curve2, meeting, toCenter))
            m_touches.push_back({meeting, toCenter});
        else
            m_meetings.push_back(meeting);
    }
    for (int k = 0; k < found.overlapCount(); ++k) {
        AcGeInterval on1;
        AcGeInterval on2;
        found.getOverlapRanges(k, on1, on2);
        if (!on1.isBounded() || !on2.isBounded()) continue;
        const AcGePoint3d start = m_curve1.curve().evalPoint(on1.lowerBound());
        const AcGePoint3d end = m_curve1.curve().evalPoint(on1.upperBound());
        Run run{meetingAt(on1.lowerBound(), start), meetingAt(on1.upperBound(), end)};
        if (run.to.parameter < run.from.parameter) std::swap(run.from, run.to);
        m_runs.push_back(run);
    }
}

// Touching is no crossing: it counts only at an end of an open curve, or where the curve goes over from an
// arc on one side of the straight curve to an arc on the other.
void Intersector::settleTouches() {
    std::sort(m_touches.begin(), m_touches.end(), [](const Touch& a, const Touch& b) {
        return sortKey(a.meeting.point) < sortKey(b.meeting.point);
    });
    std::size_t firstNear = 0;
    for (const Touch& touch : m_touches) {
        const AcGePoint3d& point = touch.meeting.point;
        const double reach = keyReach(point);
        while (sortKey(m_touches[firstNear].meeting.point) < sortKey(point) - reach) ++firstNear;
        bool counts = m_first.isEnd(point) || m_second.isEnd(point);
        for (std::size_t j = firstNear; j < m_touches.size() && !counts; ++j) {
            if (sortKey(m_touches[j].meeting.point) > sortKey(point) + reach) break;
            counts = m_touches[j].meeting.point.isEqualTo(point) &&
                     m_touches[j].toCenter.dotProduct(touch.toCenter) < 0.0;
        }
        if (counts) m_meetings.push_back(touch.meeting);
    }
}

// Neighbouring runs are one when they go on from each other: the point between them is no end.
void Intersector::joinRuns() {
    std::sort(m_runs.begin(), m_runs.end(),
              [](const Run& a, const Run& b) { return a.from.parameter < b.from.parameter; });
    std::vector<Run> joined;
    for (const Run& run : m_runs) {
        const bool goesOn = !joined.empty() && (run.from.parameter < joined.back().to.parameter ||
                                                run.from.point.isEqualTo(joined.back().to.point));
        if (!goesOn)
            joined.push_back(run);
        else if (run.to.parameter > joined.back().to.parameter)
            joined.back().to = run.to;
    }
    m_runs = std::move(joined);
    joinAcrossStart();
}

void Intersector::joinAcrossStart() {
    if (!m_first.isClosed() || m_runs.empty()) return;
    const bool fromStart = isSameParameter(m_runs.front().from.parameter, m_first.startParameter());
    const bool toEnd = isSameParameter(m_runs.back().to.parameter, m_first.endParameter());
    if (!fromStart || !toEnd || m_runs.size() == 1) return;
    m_runs.back().to = m_runs.front().to;
    m_runs.erase(m_runs.begin());
}

// Joined runs follow each other without overlapping; only the last may go across the start.
bool Intersector::liesWithinRun(const Meeting& meeting) const {
    if (m_runs.empty()) return false;
    const double parameter = meeting.parameter;
    const Run& last = m_runs.back();
    if (last.to.parameter < last.from.parameter &&
        (parameter >= last.from.parameter || parameter <= last.to.parameter))
        return true;
    const auto after =
        std::upper_bound(m_runs.begin(), m_runs.end(), parameter,
                         [](double value, const Run& run) { return value < run.from.parameter; });
    return after != m_runs.begin() && parameter <= std::prev(after)->to.parameter;
}

std::vector<Meeting> Intersector::withoutRepeats(std::vector<Meeting> meetings) const {
    std::sort(meetings.begin(), meetings.end(),
              [](const Meeting& a, const Meeting& b) { return sortKey(a.point) < sortKey(b.point); });
    std::vector<Meeting> kept;
    std::size_t firstNear = 0;
    for (const Meeting& meeting : meetings) {
        const double least = sortKey(meeting.point) - keyReach(meeting.point);
        while (firstNear < kept.size() && sortKey(kept[firstNear].point) < least) ++firstNear;
        bool repeated = false;
        for (std::size_t k = firstNear; k < kept.size() && !repeated; ++k) {
            repeated = kept[k].point.isEqualTo(meeting.point);
            if (repeated && meeting.parameter < kept[k].parameter) kept[k].parameter = meeting.parameter;
        }
        if (!repeated) kept.push_back(meeting);
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const Meeting& a, const Meeting& b) { return a.parameter < b.parameter; });
    return kept;
}

void Intersector::giveTo(AcArray<AcGePoint3d>& points) {
    settleTouches();
    joinRuns();
    std::vector<Meeting> meetings;
    for (const Meeting& meeting : m_meetings)
        if (!liesWithinRun(meeting)) meetings.push_back(meeting);
    for (const Run& run : m_runs) {
        meetings.push_back(run.from);
        meetings.push_back(run.to);
    }
    for (const Meeting& meeting : withoutRepeats(std::move(meetings))) points.append(meeting.point);
}

} // namespace

bool isArcSegment(double chord, double bulge, double magnitude) {
    return std::abs(bulge) * chord * 0.5 > AcGe::pointAllowance(AcGeContext::gTol, magnitude);
}

bool arcOfSegment(const AcGePoint3d& start, const AcGePoint3d& end, double bulge, const AcGeVector3d& normal,
                  AcGeCircArc3d& arc) {
    const AcGeVector3d chord = end - start;
    const double length = chord.length();
    const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate());
    if (!std::isfinite(bulge) || !isArcSegment(length, bulge, magnitude)) return false;
    const AcGeVector3d toCenter =
        chord * 0.5 + normal.crossProduct(chord) * ((1.0 - bulge * bulge) / (4.0 * bulge));
    arc.set(start + toCenter, bulge > 0.0 ? normal : -normal, -toCenter, toCenter.length(), 0.0,
            4.0 * std::atan(std::abs(bulge)));
    return true;
}

void CurvePieces::add(const CurveGeometry& geometry, double shift) {
    Piece piece{{-kInfinity, -kInfinity, -kInfinity},
                {kInfinity, kInfinity, kInfinity},
                shift,
                static_cast<int>(m_geometries.size()),
                {},
                {},
                0.0};
    AcGeInterval interval;
    geometry.curve().getInterval(interval);
    if (interval.isBounded()) {
        geometry.curve().orthoBoundBlock().getMinMaxPoints(piece.minimum, piece.maximum);
        piece.start = geometry.curve().evalPoint(interval.lowerBound());
        piece.end = geometry.curve().evalPoint(interval.upperBound());
        setRange(geometry.toDrawing(interval.lowerBound()), geometry.toDrawing(interval.upperBound()));
    } else if (interval.isBoundedBelow()) {
        piece.start = piece.end = geometry.curve().evalPoint(interval.lowerBound());
    }
    m_geometries.push_back(geometry);
    const bool isBounded = std::isfinite(piece.minimum.x) && std::isfinite(piece.maximum.x);
    if (!m_hasEnds) m_firstEnd = {piece.start, isBounded};
    m_lastEnd = {piece.end, isBounded};
    m_hasEnds = true;
    m_pieces.push_back(piece);
}

void CurvePieces::keepOnlyNear(const CurvePieces& other) {
    m_other = &other;
    m_otherMinimum.set(kInfinity, kInfinity, kInfinity);
    m_otherMaximum.set(-kInfinity, -kInfinity, -kInfinity);
    for (const Piece& piece : other.m_pieces) {
        const SearchBox box = searchBoxOf(piece);
        for (unsigned int axis = 0; axis < 3; ++axis) {
            m_otherMinimum[axis] = std::min(m_otherMinimum[axis], box.low[axis]);
            m_otherMaximum[axis] = std::max(m_otherMaximum[axis], box.high[axis]);
        }
    }
}

/// By a wider box than the search looks at, and without a root.
bool CurvePieces::isSegmentFar(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) const {
    double aside = 0.0;
    if (bulge != 0.0)
        aside = (std::abs(end.x - start.x) + std::abs(end.y - start.y) + std::abs(end.z - start.z)) *
                std::max(1.0, std::abs(bulge));
    const double magnitude = std::max(start.largestCoordinate(), end.largestCoordinate()) + aside;
    const double reach = aside + 2.0 * AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    for (unsigned int axis = 0; axis < 2; ++axis)
        if (std::min(start[axis], end[axis]) - reach > m_otherMaximum[axis] ||
            std::max(start[axis], end[axis]) + reach < m_otherMinimum[axis])
            return true;
    return false;
}

/// The same questions that the search puts to a pair, put before the piece is kept.
bool CurvePieces::isFar(const Piece& piece) const {
    if (!m_other) return false;
    const double allowed = allowanceOf(piece);
    for (unsigned int axis = 0; axis < 3; ++axis)
        if (piece.minimum[axis] - allowed > m_otherMaximum[axis] ||
            piece.maximum[axis] + allowed < m_otherMinimum[axis])
            return true;
    if (m_other->count() != 1 || m_other->m_geometries.empty()) return false;
    const AcGeLinearEnt3d* line = m_other->m_geometries.front().straight();
    return line && passesBy(*line, piece);
}

void CurvePieces::addSegment(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                             const AcGeVector3d& normal, double firstParameter) {
    m_normal = normal;
    if (!m_hasEnds) m_firstEnd = {start, true};
    m_lastEnd = {end, true};
    m_hasEnds = true;
    if (m_other && isSegmentFar(start, end, bulge)) return;
    Piece piece{start, end, firstParameter, -1, start, end, bulge};
    const AcGePoint3d middle = start + (end - start) * 0.5;
    const double reach = start.distanceTo(end) * 0.5 * std::max(1.0, std::abs(bulge));
    for (unsigned int axis = 0; axis < 3; ++axis) {
        piece.minimum[axis] = bulge == 0.0 ? std::min(start[axis], end[axis]) : middle[axis] - reach;
        piece.maximum[axis] = bulge == 0.0 ? std::max(start[axis], end[axis]) : middle[axis] + reach;
    }
    if (!isFar(piece)) m_pieces.push_back(piece);
}

CurveGeometry CurvePieces::curveOf(std::size_t index) const {
    const Piece& piece = m_pieces[index];
    if (piece.geometry >= 0) return m_geometries[static_cast<std::size_t>(piece.geometry)];
    CurveGeometry result;
    AcGeCircArc3d arc;
    if (piece.bulge != 0.0 && arcOfSegment(piece.start, piece.end, piece.bulge, m_normal, arc))
        result.set(arc, 1.0 / arc.endAng());
    else
        result.set(AcGeLineSeg3d(piece.start, piece.end));
    return result;
}

double CurvePieces::drawingParameter(std::size_t index, const CurveGeometry& curve,
                                     double ownParameter) const {
    return m_pieces[index].firstParameter + curve.toDrawing(ownParameter);
}

bool CurvePieces::isEnd(const AcGePoint3d& point) const {
    return !m_closed && ((m_firstEnd.isBounded && m_firstEnd.point.isEqualTo(point)) ||
                         (m_lastEnd.isBounded && m_lastEnd.point.isEqualTo(point)));
}

Acad::ErrorStatus intersectCurves(const AcDbCurve& first, const AcDbCurve& second, AcDb::Intersect type,
                                  AcArray<AcGePoint3d>& points) {
    CurvePieces pieces1;
    CurvePieces pieces2;
    const bool extendFirst = type == AcDb::kExtendThis || type == AcDb::kExtendBoth;
    const bool extendSecond = type == AcDb::kExtendArg || type == AcDb::kExtendBoth;
    // The second curve is a single line more often than not, and few of a contour's segments come near it.
    constexpr std::size_t fewPieces = 8;
    if (!second.pieces(pieces2, extendSecond)) return Acad::eDegenerateGeometry;
    if (pieces2.count() <= fewPieces) pieces1.keepOnlyNear(pieces2);
    if (!first.pieces(pieces1, extendFirst)) return Acad::eDegenerateGeometry;
    Intersector intersector(pieces1, pieces2);
    intersector.meetAll();
    intersector.giveTo(points);
    return Acad::eOk;
}

} // namespace hostkit

Acad::ErrorStatus AcDbCurve::intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                           AcGePoint3dArray& points, Adesk::IntPtr, Adesk::IntPtr) const {
    const AcDbCurve* curve = AcDbCurve::cast(other);
    if (!curve) return other ? Acad::eNotApplicable : Acad::eInvalidInput;
    return hostkit::intersectCurves(*this, *curve, type, points);
}

Acad::ErrorStatus AcDbCurve::intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                           const AcGePlane& projectionPlane, AcGePoint3dArray& points,
                                           Adesk::IntPtr, Adesk::IntPtr) const {
    const AcDbCurve* curve = AcDbCurve::cast(other);
    if (!curve) return other ? Acad::eNotApplicable : Acad::eInvalidInput;
    AcDbCurve* flat = nullptr;
    Acad::ErrorStatus status = getOrthoProjectedCurve(projectionPlane, flat);
    const std::unique_ptr<AcDbCurve> flatFirst(flat);
    if (status != Acad::eOk) return status;
    flat = nullptr;
    status = curve->getOrthoProjectedCurve(projectionPlane, flat);
    const std::unique_ptr<AcDbCurve> flatSecond(flat);
    if (status != Acad::eOk) return status;
    AcGePoint3dArray flatPoints;
    status = hostkit::intersectCurves(*flatFirst, *flatSecond, type, flatPoints);
    if (status != Acad::eOk) return status;
    const bool extend = type == AcDb::kExtendThis || type == AcDb::kExtendBoth;
    for (const AcGePoint3d& point : flatPoints) {
        AcGePoint3d onThis = point;
        (void)getClosestPointTo(point, projectionPlane.normal(), onThis, extend);
        points.append(onThis);
    }
    return Acad::eOk;
}

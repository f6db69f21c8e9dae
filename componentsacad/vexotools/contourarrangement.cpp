#include "contourarrangement.h"

#include "contourpiecepairs.h"

#include <algorithm>
#include <utility>

namespace vexo {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

/// Two curves between the same nodes are one when their middles are no farther apart than this many
/// tolerances: each lies within one of where the boundary was given.
constexpr double kSameCurve = 2.0;

AcGePoint3d inSpace(const AcGePoint2d& point) { return {point.x, point.y, 0.0}; }

/// Does `segment` keep within the tolerance of `other` from one of its points to another. Both points do.
bool runsAlong(const PlaneSegment& segment, const PlaneSegment& other, const AcGePoint2d& from,
               const AcGePoint2d& to, double tolerance) {
    if (from.distanceSqrdTo(to) <= tolerance * tolerance) return true;
    const PlaneSegment piece(from, to, segment.bulgeBetween(from, to));
    return std::abs(other.distanceLeft(piece.middle())) <= tolerance;
}

/// A point to the left of the middle of an edge, so near that it decides exact ties only, and the ray from it
/// along the x axis, or upright along the y axis.
class Viewpoint {
public:
    Viewpoint(const PlaneSegment& edge, bool isUpright)
        : m_point(edge.middle())
        , m_isUpright(isUpright)
        , m_isAbove(along(edge.end()) > along(edge.start())) {}

    const AcGePoint2d& point() const { return m_point; }
    bool mayRunRound(const PlaneBox& box) const {
        return m_isUpright ? box.lowX <= m_point.x && m_point.x <= box.highX && box.highY >= m_point.y
                           : box.lowY <= m_point.y && m_point.y <= box.highY && box.highX >= m_point.x;
    }

    /// What an edge adds to the winding number: the crossing of the ray with its chord, and the part between
    /// chord and arc. `isOwn` for the edge that the point is beside.
    int turnsRound(const PlaneSegment& curve, bool isOwn) const {
        const bool startsBelow = hasBelow(curve.start());
        const bool endsBelow = hasBelow(curve.end());
        const bool isLeft = isOwn ? curve.bulge() <= 0.0 : isLeftOfChord(curve, startsBelow, endsBelow);
        int turns = 0;
        if (startsBelow && !endsBelow && isLeft) turns = 1;
        if (!startsBelow && endsBelow && !isLeft) turns = -1;
        if (curve.isStraight() || isLeft == (curve.bulge() > 0.0)) return turns;
        const bool isLeftOfCurve = isOwn || curve.distanceLeft(m_point) > 0.0;
        return isLeftOfCurve == isLeft ? turns : turns + (isLeft ? -1 : 1);
    }

private:
    double along(const AcGePoint2d& point) const { return m_isUpright ? point.y : point.x; }
    double across(const AcGePoint2d& point) const { return m_isUpright ? -point.x : point.y; }
    bool hasBelow(const AcGePoint2d& point) const {
        return m_isAbove ? across(point) <= across(m_point) : across(point) < across(m_point);
    }
    /// Agrees with hasBelow for a point above or below the whole chord.
    bool isLeftOfChord(const PlaneSegment& curve, bool startsBelow, bool endsBelow) const {
        const bool startsBehind = along(curve.start()) < along(m_point);
        if (startsBelow == endsBelow && startsBehind != (along(curve.end()) < along(m_point)))
            return startsBelow == startsBehind;
        return curve.isLeftOfChord(m_point);
    }

    AcGePoint2d m_point;
    bool m_isUpright;
    bool m_isAbove; ///< the edge's middle, seen along the ray, rather than below it
};

} // namespace

ContourArrangement::ContourArrangement(const ContourArea& first, const ContourArea& second,
                                       const std::optional<PlaneBox>& box, double tolerance)
    : m_tolerance(tolerance) {
    std::size_t count = 0;
    for (const ContourArea* area : {&first, &second})
        for (const ContourLoop& loop : *area) count += loop.vertices.size();
    double reach = 0.0;
    if (box) {
        m_origin.set(0.5 * box->lowX + 0.5 * box->highX, 0.5 * box->lowY + 0.5 * box->highY);
        reach = box->largerSide();
    }
    m_grid.emplace(tolerance, reach, static_cast<int>(count));
    m_nodes.reserve(count);
    m_segments.reserve(count);
    m_curves.reserve(count);
    m_sources.reserve(count);
    for (const ContourLoop& loop : first) addLoop(loop, 0);
    for (const ContourLoop& loop : second) addLoop(loop, 1);
    const int givenCount = static_cast<int>(m_nodes.size());
    meetAll();
    cutAtNearNodes(givenCount);
    makeGraph();
    // Along the shorter side of the whole the rays meet fewer others.
    findWindings(box && box->highX - box->lowX > box->highY - box->lowY);
}

// ---- nodes and segments ----

void ContourArrangement::addLoop(const ContourLoop& loop, int area) {
    if (!bounds(loop)) return;
    const auto nodeOf = [&](const ContourVertex& vertex) {
        const AcGePoint2d given(vertex.x, vertex.y);
        return nodeAt(given + -m_origin, &given);
    };
    const int first = nodeOf(loop.vertices.front());
    int from = first;
    for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        const bool isLast = i + 1 == loop.vertices.size();
        const ContourVertex& next = isLast ? loop.vertices.front() : loop.vertices[i + 1];
        const int to = isLast ? first : nodeOf(next);
        addSource(loop.vertices[i], next, from, to, area);
        from = to;
    }
}

/// Arcs of more than half a circle are cut in their middle.
void ContourArrangement::addSource(const ContourVertex& vertex, const ContourVertex& next, int from, int to,
                                   int area) {
    const double bulge = vertex.bulge;
    m_sources.push_back({bulge, 0});
    if (std::abs(bulge) <= 1.0) {
        addSegment(from, to, bulge, area);
        return;
    }
    const AcGePoint2d start = AcGePoint2d(vertex.x, vertex.y) + -m_origin;
    const AcGePoint2d end = AcGePoint2d(next.x, next.y) + -m_origin;
    const AcGeVector2d chord = end - start;
    const int middle = nodeAt(start + chord * 0.5 - chord.perpVector() * (0.5 * bulge), nullptr);
    const double half = (std::sqrt(1.0 + bulge * bulge) - 1.0) / bulge;
    addSegment(from, middle, half, area);
    addSegment(middle, to, half, area);
}

void ContourArrangement::addSegment(int from, int to, double bulge, int area) {
    if (from == to) return;
    m_curves.emplace_back(pointOf(from), pointOf(to), bulge);
    m_segments.push_back({from, to, static_cast<int>(m_sources.size()) - 1, area});
}

/// The node within the tolerance of a point that is nearest to it; else a new one.
int ContourArrangement::nodeAt(const AcGePoint2d& point, const AcGePoint2d* given) {
    int nearest = -1;
    double distance = m_tolerance * m_tolerance;
    m_grid->anyNear(inSpace(point), [&](int node) {
        const double other = pointOf(node).distanceSqrdTo(point);
        if (other > distance) return false;
        distance = other;
        nearest = node;
        return false;
    });
    if (nearest >= 0) return nearest;
    const int node = static_cast<int>(m_nodes.size());
    m_nodes.push_back({point, given ? *given : point + m_origin});
    m_grid->add(inSpace(point), node);
    return node;
}

/// The segments as PiecePairs wants them.
class ContourArrangement::Pieces {
public:
    explicit Pieces(const ContourArrangement& own)
        : m_own(own) {
        m_boxes.reserve(own.m_segments.size());
        for (const PlaneSegment& curve : own.m_curves)
            m_boxes.push_back(
                boxOfSegment(curve.start(), curve.end(), curve.bulge()).widened(own.m_tolerance));
    }
    const std::vector<PlaneBox>& boxes() const { return m_boxes; }
    std::size_t count() const { return m_boxes.size(); }
    const PlaneBox& boxOf(std::size_t i) const { return m_boxes[i]; }
    PiecePairs::Hull hullOf(std::size_t i) const {
        const PlaneSegment& curve = m_own.m_curves[i];
        const AcGeVector2d rise = (curve.end() - curve.start()).perpVector() * (-0.5 * curve.bulge());
        return {curve.start(), curve.end(), rise, 2.0 * m_own.m_tolerance};
    }
    PiecePairs::Run runOf(std::size_t first, std::size_t end) const {
        PiecePairs::Run run{m_boxes[first], PiecePairs::kNone};
        unsigned int headings = ~0U;
        for (std::size_t i = first; i < end; ++i) {
            run.box.extend(m_boxes[i]);
            headings &= headingsOf(i);
        }
        run.headings = static_cast<std::uint8_t>(headings);
        return run;
    }

private:
    /// Straight segments of this many tolerances that go on one way meet where they follow on only.
    static constexpr double kClearTolerances = 1000.0;

    unsigned int headingsOf(std::size_t i) const {
        const PlaneSegment& curve = m_own.m_curves[i];
        const bool goesOn = i == 0 || m_own.m_segments[i - 1].to == m_own.m_segments[i].from;
        if (!goesOn || !curve.isStraight() || !(curve.chord() > kClearTolerances * m_own.m_tolerance))
            return PiecePairs::kNone;
        const AcGeVector2d step = curve.end() - curve.start();
        return PiecePairs::headingsOf(step.x, step.x, step.y, step.y);
    }

    const ContourArrangement& m_own;
    std::vector<PlaneBox> m_boxes;
};

/// Pairs that are met twice are cut at the same nodes twice, which comes to the same.
void ContourArrangement::meetAll() {
    const Pieces pieces(*this);
    bool areNeighboursFar = false;
    const auto meetPair = [&](std::size_t i, std::size_t j) {
        meet(static_cast<int>(i), static_cast<int>(j));
        return false;
    };
    (void)PiecePairs::any(pieces, meetPair, areNeighboursFar);
    if (areNeighboursFar)
        m_chain.emplace(pieces.boxes(), PiecePairs::planeOrder(pieces.boxes()));
    else
        m_chain.emplace(pieces.boxes());
}

// ---- cutting ----

void ContourArrangement::cut(int segment, int node) {
    m_cuts.push_back({segment, node, m_curves[at(segment)].fractionAt(pointOf(node))});
}

void ContourArrangement::meet(int first, int second) {
    const Segment& a = m_segments[at(first)];
    const Segment& b = m_segments[at(second)];
    const PlaneSegment& curveA = m_curves[at(first)];
    const PlaneSegment& curveB = m_curves[at(second)];
    const bool isFromShared = a.from == b.from || a.from == b.to;
    const bool isToShared = a.to == b.from || a.to == b.to;
    const bool areNeighbours = isFromShared || isToShared;
    if (!areNeighbours && (curveA.isClearOf(curveB, m_tolerance) || curveB.isClearOf(curveA, m_tolerance)))
        return;

    AcGePoint2d contacts[4];
    int contactCount = 0;
    const auto tryEnd = [&](int node, const PlaneSegment& other, int otherIndex, bool isShared) {
        const AcGePoint2d& point = pointOf(node);
        if (!isShared) {
            if (!other.touches(point, m_tolerance)) return;
            cut(otherIndex, node);
        }
        contacts[contactCount++] = point;
    };
    tryEnd(a.from, curveB, second, isFromShared);
    tryEnd(a.to, curveB, second, isToShared);
    if (b.from != a.from && b.from != a.to) tryEnd(b.from, curveA, first, false);
    if (b.to != a.from && b.to != a.to) tryEnd(b.to, curveA, first, false);
    if (contactCount > 0 && curveA.isStraight() && curveB.isStraight()) return;
    // Beside the common node, segments that turn away from each other's arcs meet nowhere else.
    if (areNeighbours && ((!curveA.isStraight() && curveA.hasBehindChord(curveB, m_tolerance)) ||
                          (!curveB.isStraight() && curveB.hasBehindChord(curveA, m_tolerance))))
        return;
    cross(first, second, contacts, contactCount);
}

/// Cuts both segments where they cross, but for crossings at which they only leave a contact.
void ContourArrangement::cross(int first, int second, const AcGePoint2d* contacts, int contactCount) {
    const PlaneSegment& curveA = m_curves[at(first)];
    const PlaneSegment& curveB = m_curves[at(second)];
    AcGePoint2d points[2];
    int count = crossingsOf(curveA, curveB, m_tolerance, points);
    if (count == 2 && runsAlong(curveA, curveB, points[0], points[1], m_tolerance)) {
        if (points[0].distanceSqrdTo(points[1]) > 0.0)
            points[0] =
                PlaneSegment(points[0], points[1], curveA.bulgeBetween(points[0], points[1])).middle();
        count = 1;
    }
    for (int i = 0; i < count; ++i) {
        const auto isAtCrossing = [&](const AcGePoint2d& contact) {
            return runsAlong(curveA, curveB, contact, points[i], m_tolerance);
        };
        if (std::any_of(contacts, contacts + contactCount, isAtCrossing)) continue;
        const int node = nodeAt(points[i], nullptr);
        for (const int segment : {first, second})
            if (node != m_segments[at(segment)].from && node != m_segments[at(segment)].to)
                cut(segment, node);
    }
}

/// Every segment passes every node farther off than the tolerance, or through it.
void ContourArrangement::cutAtNearNodes(int firstNode) {
    for (int node = firstNode; at(node) < m_nodes.size(); ++node) {
        const AcGePoint2d point = pointOf(node);
        const PlaneBox box{point.x, point.x, point.y, point.y};
        m_chain->forEachMeeting(box, [&](std::size_t i) {
            const Segment& segment = m_segments[i];
            if (node != segment.from && node != segment.to && m_curves[i].touches(point, m_tolerance))
                cut(static_cast<int>(i), node);
        });
    }
}

// ---- the graph ----

void ContourArrangement::makeGraph() {
    std::sort(m_cuts.begin(), m_cuts.end(), [](const Cut& a, const Cut& b) {
        if (a.segment != b.segment) return a.segment < b.segment;
        return a.fraction != b.fraction ? a.fraction < b.fraction : a.node < b.node;
    });
    std::vector<GraphEdge> edges;
    edges.reserve(m_segments.size() + m_cuts.size());
    m_pieces.reserve(m_segments.size() + m_cuts.size());
    m_firstPiece.reserve(m_segments.size() + 1);
    m_lastEdgeAt.assign(m_nodes.size(), -1);
    std::size_t nextCut = 0;
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        m_firstPiece.push_back(static_cast<int>(m_pieces.size()));
        int from = m_segments[i].from;
        for (; nextCut < m_cuts.size() && at(m_cuts[nextCut].segment) == i; ++nextCut) {
            const int node = m_cuts[nextCut].node;
            addPiece(i, from, node, edges);
            from = node;
        }
        addPiece(i, from, m_segments[i].to, edges);
    }
    m_firstPiece.push_back(static_cast<int>(m_pieces.size()));
    m_graph.emplace(std::move(edges), std::move(m_curves), static_cast<int>(m_nodes.size()));
}

/// Pieces of several segments that run between the same nodes within the tolerance are one edge.
void ContourArrangement::addPiece(std::size_t index, int from, int to, std::vector<GraphEdge>& edges) {
    if (from == to) return;
    const Segment& segment = m_segments[index];
    int curve = static_cast<int>(index);
    if (from != segment.from || to != segment.to) {
        curve = static_cast<int>(m_curves.size());
        const double bulge = m_curves[index].bulgeBetween(pointOf(from), pointOf(to));
        m_curves.emplace_back(pointOf(from), pointOf(to), bulge);
    }
    const int order = m_sources[at(segment.source)].pieceCount++;
    const double height = m_curves[at(curve)].height();
    const int smaller = std::min(from, to);
    for (int i = m_lastEdgeAt[at(smaller)]; i >= 0; i = m_previousEdge[at(i)]) {
        GraphEdge& edge = edges[at(i)];
        const bool backward = edge.from == to && edge.to == from;
        if (!backward && (edge.from != from || edge.to != to)) continue;
        const double difference = (backward ? -height : height) - m_curves[at(edge.curve)].height();
        if (std::abs(difference) > kSameCurve * m_tolerance) continue;
        edge.runs[segment.area] += backward ? -1 : 1;
        m_pieces.push_back({i, backward});
        return;
    }
    GraphEdge edge{from, to, curve, {0, 0}, {0, 0}, segment.source, order};
    edge.runs[segment.area] = 1;
    m_pieces.push_back({static_cast<int>(edges.size()), false});
    m_previousEdge.push_back(std::exchange(m_lastEdgeAt[at(smaller)], static_cast<int>(edges.size())));
    edges.push_back(edge);
}

// ---- winding numbers ----

/// Windings spread from edge to edge round the nodes; for each connected part a ray from the middle of its
/// longest edge says where they begin, and one from another edge confirms it.
void ContourArrangement::findWindings(bool isUpright) {
    std::vector<int> component;
    const std::vector<GraphEdge>& edges = m_graph->edges();
    const auto isShorter = [&](int i, int j) {
        return m_graph->curveOf(i).chord() < m_graph->curveOf(j).chord();
    };
    for (int edge = 0; at(edge) < edges.size(); ++edge) {
        if (m_graph->isReached(edge)) continue;
        m_isConsistent = m_graph->reach(edge, component) && m_isConsistent;
        const int longest = *std::max_element(component.begin(), component.end(), isShorter);
        int windings[2];
        windingsLeftOf(longest, isUpright, windings);
        const int* left = edges[at(longest)].left;
        const int shift[2] = {windings[0] - left[0], windings[1] - left[1]};
        m_graph->shiftWindings(component, shift);
        const int other = component[component.size() / 2];
        windingsLeftOf(other, isUpright, windings);
        for (int area = 0; area < 2; ++area)
            m_isConsistent = m_isConsistent && windings[area] == edges[at(other)].left[area];
    }
}

void ContourArrangement::windingsLeftOf(int edge, bool isUpright, int windings[2]) const {
    windings[0] = windings[1] = 0;
    const Viewpoint view(m_graph->curveOf(edge), isUpright);
    const auto countTurns = [&](std::size_t i) {
        int& winding = windings[m_segments[i].area];
        const PlaneSegment& whole = m_graph->curve(static_cast<int>(i));
        if (std::abs(whole.distanceLeft(view.point())) > kSameCurve * m_tolerance) {
            winding += view.turnsRound(whole, false); // its pieces would come to the same
            return;
        }
        for (int k = m_firstPiece[i]; k < m_firstPiece[i + 1]; ++k) {
            const Piece& piece = m_pieces[at(k)];
            const int turns = view.turnsRound(m_graph->curveOf(piece.edge), piece.edge == edge);
            winding += piece.isBackward ? -turns : turns;
        }
    };
    m_chain->forEach([&](const PlaneBox& box) { return view.mayRunRound(box); }, countTurns);
}

// ---- results ----

int ContourArrangement::sharedEdgeCount() const {
    const std::vector<GraphEdge>& edges = m_graph->edges();
    return static_cast<int>(std::count_if(edges.begin(), edges.end(), [](const GraphEdge& edge) {
        return edge.runs[0] != 0 && edge.runs[1] != 0;
    }));
}

ContourArea ContourArrangement::loopsOf(const std::vector<std::vector<int>>& runs) const {
    ContourArea area;
    std::vector<std::pair<double, std::size_t>> order;
    for (const std::vector<int>& run : runs) {
        ContourLoop loop = loopOf(run);
        double length = 0.0;
        for (const int halfEdge : run) length += m_graph->curveOf(EdgeGraph::edgeOf(halfEdge)).chord();
        const double size = signedArea(loop);
        if (std::abs(size) <= length * m_tolerance) continue;
        order.emplace_back(size > 0.0 ? -size : -1.0 / size, area.size());
        area.push_back(std::move(loop));
    }
    std::sort(order.begin(), order.end());
    ContourArea sorted;
    sorted.reserve(area.size());
    for (const auto& [key, index] : order) sorted.push_back(std::move(area[index]));
    return sorted;
}

/// Do the pieces of two half-edges follow each other on one segment of the input.
bool ContourArrangement::continues(int halfEdge, int next) const {
    const GraphEdge& one = m_graph->edges()[at(EdgeGraph::edgeOf(halfEdge))];
    const GraphEdge& two = m_graph->edges()[at(EdgeGraph::edgeOf(next))];
    const bool backward = EdgeGraph::isBackward(halfEdge);
    return one.source == two.source && backward == EdgeGraph::isBackward(next) &&
           two.order == one.order + (backward ? -1 : 1);
}

ContourLoop ContourArrangement::loopOf(const std::vector<int>& halfEdges) const {
    const std::size_t count = halfEdges.size();
    std::vector<std::size_t> begins;
    for (std::size_t i = 0; i < count; ++i)
        if (!continues(halfEdges[(i + count - 1) % count], halfEdges[i])) begins.push_back(i);
    if (begins.size() < 2) { // an arc whose ends met
        begins.clear();
        for (std::size_t i = 0; i < count; ++i) begins.push_back(i);
    }
    ContourLoop loop;
    loop.vertices.reserve(begins.size());
    for (std::size_t i = 0; i < begins.size(); ++i) {
        const std::size_t end = i + 1 < begins.size() ? begins[i + 1] : begins[0] + count;
        const AcGePoint2d& point = m_nodes[at(m_graph->startOf(halfEdges[begins[i]]))].given;
        loop.vertices.push_back({point.x, point.y, bulgeOf(halfEdges, begins[i], end - begins[i])});
    }
    return loop;
}

/// Of `count` half-edges, pieces of one segment, from `begin` on.
double ContourArrangement::bulgeOf(const std::vector<int>& halfEdges, std::size_t begin,
                                   std::size_t count) const {
    const GraphEdge& first = m_graph->edges()[at(EdgeGraph::edgeOf(halfEdges[begin]))];
    const Source& source = m_sources[at(first.source)];
    const double sense = EdgeGraph::isBackward(halfEdges[begin]) ? -1.0 : 1.0;
    if (at(source.pieceCount) == count) return source.bulge == 0.0 ? 0.0 : sense * source.bulge;
    double bulge = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const int halfEdge = halfEdges[(begin + i) % halfEdges.size()];
        const double next = sense * m_graph->curveOf(EdgeGraph::edgeOf(halfEdge)).bulge();
        bulge = (bulge + next) / (1.0 - bulge * next); // sum of angles by their tangents
    }
    return bulge;
}

} // namespace vexo

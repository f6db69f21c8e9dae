#include "contourarrangement.h"

#include <algorithm>
#include <utility>

namespace VEXOGeometryTools {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

AcGePoint3d inSpace(const AcGePoint2d& point) { return {point.x, point.y, 0.0}; }

/// Does `segment` keep within the tolerance of `other` from one of its points to another. Both points do.
bool runsAlong(const PlaneSegment& segment, const PlaneSegment& other, const AcGePoint2d& from,
               const AcGePoint2d& to, double tolerance) {
    if (from.distanceSqrdTo(to) <= tolerance * tolerance) return true;
    const PlaneSegment piece(from, to, segment.bulgeBetween(from, to));
    return std::abs(other.distanceLeft(piece.middle())) <= tolerance;
}

/// A point beside the middle of an edge, so near that only exact ties are decided by it.
struct Viewpoint {
    AcGePoint2d point;
    bool isAbove; ///< the edge's point, rather than below it

    bool hasBelow(const AcGePoint2d& other) const { return isAbove ? other.y <= point.y : other.y < point.y; }
    /// Agrees with hasBelow for a point above or below the whole chord.
    bool isLeftOfChord(const PlaneSegment& curve) const {
        const bool startsBelow = hasBelow(curve.start());
        const bool startsLeft = curve.start().x < point.x;
        if (startsBelow == hasBelow(curve.end()) && startsLeft != (curve.end().x < point.x))
            return startsBelow == startsLeft;
        return curve.isLeftOfChord(point);
    }
};

/// What the edge adds to the winding number of a point: the crossing of a ray along the x axis with its
/// chord, and the part between chord and arc.
int turnsRound(const PlaneSegment& curve, const Viewpoint& view, bool isLeftOfChord, bool isLeftOfCurve) {
    const bool startsBelow = view.hasBelow(curve.start());
    const bool endsBelow = view.hasBelow(curve.end());
    int turns = 0;
    if (startsBelow && !endsBelow && isLeftOfChord) turns = 1;
    if (!startsBelow && endsBelow && !isLeftOfChord) turns = -1;
    if (curve.bulge() > 0.0 && !isLeftOfChord && isLeftOfCurve) ++turns;
    if (curve.bulge() < 0.0 && isLeftOfChord && !isLeftOfCurve) --turns;
    return turns;
}

} // namespace

ContourArrangement::ContourArrangement(const ContourArea& first, const ContourArea& second, double tolerance)
    : m_tolerance(tolerance) {
    const std::optional<PlaneBox> box = boxOf(first, second);
    std::size_t count = 0;
    for (const ContourArea* area : {&first, &second})
        for (const ContourLoop& loop : *area) count += loop.vertices.size();
    double reach = 0.0;
    if (box) {
        m_origin.set(0.5 * box->lowX + 0.5 * box->highX, 0.5 * box->lowY + 0.5 * box->highY);
        reach = std::max(box->highX - box->lowX, box->highY - box->lowY);
    }
    m_grid.emplace(tolerance, reach, static_cast<int>(count));
    m_segments.reserve(count + 8);
    m_sources.reserve(count);
    for (const ContourLoop& loop : first) addLoop(loop, 0);
    for (const ContourLoop& loop : second) addLoop(loop, 1);
    indexSegments();
    const int givenCount = static_cast<int>(m_nodes.size());
    m_tree->forEachPair(
        [&](std::size_t i, std::size_t j) { meet(static_cast<int>(i), static_cast<int>(j)); });
    cutAtNearNodes(givenCount);
    makeGraph();
    findWindings();
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
    m_segments.push_back({PlaneSegment(m_nodes[at(from)], m_nodes[at(to)], bulge), from, to,
                          static_cast<int>(m_sources.size()) - 1, area});
}

/// The node within the tolerance of a point that is nearest to it; else a new one.
int ContourArrangement::nodeAt(const AcGePoint2d& point, const AcGePoint2d* given) {
    int nearest = -1;
    double distance = m_tolerance * m_tolerance;
    m_grid->anyNear(inSpace(point), [&](int node) {
        const double other = m_nodes[at(node)].distanceSqrdTo(point);
        if (other > distance) return false;
        distance = other;
        nearest = node;
        return false;
    });
    if (nearest >= 0) return nearest;
    const int node = static_cast<int>(m_nodes.size());
    m_nodes.push_back(point);
    m_given.push_back(given ? *given : point + m_origin);
    m_grid->add(inSpace(point), node);
    return node;
}

void ContourArrangement::indexSegments() {
    std::vector<PlaneBox> boxes;
    boxes.reserve(m_segments.size());
    for (const Segment& segment : m_segments) boxes.push_back(segment.curve.box(m_tolerance));
    m_tree.emplace(std::move(boxes));
}

// ---- cutting ----

void ContourArrangement::cut(int segment, int node) {
    m_cuts.push_back({segment, node, m_segments[at(segment)].curve.fractionAt(m_nodes[at(node)])});
}

void ContourArrangement::meet(int first, int second) {
    const Segment& a = m_segments[at(first)];
    const Segment& b = m_segments[at(second)];
    AcGePoint2d contacts[4];
    int contactCount = 0;
    const auto tryEnd = [&](int node, const Segment& other, int otherIndex, bool isShared) {
        const AcGePoint2d& point = m_nodes[at(node)];
        if (!isShared) {
            if (!other.curve.touches(point, m_tolerance)) return;
            cut(otherIndex, node);
        }
        contacts[contactCount++] = point;
    };
    for (const int node : {a.from, a.to}) tryEnd(node, b, second, node == b.from || node == b.to);
    for (const int node : {b.from, b.to})
        if (node != a.from && node != a.to) tryEnd(node, a, first, false);
    if (contactCount > 0 && a.curve.isStraight() && b.curve.isStraight()) return;

    AcGePoint2d points[2];
    int count = crossingsOf(a.curve, b.curve, m_tolerance, points);
    if (count == 2 && runsAlong(a.curve, b.curve, points[0], points[1], m_tolerance)) {
        if (points[0].distanceSqrdTo(points[1]) > 0.0)
            points[0] =
                PlaneSegment(points[0], points[1], a.curve.bulgeBetween(points[0], points[1])).middle();
        count = 1;
    }
    for (int i = 0; i < count; ++i) {
        const bool isContact =
            std::any_of(contacts, contacts + contactCount, [&](const AcGePoint2d& contact) {
                return runsAlong(a.curve, b.curve, contact, points[i], m_tolerance);
            });
        if (isContact) continue;
        const int node = nodeAt(points[i], nullptr);
        if (node != a.from && node != a.to) cut(first, node);
        if (node != b.from && node != b.to) cut(second, node);
    }
}

/// Every segment passes every node farther off than the tolerance, or through it.
void ContourArrangement::cutAtNearNodes(int firstNode) {
    for (int node = firstNode; at(node) < m_nodes.size(); ++node) {
        const AcGePoint2d point = m_nodes[at(node)];
        const PlaneBox box{point.x, point.y, point.x, point.y};
        m_tree->forEach([&](const PlaneBox& other) { return other.meets(box); },
                        [&](std::size_t i) {
                            const Segment& segment = m_segments[i];
                            if (node != segment.from && node != segment.to &&
                                segment.curve.touches(point, m_tolerance))
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
        m_firstPiece.push_back(m_pieces.size());
        int from = m_segments[i].from;
        for (; nextCut < m_cuts.size() && at(m_cuts[nextCut].segment) == i; ++nextCut) {
            const int node = m_cuts[nextCut].node;
            addPiece(m_segments[i], from, node, edges);
            from = node;
        }
        addPiece(m_segments[i], from, m_segments[i].to, edges);
    }
    m_firstPiece.push_back(m_pieces.size());
    m_graph.emplace(std::move(edges), static_cast<int>(m_nodes.size()));
}

/// Pieces of several segments that run between the same nodes within the tolerance are one edge.
void ContourArrangement::addPiece(const Segment& segment, int from, int to, std::vector<GraphEdge>& edges) {
    if (from == to) return;
    const AcGePoint2d& start = m_nodes[at(from)];
    const AcGePoint2d& end = m_nodes[at(to)];
    const bool isWhole = from == segment.from && to == segment.to;
    const PlaneSegment curve =
        isWhole ? segment.curve : PlaneSegment(start, end, segment.curve.bulgeBetween(start, end));
    Source& source = m_sources[at(segment.source)];
    const int order = source.pieceCount++;
    const int smaller = std::min(from, to);
    for (int i = m_lastEdgeAt[at(smaller)]; i >= 0; i = m_previousEdge[at(i)]) {
        GraphEdge& edge = edges[at(i)];
        const bool backward = edge.from == to && edge.to == from;
        if (!backward && (edge.from != from || edge.to != to)) continue;
        const double height = backward ? -curve.height() : curve.height();
        if (std::abs(height - edge.curve.height()) > 2.0 * m_tolerance) continue;
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
void ContourArrangement::findWindings() {
    std::vector<int> component;
    const std::vector<GraphEdge>& edges = m_graph->edges();
    for (int edge = 0; at(edge) < edges.size(); ++edge) {
        if (m_graph->isReached(edge)) continue;
        m_isConsistent = m_graph->reach(edge, component) && m_isConsistent;
        const auto isShorter = [&](int i, int j) {
            return edges[at(i)].curve.chord() < edges[at(j)].curve.chord();
        };
        const int longest = *std::max_element(component.begin(), component.end(), isShorter);
        int windings[2];
        windingsLeftOf(longest, windings);
        const int shift[2] = {windings[0] - edges[at(longest)].left[0],
                              windings[1] - edges[at(longest)].left[1]};
        m_graph->shiftWindings(component, shift);
        const int other = component[component.size() / 2];
        windingsLeftOf(other, windings);
        for (int area = 0; area < 2; ++area)
            m_isConsistent = m_isConsistent && windings[area] == edges[at(other)].left[area];
    }
}

void ContourArrangement::windingsLeftOf(int edge, int windings[2]) const {
    windings[0] = windings[1] = 0;
    const std::vector<GraphEdge>& edges = m_graph->edges();
    const PlaneSegment& own = edges[at(edge)].curve;
    const AcGePoint2d point = own.middle();
    const Viewpoint view{point, own.end().x > own.start().x};
    const auto isRight = [&](const PlaneBox& box) {
        return box.lowY <= point.y && point.y <= box.highY && box.highX >= point.x;
    };
    m_tree->forEach(isRight, [&](std::size_t i) {
        for (std::size_t k = m_firstPiece[i]; k < m_firstPiece[i + 1]; ++k) {
            const GraphEdge& other = edges[at(m_pieces[k].edge)];
            const bool isSame = m_pieces[k].edge == edge;
            const bool isLeftOfChord = isSame ? other.curve.bulge() <= 0.0 : view.isLeftOfChord(other.curve);
            const bool isLeft = isSame || other.curve.distanceLeft(point) > 0.0;
            const int turns = turnsRound(other.curve, view, isLeftOfChord, isLeft);
            windings[m_segments[i].area] += m_pieces[k].isBackward ? -turns : turns;
        }
    });
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
        for (const int halfEdge : run)
            length += m_graph->edges()[at(EdgeGraph::edgeOf(halfEdge))].curve.chord();
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
        const AcGePoint2d& point = m_given[at(m_graph->startOf(halfEdges[begins[i]]))];
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
        const double next = sense * m_graph->edges()[at(EdgeGraph::edgeOf(halfEdge))].curve.bulge();
        bulge = (bulge + next) / (1.0 - bulge * next); // sum of angles by their tangents
    }
    return bulge;
}

} // namespace VEXOGeometryTools

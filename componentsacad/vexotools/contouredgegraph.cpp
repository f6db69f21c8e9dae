#include "contouredgegraph.h"

#include <algorithm>
#include <utility>

namespace vexo {

namespace {

/// Edges that leave a node are compared at this share of the shorter one's chord: far out, where they have
/// parted, yet before two half circles that leave in one direction face away from each other.
constexpr double kCompareAt = 0.7;
/// Directions nearer than this (as a sine) are compared pair by pair.
constexpr double kSimilarDirections = 0.05;

std::size_t at(int index) { return static_cast<std::size_t>(index); }

/// Grows with the direction's angle, from 0 to 4.
double pseudoAngle(const AcGeVector2d& direction) {
    const double share = direction.x / (std::abs(direction.x) + std::abs(direction.y));
    return direction.y < 0.0 ? 3.0 + share : 1.0 - share;
}

} // namespace

EdgeGraph::EdgeGraph(std::vector<GraphEdge> edges, std::vector<PlaneSegment> curves, int nodeCount)
    : m_edges(std::move(edges))
    , m_curves(std::move(curves))
    , m_firstAt(at(nodeCount) + 1, 0)
    , m_around(2 * m_edges.size())
    , m_placeOf(2 * m_edges.size())
    , m_isReached(m_edges.size(), 0)
    , m_isPassed(at(nodeCount), 0) {
    const int halfEdgeCount = static_cast<int>(m_placeOf.size());
    for (const GraphEdge& edge : m_edges) {
        ++m_firstAt[at(edge.from) + 1];
        ++m_firstAt[at(edge.to) + 1];
    }
    for (std::size_t i = 1; i < m_firstAt.size(); ++i) m_firstAt[i] += m_firstAt[i - 1];
    std::vector<int> next(m_firstAt.begin(), m_firstAt.end() - 1);
    for (int i = 0; i < halfEdgeCount; ++i) m_around[at(next[at(startOf(i))]++)] = i;
    for (int node = 0; node < nodeCount; ++node) orderAround(node);
    for (int i = 0; i < halfEdgeCount; ++i) m_placeOf[at(m_around[at(i)])] = i;
}

int EdgeGraph::startOf(int halfEdge) const {
    const GraphEdge& edge = m_edges[at(edgeOf(halfEdge))];
    return isBackward(halfEdge) ? edge.to : edge.from;
}

PlaneSegment EdgeGraph::leaving(int halfEdge) const {
    const PlaneSegment& curve = curveOf(edgeOf(halfEdge));
    return isBackward(halfEdge) ? curve.reversed() : curve;
}

/// Of two half-edges that leave a node in much the same direction.
bool EdgeGraph::isLeftOrEqual(int halfEdge, int other) const {
    const PlaneSegment one = leaving(halfEdge);
    const PlaneSegment two = leaving(other);
    if (endOf(halfEdge) == endOf(other)) return one.bulge() <= two.bulge();
    const double distance = kCompareAt * std::min(one.chord(), two.chord());
    return two.directionAt(distance).crossProduct(one.directionAt(distance)) >= 0.0;
}

void EdgeGraph::orderAround(int node) {
    const int first = m_firstAt[at(node)];
    const int count = m_firstAt[at(node) + 1] - first;
    if (count < 3) return;
    double shortest = curveOf(edgeOf(m_around[at(first)])).chord();
    for (int i = 1; i < count; ++i)
        shortest = std::min(shortest, curveOf(edgeOf(m_around[at(first + i)])).chord());
    std::vector<std::pair<double, int>> order;
    std::vector<AcGeVector2d> directions;
    for (int i = 0; i < count; ++i) {
        directions.push_back(leaving(m_around[at(first + i)]).directionAt(kCompareAt * shortest));
        order.emplace_back(pseudoAngle(directions.back()), i);
    }
    std::sort(order.begin(), order.end());
    std::vector<int> halfEdges;
    halfEdges.reserve(order.size());
    for (const auto& [angle, i] : order) halfEdges.push_back(m_around[at(first + i)]);
    const auto isSimilar = [&](int i, int j) {
        const AcGeVector2d& one = directions[at(order[at(i)].second)];
        const AcGeVector2d& two = directions[at(order[at(j)].second)];
        return one.dotProduct(two) > 0.0 && std::abs(one.crossProduct(two)) < kSimilarDirections;
    };
    bool changed = true;
    for (int round = 0; changed && round < count; ++round) {
        changed = false;
        for (int i = 0; i < count; ++i) {
            const int j = (i + 1) % count;
            if (!isSimilar(i, j) || isLeftOrEqual(halfEdges[at(j)], halfEdges[at(i)])) continue;
            std::swap(halfEdges[at(i)], halfEdges[at(j)]);
            std::swap(order[at(i)], order[at(j)]);
            changed = true;
        }
    }
    std::copy(halfEdges.begin(), halfEdges.end(), m_around.begin() + first);
}

bool EdgeGraph::reach(int edge, std::vector<int>& component) {
    bool isConsistent = true;
    component.assign(1, edge);
    m_isReached[at(edge)] = 1;
    std::vector<int> open{2 * edge, 2 * edge + 1};
    const auto leftOf = [&](int halfEdge, int area) {
        const GraphEdge& known = m_edges[at(edgeOf(halfEdge))];
        return isBackward(halfEdge) ? known.left[area] - known.runs[area] : known.left[area];
    };
    while (!open.empty()) {
        // Round the node that this half-edge leaves: what is left of one is right of the next.
        const int begin = open.back();
        open.pop_back();
        const int node = startOf(begin);
        if (std::exchange(m_isPassed[at(node)], 1) != 0) continue;
        int previous = begin;
        int place = m_placeOf[at(begin)];
        do {
            if (++place == m_firstAt[at(node) + 1]) place = m_firstAt[at(node)];
            const int halfEdge = m_around[at(place)];
            GraphEdge& next = m_edges[at(edgeOf(halfEdge))];
            const bool backward = isBackward(halfEdge);
            for (int area = 0; area < 2; ++area) {
                const int right = leftOf(previous, area);
                const int left = backward ? right : right + next.runs[area];
                if (!m_isReached[at(edgeOf(halfEdge))])
                    next.left[area] = left;
                else
                    isConsistent = isConsistent && next.left[area] == left;
            }
            if (!m_isReached[at(edgeOf(halfEdge))]) {
                m_isReached[at(edgeOf(halfEdge))] = 1;
                component.push_back(edgeOf(halfEdge));
                open.push_back(halfEdge ^ 1);
            }
            previous = halfEdge;
        } while (previous != begin);
    }
    return isConsistent;
}

void EdgeGraph::shiftWindings(const std::vector<int>& component, const int by[2]) {
    for (const int edge : component)
        for (int area = 0; area < 2; ++area) m_edges[at(edge)].left[area] += by[area];
}

/// The boundary turns as far left as it can: parts that touch at a node stay apart.
int EdgeGraph::nextOnBoundary(int arrival, const std::vector<signed char>& side,
                              const std::vector<char>& isUsed) const {
    const int node = endOf(arrival);
    const int begin = m_placeOf[at(arrival ^ 1)];
    int place = begin;
    do {
        if (place-- == m_firstAt[at(node)]) place = m_firstAt[at(node) + 1] - 1;
        const int halfEdge = m_around[at(place)];
        const int wanted = isBackward(halfEdge) ? -1 : 1;
        if (side[at(edgeOf(halfEdge))] == wanted && !isUsed[at(edgeOf(halfEdge))]) return halfEdge;
    } while (place != begin);
    return -1;
}

std::vector<std::vector<int>> EdgeGraph::loopsAround(const std::vector<signed char>& side) const {
    std::vector<std::vector<int>> loops;
    std::vector<char> isUsed(m_edges.size(), 0);
    std::vector<int> placeOnPath(m_firstAt.size() - 1, -1);
    std::vector<int> path;
    for (int edge = 0; at(edge) < m_edges.size(); ++edge) {
        if (side[at(edge)] == 0 || isUsed[at(edge)]) continue;
        int halfEdge = side[at(edge)] > 0 ? 2 * edge : 2 * edge + 1;
        while (halfEdge >= 0) {
            isUsed[at(edgeOf(halfEdge))] = 1;
            placeOnPath[at(startOf(halfEdge))] = static_cast<int>(path.size());
            path.push_back(halfEdge);
            const int begin = placeOnPath[at(endOf(halfEdge))];
            if (begin >= 0) {
                loops.emplace_back(path.begin() + begin, path.end());
                for (const int passed : loops.back()) placeOnPath[at(startOf(passed))] = -1;
                path.resize(at(begin));
                if (path.empty()) break;
            }
            halfEdge = nextOnBoundary(halfEdge, side, isUsed);
        }
        for (const int passed : path) placeOnPath[at(startOf(passed))] = -1;
        path.clear();
    }
    return loops;
}

} // namespace vexo

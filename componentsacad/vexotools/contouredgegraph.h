#pragma once

#include "contourplanesegment.h"

#include <vector>

namespace vexo {

/// A piece of boundary between two nodes, crossed by no other.
struct GraphEdge {
    int from = 0;
    int to = 0;
    int curve = 0;
    /// How often each of the two areas' boundaries runs along it, forward less backward: the winding number
    /// to its left less the one to its right.
    int runs[2] = {0, 0};
    /// The winding numbers of the two areas to its left.
    int left[2] = {0, 0};
    /// Which segment of the input it is a piece of, and the how manieth, counted along that segment. It runs
    /// in that segment's direction.
    int source = 0;
    int order = 0;
};

/// The plane cut up by edges. Half-edge 2e leaves edge e's start along it, half-edge 2e + 1 its end backward.
class EdgeGraph {
public:
    /// Each node must be left and entered equally often by either area's runs. Edges that come nearer to each
    /// other than `tolerance` do so at common nodes only.
    /// An edge's curve is its number in `curves`.
    EdgeGraph(std::vector<GraphEdge> edges, std::vector<PlaneSegment> curves, int nodeCount);

    const std::vector<GraphEdge>& edges() const { return m_edges; }
    const PlaneSegment& curve(int number) const { return m_curves[static_cast<std::size_t>(number)]; }
    const PlaneSegment& curveOf(int edge) const {
        return curve(m_edges[static_cast<std::size_t>(edge)].curve);
    }
    static int edgeOf(int halfEdge) { return halfEdge / 2; }
    static bool isBackward(int halfEdge) { return halfEdge % 2 != 0; }
    int startOf(int halfEdge) const;
    int endOf(int halfEdge) const { return startOf(halfEdge ^ 1); }

    /// The edges that hang together with `edge`; their winding numbers are set as if those to the left of
    /// `edge` were 0. False when they contradict each other: then the edges cross where no node is.
    bool reach(int edge, std::vector<int>& component);
    bool isReached(int edge) const { return m_isReached[static_cast<std::size_t>(edge)]; }
    void shiftWindings(const std::vector<int>& component, const int by[2]);

    /// The boundary of a part of the plane, as closed runs of half-edges with that part to their left, none
    /// of which passes a node twice. `side` says of each edge where the part is: 1 only to its left, -1 only
    /// to its right, 0 on both sides or none.
    std::vector<std::vector<int>> loopsAround(const std::vector<signed char>& side) const;

private:
    PlaneSegment leaving(int halfEdge) const;
    void orderAround(int node);
    bool isLeftOrEqual(int halfEdge, int other) const;
    int nextOnBoundary(int arrival, const std::vector<signed char>& side,
                       const std::vector<char>& isUsed) const;

    std::vector<GraphEdge> m_edges;
    std::vector<PlaneSegment> m_curves;
    std::vector<int> m_firstAt;    ///< of each node, where its half-edges begin in m_around
    std::vector<int> m_around;     ///< half-edges that leave a node, counter-clockwise
    std::vector<int> m_placeOf;    ///< of each half-edge in m_around
    std::vector<char> m_isReached; ///< of each edge
    std::vector<char> m_isPassed;  ///< of each node, by reach
};

} // namespace vexo

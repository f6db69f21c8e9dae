#pragma once

#include "contourareas.h"
#include "contourboxchain.h"
#include "contouredgegraph.h"
#include "contourpointgrid.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace vexo {

/// The boundaries of two areas cut up at all places where they meet, with the winding numbers of both areas
/// on either side of each piece.
class ContourArrangement {
public:
    /// `box` is that of both areas, as boxOf gives it.
    ContourArrangement(const ContourArea& first, const ContourArea& second,
                       const std::optional<PlaneBox>& box, double tolerance);

    /// False when the winding numbers contradict each other: some pieces cross where no node is.
    bool isConsistent() const { return m_isConsistent; }

    /// How many pieces of boundary the two areas share.
    int sharedEdgeCount() const;

    /// Boundary loops of where isInside(windings) holds, windings being those of the two areas at a point.
    /// Loops thinner than the tolerance are left out.
    template <typename Inside>
    ContourArea areaWhere(const Inside& isInside) const {
        std::vector<signed char> side;
        side.reserve(m_graph->edges().size());
        for (const GraphEdge& edge : m_graph->edges()) {
            const int right[2] = {edge.left[0] - edge.runs[0], edge.left[1] - edge.runs[1]};
            side.push_back(static_cast<signed char>(isInside(edge.left) - isInside(right)));
        }
        return loopsOf(m_graph->loopsAround(side));
    }

private:
    struct Node {
        AcGePoint2d point; ///< about the origin
        AcGePoint2d given;
    };
    /// Its curve has the segment's own number.
    struct Segment {
        int from;
        int to;
        int source;
        int area;
    };
    /// A node that lies on a segment.
    struct Cut {
        int segment;
        int node;
        double fraction;
    };
    /// A piece of a segment as an edge of the graph.
    struct Piece {
        int edge;
        bool isBackward;
    };
    /// A segment as it was given.
    struct Source {
        double bulge;
        int pieceCount;
    };

    void addLoop(const ContourLoop& loop, int area);
    void addSource(const ContourVertex& vertex, const ContourVertex& next, int from, int to, int area);
    void addSegment(int from, int to, double bulge, int area);
    const AcGePoint2d& pointOf(int node) const { return m_nodes[static_cast<std::size_t>(node)].point; }
    int nodeAt(const AcGePoint2d& point, const AcGePoint2d* given);
    class Pieces;
    void meetAll();
    void meet(int first, int second);
    void cross(int first, int second, const AcGePoint2d* contacts, int contactCount);
    void cut(int segment, int node);
    void cutAtNearNodes(int firstNode);
    void makeGraph();
    void addPiece(std::size_t segment, int from, int to, std::vector<GraphEdge>& edges);
    void findWindings(bool isUpright);
    void windingsLeftOf(int edge, bool isUpright, int windings[2]) const;
    ContourArea loopsOf(const std::vector<std::vector<int>>& runs) const;
    ContourLoop loopOf(const std::vector<int>& halfEdges) const;
    bool continues(int halfEdge, int next) const;
    double bulgeOf(const std::vector<int>& halfEdges, std::size_t begin, std::size_t count) const;

    AcGeVector2d m_origin;
    double m_tolerance;
    std::optional<PointGrid> m_grid;
    std::vector<Node> m_nodes;
    std::vector<Source> m_sources;
    std::vector<Segment> m_segments;
    std::vector<PlaneSegment> m_curves; ///< of segments, then of their pieces; the graph's in the end
    std::optional<BoxChain> m_chain;    ///< of the segments' boxes
    std::vector<Cut> m_cuts;
    std::vector<Piece> m_pieces;
    std::vector<int> m_firstPiece;   ///< of each segment
    std::vector<int> m_lastEdgeAt;   ///< of each node, the last edge made whose smaller node it is
    std::vector<int> m_previousEdge; ///< of each edge, the one made before it with the same smaller node
    std::optional<EdgeGraph> m_graph;
    bool m_isConsistent = true;
};

/// Does the loop bound anything: two vertices or more, all numbers of ordinary size.
bool bounds(const ContourLoop& loop);
/// The box of the loops that bound anything.
std::optional<PlaneBox> boxOf(const ContourArea& area);
std::optional<PlaneBox> boxOf(const ContourArea& first, const ContourArea& second);
double areaTolerance(const std::optional<PlaneBox>& box);

} // namespace vexo

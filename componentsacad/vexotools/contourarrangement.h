#pragma once

#include "contourareas.h"
#include "edgegraph.h"
#include "pointgrid.h"
#include "segmenttree.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace VEXOGeometryTools {

/// The boundaries of two areas cut up at all places where they meet, with the winding numbers of both areas
/// on either side of each piece.
class ContourArrangement {
public:
    ContourArrangement(const ContourArea& first, const ContourArea& second, double tolerance);

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
    struct Segment {
        PlaneSegment curve;
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
    int nodeAt(const AcGePoint2d& point, const AcGePoint2d* given);
    void indexSegments();
    void meet(int first, int second);
    void cut(int segment, int node);
    void cutAtNearNodes(int firstNode);
    void makeGraph();
    void addPiece(const Segment& segment, int from, int to, std::vector<GraphEdge>& edges);
    void findWindings();
    void windingsLeftOf(int edge, int windings[2]) const;
    ContourArea loopsOf(const std::vector<std::vector<int>>& runs) const;
    ContourLoop loopOf(const std::vector<int>& halfEdges) const;
    bool continues(int halfEdge, int next) const;
    double bulgeOf(const std::vector<int>& halfEdges, std::size_t begin, std::size_t count) const;

    AcGeVector2d m_origin;
    double m_tolerance;
    std::optional<PointGrid> m_grid;
    std::vector<AcGePoint2d> m_nodes; ///< about the origin
    std::vector<AcGePoint2d> m_given; ///< where they were given, for nodes that were
    std::vector<Source> m_sources;
    std::vector<Segment> m_segments;
    std::optional<SegmentTree> m_tree;
    std::vector<Cut> m_cuts;
    std::vector<Piece> m_pieces;
    std::vector<std::size_t> m_firstPiece; ///< of each segment
    std::vector<int> m_lastEdgeAt;         ///< of each node, the last edge made whose smaller node it is
    std::vector<int> m_previousEdge; ///< of each edge, the one made before it with the same smaller node
    std::optional<EdgeGraph> m_graph;
    bool m_isConsistent = true;
};

/// The common box of the loops that bound anything, and whether a loop does.
bool bounds(const ContourLoop& loop);
std::optional<PlaneBox> boxOf(const ContourArea& first, const ContourArea& second);

} // namespace VEXOGeometryTools

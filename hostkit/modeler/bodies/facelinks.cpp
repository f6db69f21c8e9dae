#include "facelinks.h"

#include <numeric>

namespace hostkit::modeler {

using namespace AModeler;

using Index = std::uint32_t;

namespace {

/// Leads the loops of one face through its bridges. At a corner the ways that leave it between its own two
/// edges are taken in the order in which they stand, from the edge that arrives to the one that leaves.
class LoopJoining {
public:
    LoopJoining(std::span<Edge* const> edges, const FaceView& view)
        : m_edges(edges)
        , m_view(view)
        , m_sameAs(edges.size()) {
        std::iota(m_sameAs.begin(), m_sameAs.end(), 0);
    }

    void join(std::span<const LoopBridge> bridges, PartPool<Edge>& pool, Face& face) {
        for (const LoopBridge& bridge : bridges)
            if (touches(bridge)) m_sameAs[bridge.hole] = bridge.other;
        for (const LoopBridge& bridge : bridges)
            touches(bridge) ? addTouching(bridge) : addBridge(bridge, pool, face);
        std::stable_sort(m_ways.begin(), m_ways.end(),
                         [](const Way& a, const Way& b) { return a.corner < b.corner; });
        for (auto begin = m_ways.begin(); begin != m_ways.end();) {
            const auto end = std::find_if(begin, m_ways.end(),
                                          [&](const Way& way) { return way.corner != begin->corner; });
            lead(std::span(begin, end));
            begin = end;
        }
    }

private:
    /// Away from a corner and back to it.
    struct Way {
        Index corner;
        Edge *leaving, *returning;
        AcGeVector2d direction; ///< in which it leaves
    };

    [[nodiscard]] bool touches(const LoopBridge& bridge) const {
        return m_edges[bridge.hole]->vertex() == m_edges[bridge.other]->vertex();
    }
    [[nodiscard]] Index standIn(Index corner) const {
        while (m_sameAs[corner] != corner) corner = m_sameAs[corner];
        return corner;
    }
    [[nodiscard]] AcGeVector2d direction(const Vertex* from, const Vertex* to) const {
        return m_view(to->point()) - m_view(from->point());
    }

    void addTouching(const LoopBridge& bridge) {
        Edge* first = m_edges[bridge.hole];
        m_ways.push_back({standIn(bridge.other), first, first->prev(),
                          direction(first->vertex(), first->next()->vertex())});
    }

    void addBridge(const LoopBridge& bridge, PartPool<Edge>& pool, Face& face) {
        Edge *there = pool.make(), *back = pool.make();
        Vertex *other = m_edges[bridge.other]->vertex(), *hole = m_edges[bridge.hole]->vertex();
        there->setVertex(other);
        back->setVertex(hole);
        there->setPartner(back);
        back->setPartner(there);
        for (Edge* edge : {there, back}) {
            edge->setFace(&face);
            edge->setFlagOn(Edge::bridgeFlag);
        }
        m_ways.push_back({standIn(bridge.other), there, back, direction(other, hole)});
        m_ways.push_back({standIn(bridge.hole), back, there, direction(hole, other)});
    }

    void lead(std::span<Way> ways) const {
        Edge* leaving = m_edges[ways.front().corner];
        Edge* arriving = leaving->prev();
        const AcGeVector2d first = direction(leaving->vertex(), leaving->next()->vertex());
        const auto isInSecondHalf = [&](const AcGeVector2d& v) {
            const double across = first.x * v.y - first.y * v.x;
            return across < 0.0 || (across == 0.0 && first.dotProduct(v) < 0.0);
        };
        std::stable_sort(ways.begin(), ways.end(), [&](const Way& a, const Way& b) {
            const bool halfA = isInSecondHalf(a.direction), halfB = isInSecondHalf(b.direction);
            if (halfA != halfB) return halfA;
            return a.direction.x * b.direction.y - a.direction.y * b.direction.x < 0.0;
        });
        for (const Way& way : ways) {
            linkEdges(*arriving, *way.leaving);
            arriving = way.returning;
        }
        linkEdges(*arriving, *leaving);
    }

    std::span<Edge* const> m_edges;
    const FaceView& m_view;
    std::vector<Index>
        m_sameAs; ///< a corner of another loop at the same vertex, between whose edges the hole begins
    std::vector<Way> m_ways;
};

} // namespace

void joinLoops(std::span<Edge* const> edges, std::span<const LoopBridge> bridges, const FaceView& view,
               PartPool<Edge>& pool, Face& face) {
    LoopJoining(edges, view).join(bridges, pool, face);
}

} // namespace hostkit::modeler

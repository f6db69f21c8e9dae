#include "facelinks.h"

#include "amerror.h"

#include <cmath>
#include <numeric>

namespace hostkit::modeler {

using namespace AModeler;

using Index = Polyhedron::Index;

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

/// Finds the reverse of each directed edge.
class Pairing {
public:
    Pairing(const Polyhedron& body, std::span<Edge* const> edges)
        : m_body(body)
        , m_edges(edges)
        , m_end(body.corners.size())
        , m_face(body.corners.size())
        , m_firstOf(body.points.size() + 1, 0)
        , m_ofPoint(body.corners.size()) {
        for (Index face = 0; face < body.faces.size(); ++face)
            for (Index loop = 0; loop < body.faces[face].loopCount; ++loop)
                addLoop(face, body.faces[face].firstLoop + loop);
        for (Index corner : body.corners) ++m_firstOf[corner + 1];
        std::partial_sum(m_firstOf.begin(), m_firstOf.end(), m_firstOf.begin());
        std::vector<Index> place(m_firstOf.begin(), m_firstOf.end() - 1);
        for (Index i = 0; i < body.corners.size(); ++i) m_ofPoint[place[body.corners[i]]++] = i;
    }

    void run() {
        std::vector<Index> same, reverse;
        for (Index i = 0; i < m_edges.size(); ++i) {
            if (m_edges[i]->partner()) continue;
            collect(m_body.corners[i], m_end[i], same);
            collect(m_end[i], m_body.corners[i], reverse);
            if (same.size() != reverse.size()) throw Error(eBadBodyGeometry);
            if (same.size() == 1)
                pair(i, reverse.front());
            else
                pairAround(same, reverse);
        }
    }

private:
    void addLoop(Index face, Index loop) {
        const Index begin = m_body.loopStarts[loop], end = m_body.loopStarts[loop + 1];
        for (Index i = begin; i < end; ++i) {
            m_face[i] = face;
            m_end[i] = m_body.corners[i + 1 < end ? i + 1 : begin];
        }
    }

    void collect(Index from, Index to, std::vector<Index>& found) const {
        found.clear();
        for (Index k = m_firstOf[from]; k < m_firstOf[from + 1]; ++k)
            if (m_end[m_ofPoint[k]] == to) found.push_back(m_ofPoint[k]);
    }

    void pair(Index a, Index b) const {
        m_edges[a]->setPartner(m_edges[b]);
        m_edges[b]->setPartner(m_edges[a]);
    }

    /// The material lies behind a face: seen along the edge, clockwise from it. There its partner comes
    /// first.
    void pairAround(const std::vector<Index>& same, std::vector<Index>& reverse) const {
        const AcGePoint3d begin = m_body.points[m_body.corners[same.front()]];
        const AcGeVector3d along = (m_body.points[m_end[same.front()]] - begin).normal();
        const AcGeVector3d u = along.perpVector(), v = along.crossProduct(u);
        const auto angle = [&](Index corner, double sense) {
            const AcGeVector3d into = m_body.faces[m_face[corner]].normal.crossProduct(along * sense);
            return std::atan2(into.dotProduct(v), into.dotProduct(u));
        };
        const auto clockwise = [](double from, double to) {
            const double turned = from - to;
            return turned > 0.0 ? turned : turned + 2 * AcGe::kPi;
        };
        for (Index corner : same) {
            const double own = angle(corner, 1.0);
            const auto next = std::min_element(reverse.begin(), reverse.end(), [&](Index a, Index b) {
                return clockwise(own, angle(a, -1.0)) < clockwise(own, angle(b, -1.0));
            });
            pair(corner, *next);
            reverse.erase(next);
        }
    }

    const Polyhedron& m_body;
    std::span<Edge* const> m_edges;
    std::vector<Index> m_end, m_face;        ///< of the edge at each corner
    std::vector<Index> m_firstOf, m_ofPoint; ///< the corners at each point
};

} // namespace

void joinLoops(std::span<Edge* const> edges, std::span<const LoopBridge> bridges, const FaceView& view,
               PartPool<Edge>& pool, Face& face) {
    LoopJoining(edges, view).join(bridges, pool, face);
}

void makePartners(const Polyhedron& body, std::span<Edge* const> edges) { Pairing(body, edges).run(); }

} // namespace hostkit::modeler

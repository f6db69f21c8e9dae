#include "assembly.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

bool isIn(Operation operation, const Coverage& coverage) {
    const bool first = coverage[0] > 0;
    const bool others = coverage[1] > 0;
    switch (operation) {
    case Operation::unite:
        return first || others;
    case Operation::subtract:
        return first && !others;
    case Operation::intersect:
        return first && others;
    }
    return false;
}

/// 1: a border of the result with the material behind it, -1: before it, 0: no border.
signed char senseOf(Operation operation, const Coverage& front, const Coverage& delta) {
    const bool ahead = isIn(operation, front);
    const bool behind = isIn(operation, {front[0] + delta[0], front[1] + delta[1]});
    return static_cast<signed char>((behind ? 1 : 0) - (ahead ? 1 : 0));
}

class Assembler {
public:
    Assembler(Operation operation, const Arrangement& all)
        : m_all(all)
        , m_operation(operation)
        , m_regions(all.cells.size()) {}

    std::optional<Polyhedron> assemble() {
        select();
        joinCells();
        if (!traceLoops() || !gatherRegions()) return std::nullopt;
        takePassing();
        dropStraightPoints();
        if (!emit() || !findPartners(m_result)) return std::nullopt;
        return std::move(m_result);
    }

private:
    struct Loop {
        Index first = 0; ///< in m_corners
        Index last = 0;
        Index region = none;
        bool outer = false;
    };
    /// A face of the result: loops that were traced, or a face that passed through.
    struct Piece {
        Index origin = none;
        Index firstLoop = none; ///< none: the face `origin`, whole
        Index lastLoop = none;
        signed char sense = 1;
    };

    // The face a kept cell is a piece of: the first that has its side, else the first of all.
    Index originOf(Index cell) const {
        const Cell& c = m_all.cells[cell];
        const Index same = m_senses[cell] > 0 ? c.along : c.against;
        return same != none ? same : std::min(c.along, c.against);
    }

    void select() {
        m_senses.assign(m_all.cells.size(), 0);
        m_surfaces.assign(m_all.cells.size(), nullptr);
        m_origins.assign(m_all.cells.size(), none);
        for (Index cell = 0; cell < m_all.cells.size(); ++cell) {
            const Cell& c = m_all.cells[cell];
            if (c.along == none && c.against == none) continue;
            m_senses[cell] = senseOf(m_operation, m_all.fronts[cell], c.delta);
            if (m_senses[cell] == 0) continue;
            m_origins[cell] = originOf(cell);
            m_surfaces[cell] = m_all.face(m_origins[cell]).surface;
        }
    }

    bool isKept(Index cell) const { return cell != none && m_senses[cell] != 0; }

    // Kept cells at each segment where more than two meet.
    void gatherCrowded() {
        std::vector<unsigned char> counts(m_all.segments.size(), 0);
        for (const HalfEdge& h : m_all.halfEdges)
            if (isKept(h.cell) && counts[h.segment] < 3) ++counts[h.segment];
        for (Index h = 0; h < m_all.halfEdges.size(); ++h)
            if (isKept(m_all.halfEdges[h].cell) && counts[m_all.halfEdges[h].segment] > 2)
                m_crowded.push_back(h);
        std::sort(m_crowded.begin(), m_crowded.end(), [this](Index a, Index b) {
            const Index first = m_all.halfEdges[a].segment;
            const Index second = m_all.halfEdges[b].segment;
            return first != second ? first < second : a < b;
        });
    }

    // Whether other faces touch the border of a plane from both sides: without it they would not bound wedges
    // in turn.
    bool isPierced(Index border) const {
        const Index segment = m_all.halfEdges[border].segment;
        const Index own = m_all.cells[m_all.halfEdges[border].cell].plane;
        auto at = std::lower_bound(m_crowded.begin(), m_crowded.end(), segment,
                                   [this](Index h, Index s) { return m_all.halfEdges[h].segment < s; });
        bool above = false;
        bool below = false;
        for (; at != m_crowded.end() && m_all.halfEdges[*at].segment == segment; ++at) {
            const Index plane = m_all.cells[m_all.halfEdges[*at].cell].plane;
            if (plane == own) continue;
            const AcGeVector3d run =
                m_all.points[m_all.halfEdges[*at ^ 1].origin] - m_all.points[m_all.halfEdges[*at].origin];
            const AcGeVector3d into = m_all.planeClasses[plane].plane.normal.crossProduct(run);
            (into.dotProduct(m_all.planeClasses[own].plane.normal) > 0 ? above : below) = true;
        }
        return above && below;
    }

    // A border between two kept cells that differ in nothing is dropped, but not where other faces of the
    // body, which pass through, have it as their edge.
    void joinCells() {
        gatherCrowded();
        const std::vector<bool> clean = m_all.cleanPieces();
        m_dropped.assign(m_all.halfEdges.size(), false);
        for (Index h = 0; h < m_all.halfEdges.size(); h += 2) {
            const Index left = m_all.halfEdges[h].cell;
            const Index right = m_all.halfEdges[h + 1].cell;
            if (!isKept(left) || !isKept(right) || clean[m_all.halfEdges[h].segment]) continue;
            if (m_senses[left] != m_senses[right] || m_surfaces[left] != m_surfaces[right]) continue;
            if (!m_crowded.empty() && isPierced(h)) continue;
            m_dropped[h] = m_dropped[h + 1] = true;
            m_regions.join(left, right);
        }
    }

    // About a region to the left, at each point by the tightest turn past what was dropped.
    bool traceLoops() {
        std::vector<bool> seen(m_all.halfEdges.size(), false);
        for (Index start = 0; start < m_all.halfEdges.size(); ++start) {
            if (seen[start] || m_dropped[start] || !isKept(m_all.halfEdges[start].cell)) continue;
            const auto first = static_cast<Index>(m_corners.size());
            const Index region = m_regions.find(m_all.halfEdges[start].cell);
            for (Index h = start; !seen[h];) {
                seen[h] = true;
                m_corners.push_back(m_all.halfEdges[h].origin);
                h = m_all.halfEdges[h ^ 1].clockwise;
                while (m_dropped[h]) h = m_all.halfEdges[h].clockwise;
                if (m_all.halfEdges[h].cell == none || m_regions.find(m_all.halfEdges[h].cell) != region)
                    return false;
            }
            finishLoop(first, region);
        }
        return true;
    }

    void finishLoop(Index first, Index region) {
        const auto last = static_cast<Index>(m_corners.size());
        const PlaneClass& plane = m_all.planeClasses[m_all.cells[region].plane];
        const Planar origin = m_all.planar(plane, m_corners[first]);
        double area = 0;
        Planar from = m_all.planar(plane, m_corners[last - 1]);
        for (Index i = first; i < last; ++i) {
            const Planar to = m_all.planar(plane, m_corners[i]);
            area += (from.x - origin.x) * (to.y - origin.y) - (from.y - origin.y) * (to.x - origin.x);
            from = to;
        }
        // Against the normal of its class a loop runs the other way round.
        if (m_senses[region] < 0) std::reverse(m_corners.begin() + first, m_corners.end());
        m_loops.push_back({first, last, region, area > 0});
    }

    // Each region has one loop about its outside, which comes first.
    bool gatherRegions() {
        std::sort(m_loops.begin(), m_loops.end(), [](const Loop& a, const Loop& b) {
            if (a.region != b.region) return a.region < b.region;
            return a.outer != b.outer ? a.outer : a.first < b.first;
        });
        std::vector<Index> origins(m_all.cells.size(), none);
        for (Index cell = 0; cell < m_all.cells.size(); ++cell)
            if (m_senses[cell] != 0) {
                Index& origin = origins[m_regions.find(cell)];
                origin = std::min(origin, m_origins[cell]);
            }
        for (Index first = 0; first < m_loops.size();) {
            Index last = first + 1;
            while (last < m_loops.size() && m_loops[last].region == m_loops[first].region)
                if (m_loops[last++].outer) return false;
            if (!m_loops[first].outer) return false;
            const Index region = m_loops[first].region;
            m_pieces.push_back({origins[region], first, last, m_senses[region]});
            first = last;
        }
        return true;
    }

    void takePassing() {
        for (Index f = 0; f < m_all.faceCount(); ++f) {
            if (m_all.worked[f]) continue;
            Coverage own{};
            own[static_cast<std::size_t>(m_all.role(f))] = 1;
            const signed char sense = senseOf(m_operation, m_all.passingFronts[m_all.passing[f]], own);
            if (sense != 0) m_pieces.push_back({f, none, none, sense});
        }
        std::stable_sort(m_pieces.begin(), m_pieces.end(),
                         [](const Piece& a, const Piece& b) { return a.origin < b.origin; });
    }

    template <class Found>
    void forEdgesOf(const Piece& piece, Found&& edge) const {
        if (piece.firstLoop == none) {
            m_all.forEdges(piece.origin, edge);
            return;
        }
        for (Index loop = piece.firstLoop; loop < piece.lastLoop; ++loop) {
            Index from = m_corners[m_loops[loop].last - 1];
            for (Index i = m_loops[loop].first; i < m_loops[loop].last; ++i) {
                edge(from, m_corners[i]);
                from = m_corners[i];
            }
        }
    }

    // Points of traced loops with two neighbours in all the result.
    void dropStraightPoints() {
        m_neighbours.assign(m_all.points.size(), {none, none});
        std::vector<unsigned char> state(m_all.points.size(),
                                         0); // 0: not traced, 1: up to two neighbours, 2: more
        for (const Index corner : m_corners) state[corner] = 1;
        const auto meet = [&](Index point, Index neighbour) {
            auto& known = m_neighbours[point];
            if (state[point] != 1 || known[0] == neighbour || known[1] == neighbour) return;
            if (known[0] == none)
                known[0] = neighbour;
            else if (known[1] == none)
                known[1] = neighbour;
            else
                state[point] = 2;
        };
        for (const Piece& piece : m_pieces)
            forEdgesOf(piece, [&](Index from, Index to) {
                meet(from, to);
                meet(to, from);
            });
        m_straight.assign(m_all.points.size(), false);
        for (Index& corner : m_corners)
            if (state[corner] == 1 && m_neighbours[corner][1] != none) dropChain(corner, state);
    }

    // The chain of points with two neighbours about one of them goes where all lie on the line between its
    // ends.
    void dropChain(Index point, std::vector<unsigned char>& state) {
        std::vector<Index> chain{point};
        state[point] = 3;
        std::array<Index, 2> ends{};
        for (std::size_t side = 0; side < 2; ++side) {
            Index before = point;
            Index at = m_neighbours[point][side];
            while (state[at] == 1 && m_neighbours[at][1] != none) {
                state[at] = 3;
                chain.push_back(at);
                const Index next = m_neighbours[at][m_neighbours[at][0] == before ? 1 : 0];
                before = at;
                at = next;
            }
            ends[side] = at;
        }
        if (ends[0] == ends[1] || state[ends[0]] == 3 || state[ends[1]] == 3) return;
        const AcGePoint3d& from = m_all.points[ends[0]];
        const AcGeVector3d run = m_all.points[ends[1]] - from;
        const double allowance = m_all.tolerance * m_all.tolerance * run.lengthSqrd();
        for (const Index p : chain) {
            const AcGeVector3d to = m_all.points[p] - from;
            const double along = run.dotProduct(to);
            if (!(along > 0 && along < run.lengthSqrd()) || run.crossProduct(to).lengthSqrd() > allowance)
                return;
        }
        for (const Index p : chain) m_straight[p] = true;
    }

    bool emit() {
        m_numbers.assign(m_all.points.size(), none);
        for (const Piece& piece : m_pieces) {
            Polyhedron::Face face = m_all.face(piece.origin);
            face.origin = piece.origin;
            face.firstLoop = m_result.loopCount();
            if (piece.firstLoop == none) {
                if (!emitPassing(piece)) return false;
            } else {
                const PlaneClass& own =
                    m_all.planeClasses[m_all.cells[m_loops[piece.firstLoop].region].plane];
                face.normal = m_all.face(own.largest).normal;
                face.distance = own.plane.distance + face.normal.dotProduct(m_all.frame.shift());
                for (Index loop = piece.firstLoop; loop < piece.lastLoop; ++loop)
                    if (!emitLoop(std::span<const Index>(m_corners).subspan(
                            m_loops[loop].first, m_loops[loop].last - m_loops[loop].first)))
                        return false;
            }
            if (piece.sense < 0) {
                face.normal = -face.normal;
                face.distance = -face.distance;
            }
            face.loopCount = m_result.loopCount() - face.firstLoop;
            m_result.faces.push_back(face);
        }
        return true;
    }

    bool emitPassing(const Piece& piece) {
        bool whole = true;
        m_all.forLoops(piece.origin, [&](std::span<const Index> corners, Index base) {
            m_reversed.assign(corners.begin(), corners.end());
            for (Index& corner : m_reversed) corner += base;
            if (piece.sense < 0) std::reverse(m_reversed.begin(), m_reversed.end());
            whole = emitLoop(m_reversed) && whole;
        });
        return whole;
    }

    bool emitLoop(std::span<const Index> corners) {
        const std::size_t first = m_result.corners.size();
        for (const Index corner : corners)
            if (!m_straight[corner]) m_result.corners.push_back(emitPoint(corner));
        m_result.loopStarts.push_back(static_cast<Index>(m_result.corners.size()));
        return m_result.corners.size() >= first + 2;
    }

    Index emitPoint(Index point) {
        Index& number = m_numbers[point];
        if (number != none) return number;
        number = static_cast<Index>(m_result.points.size());
        if (point < m_all.pointBases.back()) {
            const auto next = std::upper_bound(m_all.pointBases.begin(), m_all.pointBases.end(), point);
            const auto body = static_cast<std::size_t>(next - m_all.pointBases.begin()) - 1;
            m_result.points.push_back(m_all.bodies[body]->points[point - m_all.pointBases[body]]);
        } else {
            m_result.points.push_back(m_all.frame.placeOutside(m_all.points[point]));
        }
        return number;
    }

    const Arrangement& m_all;
    Operation m_operation;
    Joined m_regions;
    std::vector<signed char> m_senses; ///< of each cell
    std::vector<const AModeler::Surface*> m_surfaces;
    std::vector<Index> m_origins;
    std::vector<bool> m_dropped; ///< of each half-edge
    std::vector<Index> m_crowded;
    std::vector<Index> m_corners;
    std::vector<Loop> m_loops;
    std::vector<Piece> m_pieces;
    std::vector<std::array<Index, 2>> m_neighbours;
    std::vector<bool> m_straight;
    std::vector<Index> m_numbers;
    std::vector<Index> m_reversed;
    Polyhedron m_result;
};

} // namespace

std::optional<Polyhedron> assemble(Operation operation, const Arrangement& all) {
    return Assembler(operation, all).assemble();
}

} // namespace hostkit::modeler

// The cells of each plane: half-edges in angular order, loops, loops in loops, and the faces that cover a
// cell.
#include "arrangement.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

// One plane at a time; half-edges and cells are numbered through all planes.
class CellFinder {
public:
    explicit CellFinder(Arrangement& all)
        : m_all(all) {}

    bool find(Index number) {
        m_number = number;
        m_plane = &m_all.planeClasses[number];
        m_base = static_cast<Index>(m_all.halfEdges.size());
        m_plane->firstHalfEdge = m_base;
        const bool alone = m_plane->faceCount == 1 && !m_plane->cut;
        const bool found =
            alone ? takeWhole() : makeHalfEdges() && turnAtPoints() && traceLoops() && nestLoops() && cover();
        m_plane->lastHalfEdge = static_cast<Index>(m_all.halfEdges.size());
        return found;
    }

private:
    struct Spoke {
        Index point;
        Index halfEdge;
    };

    HalfEdge& edge(Index h) { return m_all.halfEdges[m_base + h]; }
    Index count() const { return static_cast<Index>(m_all.halfEdges.size()) - m_base; }
    Planar at(Index h) { return m_all.planar(*m_plane, edge(h).origin); }

    void gatherUses() {
        m_uses.clear();
        for (const Use& use : m_plane->uses)
            m_all.forLeaves(use.segment, use.forward, [&](Index leaf, bool forward) {
                m_uses.push_back({leaf, use.face, forward});
            });
    }

    void addPair(Index segment) {
        m_all.halfEdges.push_back({m_all.segments[segment].low, segment, none, none});
        m_all.halfEdges.push_back({m_all.segments[segment].high, segment, none, none});
    }

    // The only face of its plane, not cut: its loops as they stand, in the pieces of their edges.
    bool takeWhole() {
        const Index face = m_plane->uses.empty() ? none : m_plane->uses.front().face;
        if (face == none) return false;
        const auto cell = static_cast<Index>(m_all.cells.size());
        m_all.cells.push_back({m_number, {}, face, none});
        m_all.cells.back().delta[static_cast<std::size_t>(m_all.role(face))] = 1;
        m_all.forLoops(face, [&](std::span<const Index> corners, Index base) {
            m_order.clear();
            Index from = m_all.welded[base + corners.back()];
            for (const Index corner : corners) {
                const Index to = m_all.welded[base + corner];
                if (from != to) addPieces(m_all.segment(from, to), from < to, cell);
                from = to;
            }
            for (std::size_t i = 0; i < m_order.size(); ++i)
                edge(m_order[i] ^ 1).clockwise = m_base + m_order[(i + 1) % m_order.size()];
        });
        return true;
    }

    void addPieces(Index segment, bool forward, Index cell) {
        const std::size_t first = m_order.size();
        m_all.forLeaves(segment, forward, [&](Index leaf, bool along) {
            addPair(leaf);
            m_order.push_back(count() - (along ? 2 : 1));
            edge(m_order.back()).cell = cell;
        });
        if (!forward) std::reverse(m_order.begin() + static_cast<std::ptrdiff_t>(first), m_order.end());
    }

    bool makeHalfEdges() {
        gatherUses();
        std::sort(m_uses.begin(), m_uses.end(), [](const Use& a, const Use& b) {
            return a.segment != b.segment ? a.segment < b.segment : a.face < b.face;
        });
        Index last = none;
        for (Use& use : m_uses) {
            if (use.segment != last) addPair(last = use.segment);
            use.segment = count() / 2 - 1; // within the plane from here on
        }
        return true;
    }

    bool before(const Spoke& a, const Spoke& b) {
        if (a.point != b.point) return a.point < b.point;
        const Planar centre = m_all.planar(*m_plane, a.point);
        const Planar first = at(a.halfEdge ^ 1);
        const Planar second = at(b.halfEdge ^ 1);
        const auto lower = [&](const Planar& p) {
            return p.y < centre.y || (p.y == centre.y && p.x < centre.x);
        };
        if (lower(first) != lower(second)) return !lower(first);
        return orientation(centre, first, second) > 0;
    }

    // Counter-clockwise order about each point, beginning with the direction of x. Two segments in one
    // direction are a contradiction.
    bool turnAtPoints() {
        m_spokes.clear();
        for (Index h = 0; h < count(); ++h) m_spokes.push_back({edge(h).origin, h});
        std::sort(m_spokes.begin(), m_spokes.end(),
                  [this](const Spoke& a, const Spoke& b) { return before(a, b); });
        for (std::size_t first = 0; first < m_spokes.size();) {
            std::size_t last = first;
            while (last + 1 < m_spokes.size() && m_spokes[last + 1].point == m_spokes[first].point) {
                if (!before(m_spokes[last], m_spokes[last + 1])) return false;
                edge(m_spokes[last + 1].halfEdge).clockwise = m_base + m_spokes[last].halfEdge;
                ++last;
            }
            edge(m_spokes[first].halfEdge).clockwise = m_base + m_spokes[last].halfEdge;
            first = last + 1;
        }
        return true;
    }

    bool traceLoops() {
        m_loops.assign(count(), none);
        m_loopCount = 0;
        for (Index start = 0; start < count(); ++start) {
            if (m_loops[start] != none) continue;
            for (Index h = start; m_loops[h] == none; h = edge(h ^ 1).clockwise - m_base)
                m_loops[h] = m_loopCount;
            ++m_loopCount;
        }
        return true;
    }

    bool isLeftOf(Index a, Index b) {
        const Planar p = at(a);
        const Planar q = at(b);
        return p.x != q.x ? p.x < q.x : p.y < q.y;
    }

    // Connected parts; of each the loop about its outside: the one that has the leftmost point in its corner
    // to the left.
    void findParts() {
        Joined parts(m_loopCount);
        for (Index h = 0; h < count(); h += 2) parts.join(m_loops[h], m_loops[h + 1]);
        m_parts.assign(m_loopCount, none);
        for (Index loop = 0; loop < m_loopCount; ++loop) m_parts[loop] = parts.find(loop);
        m_leftmost.assign(m_loopCount, none);
        for (Index h = 0; h < count(); ++h) {
            Index& best = m_leftmost[m_parts[m_loops[h]]];
            if (best == none || isLeftOf(h, best))
                best = h;
            else if (edge(h).origin == edge(best).origin && orientation(at(h), at(best ^ 1), at(h ^ 1)) > 0)
                best = h;
        }
        m_outside.assign(m_loopCount, false);
        m_order.clear();
        for (Index part = 0; part < m_loopCount; ++part) {
            if (m_leftmost[part] == none) continue;
            m_outside[m_loops[m_leftmost[part]]] = true;
            m_order.push_back(part);
        }
    }

    // Loops that are not outside make cells; the outside of a part belongs to the cell it lies in.
    bool nestLoops() {
        findParts();
        m_loopCells.assign(m_loopCount, none);
        m_firstCell = static_cast<Index>(m_all.cells.size());
        for (Index loop = 0; loop < m_loopCount; ++loop)
            if (!m_outside[loop]) {
                m_loopCells[loop] = static_cast<Index>(m_all.cells.size());
                m_all.cells.push_back({.plane = m_number});
            }
        if (m_order.size() > 1) nestParts();
        for (Index h = 0; h < count(); ++h) edge(h).cell = m_loopCells[m_loops[h]];
        return true;
    }

    // From left to right: what lies below the leftmost point of a part belongs to parts that are nested
    // already.
    void nestParts() {
        std::sort(m_order.begin(), m_order.end(),
                  [this](Index a, Index b) { return isLeftOf(m_leftmost[a], m_leftmost[b]); });
        m_boxes.clear();
        for (Index h = 0; h < count(); h += 2) {
            Box box;
            for (const Index end : {h, h + 1}) box.add(AcGePoint3d(at(end).x, at(end).y, 0));
            m_boxes.push_back(box);
        }
        const SpaceTree tree(m_boxes);
        for (const Index part : m_order) {
            const Index corner = m_leftmost[part];
            Index nearest = none;
            Box below;
            below.add(AcGePoint3d(at(corner).x, at(corner).y, 0));
            below.low.y = -Box::infinity;
            tree.query(below, [&](Index pair) { takeNearer(nearest, 2 * pair, corner); });
            if (nearest != none) m_loopCells[m_loops[corner]] = m_loopCells[m_loops[nearest]];
        }
    }

    // The half-edge to the right that lies next below the point, by exact tests; at a common left end the
    // steeper one.
    void takeNearer(Index& nearest, Index h, Index corner) {
        if (m_parts[m_loops[h]] == m_parts[m_loops[corner]]) return;
        const Planar p = at(corner);
        if (at(h).x > at(h ^ 1).x) h ^= 1;
        if (!(at(h).x <= p.x && p.x < at(h ^ 1).x)) return;
        if (orientation(at(h), at(h ^ 1), p) <= 0) return;
        if (nearest == none || isAbove(h, nearest)) nearest = h;
    }

    // Two segments that do not cross and share a range of x: whether the first is above the second there.
    bool isAbove(Index first, Index second) {
        const bool later = at(first).x >= at(second).x;
        const Index inner = later ? first : second;
        const Index outer = later ? second : first;
        int side = orientation(at(outer), at(outer ^ 1), at(inner));
        if (side == 0) side = orientation(at(outer), at(outer ^ 1), at(inner ^ 1));
        return later ? side > 0 : side < 0;
    }

    // Face by face: from the cells left of its edges through all borders that are not its own. It may not
    // come out at their right.
    bool cover() {
        gatherCells();
        std::sort(m_uses.begin(), m_uses.end(), [](const Use& a, const Use& b) {
            return a.face != b.face ? a.face < b.face : a.segment < b.segment;
        });
        m_borders.assign(count() / 2, none);
        m_reached.assign(m_all.cells.size() - m_firstCell, none);
        for (std::size_t first = 0; first < m_uses.size() && m_uses[first].face != none;) {
            std::size_t last = first;
            while (last < m_uses.size() && m_uses[last].face == m_uses[first].face) ++last;
            if (!coverBy(std::span<const Use>(m_uses).subspan(first, last - first))) return false;
            first = last;
        }
        for (Index h = 0; h < count(); ++h) {
            Index& cell = edge(h).cell;
            if (cell != none && m_all.cells[cell].along == none && m_all.cells[cell].against == none)
                cell = none;
        }
        return true;
    }

    void gatherCells() {
        m_cellStarts.assign(m_all.cells.size() - m_firstCell + 2, 0);
        for (Index h = 0; h < count(); ++h)
            if (edge(h).cell != none) ++m_cellStarts[edge(h).cell - m_firstCell + 2];
        for (std::size_t i = 2; i < m_cellStarts.size(); ++i) m_cellStarts[i] += m_cellStarts[i - 1];
        m_cellEdges.resize(m_cellStarts.back());
        for (Index h = 0; h < count(); ++h)
            if (edge(h).cell != none) m_cellEdges[m_cellStarts[edge(h).cell - m_firstCell + 1]++] = h;
    }

    bool coverBy(std::span<const Use> uses) {
        const Index face = uses.front().face;
        m_order.clear();
        m_rights.clear();
        for (std::size_t i = 0; i < uses.size();) {
            const Index segment = uses[i].segment;
            int net = 0;
            for (; i < uses.size() && uses[i].segment == segment; ++i) net += uses[i].forward ? 1 : -1;
            if (net == 0) continue;
            if (std::abs(net) > 1) return false;
            m_borders[segment] = face;
            const Index left = net > 0 ? 2 * segment : 2 * segment + 1;
            m_rights.push_back(edge(left ^ 1).cell);
            if (!reach(edge(left).cell, face)) return false;
        }
        while (!m_order.empty()) {
            const Index cell = m_order.back() - m_firstCell;
            m_order.pop_back();
            for (Index i = m_cellStarts[cell]; i < m_cellStarts[cell + 1]; ++i) {
                const Index h = m_cellEdges[i];
                if (m_borders[h / 2] != face && !reach(edge(h ^ 1).cell, face)) return false;
            }
        }
        return std::none_of(m_rights.begin(), m_rights.end(), [&](Index cell) {
            return cell != none && m_reached[cell - m_firstCell] == face;
        });
    }

    bool reach(Index cell, Index face) {
        if (cell == none) return false;
        if (m_reached[cell - m_firstCell] == face) return true;
        m_reached[cell - m_firstCell] = face;
        Cell& covered = m_all.cells[cell];
        const bool along = m_all.senses[face] > 0;
        covered.delta[static_cast<std::size_t>(m_all.role(face))] += along ? 1 : -1;
        Index& first = along ? covered.along : covered.against;
        first = std::min(first, face);
        m_order.push_back(cell);
        return true;
    }

    Arrangement& m_all;
    PlaneClass* m_plane = nullptr;
    Index m_number = 0;
    Index m_base = 0;
    Index m_loopCount = 0;
    Index m_firstCell = 0;
    std::vector<Use> m_uses;
    std::vector<Spoke> m_spokes;
    std::vector<Index> m_loops; ///< of each half-edge
    std::vector<Index> m_parts; ///< of each loop
    std::vector<Index> m_leftmost;
    std::vector<bool> m_outside;
    std::vector<Index> m_loopCells;
    std::vector<Index> m_order;
    std::vector<Index> m_rights;
    std::vector<Index> m_borders;
    std::vector<Index> m_reached;
    std::vector<Index> m_cellStarts;
    std::vector<Index> m_cellEdges;
    std::vector<Box> m_boxes;
};

} // namespace

bool findCells(Arrangement& all) {
    CellFinder finder(all);
    for (Index plane = 0; plane < all.planeClasses.size(); ++plane)
        if (!finder.find(plane)) return false;
    return true;
}

} // namespace hostkit::modeler

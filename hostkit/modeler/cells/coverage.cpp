// How often each side of a cell is covered: sides that bound one volume are joined about the segments, and
// the coverage is spread through the cells from volume to volume.
#include "raycaster.h"

#include <cmath>

namespace hostkit::modeler {

namespace {

class CoverageFinder {
public:
    explicit CoverageFinder(Arrangement& all)
        : m_all(all)
        , m_sides(0) {}

    bool find() {
        numberPassing();
        m_sides = Joined(2 * (m_all.cells.size() + m_passingFaces.size()));
        if (!joinAtSegments() || !joinAtCleanPoints()) return false;
        return spread();
    }

private:
    struct Sheet {
        double angle;
        Index halfEdge;
    };
    struct Link {
        Index from;
        Index to;
        Index piece;
        int sense; ///< of the piece's delta from `from` to `to`
    };

    static Index front(Index piece) { return 2 * piece; }
    static Index back(Index piece) { return 2 * piece + 1; }

    // Pieces: the cells, then the components of faces that pass through, which hang together at points.
    void numberPassing() {
        const Index points = m_all.pointBases.back();
        Joined sets(points);
        std::vector<Index> heads(m_all.faceCount(), none);
        for (Index f = 0; f < m_all.faceCount(); ++f)
            if (!m_all.worked[f])
                m_all.forEdges(f, [&](Index from, Index) {
                    if (heads[f] == none) heads[f] = from;
                    sets.join(heads[f], from);
                });
        m_passingOf.assign(points, none);
        m_all.passing.assign(m_all.faceCount(), none);
        for (Index f = 0; f < m_all.faceCount(); ++f) {
            if (m_all.worked[f]) continue;
            Index& component = m_passingOf[sets.find(heads[f])];
            if (component == none) {
                component = static_cast<Index>(m_passingFaces.size());
                m_passingFaces.push_back(f);
            }
            m_all.passing[f] = component;
            m_all.forEdges(f, [&](Index from, Index) { m_passingOf[from] = component; });
        }
    }

    Index passingPiece(Index component) const { return static_cast<Index>(m_all.cells.size()) + component; }

    Coverage delta(Index piece) const {
        if (piece < m_all.cells.size()) return m_all.cells[piece].delta;
        Coverage own{};
        own[static_cast<std::size_t>(m_all.role(m_passingFaces[piece - m_all.cells.size()]))] = 1;
        return own;
    }

    bool isClean(Index point) const { return point < m_all.clean.size() && m_all.clean[point]; }

    // Segments at which no other body is near: an edge to a face that passes through, and what begins at a
    // clean point. Their sides are joined at the clean points.
    std::vector<bool> cleanSegments() const {
        std::vector<bool> clean = m_all.cleanPieces();
        for (Index s = 0; s < m_all.segments.size(); ++s)
            if (isClean(m_all.segments[s].low) || isClean(m_all.segments[s].high)) clean[s] = true;
        return clean;
    }

    // All borders of cells, gathered by segment.
    bool joinAtSegments() {
        std::vector<Index> starts(m_all.segments.size() + 2, 0);
        for (const HalfEdge& h : m_all.halfEdges)
            if (h.cell != none) ++starts[h.segment + 2];
        for (std::size_t i = 2; i < starts.size(); ++i) starts[i] += starts[i - 1];
        std::vector<Index> edges(starts.back());
        for (Index h = 0; h < m_all.halfEdges.size(); ++h)
            if (m_all.halfEdges[h].cell != none) edges[starts[m_all.halfEdges[h].segment + 1]++] = h;
        const std::vector<bool> clean = cleanSegments();
        for (Index s = 0; s < m_all.segments.size(); ++s) {
            if (clean[s] || starts[s] == starts[s + 1]) continue;
            if (!joinAbout(s, std::span<const Index>(edges).subspan(starts[s], starts[s + 1] - starts[s])))
                return false;
        }
        return true;
    }

    const Plane& planeOf(Index halfEdge) const {
        return m_all.planeClasses[m_all.cells[m_all.halfEdges[halfEdge].cell].plane].plane;
    }

    // Between a sheet and the next counter-clockwise lies one volume. A half-edge along the segment has its
    // front on that side.
    bool joinAbout(Index segment, std::span<const Index> edges) {
        if (edges.size() < 2) return false;
        if (!sortAbout(segment, edges)) return false;
        for (std::size_t i = 0; i < m_sheets.size(); ++i) {
            const Index first = m_sheets[i].halfEdge;
            const Index second = m_sheets[(i + 1) % m_sheets.size()].halfEdge;
            const auto side = [&](Index h, bool leading) {
                const HalfEdge& edge = m_all.halfEdges[h];
                const bool along = edge.origin == m_all.segments[segment].low;
                return along == leading ? front(edge.cell) : back(edge.cell);
            };
            m_sides.join(side(first, true), side(second, false));
        }
        return true;
    }

    bool sortAbout(Index segment, std::span<const Index> edges) {
        constexpr double distinct = 1e-11;
        m_sheets.clear();
        for (const Index h : edges) m_sheets.push_back({0, h});
        if (edges.size() == 2) return true;
        const AcGeVector3d axis = axisOf(segment, edges);
        const AcGeVector3d zero = planeOf(edges[0]).normal.crossProduct(axis);
        const AcGeVector3d quarter = axis.crossProduct(zero);
        for (Sheet& sheet : m_sheets) {
            const bool along = m_all.halfEdges[sheet.halfEdge].origin == m_all.segments[segment].low;
            const AcGeVector3d into = planeOf(sheet.halfEdge).normal.crossProduct(along ? axis : -axis);
            sheet.angle = std::atan2(into.dotProduct(quarter), into.dotProduct(zero));
        }
        std::sort(m_sheets.begin(), m_sheets.end(),
                  [](const Sheet& a, const Sheet& b) { return a.angle < b.angle; });
        for (std::size_t i = 0; i + 1 < m_sheets.size(); ++i)
            if (m_sheets[i + 1].angle - m_sheets[i].angle < distinct) return false;
        return m_sheets.back().angle - m_sheets.front().angle < 2 * 3.14159265358979323846 - distinct;
    }

    // From the two planes that cross the most steeply: the ends of a short segment know its direction badly.
    AcGeVector3d axisOf(Index segment, std::span<const Index> edges) const {
        const Segment& s = m_all.segments[segment];
        const AcGeVector3d run = m_all.points[s.high] - m_all.points[s.low];
        AcGeVector3d axis;
        for (const Index h : edges) {
            const AcGeVector3d line = planeOf(edges[0]).normal.crossProduct(planeOf(h).normal);
            if (line.lengthSqrd() > axis.lengthSqrd()) axis = line;
        }
        constexpr double steep = 1e-3;
        if (axis.lengthSqrd() < steep * steep) axis = run;
        const double size = axis.length();
        return axis * ((axis.dotProduct(run) < 0 ? -1 : 1) / size);
    }

    // At a clean point a cell borders faces of its body that pass through: their sides are covered alike.
    bool joinAtCleanPoints() {
        for (const HalfEdge& h : m_all.halfEdges) {
            if (h.cell == none || !isClean(h.origin)) continue;
            const Coverage own = m_all.cells[h.cell].delta;
            const int sense = own[0] + own[1];
            if (std::abs(own[0]) + std::abs(own[1]) != 1) return false;
            const Index piece = passingPiece(m_passingOf[h.origin]);
            m_sides.join(front(h.cell), sense > 0 ? front(piece) : back(piece));
            m_sides.join(back(h.cell), sense > 0 ? back(piece) : front(piece));
        }
        return true;
    }

    void gatherLinks() {
        const auto pieces = static_cast<Index>(m_all.cells.size() + m_passingFaces.size());
        m_links.clear();
        for (Index piece = 0; piece < pieces; ++piece) {
            if (piece < m_all.cells.size() && !isCovered(piece)) continue;
            const Index ahead = m_sides.find(front(piece));
            const Index behind = m_sides.find(back(piece));
            m_links.push_back({ahead, behind, piece, 1});
            m_links.push_back({behind, ahead, piece, -1});
        }
        std::sort(m_links.begin(), m_links.end(), [](const Link& a, const Link& b) {
            return a.from != b.from ? a.from < b.from : a.piece < b.piece;
        });
        m_firsts.assign(2 * pieces + 1, none);
        for (Index i = 0; i < m_links.size(); ++i)
            if (m_firsts[m_links[i].from] == none) m_firsts[m_links[i].from] = i;
    }

    bool isCovered(Index cell) const {
        return m_all.cells[cell].along != none || m_all.cells[cell].against != none;
    }

    bool spread() {
        gatherLinks();
        m_coverage.assign(m_firsts.size(), {});
        m_reached.assign(m_firsts.size(), false);
        for (const Link& link : m_links)
            if (!m_reached[link.from] && !spreadFrom(link.from)) return false;
        m_all.fronts.assign(m_all.cells.size(), {});
        for (Index cell = 0; cell < m_all.cells.size(); ++cell)
            if (isCovered(cell)) m_all.fronts[cell] = m_coverage[m_sides.find(front(cell))];
        m_all.passingFronts.clear();
        for (Index i = 0; i < m_passingFaces.size(); ++i)
            m_all.passingFronts.push_back(m_coverage[m_sides.find(front(passingPiece(i)))]);
        return true;
    }

    // One connected component: coverages relative to the start, then the start's own.
    bool spreadFrom(Index start) {
        std::vector<Index>& volumes = m_volumes;
        volumes.assign(1, start);
        m_reached[start] = true;
        std::array<bool, 2> has{};
        for (std::size_t next = 0; next < volumes.size(); ++next) {
            const Index from = volumes[next];
            for (Index i = m_firsts[from]; i < m_links.size() && m_links[i].from == from; ++i) {
                Coverage there = m_coverage[from];
                const Coverage step = delta(m_links[i].piece);
                for (std::size_t role = 0; role < 2; ++role) {
                    there[role] += m_links[i].sense * step[role];
                    has[role] = has[role] || step[role] != 0;
                }
                if (m_reached[m_links[i].to]) {
                    if (m_coverage[m_links[i].to] != there) return false;
                    continue;
                }
                m_reached[m_links[i].to] = true;
                m_coverage[m_links[i].to] = there;
                volumes.push_back(m_links[i].to);
            }
        }
        return settle(has);
    }

    // A body covers nothing twice: where it is met, its least coverage is 0 and its greatest 1. Others
    // together, and a body that is not met, are asked by a ray.
    bool settle(const std::array<bool, 2>& has) {
        Coverage least = m_coverage[m_volumes[0]];
        Coverage most = least;
        for (const Index volume : m_volumes)
            for (std::size_t role = 0; role < 2; ++role) {
                least[role] = std::min(least[role], m_coverage[volume][role]);
                most[role] = std::max(most[role], m_coverage[volume][role]);
            }
        const auto others = static_cast<int>(m_all.bodies.size()) - 1;
        Coverage base{-least[0], -least[1]};
        if (!has[0] || !has[1] || others > 1) {
            const auto asked = ask(m_links[m_firsts[m_volumes[0]]]);
            if (!asked) return false;
            for (std::size_t role = 0; role < 2; ++role) {
                const int found = (*asked)[role] - m_coverage[m_volumes[0]][role];
                if (has[role] && (role == 0 || others == 1) && found != base[role]) return false;
                base[role] = found;
            }
        }
        for (const Index volume : m_volumes)
            for (std::size_t role = 0; role < 2; ++role) m_coverage[volume][role] += base[role];
        return least[0] + base[0] >= 0 && most[0] + base[0] <= 1 && least[1] + base[1] >= 0 &&
               most[1] + base[1] <= others;
    }

    // The coverage of the volume that the link leaves.
    std::optional<Coverage> ask(const Link& link) {
        m_borders.clear();
        Plane plane;
        RayCaster::Start start;
        if (link.piece < m_all.cells.size()) {
            start.planeClass = m_all.cells[link.piece].plane;
            const PlaneClass& own = m_all.planeClasses[start.planeClass];
            plane = own.plane;
            setAxes(plane.normal);
            for (Index h = own.firstHalfEdge; h < own.lastHalfEdge; ++h)
                if (m_all.halfEdges[h].cell == link.piece)
                    addBorder(m_all.halfEdges[h].origin, m_all.halfEdges[h ^ 1].origin);
        } else {
            start.face = m_passingFaces[link.piece - m_all.cells.size()];
            plane = m_all.planes[start.face];
            setAxes(plane.normal);
            m_all.forEdges(start.face, [&](Index from, Index to) { addBorder(from, to); });
        }
        start.ahead = link.sense > 0 ? plane.normal : -plane.normal;
        return askFrom(plane, start);
    }

    // A place that happens to lie on another body tells nothing: the next one is asked. None is where
    // symmetric bodies touch.
    std::optional<Coverage> askFrom(const Plane& plane, RayCaster::Start& start) {
        if (!m_rays) m_rays.emplace(m_all);
        for (const double part : {0.4271, 0.6134, 0.2917, 0.7719}) {
            const auto inside = pointInside(m_borders, part);
            if (!inside) return std::nullopt;
            start.place = AcGePoint3d();
            start.place[m_axes[0]] = inside->x;
            start.place[m_axes[1]] = inside->y;
            start.place[m_axes[2]] = -plane.height(start.place) / plane.normal[m_axes[2]];
            if (const auto found = m_rays->coverageAhead(start)) return found;
        }
        return std::nullopt;
    }

    void setAxes(const AcGeVector3d& normal) {
        const unsigned dropped = normal.largestElement();
        m_axes = {(dropped + 1) % 3, (dropped + 2) % 3, dropped};
    }
    void addBorder(Index from, Index to) {
        const AcGePoint3d& p = m_all.points[from];
        const AcGePoint3d& q = m_all.points[to];
        m_borders.push_back({Planar{p[m_axes[0]], p[m_axes[1]]}, Planar{q[m_axes[0]], q[m_axes[1]]}});
    }

    Arrangement& m_all;
    Joined m_sides;
    std::vector<Index> m_passingFaces; ///< one face of each component
    std::vector<Index> m_passingOf;    ///< of each clean point
    std::vector<Sheet> m_sheets;
    std::vector<Link> m_links;
    std::vector<Index> m_firsts;
    std::vector<Coverage> m_coverage;
    std::vector<bool> m_reached;
    std::vector<Index> m_volumes;
    std::optional<RayCaster> m_rays;
    std::vector<std::array<Planar, 2>> m_borders;
    std::array<unsigned, 3> m_axes{};
};

} // namespace

bool findCoverage(Arrangement& all) { return CoverageFinder(all).find(); }

} // namespace hostkit::modeler

#include "chart.h"
#include "facetjoining.h"
#include "patchmesh.h"
#include "shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hostkit::modeler {

namespace {

using Index = Shape::Index;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
/// Of a facet's width: what a count of facets may lie above a whole number.
constexpr double kRounding = 1e-9;

double sidesOf(const FacetOptions& options, double radius) {
    double sides = std::max(options.sidesPerTurn, 3.0);
    if (options.chord > 0.0 && options.chord < radius)
        sides = std::max(sides, std::ceil(std::numbers::pi / std::acos(1.0 - options.chord / radius)));
    constexpr double most = 4096.0;
    return std::min(sides, most);
}

/// A corner of a patch: a point of the body and where it lies on the chart, in angles and lengths.
struct Corner {
    Index point = 0;
    double u = 0.0, v = 0.0;
};
using Chain = std::vector<Corner>;

class Facetting {
public:
    Facetting(const Shape& shape, const FacetOptions& options, const MakeSurface& makeSurface)
        : m_shape(shape)
        , m_options(options)
        , m_makeSurface(makeSurface) {}

    Facets run() {
        m_out.points = m_shape.vertices;
        m_inner.resize(m_shape.edges.size());
        for (std::size_t edge = 0; edge < m_shape.edges.size(); ++edge)
            divide(m_shape.edges[edge], m_inner[edge]);
        for (const Shape::Face& face : m_shape.faces) {
            if (face.surface.kind == ShapeSurface::Kind::plane)
                addFlatFace(face);
            else
                addCurvedFace(face);
            constexpr std::size_t mostPoints = 400'000; // some seconds of work
            if (m_out.points.size() > mostPoints) fail("the body would have too many facets");
            if (!m_result.fault.empty()) return std::move(m_result);
        }
        m_result.polyhedron = std::move(m_out);
        return std::move(m_result);
    }

private:
    void fail(const char* fault) {
        if (m_result.fault.empty()) m_result.fault = fault;
    }

    // What volumes are reckoned from: near the body.
    AcGePoint3d base() const { return m_shape.faces.front().surface.origin; }

    Index addPoint(const AcGePoint3d& point) {
        m_out.points.push_back(point);
        return static_cast<Index>(m_out.points.size() - 1);
    }

    // The points of an arc between its ends, the same for all faces.
    void divide(const Shape::Edge& edge, std::vector<Index>& inner) {
        if (edge.curve.kind != ShapeCurve::Kind::ellipse) return;
        const double sides = sidesOf(m_options, edge.curve.major.length());
        const double share = (edge.to - edge.from) / kTwoPi;
        constexpr double rounding = 1e-9;
        const double count =
            std::max(std::ceil(share * sides - rounding), edge.start == edge.end ? 3.0 : 1.0);
        for (double step = 1.0; step < count; ++step)
            inner.push_back(addPoint(edge.curve.at(edge.from + (edge.to - edge.from) * step / count)));
    }

    // The points of a loop, each once.
    std::vector<Index> pointsOf(Index loop) const {
        std::vector<Index> points;
        for (Index place = m_shape.loopStarts[loop]; place < m_shape.loopStarts[loop + 1]; ++place) {
            const Shape::Coedge& coedge = m_shape.coedges[place];
            const std::vector<Index>& inner = m_inner[coedge.edge];
            if (m_shape.edges[coedge.edge].curve.kind == ShapeCurve::Kind::none &&
                m_shape.loopStarts[loop + 1] - place > 1)
                continue;
            points.push_back(m_shape.startOf(coedge));
            if (coedge.isReversed)
                points.insert(points.end(), inner.rbegin(), inner.rend());
            else
                points.insert(points.end(), inner.begin(), inner.end());
        }
        return points;
    }

    // --- Flat faces

    AcGeVector3d areaOf(const std::vector<Index>& points) const { return areaVectorOf(m_out.points, points); }

    void addLoop(const std::vector<Index>& points) {
        m_out.corners.insert(m_out.corners.end(), points.begin(), points.end());
        m_out.loopStarts.push_back(static_cast<Index>(m_out.corners.size()));
    }

    // Which loop is the outer one is told by the areas alone.
    void addFlatFace(const Shape::Face& face) {
        const AcGeVector3d normal = face.isReversed ? -face.surface.axis : face.surface.axis;
        std::vector<std::vector<Index>> loops;
        std::size_t outerCount = 0;
        for (Index loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop) {
            loops.push_back(pointsOf(loop));
            if (loops.back().size() < 3) return fail("a flat face has a loop without an area");
            if (areaOf(loops.back()).dotProduct(normal) <= 0.0) continue;
            std::swap(loops[outerCount], loops.back());
            ++outerCount;
        }
        if (outerCount != 1) return fail("a flat face has not one outer loop");
        Polyhedron::Face made;
        made.normal = normal;
        made.distance = normal.dotProduct(face.surface.origin - AcGePoint3d::kOrigin);
        made.firstLoop = m_out.loopCount();
        made.loopCount = static_cast<Index>(loops.size());
        for (const std::vector<Index>& loop : loops) addLoop(loop);
        m_out.faces.push_back(made);
        const AcGeVector3d area = areaVectorOf(m_shape, face);
        m_result.area += area.dotProduct(normal);
        m_result.volume += area.dotProduct(face.surface.origin - base()) / 3.0;
    }

    // --- Curved faces

    struct Ring {
        Chain chain;
        int turns = 0; ///< about the axis
    };

    // The first point is none at a pole or apex.
    static bool beginPlain(std::vector<Index>& points, std::vector<Chart::Place>& places) {
        const auto plain =
            std::find_if(places.begin(), places.end(), [](const Chart::Place& p) { return !p.isSingular; });
        if (plain == places.end()) return false;
        std::rotate(points.begin(), points.begin() + (plain - places.begin()), points.end());
        std::rotate(places.begin(), plain, places.end());
        return true;
    }

    // The corners of a loop, each angle next to the one before. At a pole or apex the angle turns there: the
    // material is to the left.
    std::optional<Ring> ringOf(const Chart& chart, std::vector<Index> points, bool isFlipped) {
        if (isFlipped) std::reverse(points.begin(), points.end());
        std::vector<Chart::Place> places;
        for (const Index point : points) places.push_back(chart.placeOf(m_out.points[point]));
        if (!beginPlain(points, places)) return {};
        Ring ring;
        double u = places.front().u, v = places.front().v;
        const double uBegin = u, vBegin = v;
        bool comesFromSingular = false;
        for (std::size_t step = 0; step <= points.size(); ++step) {
            const Chart::Place& place = places[step % points.size()];
            if (place.isSingular) {
                ring.chain.push_back({points[step], u, v = place.v});
                comesFromSingular = true;
                continue;
            }
            const bool isAbove = comesFromSingular && v > place.v;
            const double from = u;
            u += std::remainder(place.u - u, kTwoPi);
            if (comesFromSingular) {
                constexpr double rounding = 1e-9;
                if (isAbove && u > from + rounding) u -= kTwoPi;
                if (!isAbove && u < from - rounding) u += kTwoPi;
                ring.chain.push_back({ring.chain.back().point, u, v});
            }
            comesFromSingular = false;
            v = chart.isPeriodicInV() ? v + std::remainder(place.v - v, kTwoPi) : place.v;
            if (step < points.size()) ring.chain.push_back({points[step], u, v});
        }
        const auto [low, high] = std::minmax_element(
            ring.chain.begin(), ring.chain.end(), [](const Corner& a, const Corner& b) { return a.v < b.v; });
        if (chart.isPeriodicInV() && (std::abs(v - vBegin) > 1.0 || high->v - low->v > kTwoPi)) return {};
        ring.turns = static_cast<int>(std::lround((u - uBegin) / kTwoPi));
        if (ring.turns < -1 || ring.turns > 1) return {};
        return ring;
    }

    static double signedArea(const Chain& chain) {
        double sum = 0.0;
        for (std::size_t place = 0; place < chain.size(); ++place) {
            const Corner& a = chain[place];
            const Corner& b = chain[(place + 1) % chain.size()];
            sum += (a.u - chain.front().u) * (b.v - chain.front().v) -
                   (a.v - chain.front().v) * (b.u - chain.front().u);
        }
        return sum / 2.0;
    }

    static void shift(Chain& chain, double u) {
        for (Corner& corner : chain) corner.u += u;
    }

    /// The patch: its outer loop, counter-clockwise, and the holes.
    struct Patch {
        std::vector<Chain> loops;
        double du = 0.0, dv = 0.0; ///< of the facets
    };

    // Of a torus the rings may run about the tube: then the parameters change their parts.
    void addCurvedFace(const Shape::Face& face) {
        Chart chart(face.surface);
        std::vector<Ring> rings;
        bool isFlipped = chart.looksOut() == face.isReversed;
        if (!ringsOf(chart, face, isFlipped, rings)) {
            if (!chart.isPeriodicInV()) return fail("a curved face is bounded in a way that is not facetted");
            chart.swapParameters();
            isFlipped = !isFlipped;
            rings.clear();
            if (!ringsOf(chart, face, isFlipped, rings))
                return fail("a curved face is bounded in a way that is not facetted");
        }
        Patch patch;
        patch.du = kTwoPi / sidesOf(m_options, chart.radiusOfU());
        patch.dv = chart.isPeriodicInV() ? kTwoPi / sidesOf(m_options, chart.radiusOfV()) : patch.du;
        if (!outline(chart, std::move(rings), patch))
            return fail("a curved face is bounded in a way that is not facetted");
        m_apex.reset();
        if (!mesh(face, chart, patch, isFlipped)) return fail("the facets of a curved face cross each other");
    }

    bool ringsOf(const Chart& chart, const Shape::Face& face, bool isFlipped, std::vector<Ring>& rings) {
        for (Index loop = face.firstLoop; loop < face.firstLoop + face.loopCount; ++loop) {
            const Index begin = m_shape.loopStarts[loop];
            const bool isOnePoint =
                m_shape.loopStarts[loop + 1] - begin == 1 &&
                m_shape.edges[m_shape.coedges[begin].edge].curve.kind == ShapeCurve::Kind::none;
            if (isOnePoint) {
                m_apex = m_shape.startOf(m_shape.coedges[begin]);
                continue;
            }
            std::optional<Ring> ring = ringOf(chart, pointsOf(loop), isFlipped);
            if (!ring) return false;
            rings.push_back(std::move(*ring));
        }
        return true;
    }

    // Opens what runs about the axis along a line of equal angle, both sides of which have the same points.
    bool outline(const Chart& chart, std::vector<Ring> rings, Patch& patch) {
        std::vector<Ring> around;
        std::vector<Chain> outer, holes;
        for (Ring& ring : rings) {
            if (ring.turns != 0)
                around.push_back(std::move(ring));
            else
                (signedArea(ring.chain) > 0.0 ? outer : holes).push_back(std::move(ring.chain));
        }
        if (around.size() > 2 || outer.size() > (around.empty() ? 1u : 0u)) return false;
        if (around.size() == 2 && around[0].turns + around[1].turns != 0) return false;
        if (around.size() == 2 && around[0].turns < 0) std::swap(around[0], around[1]);
        if (!around.empty()) outer.push_back(openRings(chart, around, patch));
        if (outer.empty()) outer.push_back(wholeSurface(chart, patch));
        if (outer.front().empty()) return false;
        const auto [low, high] =
            std::minmax_element(outer.front().begin(), outer.front().end(),
                                [](const Corner& a, const Corner& b) { return a.u < b.u; });
        constexpr double widest = 3.0 * kTwoPi;
        if (!(high->u - low->u < widest)) return false;
        for (Chain& hole : holes) {
            while (hole.front().u < low->u) shift(hole, kTwoPi);
            while (hole.front().u > high->u) shift(hole, -kTwoPi);
        }
        patch.loops.push_back(std::move(outer.front()));
        patch.loops.insert(patch.loops.end(), std::make_move_iterator(holes.begin()),
                           std::make_move_iterator(holes.end()));
        return true;
    }

    Chain openRings(const Chart& chart, std::vector<Ring>& around, Patch& patch) {
        Chain result;
        const bool isLower = around[0].turns > 0;
        Chain lower, upper;
        if (around.size() == 2) {
            lower = std::move(around[0].chain);
            upper = std::move(around[1].chain);
            alignTo(upper, lower.front().u);
            if (chart.isPeriodicInV())
                while (upper.front().v < lower.front().v)
                    for (Corner& corner : upper) corner.v += kTwoPi;
        } else {
            const std::optional<double> end = chart.singularAbove(isLower);
            if (!end) return {};
            const Chain& ring = around[0].chain;
            const Index apex = m_apex ? *m_apex : addPoint(chart.at(ring.front().u, *end));
            const double u = ring.front().u;
            (isLower ? lower : upper) = ring;
            if (isLower)
                upper = {{apex, u, *end}};
            else
                lower = {{apex, u, *end}};
            if (!isLower) alignTo(upper, u);
        }
        close(lower, kTwoPi);
        close(upper, -kTwoPi);
        shift(upper, kTwoPi);
        const Chain seam = seamBetween(chart, lower.front(), upper.back(), patch);
        result = std::move(lower);
        for (Corner corner : seam) {
            corner.u += kTwoPi;
            result.push_back(corner);
        }
        result.insert(result.end(), upper.begin(), upper.end());
        result.insert(result.end(), seam.rbegin(), seam.rend());
        return result;
    }

    static void close(Chain& chain, double turn) {
        Corner last = chain.front();
        last.u += turn;
        chain.push_back(last);
    }

    // The ring begins at the corner that is nearest to the angle.
    static void alignTo(Chain& chain, double u) {
        const auto distance = [u](const Corner& corner) {
            return std::abs(std::remainder(corner.u - u, kTwoPi));
        };
        const auto nearest =
            std::min_element(chain.begin(), chain.end(),
                             [&](const Corner& a, const Corner& b) { return distance(a) < distance(b); });
        const double turn = chain.front().u > chain.back().u ? -kTwoPi : kTwoPi;
        for (auto corner = chain.begin(); corner != nearest; ++corner) corner->u += turn;
        std::rotate(chain.begin(), nearest, chain.end());
        shift(chain, kTwoPi * std::round((u - chain.front().u) / kTwoPi));
    }

    // Points between two corners, of a surface that is curved that way too; without the ends.
    Chain seamBetween(const Chart& chart, const Corner& from, const Corner& to, const Patch& patch) {
        Chain seam;
        if (chart.isRuled()) return seam;
        const double count = std::ceil(std::abs(to.v - from.v) / patch.dv - kRounding);
        for (double step = 1.0; step < count; ++step) {
            const double u = from.u + (to.u - from.u) * step / count,
                         v = from.v + (to.v - from.v) * step / count;
            seam.push_back({addPoint(chart.at(u, v)), u, v});
        }
        return seam;
    }

    // A sphere from pole to pole, a torus once about both ways.
    Chain wholeSurface(const Chart& chart, Patch& patch) {
        if (chart.isRuled()) return {};
        Corner low{0, 0.0, chart.isPeriodicInV() ? 0.0 : *chart.singularAbove(false)};
        Corner high{0, 0.0, chart.isPeriodicInV() ? kTwoPi : *chart.singularAbove(true)};
        low.point = addPoint(chart.at(low.u, low.v));
        high.point = chart.isPeriodicInV() ? low.point : addPoint(chart.at(high.u, high.v));
        const Chain left = seamBetween(chart, low, high, patch);
        Chain bottom{low};
        const double count = std::round(kTwoPi / patch.du);
        for (double step = 1.0; chart.isPeriodicInV() && step < count; ++step) {
            const double u = kTwoPi * step / count;
            bottom.push_back({addPoint(chart.at(u, 0.0)), u, 0.0});
        }
        Chain result = bottom;
        result.push_back({low.point, kTwoPi, low.v});
        for (Corner corner : left) result.push_back({corner.point, kTwoPi, corner.v});
        result.push_back({high.point, kTwoPi, high.v});
        for (std::size_t place = bottom.size(); place-- > 1;)
            result.push_back({bottom[place].point, bottom[place].u, high.v});
        result.push_back(high);
        result.insert(result.end(), left.rbegin(), left.rend());
        return result;
    }

    // --- Facets of a patch

    bool mesh(const Shape::Face& face, const Chart& chart, const Patch& patch, bool isFlipped) {
        Chain corners;
        std::vector<std::vector<Index>> loops;
        for (const Chain& chain : patch.loops) {
            loops.emplace_back();
            for (const Corner& corner : chain) {
                loops.back().push_back(static_cast<Index>(corners.size()));
                corners.push_back(corner);
            }
        }
        const auto [low, high] = std::minmax_element(
            corners.begin(), corners.end(), [](const Corner& a, const Corner& b) { return a.v < b.v; });
        // Along the lines of a ruled surface facets may be as long as they are: only their width counts.
        const double height = std::max(high->v - low->v, 1e-300);
        const double dv = chart.isRuled() ? height * 2.0 : patch.dv;
        std::vector<AcGePoint2d> flat;
        for (const Corner& corner : corners) flat.emplace_back(corner.u / patch.du, corner.v / dv);
        PatchMesh mesh;
        if (!mesh.build(std::move(flat), std::move(loops))) return false;
        if (!chart.isRuled()) fill(chart, patch, corners, mesh);
        measure(chart, corners, mesh.triangles(), isFlipped);
        addFacets(face, corners, mesh.triangles(), isFlipped);
        return true;
    }

    void fill(const Chart& chart, const Patch& patch, Chain& corners, PatchMesh& mesh) {
        double low[2] = {INFINITY, INFINITY}, high[2] = {-INFINITY, -INFINITY};
        for (const AcGePoint2d& point : mesh.points()) {
            low[0] = std::min(low[0], point.x);
            low[1] = std::min(low[1], point.y);
            high[0] = std::max(high[0], point.x);
            high[1] = std::max(high[1], point.y);
        }
        constexpr double margin = 0.45; // of a facet
        for (double y = low[1] + 1.0; y < high[1] - margin; ++y)
            for (double x = low[0] + 1.0; x < high[0] - margin; ++x) {
                if (mesh.insert({x, y}, margin) == PatchMesh::none) continue;
                const double u = x * patch.du, v = y * patch.dv;
                corners.push_back({addPoint(chart.at(u, v)), u, v});
            }
    }

    // Of the surface itself, by a rule of degree five on each triangle of the chart.
    void measure(const Chart& chart, const Chain& corners, const std::vector<PatchMesh::Triangle>& triangles,
                 bool isFlipped) {
        struct Node {
            double near, far, weight;
        };
        constexpr Node nodes[] = {{1.0 / 3.0, 1.0 / 3.0, 0.225},
                                  {0.059715871789770, 0.470142064105115, 0.132394152788506},
                                  {0.797426985353087, 0.101286507323456, 0.125939180544827}};
        const double sign = isFlipped ? -1.0 : 1.0;
        for (const auto& [i, j, k] : triangles) {
            const Corner* const c[3] = {&corners[i], &corners[j], &corners[k]};
            const double size =
                ((c[1]->u - c[0]->u) * (c[2]->v - c[0]->v) - (c[1]->v - c[0]->v) * (c[2]->u - c[0]->u)) / 2.0;
            for (const Node& node : nodes)
                for (int turn = 0; turn < (node.weight == 0.225 ? 1 : 3); ++turn) {
                    const Corner& a = *c[turn];
                    const Corner& b = *c[(turn + 1) % 3];
                    const Corner& d = *c[(turn + 2) % 3];
                    const double u = a.u * node.near + (b.u + d.u) * node.far,
                                 v = a.v * node.near + (b.v + d.v) * node.far;
                    const AcGeVector3d normal = chart.normalAt(u, v) * (size * node.weight);
                    m_result.area += normal.length();
                    m_result.volume += sign * normal.dotProduct(chart.at(u, v) - base()) / 3.0;
                }
        }
    }

    void addFacets(const Shape::Face& face, const Chain& corners,
                   const std::vector<PatchMesh::Triangle>& triangles, bool isFlipped) {
        std::vector<Facet> facets;
        for (const PatchMesh::Triangle& triangle : triangles) {
            Facet facet{corners[triangle[0]].point, corners[triangle[1]].point, corners[triangle[2]].point};
            if (facet[0] == facet[1] || facet[1] == facet[2] || facet[2] == facet[0]) continue; // at a pole
            if (isFlipped) std::reverse(facet.begin(), facet.end());
            facets.push_back(std::move(facet));
        }
        joinFlatPairs(m_out.points, facets);
        const AModeler::Surface* const surface =
            m_makeSurface(face.surface.origin, face.surface.axis,
                          face.surface.kind == ShapeSurface::Kind::cone ? face.surface.major.length()
                                                                        : std::abs(face.surface.radius));
        for (const Facet& facet : facets)
            if (!facet.empty()) addFacet(facet, surface);
    }

    void addFacet(const Facet& facet, const AModeler::Surface* surface) {
        const AcGeVector3d area = areaOf(facet);
        if (!(area.length() > 0.0)) return fail("a facet has no area");
        Polyhedron::Face made;
        made.normal = area.normal();
        for (const Index corner : facet)
            made.distance += made.normal.dotProduct(m_out.points[corner] - AcGePoint3d::kOrigin);
        made.distance /= static_cast<double>(facet.size());
        made.firstLoop = m_out.loopCount();
        made.loopCount = 1;
        made.surface = surface;
        addLoop(facet);
        m_out.faces.push_back(made);
    }

    const Shape& m_shape;
    const FacetOptions& m_options;
    const MakeSurface& m_makeSurface;
    Polyhedron m_out;
    Facets m_result;
    std::vector<std::vector<Index>> m_inner;
    std::optional<Index> m_apex; // of the face at work, where a vertex stands there
};

} // namespace

Facets facetsOf(const Shape& shape, const FacetOptions& options, const MakeSurface& makeSurface) {
    return Facetting(shape, options, makeSurface).run();
}

} // namespace hostkit::modeler

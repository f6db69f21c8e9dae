#include "bodystorage.h"
#include "planarpoints.h"

#include <cmath>
#include <numeric>

namespace AModeler {

using namespace hostkit::modeler;

namespace {

/// The corners that are not convex, by the cell of a grid in which they lie: what an ear must not hold.
class CornerGrid {
public:
    explicit CornerGrid(const std::vector<AcGePoint2d>& points) {
        for (const AcGePoint2d& p : points) {
            m_low = {std::min(m_low.x, p.x), std::min(m_low.y, p.y)};
            m_high = {std::max(m_high.x, p.x), std::max(m_high.y, p.y)};
        }
        m_side = std::max(1, static_cast<int>(std::sqrt(static_cast<double>(points.size()) / 2)));
        m_cells.resize(static_cast<std::size_t>(m_side * m_side));
    }

    void add(std::uint32_t corner, const AcGePoint2d& p) {
        m_cells[cell(column(p.x), row(p.y))].push_back(corner);
    }

    /// True when f(corner) is, for one of the corners in the cells that the box touches.
    template <class F>
    [[nodiscard]] bool any(const AcGePoint2d& low, const AcGePoint2d& high, F&& f) const {
        for (int y = row(low.y); y <= row(high.y); ++y)
            for (int x = column(low.x); x <= column(high.x); ++x)
                for (std::uint32_t corner : m_cells[cell(x, y)])
                    if (f(corner)) return true;
        return false;
    }

private:
    [[nodiscard]] int place(double at, double low, double high) const {
        const double share = high > low ? (at - low) / (high - low) : 0.0;
        return std::clamp(static_cast<int>(share * m_side), 0, m_side - 1);
    }
    [[nodiscard]] int column(double x) const { return place(x, m_low.x, m_high.x); }
    [[nodiscard]] int row(double y) const { return place(y, m_low.y, m_high.y); }
    [[nodiscard]] std::size_t cell(int x, int y) const { return static_cast<std::size_t>(y * m_side + x); }

    AcGePoint2d m_low{1.0e300, 1.0e300}, m_high{-1.0e300, -1.0e300};
    int m_side;
    std::vector<std::vector<std::uint32_t>> m_cells;
};

/// Cuts ears from one loop, bridges there and back included.
class EarClipping {
public:
    EarClipping(const Face& face, std::vector<Body::Triangle>& triangles)
        : m_face(face)
        , m_triangles(triangles) {
        const FaceView view(face.plane().normal());
        forEachEdge(face, [&](const Edge& edge) {
            m_vertices.push_back(edge.vertex());
            m_at.push_back(view(edge.point()));
        });
        const auto count = static_cast<std::uint32_t>(m_at.size());
        m_next.resize(count);
        m_previous.resize(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            m_next[i] = (i + 1) % count;
            m_previous[i] = (i + count - 1) % count;
        }
    }

    void run() {
        CornerGrid reflex(m_at);
        const auto count = static_cast<std::uint32_t>(m_at.size());
        for (std::uint32_t i = 0; i < count; ++i)
            if (!(turnAt(i) > nearly(m_previous[i], m_next[i]))) reflex.add(i, m_at[i]);
        std::vector<bool> gone(count, false);
        std::uint32_t left = count, corner = 0, misses = 0;
        while (left > 3) {
            // With no ear to be had the loop touches itself; the flattest corner that turns the right way
            // goes then.
            if (misses > left) corner = flattest(corner);
            if (misses > left || isEmpty(corner) || isEar(corner, reflex, gone)) {
                cut(corner);
                gone[corner] = true;
                --left;
                misses = 0;
                corner = isEmpty(m_next[corner]) ? m_next[corner] : m_next[m_next[corner]];
            } else {
                ++misses;
                corner = m_next[corner];
            }
        }
        if (left == 3) cut(corner);
    }

private:
    [[nodiscard]] double turnAt(std::uint32_t i) const {
        return turn(m_at[m_previous[i]], m_at[i], m_at[m_next[i]]);
    }

    /// Twice the area that a corner has which is flat within the tolerance.
    [[nodiscard]] double nearly(std::uint32_t from, std::uint32_t to) const {
        return gEpsAbs * (m_at[to] - m_at[from]).length();
    }

    /// There and back, or no way at all: what is left where the face hangs together at a point only.
    [[nodiscard]] bool isEmpty(std::uint32_t i) const {
        const Vertex* vertex = m_vertices[i];
        const Vertex *before = m_vertices[m_previous[i]], *after = m_vertices[m_next[i]];
        return before == after || vertex == before || vertex == after;
    }

    [[nodiscard]] bool isEar(std::uint32_t i, const CornerGrid& reflex, const std::vector<bool>& gone) const {
        const std::array<std::uint32_t, 3> ear{m_previous[i], i, m_next[i]};
        const double flat = nearly(ear[0], ear[2]);
        if (!(turnAt(i) > flat)) return false;
        const AcGePoint2d &a = m_at[ear[0]], &b = m_at[ear[1]], &c = m_at[ear[2]];
        const AcGeVector2d around(gEpsAbs, gEpsAbs);
        const AcGePoint2d low = AcGePoint2d(std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})) - around;
        const AcGePoint2d high = AcGePoint2d(std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})) + around;
        return !reflex.any(low, high, [&](std::uint32_t k) {
            if (gone[k] || k == ear[0] || k == ear[1] || k == ear[2]) return false;
            for (std::size_t at = 0; at < 3; ++at)
                if (m_vertices[k] == m_vertices[ear[at]]) return goesInto(ear, at, k);
            const AcGePoint2d& p = m_at[k];
            return turn(a, b, p) >= 0.0 && turn(b, c, p) >= 0.0 && turn(c, a, p) >= -flat;
        });
    }

    /// A copy of one of the ear's corners, as at the ends of bridges: the loop goes from it, or comes to it,
    /// through the ear.
    [[nodiscard]] bool goesInto(const std::array<std::uint32_t, 3>& ear, std::size_t at,
                                std::uint32_t copy) const {
        const AcGePoint2d &o = m_at[ear[at]], &from = m_at[ear[(at + 1) % 3]], &to = m_at[ear[(at + 2) % 3]];
        const auto isBetween = [&](const AcGePoint2d& p) {
            return turn(o, from, p) > 0.0 && turn(o, p, to) > 0.0;
        };
        return isBetween(m_at[m_next[copy]]) || isBetween(m_at[m_previous[copy]]);
    }

    [[nodiscard]] std::uint32_t flattest(std::uint32_t from) const {
        std::uint32_t best = from;
        double least = -1.0;
        for (std::uint32_t i = m_next[from]; i != from; i = m_next[i]) {
            const double size = turnAt(i);
            if (size >= 0.0 && (least < 0.0 || size < least)) {
                best = i;
                least = size;
            }
        }
        return best;
    }

    void cut(std::uint32_t i) {
        const std::uint32_t a = m_previous[i], c = m_next[i];
        if (!isEmpty(i)) m_triangles.push_back({{m_vertices[a], m_vertices[i], m_vertices[c]}, &m_face});
        m_next[a] = c;
        m_previous[c] = a;
    }

    const Face& m_face;
    std::vector<Body::Triangle>& m_triangles;
    std::vector<Vertex*> m_vertices;
    std::vector<AcGePoint2d> m_at;
    std::vector<std::uint32_t> m_next, m_previous;
};

} // namespace

std::vector<Body::Triangle> Body::triangles() const {
    std::vector<Triangle> all;
    forEachFace(*this, [&](const Face& face) { EarClipping(face, all).run(); });
    return all;
}

} // namespace AModeler

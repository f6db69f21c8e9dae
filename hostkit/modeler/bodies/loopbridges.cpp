#include "loopbridges.h"

#include "planarpoints.h"

#include <algorithm>
#include <numeric>
#include <set>

namespace hostkit::modeler {
namespace {

using Corner = std::uint32_t;

/// The sweep keeps the edges that have the face above them, from below to above, each with the last corner
/// that was seen between it and what lies above it. From there to a hole that begins right above the edge
/// nothing stands in the way.
class Sweep {
public:
    Sweep(std::span<const AcGePoint2d> corners, std::span<const std::uint32_t> loopStarts)
        : m_at(corners)
        , m_next(corners.size())
        , m_previous(corners.size())
        , m_beginsHole(corners.size(), false)
        , m_isOpen(corners.size(), false)
        , m_helper(corners.size(), 0)
        , m_place(corners.size()) {
        for (std::size_t loop = 0; loop + 1 < loopStarts.size(); ++loop)
            link(loopStarts[loop], loopStarts[loop + 1], loop > 0);
    }

    [[nodiscard]] std::vector<LoopBridge> run() {
        std::vector<Corner> order(m_at.size());
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(),
                         [&](Corner a, Corner b) { return comesBefore(m_at[a], m_at[b]); });
        for (Corner corner : order) meet(corner);
        return std::move(m_bridges);
    }

private:
    /// Edges are named by the corner where they begin.
    struct Below {
        const Sweep* sweep;
        using is_transparent = void;
        bool operator()(Corner a, Corner b) const { return a != b && sweep->liesBelow(a, b); }
        bool operator()(Corner edge, const AcGePoint2d& p) const {
            return turn(sweep->m_at[edge], sweep->m_at[sweep->m_next[edge]], p) >= 0.0;
        }
    };

    void link(Corner begin, Corner end, bool isHole) {
        Corner first = begin;
        for (Corner i = begin; i < end; ++i) {
            m_next[i] = i + 1 < end ? i + 1 : begin;
            m_previous[i] = i > begin ? i - 1 : end - 1;
            if (comesBefore(m_at[i], m_at[first])) first = i;
        }
        if (isHole && begin < end) m_beginsHole[first] = true;
    }

    [[nodiscard]] bool liesBelow(Corner a, Corner b) const {
        const AcGePoint2d &a1 = m_at[a], &a2 = m_at[m_next[a]], &b1 = m_at[b], &b2 = m_at[m_next[b]];
        if (comesBefore(a1, b1)) {
            const double side = turn(a1, a2, b1);
            return side != 0.0 ? side > 0.0 : turn(a1, a2, b2) > 0.0;
        }
        const double side = turn(b1, b2, a1);
        return side != 0.0 ? side < 0.0 : turn(b1, b2, a2) < 0.0;
    }

    void meet(Corner corner) {
        const Corner previous = m_previous[corner];
        const bool edgeEnds = comesBefore(m_at[previous], m_at[corner]);
        const bool edgeBegins = comesBefore(m_at[corner], m_at[m_next[corner]]);
        // The face lies below the corner, or on both sides of it: not where it only begins or ends there.
        const bool facesEdgeBelow = edgeEnds == edgeBegins
                                        ? !edgeEnds
                                        : turn(m_at[previous], m_at[corner], m_at[m_next[corner]]) < 0.0;
        if (edgeEnds) close(previous);
        if (facesEdgeBelow) tellEdgeBelow(corner);
        if (edgeBegins) open(corner);
    }

    void open(Corner edge) {
        m_helper[edge] = edge;
        m_place[edge] = m_edges.insert(edge);
        m_isOpen[edge] = true;
    }

    void close(Corner edge) {
        if (m_isOpen[edge]) m_edges.erase(m_place[edge]);
        m_isOpen[edge] = false;
    }

    void tellEdgeBelow(Corner corner) {
        const auto above = m_edges.lower_bound(m_at[corner]);
        if (above == m_edges.begin()) return;
        const Corner edge = *std::prev(above);
        if (m_beginsHole[corner]) m_bridges.push_back({corner, m_helper[edge]});
        m_helper[edge] = corner;
    }

    using Place = std::multiset<Corner, Below>::iterator;

    std::span<const AcGePoint2d> m_at;
    std::vector<Corner> m_next, m_previous;
    std::vector<bool> m_beginsHole;
    std::vector<bool> m_isOpen;   ///< the edge that begins at the corner is in the list
    std::vector<Corner> m_helper; ///< of the edge that begins at the corner
    std::multiset<Corner, Below> m_edges{Below{this}};
    std::vector<Place> m_place;
    std::vector<LoopBridge> m_bridges;
};

} // namespace

std::vector<LoopBridge> bridgesOf(std::span<const AcGePoint2d> corners,
                                  std::span<const std::uint32_t> loopStarts) {
    if (loopStarts.size() <= 2) return {};
    return Sweep(corners, loopStarts).run();
}

} // namespace hostkit::modeler

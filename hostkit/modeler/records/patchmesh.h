// Triangles of a region of the plane with holes, Delaunay; leaves out regions that cross themselves, which it
// refuses.
#pragma once

#include "gepnt2d.h"

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace hostkit::modeler {

class PatchMesh {
public:
    using Index = std::uint32_t;
    using Triangle = std::array<Index, 3>;

    /// The first loop runs counter-clockwise around the others, which run clockwise. False where no triangles
    /// cover the region with all its corners.
    [[nodiscard]] bool build(std::vector<AcGePoint2d> points, std::vector<std::vector<Index>> loops);
    /// A point within the region becomes a corner, unless it lies nearer to the bounds or to a corner than
    /// `margin`. Its number, or `none`.
    Index insert(const AcGePoint2d& point, double margin);
    static constexpr Index none = ~Index{0};

    /// Counter-clockwise.
    [[nodiscard]] std::vector<Triangle> triangles() const;
    [[nodiscard]] const std::vector<AcGePoint2d>& points() const { return m_points; }

private:
    using Edge = std::uint64_t;
    static Edge edge(Index a, Index b) { return static_cast<Edge>(a) << 32 | b; }
    [[nodiscard]] double area(Index a, Index b, Index c) const;
    [[nodiscard]] bool crosses(Index a, Index b, Index c, Index d) const;
    [[nodiscard]] bool isFree(Index from, Index to, const std::vector<std::vector<Index>>& loops) const;
    bool joinHoles(std::vector<std::vector<Index>>& loops);
    bool clipEars(std::vector<Index> loop);
    [[nodiscard]] bool isEar(const std::vector<Index>& loop, std::size_t place) const;
    void add(Index a, Index b, Index c);
    void remove(Index a, Index b, Index c);
    [[nodiscard]] Index apexOf(Index a, Index b) const;
    void legalize(std::vector<Edge> pending);
    [[nodiscard]] bool isInside(const AcGePoint2d& point) const;
    bool locate(const AcGePoint2d& point, Triangle& found) const;

    std::vector<AcGePoint2d> m_points;
    std::vector<std::pair<Index, Index>> m_bounds;
    Edge m_last = 0;                          // of the last triangle that was found: the next one is near
    std::unordered_map<Edge, Index> m_apexes; // of the triangle to the left of each directed edge
};

} // namespace hostkit::modeler

#pragma once

#include "gepnt3d.h"

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

/// Tells which parts of lines stand behind triangles. Coordinates are those of the view: x to the right, y
/// up, z towards the viewer, who is infinitely far away.
///
/// A grid over the picture holds each triangle in the cells that it overlaps, so that a line asks only those
/// along it. A line hides behind what is nearer by more than 2e-6 of the scene's size: one that lies in a
/// face stays.
class HiddenLines {
public:
    /// Where along a line, from 0 to 1.
    using Part = std::pair<double, double>;

    /// Counter-clockwise for the viewer; others, and those seen from their edge, hide nothing.
    void add(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c);
    /// Behind the last triangle, before the first question.
    void makeIndex();
    /// The parts of the line that are seen, in order; all of it where nothing stands before it.
    [[nodiscard]] std::vector<Part> seenParts(const AcGePoint3d& from, const AcGePoint3d& to);

private:
    struct Triangle {
        std::array<AcGePoint3d, 3> corners;
        double slopeX, slopeY; ///< of z in its plane
    };
    struct Range {
        int first, last;
    };

    [[nodiscard]] Range cellsBetween(double low, double high, double origin) const;
    [[nodiscard]] std::size_t cellAt(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_side) +
               static_cast<std::size_t>(column);
    }
    [[nodiscard]] bool overlapsCell(const Triangle& triangle, int column, int row) const;
    [[nodiscard]] bool hides(const Triangle& triangle, const AcGePoint3d& from, const AcGePoint3d& to,
                             Part& part) const;
    template <class F>
    void forEachAlong(const AcGePoint3d& from, const AcGePoint3d& to, F&& visit) const;

    std::vector<Triangle> m_triangles;
    std::vector<std::uint32_t> m_asked; ///< of each triangle, the last line that asked it
    std::uint32_t m_line = 0;
    std::vector<std::vector<std::uint32_t>> m_cells;
    AcGePoint3d m_low{1e300, 1e300, 1e300}, m_high{-1e300, -1e300, -1e300};
    double m_size = 0.0; ///< of the scene
    double m_cell = 1.0; ///< the length of a cell's side
    int m_side = 0;      ///< cells in a row and in a column
};

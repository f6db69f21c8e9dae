// Outlines of straight and cubic pieces.
#pragma once

#include "gemat3d.h"
#include "gepnt3d.h"

#include <vector>

namespace hostkit {

/// A path of straight and cubic pieces in drawing coordinates, in any number of runs. Cubics go through every
/// affine map unchanged in kind, so that circles in blocks of unequal scales come out as what they are.
class PicturePath {
public:
    enum class Step : unsigned char {
        move,  ///< one point
        line,  ///< one point
        curve, ///< two control points and the end
        close  ///< back to the start of the run
    };

    bool isEmpty() const { return m_steps.empty(); }
    const std::vector<Step>& steps() const { return m_steps; }
    const std::vector<AcGePoint3d>& points() const { return m_points; }

    void moveTo(const AcGePoint3d& point);
    /// Begins a run where none is open.
    void lineTo(const AcGePoint3d& point);
    void curveTo(const AcGePoint3d& control1, const AcGePoint3d& control2, const AcGePoint3d& end);
    void close();
    /// The points center + cos(t) * major + sin(t) * minor for t from start through sweep radians, at most
    /// one full turn either way. Joined to the open run by a line, or the begin of a run. Pieces of at most
    /// an eighth of a turn are off by less than 5e-6 of the axes.
    void arc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor, double start,
             double sweep);
    /// The piece from the run's present end to `end` with a host bulge (the tangent of a quarter of its
    /// angle), in the plane of the matrix: the points are plane points at z = 0 there. No run or a zero
    /// bulge: a line.
    void bulgeTo(const AcGePoint3d& end, double bulge);

    void append(const PicturePath& path);
    void transformBy(const AcGeMatrix3d& matrix);

private:
    std::vector<Step> m_steps;
    std::vector<AcGePoint3d> m_points;
    bool m_isOpen = false;
};

} // namespace hostkit

// Shape of light, 2d and 3d polylines: parameters, points, lengths, nearest points, area, box and parts of a
// chain of straight and circular segments; leaves out widths.
#pragma once

#include "acadstrc.h"
#include "dbextents.h"
#include "gearc3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"

#include <vector>

namespace hostkit {

class CurvePieces;

/// A vertex of a part of a polyline, in the chain's own coordinates, with where it was cut from.
struct PartVertex {
    AcGePoint3d point;
    double bulge;
    unsigned int segment;
    double fromFraction;
    double toFraction;
};

/// A view of a chain's vertices: either 2d points in the coordinates of a normal at an elevation, with
/// bulges, or points in space. It looks at the owner's arrays and lives no longer than a call. Parameters are
/// the vertex index plus the fraction of the segment's length. Questions in world coordinates; every one
/// takes time linear in the number of segments at most, and allocates nothing but its results.
///
/// Closed chains have a last segment back to the first vertex. A chain of fewer than two vertices has no
/// segments: eDegenerateGeometry.
class PolylineShape {
public:
    /// `bulges` may be null: all 0.
    PolylineShape(const AcGePoint2d* points, const double* bulges, std::size_t count, bool closed,
                  const AcGeVector3d& normal, double elevation);
    PolylineShape(const AcGePoint3d* points, std::size_t count, bool closed);

    std::size_t vertexCount() const { return m_count; }
    std::size_t segmentCount() const { return m_count < 2 ? 0 : m_closed ? m_count : m_count - 1; }
    AcGePoint3d vertex(std::size_t index) const {
        return m_points2d ? AcGePoint3d(m_points2d[index].x, m_points2d[index].y, m_elevation)
                          : m_points3d[index];
    }
    AcGePoint3d worldVertex(std::size_t index) const { return toWorld(vertex(index)); }
    double bulge(std::size_t index) const { return m_bulges ? m_bulges[index] : 0.0; }
    double endParameter() const { return static_cast<double>(segmentCount()); }

    Acad::ErrorStatus pointAt(double parameter, AcGePoint3d& point) const;
    Acad::ErrorStatus parameterAt(const AcGePoint3d& point, double& parameter) const;
    Acad::ErrorStatus distanceAt(double parameter, double& distance) const;
    Acad::ErrorStatus parameterAtDistance(double distance, double& parameter) const;
    /// By the parameter, of order 1 or 2; at a vertex that of the segment that leaves it.
    Acad::ErrorStatus derivative(double parameter, int order, AcGeVector3d& result) const;
    /// `extend` prolongs the first and last segment of an open chain, a straight one along its line, an arc
    /// along its circle.
    Acad::ErrorStatus closestPoint(const AcGePoint3d& given, bool extend, AcGePoint3d& closest) const;
    Acad::ErrorStatus closestPointAlong(const AcGePoint3d& given, const AcGeVector3d& direction,
                                        AcGePoint3d& closest) const;
    /// Of the chain closed by its chord, with its arcs, without sign. eNotApplicable for points in space that
    /// lie in no plane.
    Acad::ErrorStatus area(double& area) const;
    Acad::ErrorStatus extents(AcDbExtents& extents) const;
    /// The vertices between two parameters; `to` may lie up to one turn above the end of a closed chain.
    std::vector<PartVertex> part(double from, double to) const;
    void addPieces(CurvePieces& pieces, bool extend) const;
    /// The segment's arc in the world; false for a straight one.
    bool arcSegment(std::size_t index, AcGeCircArc3d& arc) const;

private:
    struct Ends {
        AcGePoint3d start;
        AcGePoint3d end;
        double bulge;
    };
    Ends segment(std::size_t index) const {
        return {vertex(index), vertex(index + 1 < m_count ? index + 1 : 0), bulge(index)};
    }
    AcGePoint3d toWorld(const AcGePoint3d& local) const;
    AcGePoint3d toLocal(const AcGePoint3d& world) const;
    AcDbExtents boxOfVertices() const;
    bool locate(double parameter, std::size_t& index, double& fraction) const;
    bool extendedClosest(const AcGePoint3d& given, std::size_t index, bool atStart,
                         AcGePoint3d& closest) const;

    const AcGePoint2d* m_points2d = nullptr;
    const AcGePoint3d* m_points3d = nullptr;
    const double* m_bulges = nullptr;
    std::size_t m_count;
    bool m_closed;
    bool m_isFlat; ///< the chain's coordinates are the world's
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_elevation = 0.0;
};

} // namespace hostkit

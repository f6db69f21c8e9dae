// Common answers of light, 2d and 3d polylines: the curve interface over their shape; leaves out what depends
// on how vertices are stored.
#pragma once

#include "dbcurve.h"
#include "gemat3d.h"
#include "polylineshape.h"

namespace hostkit {

/// Vertices gathered for one call by the polylines that keep them as entities.
struct VertexBuffer {
    std::vector<AcGePoint2d> points2d;
    std::vector<AcGePoint3d> points3d;
    std::vector<double> bulges;
};

/// What a matrix does to a plane of vertices.
struct PlaneMove {
    AcGeMatrix3d map; ///< from the old normal's coordinates to the new one's
    AcGeVector3d normal;
    double elevation;
    double scale;       ///< of lengths in the plane
    double heightScale; ///< along the normal
    bool isMirror;      ///< bulges change their sign
};
/// The new normal shows to the side to which the matrix moves the old one. eInvalidInput: the matrix is
/// singular or holds what is no number. eCannotScaleNonUniformly: it does not keep angles in the plane, and
/// `hasArcs` needs that.
Acad::ErrorStatus movePlane(const AcGeVector3d& normal, double elevation, const AcGeMatrix3d& matrix,
                            bool hasArcs, PlaneMove& move);

/// Base of the polylines; no run-time class of its own.
class PolylineCurve : public AcDbCurve {
public:
    PolylineCurve() = default;
    PolylineCurve(const PolylineCurve&) = default;

    Adesk::Boolean isPeriodic() const override { return isClosed(); }
    Acad::ErrorStatus getStartParam(double& parameter) const override;
    Acad::ErrorStatus getEndParam(double& parameter) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double parameter, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& parameter) const override;
    Acad::ErrorStatus getDistAtParam(double parameter, double& distance) const override;
    Acad::ErrorStatus getParamAtDist(double distance, double& parameter) const override;
    using AcDbCurve::getFirstDeriv;
    Acad::ErrorStatus getFirstDeriv(double parameter, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getSecondDeriv(double parameter, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                        Adesk::Boolean extend = Adesk::kFalse) const override;
    /// The chain is not prolonged in a view: `extend` has no effect.
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                        AcGePoint3d& closest,
                                        Adesk::Boolean extend = Adesk::kFalse) const override;
    Acad::ErrorStatus getArea(double& area) const override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    bool pieces(CurvePieces& pieces, bool extend) const override;
    /// A light polyline in the plane; a chain in space gives one too. An arc that is seen from its edge
    /// becomes its straight run, to and fro. eNotApplicable for arcs that the view would make elliptic;
    /// eDegenerateGeometry when all falls into one point.
    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;

    /// The vertices as they stand or, where they are entities, gathered in `buffer`; good until either
    /// changes.
    virtual PolylineShape shape(VertexBuffer& buffer) const = 0;

protected:
    /// Lines and arcs in the order of the segments, in this curve's look, plane and thickness; widths are
    /// lost. An arc turns about `normal`, so that one with a negative bulge begins where its segment ends.
    /// Segments without length give nothing. eDegenerateGeometry, and no parts, where there are no others.
    Acad::ErrorStatus explodeFlat(const AcGeVector3d& normal, double thickness,
                                  AcDbVoidPtrArray& parts) const;
};

} // namespace hostkit

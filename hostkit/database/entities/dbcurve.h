// Stand-in for the host's AcDbCurve. Covers parameters, points, derivatives, lengths, closest points, splitting and projection; leaves out offsets and extension.
#pragma once

#include "dbent.h"

class AcGeCurve3d;
namespace hostkit {
class CurveGeometry;
class CurvePieces;
} // namespace hostkit

/// A curve of the drawing. Parameters: of a line 0 to its length; of arcs, circles and ellipses the angle in
/// radians; of polylines the vertex index, with the fraction of the segment's length (of its sweep for an
/// arc); of splines the knot value; of rays and xlines the distance from the base point.
///
/// Out arguments stay as they were on failure. Points that are asked for must lie on the curve within the
/// point tolerance; else eInvalidInput. eDegenerateGeometry: a curve without extent where the question needs
/// one.
class AcDbCurve : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbCurve)

public:
    AcDbCurve() = default;
    AcDbCurve(const AcDbCurve&) = default;

    virtual Adesk::Boolean isClosed() const;
    virtual Adesk::Boolean isPeriodic() const;

    virtual Acad::ErrorStatus getStartParam(double& parameter) const;
    virtual Acad::ErrorStatus getEndParam(double& parameter) const;
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;

    virtual Acad::ErrorStatus getPointAtParam(double parameter, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& parameter) const;
    virtual Acad::ErrorStatus getDistAtParam(double parameter, double& distance) const;
    virtual Acad::ErrorStatus getParamAtDist(double distance, double& parameter) const;
    virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& distance) const;
    virtual Acad::ErrorStatus getPointAtDist(double distance, AcGePoint3d& point) const;

    virtual Acad::ErrorStatus getFirstDeriv(double parameter, AcGeVector3d& derivative) const;
    virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const;
    virtual Acad::ErrorStatus getSecondDeriv(double parameter, AcGeVector3d& derivative) const;

    /// The nearest point of the curve; with `extend` of the curve prolonged as its kind is (a line's line, an
    /// arc's circle).
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                                Adesk::Boolean extend = Adesk::kFalse) const;
    /// Nearest when looked at along the direction.
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                AcGePoint3d& closest,
                                                Adesk::Boolean extend = Adesk::kFalse) const;

    /// Without sign; an open curve is closed by its chord. eNotApplicable for what is not planar or has no
    /// area.
    virtual Acad::ErrorStatus getArea(double& area) const;

    /// Appends the pieces between the parameters, in the order of the curve, as new curves that belong to the
    /// caller. A closed curve at two parameters gives the piece from the lower to the higher first, then the
    /// one across the start; the end parameter of a closed curve is its start; one parameter opens it there.
    /// eInvalidInput: no parameters, one outside the curve, or all at the ends of an open curve.
    virtual Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& parameters,
                                             AcDbVoidPtrArray& curves) const;
    virtual Acad::ErrorStatus getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& curves) const;

    /// The curve cast on to the plane along the direction, as a new curve that belongs to the caller.
    virtual Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                AcDbCurve*& projected) const;
    virtual Acad::ErrorStatus getOrthoProjectedCurve(const AcGePlane& plane, AcDbCurve*& projected) const;

    /// The same points with the opposite sense: arcs and circles turn their normal; a closed polyline keeps
    /// its first vertex. eNotApplicable for rays.
    virtual Acad::ErrorStatus reverseCurve();
    /// The curve as a geometry curve that belongs to the caller. eNotApplicable for what has several pieces.
    virtual Acad::ErrorStatus getAcGeCurve(AcGeCurve3d*& curve) const;

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type, AcGePoint3dArray& points,
                                    Adesk::IntPtr thisMarker = 0,
                                    Adesk::IntPtr otherMarker = 0) const override;
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                    const AcGePlane& projectionPlane, AcGePoint3dArray& points,
                                    Adesk::IntPtr thisMarker = 0,
                                    Adesk::IntPtr otherMarker = 0) const override;

    /// The curve's straight, circular, elliptic and free-form pieces in order, for intersections. False for a
    /// curve without extent.
    virtual bool pieces(hostkit::CurvePieces& pieces, bool extend) const;

protected:
    /// The one geometry curve that this is; what the class' questions are answered from unless a derived
    /// class answers them itself. False for a curve without extent, and for one of several pieces.
    virtual bool geometry(hostkit::CurveGeometry& geometry) const;
    /// The part between two parameters as a new open curve; `to` may lie up to a period above the end. Minus
    /// infinity and infinity where the curve has no end.
    virtual AcDbCurve* piece(double from, double to) const;
    /// Sorted cuts of getSplitCurves: within the curve, each once. A closed curve's have its first one again
    /// at the end, one turn on.
    Acad::ErrorStatus cutParameters(const AcGeDoubleArray& parameters, AcGeDoubleArray& cuts) const;
};

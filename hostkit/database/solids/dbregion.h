// Stand-in for the host's AcDbRegion. Covers making regions of curves, their area, plane, booleans and curves; leaves out offsets and moments.
#pragma once

#include "dbmodelergeometry.h"

/// A flat part of the plane, bounded by lines, arcs and arcs of ellipses, with holes.
class AcDbRegion : public AcDbModelerGeometry {
    ACRX_DECLARE_MEMBERS(AcDbRegion)

public:
    AcDbRegion() = default;
    AcDbRegion(const AcDbRegion&) = default;

    /// One region a closed loop, in the order of their first curves; a loop within another is a region of its
    /// own. Curves are joined where their ends are within the modeller's tolerance. A loop lies in one plane
    /// and does not cross itself; what makes no such loop is passed over. The regions belong to the caller,
    /// and their normals have z above 0, or else the first coordinate of y and x that is not 0. Splines
    /// become 32 chords a span. eInvalidInput: no loop at all, or a null pointer or no curve among them.
    static Acad::ErrorStatus createFromCurves(const AcDbVoidPtrArray& curves, AcDbVoidPtrArray& regions);

    /// Arcs as arcs; holes are left out.
    Acad::ErrorStatus getArea(double& area) const;
    Acad::ErrorStatus getPerimeter(double& length) const;
    Acad::ErrorStatus getNormal(AcGeVector3d& normal) const;
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& type) const;
    bool isPlanar() const override { return true; }
    /// This region becomes the result, with a face a piece, and the other one null; a result without an area
    /// is a null region. Arcs become chords with their share of 72 for a full turn. eInvalidInput: no other
    /// region, this one, or one in another plane; eNullPtr: one is null; eNotApplicable: one is not
    /// understood; eDegenerateGeometry: no consistent result; nothing changes then.
    Acad::ErrorStatus booleanOper(AcDb::BoolOperType operation, AcDbRegion* other);
    /// The bounds as lines, circles, arcs, ellipses.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override;
    AcRxObject* clone() const override { return new AcDbRegion(*this); }
};

// Stand-in for the host's AcDb3dSolid. Covers extrusion, sections, booleans, volume and parts; leaves out primitives, sweeps, lofts and moments.
#pragma once

#include "dbmodelergeometry.h"

class AcDbRegion;

/// A body in the drawing. Its operations work on facets: arcs have their share of 72 sides for a full turn.
/// What they make is filed as a body of flat faces.
class AcDb3dSolid : public AcDbModelerGeometry {
    ACRX_DECLARE_MEMBERS(AcDb3dSolid)

public:
    AcDb3dSolid() = default;
    AcDb3dSolid(const AcDb3dSolid&) = default;

    using AcDbModelerGeometry::setBody;

    /// The region raised along its normal, or against it by a negative height. With a taper, in radians, all
    /// side faces lean into the material by it, those of holes too. eInvalidInput: no region, a height of 0,
    /// a taper not between quarter turns; eCannotExtrudeRegion: the sides would meet below the top, or the
    /// region has several faces or is not understood. The solid stays as it was on failure.
    Acad::ErrorStatus extrude(const AcDbRegion* region, double height, double taper = 0.0);

    /// Keeps what lies on the side of the plane's normal; the other half goes to `negHalf`, which belongs to
    /// the caller, where it is asked for (null where there is none). eNoIntersections: nothing would be left;
    /// the solid stays as it was.
    Acad::ErrorStatus getSlice(const AcGePlane& plane, Adesk::Boolean getNegHalfToo, AcDb3dSolid*& negHalf);

    /// This solid becomes the result and the other one null; a null result is an empty solid. eInvalidInput:
    /// no other solid, or this one; eNullPtr: this or the other one is null; eDegenerateGeometry: no
    /// consistent result; nothing changes then.
    Acad::ErrorStatus booleanOper(AcDb::BoolOperType operation, AcDb3dSolid* other);

    /// Volume of curved faces as such; centroid and box of the facets.
    Acad::ErrorStatus getMassProp(double& volume, AcGePoint3d& centroid, AcDbExtents& box) const;

    /// The same with moments of inertia for a density of 1, of the facets: about the world's axes, products
    /// (xy, yz, zx), about the principal axes through the centroid in ascending order with these axes
    /// (right-handed unit vectors), and radii of gyration about the world's axes. Three numbers or vectors
    /// each.
    Acad::ErrorStatus getMassProp(double& volume, AcGePoint3d& centroid, double momentsOfInertia[],
                                  double products[], double principalMoments[], AcGeVector3d principalAxes[],
                                  double radiiOfGyration[], AcDbExtents& box) const;

    /// A region for each flat face, an AcDbBody for each curved one.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override;

    AcRxObject* clone() const override { return new AcDb3dSolid(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    /// The history of how it was made stays in the record that was read: a copy, or a solid in another form,
    /// has none.
    bool m_hasHistoryGroup = false;
};

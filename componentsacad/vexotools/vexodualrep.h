#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "amodeler.h"
#include "dbregion.h"
#include "dbsol3d.h"
#include "geplane.h"

/// One solid in one of two forms: the host's own solid, or a body of the modeller. The same few operations on
/// both.
///
/// In solid mode they go to the host, and its statuses come back as they are. In modeller mode 3
/// (eInvalidInput) tells of input that makes no solid, 150 (eCannotExtrudeRegion) of a form that holds no
/// object or an operation that left no valid body: the held body is then as it was. The form changes by
/// assignment alone.
class VEXODualRep {
public:
    VEXODualRep();                     ///< solid mode, with an empty solid
    VEXODualRep(bool useSolid);        ///< an empty solid, or an empty body
    VEXODualRep(AModeler::Body* body); ///< modeller mode; takes the body
    VEXODualRep(AcDb3dSolid* solid);   ///< solid mode; takes the solid
    /// Shares body and solid with the other: one of the two releases them before both go. Use clone() for a
    /// copy.
    VEXODualRep(const VEXODualRep& other);
    /// Takes the form and copies of the objects; the stored contour stays the target's own.
    VEXODualRep& operator=(const VEXODualRep& other);
    virtual ~VEXODualRep();

    AcDb3dSolid* getSolid() const { return m_pSolid; }
    AModeler::Body* getBody() const { return m_pBody; }
    bool getUseSolid() const { return m_bUseSolid; }

    /// A new object of the caller's with copies of body or solid, without the contour.
    VEXODualRep& clone() const;
    /// There is a body or a solid, valid and with something in it.
    bool isValid() const;
    /// There is neither a body nor a solid; an empty one counts.
    bool isNull() const;
    /// The caller's from now on, or null. True.
    bool ReleaseRepr(AModeler::Body*& body);
    bool ReleaseRepr(AcDb3dSolid*& solid);

    /// Stores the contour of AcDbLine and AcDbArc entries, given in sequence and running the same way, for
    /// extrude; makes no region, whatever the name says. Each point is stored once, each curve has a bulge
    /// about the stored normal. 3, and nothing stored: another class or null, points that span no plane, or a
    /// contour already stored that has two points and no arc.
    Acad::ErrorStatus CreateRegionsFromCurves(const AcArray<void*>& curves, const double& value);
    /// Solid mode: the host's, of the region. Modeller mode: a prism of the stored contour, as high as that
    /// along its normal; region and taper are not looked at, and the contour's last segment is straight
    /// whatever its bulge.
    Acad::ErrorStatus extrude(const AcDbRegion* region, double height, double taper);
    /// Keeps the part that the plane's normal points to. In modeller mode the other part is gone: `slice` is
    /// not set, and `keep` not looked at. A plane that misses the body gives 0; one that leaves nothing of it
    /// 150.
    Acad::ErrorStatus getSlice(const AcGePlane& plane, int keep, AcDb3dSolid*& slice);
    /// Cuts in solid mode alone. The status is 150 in every case, and says nothing of the cut.
    Acad::ErrorStatus getSlice(AcGePlane* plane, bool keep, AcDb3dSolid*& slice);
    /// 3 for null or an object of the other form. A result without material gives 150, and the held body
    /// stays.
    Acad::ErrorStatus booleanOper(AcDb::BoolOperType op, VEXODualRep* other);

    /// A contour for the modeller: a copy of the points and per point an arc, or null for a straight segment.
    /// The last segment is always straight; a bulge array that is too short begins anew. An arc's facets
    /// leave it by at most a thousandth of its radius. Both outputs are new arrays that
    /// VEXOAModelerTools::clearVertexData frees; null without points.
    static void getPolygonVertexData(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                     const AcGeVector3d& normal, AModeler::PolygonVertexData**& data,
                                     AcGePoint3d*& outPoints);

private:
    Acad::ErrorStatus extrudeBody(double height);
    Acad::ErrorStatus cutBody(const AcGePlane& plane);
    Acad::ErrorStatus combineBody(AcDb::BoolOperType op, const AModeler::Body* other);

    bool m_bUseSolid;
    AModeler::Body* m_pBody = nullptr;
    AcDb3dSolid* m_pSolid = nullptr;
    AcGeVector3d m_vNormal;
    AcArray<AcGePoint3d> m_aPoints;
    AcArray<double> m_aBulges;
    double m_dValue = 0.0;
};

// Stand-in for the host's AcDbFace. Covers the four corners in space and hidden edges; leaves out nothing.
#pragma once

#include "dbent.h"

/// A face of three or four corners in world coordinates; with three the last two are the same.
class AcDbFace : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbFace)

public:
    AcDbFace() = default;
    AcDbFace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3);
    AcDbFace(const AcDbFace&) = default;

    Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point);
    Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const;
    Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);
    Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    AcRxObject* clone() const override { return new AcDbFace(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    struct Filing;
    AcGePoint3d m_points[4];
    Adesk::Int16 m_hiddenEdges = 0; ///< group 70
};

// Stand-in for the host's AcDb3dPolylineVertex. Covers place and kind; leaves out nothing.
#pragma once

#include "dbent.h"

/// A vertex of an AcDb3dPolyline, in world coordinates.
class AcDb3dPolylineVertex : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex)

public:
    AcDb3dPolylineVertex() = default;
    explicit AcDb3dPolylineVertex(const AcGePoint3d& position)
        : m_position(position) {}
    AcDb3dPolylineVertex(const AcDb3dPolylineVertex&) = default;

    AcDb::Vertex3dType vertexType() const;
    AcGePoint3d position() const { return m_position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    AcRxObject* clone() const override { return new AcDb3dPolylineVertex(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    struct Filing;
    friend class AcDb3dPolyline;
    Adesk::Int16 m_dxfFlags = 32; ///< group 70
    AcGePoint3d m_position;
};

// Stand-in for the host's AcDb2dVertex. Covers place, bulge, widths and tangent; leaves out identifiers.
#pragma once

#include "dbent.h"

/// A vertex of an AcDb2dPolyline, in the coordinates of its polyline's normal.
class AcDb2dVertex : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDb2dVertex)

public:
    AcDb2dVertex() = default;
    explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0.0, double startWidth = 0.0,
                          double endWidth = 0.0, double tangent = 0.0,
                          AcDb::Vertex2dType type = AcDb::k2dVertex);
    AcDb2dVertex(const AcDb2dVertex&) = default;

    AcDb::Vertex2dType vertexType() const;
    AcGePoint3d position() const { return m_position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    double bulge() const { return m_bulge; }
    Acad::ErrorStatus setBulge(double bulge);
    double startWidth() const { return m_startWidth; }
    Acad::ErrorStatus setStartWidth(double width);
    double endWidth() const { return m_endWidth; }
    Acad::ErrorStatus setEndWidth(double width);
    double tangent() const { return m_tangent; }
    bool isTangentUsed() const { return (m_dxfFlags & 2) != 0; }
    Acad::ErrorStatus setTangent(double tangent);

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDb2dVertex(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    struct Filing;
    friend class AcDb2dPolyline;
    Adesk::Int16 m_dxfFlags = 0; ///< group 70
    AcGePoint3d m_position;
    double m_bulge = 0.0;
    double m_startWidth = 0.0;
    double m_endWidth = 0.0;
    double m_tangent = 0.0;
};

// Stand-in for the host's AcDbTrace. Covers the four corners; leaves out nothing.
#pragma once

#include "dbent.h"

/// A filled stroke with four corners, 0, 1, 3, 2 around it, as the format has them.
class AcDbTrace : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbTrace)

public:
    AcDbTrace() = default;
    AcDbTrace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3);
    AcDbTrace(const AcDbTrace&) = default;

    /// Corner 0 to 3 in world coordinates; eInvalidIndex.
    Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    Acad::ErrorStatus setPointAt(Adesk::UInt16 index, const AcGePoint3d& point);
    double thickness() const { return m_thickness; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbTrace(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    struct Filing;
    AcGePoint3d m_ecsPoints[4];
    double m_thickness = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
};

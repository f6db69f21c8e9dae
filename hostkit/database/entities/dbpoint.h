// Stand-in for the host's AcDbPoint. Covers the marked place; leaves out nothing.
#pragma once

#include "dbent.h"

/// A place in world coordinates.
class AcDbPoint : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbPoint)

public:
    AcDbPoint() = default;
    explicit AcDbPoint(const AcGePoint3d& position)
        : m_position(position) {}
    AcDbPoint(const AcDbPoint&) = default;

    AcGePoint3d position() const { return m_position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    double thickness() const { return m_thickness; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    /// Of the mark, from the x axis of the normal's system.
    double ecsRotation() const { return m_ecsRotation; }
    Acad::ErrorStatus setEcsRotation(double angle);

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbPoint(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    struct Filing;
    AcGePoint3d m_position;
    double m_thickness = 0.0;
    double m_ecsRotation = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
};

// Flat figures of four corners: all that solids and traces have but their class; leaves out faces of space.
#pragma once

#include "dbent.h"

namespace hostkit {

/// A filled triangle or four-sided figure. The corners run 0, 1, 3, 2 around it, as the format has them.
class CornerFigure : public AcDbEntity {
public:
    /// Corner 0 to 3 in world coordinates; eInvalidIndex.
    Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const;
    Acad::ErrorStatus setPointAt(Adesk::UInt16 index, const AcGePoint3d& point);
    double thickness() const { return m_thickness; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }
    /// The corners stay where they are in the world.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    CornerFigure() = default;
    CornerFigure(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
        : m_ecsPoints{p0, p1, p2, p3} {}
    CornerFigure(const CornerFigure&) = default;
    CornerFigure& operator=(const CornerFigure&) = default;

private:
    /// Any matrix that is not singular: corners stay corners.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    struct Filing;
    AcGePoint3d m_ecsPoints[4];
    double m_thickness = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
};

} // namespace hostkit

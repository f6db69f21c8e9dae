// Stand-in for the host's AcDbCircle. Covers the full circle; leaves out grips.
#pragma once

#include "dbcurve.h"
#include "entitycoordinates.h"

/// A full circle, counter-clockwise about its normal, from and to the point on the x axis of the normal's
/// arbitrary-axis system.
class AcDbCircle : public AcDbCurve {
    ACRX_DECLARE_MEMBERS(AcDbCircle)

public:
    AcDbCircle() = default;
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    AcDbCircle(const AcDbCircle&) = default;

    AcGePoint3d center() const { return hostkit::toWorld(m_normal, m_ecsCenter); }
    double radius() const { return m_radius; }
    double thickness() const { return m_thickness; }
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    Acad::ErrorStatus setRadius(double radius);
    Acad::ErrorStatus setThickness(double thickness);
    /// The centre keeps its place in the world.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;
    Acad::ErrorStatus reverseCurve() override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbCircle(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    bool geometry(hostkit::CurveGeometry& geometry) const override;
    AcDbCurve* piece(double from, double to) const override;

private:
    struct Filing;           ///< the groups of a drawing file
    AcGePoint3d m_ecsCenter; ///< in the coordinates of the normal, as a drawing file has it
    double m_radius = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_thickness = 0.0;
};

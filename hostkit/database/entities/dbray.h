// Stand-in for the host's AcDbRay. Covers the half line; leaves out grips.
#pragma once

#include "dbcurve.h"

/// A half line in world coordinates. It has no end: the questions for one give eNotApplicable.
class AcDbRay : public AcDbCurve {
    ACRX_DECLARE_MEMBERS(AcDbRay)

public:
    AcDbRay() = default;
    AcDbRay(const AcDbRay&) = default;

    AcGePoint3d basePoint() const { return m_basePoint; }
    AcGeVector3d unitDir() const { return m_unitDirection; }
    Acad::ErrorStatus setBasePoint(const AcGePoint3d& point);
    /// Made a unit vector; eInvalidInput for a zero one.
    Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);
    AcGePoint3d secondPoint() const { return m_basePoint + m_unitDirection; }
    Acad::ErrorStatus setSecondPoint(const AcGePoint3d& point);

    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;
    Acad::ErrorStatus reverseCurve() override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbRay(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    bool geometry(hostkit::CurveGeometry& geometry) const override;
    AcDbCurve* piece(double from, double to) const override;

private:
    struct Filing; ///< the groups of a drawing file
    AcGePoint3d m_basePoint;
    AcGeVector3d m_unitDirection{1.0, 0.0, 0.0};
};

// Stand-in for the host's AcDbXline. Covers the line without ends; leaves out grips.
#pragma once

#include "dbcurve.h"

/// A line without ends in world coordinates. The questions for its start or end give eNotApplicable.
class AcDbXline : public AcDbCurve {
    ACRX_DECLARE_MEMBERS(AcDbXline)

public:
    AcDbXline() = default;
    AcDbXline(const AcDbXline&) = default;

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
    AcRxObject* clone() const override { return new AcDbXline(*this); }
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

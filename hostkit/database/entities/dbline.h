// Stand-in for the host's AcDbLine. Covers the segment in space; leaves out grips.
#pragma once

#include "dbcurve.h"
#include "modelerenums.h"

/// A straight segment in world coordinates.
class AcDbLine : public AcDbCurve {
    ACRX_DECLARE_MEMBERS(AcDbLine)

public:
    AcDbLine() = default;
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end)
        : m_start(start)
        , m_end(end) {}
    AcDbLine(const AcDbLine&) = default;

    AcGePoint3d startPoint() const { return m_start; }
    AcGePoint3d endPoint() const { return m_end; }
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
    double thickness() const { return m_thickness; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return m_normal; }
    /// The direction of the thickness; made a unit vector. eInvalidInput for a zero one.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;
    Acad::ErrorStatus reverseCurve() override;
    bool isPlanar() const override { return true; }
    /// Appends the line's snap points: both ends, its middle, the foot of `lastPoint` on the line prolonged,
    /// or its point nearest to `pickPoint` in the view that the matrix takes the world to. Nothing for the
    /// other modes, and no marker: a line has no parts.
    Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode mode, Adesk::IntPtr marker, const AcGePoint3d& pickPoint,
                                     const AcGePoint3d& lastPoint, const AcGeMatrix3d& viewTransform,
                                     AcGePoint3dArray& snapPoints, AcDbIntArray& geometryIds) const;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbLine(*this); }
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
    AcGePoint3d m_start;
    AcGePoint3d m_end;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_thickness = 0.0;
};

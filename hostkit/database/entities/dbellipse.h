// Stand-in for the host's AcDbEllipse. Covers the ellipse and its arcs in space; leaves out grips.
#pragma once

#include "dbcurve.h"

/// An ellipse or an arc of one, in world coordinates. Parameters are the ellipse's own angle: the point at t
/// is center + cos t * major + sin t * minor, minor being normal x major * ratio.
class AcDbEllipse : public AcDbCurve {
    ACRX_DECLARE_MEMBERS(AcDbEllipse)

public:
    AcDbEllipse() = default;
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                double radiusRatio, double startAngle = 0.0, double endAngle = 6.28318530717958647692);
    AcDbEllipse(const AcDbEllipse&) = default;

    AcGePoint3d center() const { return m_center; }
    AcGeVector3d normal() const { return m_normal; }
    AcGeVector3d majorAxis() const { return m_majorAxis; }
    AcGeVector3d minorAxis() const;
    double radiusRatio() const { return m_radiusRatio; }
    double majorRadius() const;
    double minorRadius() const;
    /// Angles from the major axis as seen, not the parameters.
    double startAngle() const;
    double endAngle() const;
    double startParam() const { return m_startParam; }
    double endParam() const { return m_endParam; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    /// eInvalidInput, and no change: a zero axis or normal, axes that are not perpendicular, a ratio outside
    /// (0, 1].
    Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& normal,
                          const AcGeVector3d& majorAxis, double radiusRatio, double startAngle = 0.0,
                          double endAngle = 6.28318530717958647692);
    Acad::ErrorStatus setRadiusRatio(double ratio);
    Acad::ErrorStatus setStartAngle(double angle);
    Acad::ErrorStatus setEndAngle(double angle);
    Acad::ErrorStatus setStartParam(double parameter);
    Acad::ErrorStatus setEndParam(double parameter);

    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;
    Acad::ErrorStatus reverseCurve() override;
    bool isPlanar() const override { return true; }
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbEllipse(*this); }
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
    AcGePoint3d m_center;
    AcGeVector3d m_majorAxis{1.0, 0.0, 0.0};
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_radiusRatio = 1.0;
    double m_startParam = 0.0;
    double m_endParam = 6.28318530717958647692;
};

// Stand-in for the host's AcDbArc. Covers the circular arc; leaves out grips.
#pragma once

#include "circularcurve.h"

/// A circular arc, always counter-clockwise about its normal from the start to the end angle. Angles are in
/// radians from the x axis of the normal's arbitrary-axis system, kept in [0, 2 pi); the end parameter lies
/// above the start parameter, by 2 pi where the angles are equal.
class AcDbArc : public hostkit::CircularCurve {
    ACRX_DECLARE_MEMBERS(AcDbArc)

public:
    AcDbArc() = default;
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);
    AcDbArc(const AcDbArc&) = default;

    double startAngle() const { return m_startAngle; }
    double endAngle() const { return m_endAngle; }
    /// The sweep, in (0, 2 pi].
    double totalAngle() const;
    double length() const { return m_radius * totalAngle(); }
    Acad::ErrorStatus setStartAngle(double angle);
    Acad::ErrorStatus setEndAngle(double angle);

    Acad::ErrorStatus reverseCurve() override;
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbArc(*this); }
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
    double m_startAngle = 0.0;
    double m_endAngle = 0.0;
};

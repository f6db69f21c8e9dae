// Curves of a circle: all that circles and arcs have alike; leaves out where an arc starts and ends.
#pragma once

#include "dbcurve.h"
#include "entitycoordinates.h"

namespace hostkit {

/// A circle, counter-clockwise about its normal; parameters are angles in radians from the x axis of the
/// normal's arbitrary-axis system.
class CircularCurve : public AcDbCurve {
public:
    AcGePoint3d center() const { return toWorld(m_normal, m_ecsCenter); }
    double radius() const { return m_radius; }
    double thickness() const { return m_thickness; }
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    /// eInvalidInput for a negative one or one that is no number.
    Acad::ErrorStatus setRadius(double radius);
    Acad::ErrorStatus setThickness(double thickness);
    /// The centre keeps its place in the world.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    CircularCurve() = default;
    /// With the world's normal where the given one is zero.
    CircularCurve(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    CircularCurve(const CircularCurve&) = default;
    CircularCurve& operator=(const CircularCurve&) = default;

    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    /// Another normal of length 1; the centre keeps its place in the world.
    void turnTo(const AcGeVector3d& normal);

    struct Filing;
    AcGePoint3d m_ecsCenter; ///< in the coordinates of the normal, as a drawing file has it
    double m_radius = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    double m_thickness = 0.0;
};

} // namespace hostkit

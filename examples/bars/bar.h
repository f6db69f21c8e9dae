#pragma once

#include "dbent.h"

/// A straight reinforcement bar. Its record in a drawing is VEXOBAR, with the ends of its axis in world
/// coordinates (10, 11) and its diameter (40) in drawing units.
class ExampleBar : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(ExampleBar)

public:
    ExampleBar() = default;
    ExampleBar(const AcGePoint3d& start, const AcGePoint3d& end, double diameter)
        : m_start(start)
        , m_end(end)
        , m_diameter(diameter) {}
    ExampleBar(const ExampleBar&) = default;

    double length() const { return m_start.distanceTo(m_end); }
    double diameter() const { return m_diameter; }

    /// The box around the bar with its thickness.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// A filled strip as wide as the bar, or a filled circle for one that stands upright.
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new ExampleBar(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    /// What undo keeps of a bar.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// The diameter stays: a bar that is scaled is another length of the same steel.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    AcGePoint3d m_start{};
    AcGePoint3d m_end{};
    double m_diameter = 0.0;
};

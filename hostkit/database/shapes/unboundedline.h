// Lines without an end: all that rays and xlines have alike; leaves out where each ends.
#pragma once

#include "dbcurve.h"

namespace hostkit {

/// A base point and a direction in world coordinates; parameters are distances from the base point.
class UnboundedLine : public AcDbCurve {
public:
    AcGePoint3d basePoint() const { return m_basePoint; }
    AcGeVector3d unitDir() const { return m_unitDirection; }
    Acad::ErrorStatus setBasePoint(const AcGePoint3d& point);
    /// Made a unit vector; eInvalidInput for a zero one.
    Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);
    AcGePoint3d secondPoint() const { return pointAt(1.0); }
    Acad::ErrorStatus setSecondPoint(const AcGePoint3d& point);

    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;
    bool isPlanar() const override { return true; }

protected:
    UnboundedLine() = default;
    UnboundedLine(const UnboundedLine&) = default;
    UnboundedLine& operator=(const UnboundedLine&) = default;

    /// Of the ray or xline itself, also where an application has a class of its own below it.
    virtual UnboundedLine* plainCopy() const = 0;
    AcGePoint3d pointAt(double parameter) const { return m_basePoint + m_unitDirection * parameter; }
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    /// The fields in a file, in the subclass of that name.
    Acad::ErrorStatus readLine(AcDbDxfFiler* filer, const wchar_t* subclass);
    Acad::ErrorStatus writeLine(AcDbDxfFiler* filer, const wchar_t* subclass) const;

    struct Filing;
    AcGePoint3d m_basePoint;
    AcGeVector3d m_unitDirection{1.0, 0.0, 0.0};
};

} // namespace hostkit

// Stand-in for the host's AcGeLineSeg3d. Covers the bounded line; leaves out bisectors and barycentric combinations.
#pragma once

#include "gelent3d.h"

/// A straight run between two points. The parameter goes from 0 at the start to 1 at the end; both ends come
/// back exactly as they were given.
class AcGeLineSeg3d : public AcGeLinearEnt3d {
public:
    AcGeLineSeg3d(); ///< from the origin to (1, 0, 0)
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGePoint3d& end);
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGeVector3d& vector);
    AcGeLineSeg3d& set(const AcGePoint3d& start, const AcGePoint3d& end) {
        return *this = AcGeLineSeg3d(start, end);
    }
    AcGeLineSeg3d& set(const AcGePoint3d& start, const AcGeVector3d& vector) {
        return *this = AcGeLineSeg3d(start, vector);
    }

    AcGePoint3d startPoint() const { return m_origin; }
    AcGePoint3d endPoint() const { return m_end; }
    AcGePoint3d midPoint() const { return m_origin + m_step / 2.0; }
    using AcGeLinearEnt3d::length;
    double length() const { return m_step.length(); }

    AcGe::EntityId type() const override { return AcGe::kLineSeg3d; }
    AcGeLineSeg3d* copy() const override { return new AcGeLineSeg3d(*this); }
    AcGeLineSeg3d& transformBy(const AcGeMatrix3d& matrix) override;
    /// The part, or extension, between two parameters becomes the segment, again with the parameters 0 to 1.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeLineSeg3d& reverseParam() override;
};

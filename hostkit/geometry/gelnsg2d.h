// Stand-in for the host's AcGeLineSeg2d. Covers the bounded line; leaves out bisectors and barycentric combinations.
#pragma once

#include "gelent2d.h"

/// A straight run between two points. The parameter goes from 0 at the start to 1 at the end; both ends come
/// back exactly as they were given.
class AcGeLineSeg2d : public AcGeLinearEnt2d {
public:
    AcGeLineSeg2d(); ///< from the origin to (1, 0)
    AcGeLineSeg2d(const AcGePoint2d& start, const AcGePoint2d& end);
    AcGeLineSeg2d(const AcGePoint2d& start, const AcGeVector2d& vector);
    AcGeLineSeg2d& set(const AcGePoint2d& start, const AcGePoint2d& end) {
        return *this = AcGeLineSeg2d(start, end);
    }
    AcGeLineSeg2d& set(const AcGePoint2d& start, const AcGeVector2d& vector) {
        return *this = AcGeLineSeg2d(start, vector);
    }

    AcGePoint2d startPoint() const { return m_origin; }
    AcGePoint2d endPoint() const { return m_end; }
    AcGePoint2d midPoint() const { return m_origin + m_step / 2.0; }
    using AcGeLinearEnt2d::length;
    double length() const { return m_step.length(); }

    AcGe::EntityId type() const override { return AcGe::kLineSeg2d; }
    AcGeLineSeg2d* copy() const override { return new AcGeLineSeg2d(*this); }
    AcGeLineSeg2d& transformBy(const AcGeMatrix2d& matrix) override;
    /// The part, or extension, between two parameters becomes the segment, again with the parameters 0 to 1.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeLineSeg2d& reverseParam() override;
};

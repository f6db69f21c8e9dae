// Stand-in for the host's AcDbSpline. Covers the B-spline by control points, knots and weights, and its kept fit points; leaves out fitting.
#pragma once

#include "dbcurve.h"
#include "genurb3d.h"

/// A B-spline in world coordinates, by its control points. Fit points and end tangents are kept and filed,
/// never fitted again; a change of the control points drops them.
class AcDbSpline : public AcDbCurve {
    ACRX_DECLARE_MEMBERS(AcDbSpline)

public:
    AcDbSpline() = default;
    /// As setNurbsData; on bad data the spline stays empty.
    AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
               const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
               const AcGeDoubleArray& weights, double controlPointTolerance = 0.0,
               double knotTolerance = 1e-9);
    AcDbSpline(const AcDbSpline&) = default;

    bool isNull() const { return m_controlPoints.isEmpty(); }
    bool isRational() const { return m_rational; }
    int degree() const { return m_degree; }
    int numControlPoints() const { return m_controlPoints.length(); }
    int numFitPoints() const { return m_fitPoints.length(); }
    Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
    /// 1 for a spline that is not rational.
    double weightAt(int index) const;
    Acad::ErrorStatus getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                   Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                   AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                   double& controlPointTolerance, double& knotTolerance) const;
    /// eInvalidInput, and no change: a degree outside 1 to 25, fewer control points than degree + 1, a knot
    /// count other than points + degree + 1, knots that fall, weights (if rational) of another count or not
    /// above 0, or any value that is infinite or no number.
    Acad::ErrorStatus setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                   Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                   const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                   double controlPointTolerance, double knotTolerance);
    Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point);

    Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                        AcDbCurve*& projected) const override;
    Acad::ErrorStatus reverseCurve() override;
    bool isPlanar() const override { return true; }
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbSpline(*this); }
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
    AcGeNurbCurve3d nurbCurve() const;
    /// Takes degree, knots, points and weights of the curve.
    void take(const AcGeNurbCurve3d& curve);
    void dropFitData();

    Adesk::Int16 m_degree = 3;
    bool m_rational = false;
    bool m_closed = false;
    bool m_periodic = false;
    Adesk::Int16 m_dxfFlags =
        0; ///< group 70 as read; its closed, periodic and rational bits follow the fields
    AcGePoint3dArray m_controlPoints;
    AcGeDoubleArray m_knots;
    AcGeDoubleArray m_weights; ///< empty unless rational
    AcGePoint3dArray m_fitPoints;
    AcGeVector3d m_normal; ///< zero: none filed
    AcGeVector3d m_startTangent;
    AcGeVector3d m_endTangent;
    bool m_hasStartTangent = false;
    bool m_hasEndTangent = false;
    double m_knotTolerance = 1e-7;
    double m_controlPointTolerance = 1e-7;
    double m_fitTolerance = 1e-10;
};

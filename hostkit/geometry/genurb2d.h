// Stand-in for the host's AcGeNurbCurve2d. Covers rational splines: definition, evaluation, interpolation of fit points, trimming; leaves out knot and degree editing.
#pragma once

#include "gecurv2d.h"
#include "gekvec.h"

/// A spline of degree 1 to 25 over a non-decreasing knot vector, rational or not.
///
/// A definition holds when knots = control points + degree + 1, the knots do not decrease and are finite, the
/// parameter range has a length, and weights are absent or positive, one per control point. What does not
/// hold leaves the curve empty: no control points, every point the origin. The parameter range is
/// knot[degree] to knot[control points]; a periodic definition is the same with repeating ends and is only
/// marked as such.
class AcGeNurbCurve2d : public AcGeCurve2d {
public:
    AcGeNurbCurve2d() = default; ///< empty
    AcGeNurbCurve2d(int degree, const AcGeKnotVector& knots, const AcGePoint2dArray& controlPoints,
                    Adesk::Boolean isPeriodic = Adesk::kFalse);
    AcGeNurbCurve2d(int degree, const AcGeKnotVector& knots, const AcGePoint2dArray& controlPoints,
                    const AcGeDoubleArray& weights, Adesk::Boolean isPeriodic = Adesk::kFalse);
    /// The cubic through the fit points with chord-length parameters. A zero tangent leaves that end free (no
    /// curvature). Repeated neighbours are dropped; fewer than 2 points left give an empty curve.
    AcGeNurbCurve2d(const AcGePoint2dArray& fitPoints, const AcGeVector2d& startTangent,
                    const AcGeVector2d& endTangent);

    Adesk::Boolean isEmpty() const { return m_controlPoints.isEmpty(); }
    int degree() const { return m_degree; }
    Adesk::Boolean isRational() const { return !m_weights.isEmpty(); }
    int numKnots() const { return m_knots.length(); }
    double knotAt(int index) const { return m_knots[index]; }
    const AcGeKnotVector& knots() const { return m_knots; }
    int numControlPoints() const { return m_controlPoints.length(); }
    AcGePoint2d controlPointAt(int index) const { return m_controlPoints[index]; }
    int numWeights() const { return m_weights.length(); }
    /// 1 on a curve without weights.
    double weightAt(int index) const { return m_weights.isEmpty() ? 1.0 : m_weights[index]; }
    double startParam() const;
    double endParam() const;
    AcGePoint2d startPoint() const { return evalPoint(startParam()); }
    AcGePoint2d endPoint() const { return evalPoint(endParam()); }
    void getDefinitionData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& periodic,
                           AcGeKnotVector& knots, AcGePoint2dArray& controlPoints,
                           AcGeDoubleArray& weights) const;
    /// Index i, degree <= i < control points, of the non-empty span with knot[i] <= param < knot[i+1]; params
    /// outside the range count as the nearest end.
    int spanAt(double param) const;

    AcGe::EntityId type() const override { return AcGe::kNurbCurve2d; }
    AcGeNurbCurve2d* copy() const override { return new AcGeNurbCurve2d(*this); }
    AcGeNurbCurve2d& transformBy(const AcGeMatrix2d& matrix) override;
    /// Same degree, knots, points and weights.
    Adesk::Boolean isEqualTo(const AcGeEntity2d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;
    using AcGeCurve2d::evalPoint;
    using AcGeCurve2d::getInterval;
    void getInterval(AcGeInterval& interval) const override { interval.set(startParam(), endParam()); }
    /// Trims by knot insertion; knots outside the part go.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeNurbCurve2d& reverseParam() override;
    AcGePoint2d evalPoint(double param) const override;
    AcGePoint2d evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const override;
    double paramOfClosestPoint(const AcGePoint2d& point) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    Adesk::Boolean isLinear(AcGeLine2d& line, const AcGeTol& tol = AcGeContext::gTol) const override;
    /// Found from the points where a coordinate is extreme.
    AcGeBoundBlock2d orthoBoundBlock() const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const override;

private:
    void clear();

    int m_degree = 0;
    Adesk::Boolean m_periodic = Adesk::kFalse;
    AcGeKnotVector m_knots;
    AcGePoint2dArray m_controlPoints;
    AcGeDoubleArray m_weights;
};

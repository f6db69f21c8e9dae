// What the splines of the plane and of space share: definition, evaluation, fit points, trimming.
#pragma once

#include "gecurv.h"
#include "gekvec.h"

namespace AcGeKernel {

/// A spline of degree 1 to 25 over a non-decreasing knot vector, rational or not.
///
/// A definition holds when knots = control points + degree + 1, the knots do not decrease and are finite, the
/// parameter range has a length, and weights are absent or positive, one per control point. What does not
/// hold leaves the curve empty: no control points, every point the origin. The parameter range is
/// knot[degree] to knot[control points]; a periodic definition is the same with repeating ends and is only
/// marked as such.
template <class T>
class NurbOf : public T::Curve {
    using Base = typename T::Curve;
    using Entity = typename T::Entity;
    using Line = typename T::Line;
    using Block = typename T::Block;
    using Point = typename T::Point;
    using Vector = typename T::Vector;
    using PointArray = typename T::PointArray;
    using VectorArray = typename T::VectorArray;

public:
    NurbOf() = default; ///< empty
    NurbOf(int degree, const AcGeKnotVector& knots, const PointArray& controlPoints,
           Adesk::Boolean isPeriodic = Adesk::kFalse);
    NurbOf(int degree, const AcGeKnotVector& knots, const PointArray& controlPoints,
           const AcGeDoubleArray& weights, Adesk::Boolean isPeriodic = Adesk::kFalse);
    /// The cubic through the fit points with chord-length parameters. A zero tangent leaves that end free (no
    /// curvature). Repeated neighbours are dropped; fewer than 2 points left give an empty curve.
    NurbOf(const PointArray& fitPoints, const Vector& startTangent, const Vector& endTangent);

    Adesk::Boolean isEmpty() const { return m_controlPoints.isEmpty(); }
    int degree() const { return m_degree; }
    Adesk::Boolean isRational() const { return !m_weights.isEmpty(); }
    int numKnots() const { return m_knots.length(); }
    double knotAt(int index) const { return m_knots[index]; }
    const AcGeKnotVector& knots() const { return m_knots; }
    int numControlPoints() const { return m_controlPoints.length(); }
    Point controlPointAt(int index) const { return m_controlPoints[index]; }
    int numWeights() const { return m_weights.length(); }
    /// 1 on a curve without weights.
    double weightAt(int index) const { return m_weights.isEmpty() ? 1.0 : m_weights[index]; }
    double startParam() const;
    double endParam() const;
    Point startPoint() const { return evalPoint(startParam()); }
    Point endPoint() const { return evalPoint(endParam()); }
    void getDefinitionData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& periodic,
                           AcGeKnotVector& knots, PointArray& controlPoints, AcGeDoubleArray& weights) const;
    /// Index i, degree <= i < control points, of the non-empty span with knot[i] <= param < knot[i+1]; params
    /// outside the range count as the nearest end.
    int spanAt(double param) const;

    /// Same degree, knots, points and weights.
    Adesk::Boolean isEqualTo(const Entity& entity, const AcGeTol& tol = AcGeContext::gTol) const override;
    using Base::evalPoint;
    using Base::getInterval;
    void getInterval(AcGeInterval& interval) const override { interval.set(startParam(), endParam()); }
    /// Trims by knot insertion; knots outside the part go.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    Point evalPoint(double param) const override;
    Point evalPoint(double param, int numDeriv, VectorArray& derivatives) const override;
    double paramOfClosestPoint(const Point& point) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    Adesk::Boolean isLinear(Line& line, const AcGeTol& tol = AcGeContext::gTol) const override;
    /// Found from the points where a coordinate is extreme.
    Block orthoBoundBlock() const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const override;

protected:
    /// What transformBy of the classes does.
    void move(const typename T::Matrix& matrix);
    /// What reverseParam of the classes does.
    void reverse();

    int m_degree = 0;
    Adesk::Boolean m_periodic = Adesk::kFalse;
    AcGeKnotVector m_knots;
    PointArray m_controlPoints;
    AcGeDoubleArray m_weights;

private:
    const typename T::Nurb& self() const { return static_cast<const typename T::Nurb&>(*this); }
    void clear();
};

} // namespace AcGeKernel

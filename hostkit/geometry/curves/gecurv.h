// What the curves of the plane and of space share: evaluation, closest points, measures, sampling, splitting.
#pragma once

#include "geent.h"
#include "geintrvl.h"

namespace AcGeKernel {

/// Base of the curves in the plane or in space.
///
/// A curve is a function of a parameter over an interval. evalPoint takes any parameter: outside the interval
/// lines and segments go on straight, circles and ellipses go on round, splines give their nearest end.
/// paramOf is its inverse for a point on the curve, and of the nearest point for any other.
///
/// Results are worked out in differences from a point of the curve; far from the origin they stay within 8
/// units in the last place of the largest coordinate involved, the centre and the radius of an arc among
/// them.
template <class T>
class CurveOf : public T::Entity {
    using Curve = typename T::Curve;
    using Line = typename T::Line;
    using Block = typename T::Block;
    using Point = typename T::Point;
    using Vector = typename T::Vector;
    using PointArray = typename T::PointArray;
    using VectorArray = typename T::VectorArray;

public:
    virtual void getInterval(AcGeInterval& interval) const = 0;
    /// The interval with its end points; a point of an unbounded side stays untouched.
    void getInterval(AcGeInterval& interval, Point& start, Point& end) const;
    /// Cuts the curve to a part of itself, or extends it where its form allows. False, and no change, for an
    /// empty or unbounded interval, or one outside a spline's own.
    virtual Adesk::Boolean setInterval(const AcGeInterval& interval) = 0;
    /// Runs the same points the other way. On segments and splines start and end parameter stay as they are;
    /// an arc's parameters change sign.
    virtual Curve& reverseParam() = 0;

    virtual Point evalPoint(double param) const = 0;
    /// The point, and in `derivatives` the first to numDeriv-th derivative by the parameter.
    virtual Point evalPoint(double param, int numDeriv, VectorArray& derivatives) const = 0;

    /// Parameter of the curve's nearest point. At equal distance the smaller parameter; the centre of a
    /// circle gives its start.
    virtual double paramOfClosestPoint(const Point& point) const = 0;
    /// Parameter of a point on the curve. For lines and arcs the parameter may lie outside the interval, when
    /// the point lies beyond an end (on arcs: nearer to that end). On a closed arc the start point has the
    /// start parameter.
    virtual double paramOf(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const;
    Point closestPointTo(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const;
    /// The point of this curve that is nearest to the other curve, and the other's nearest point. Where the
    /// curves meet both are the meeting point that comes first on this curve; a line that touches a circle
    /// meets it once.
    Point closestPointTo(const Curve& curve, Point& pointOnOther,
                         const AcGeTol& tol = AcGeContext::gTol) const;
    double distanceTo(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const;
    double distanceTo(const Curve& curve, const AcGeTol& tol = AcGeContext::gTol) const;

    Adesk::Boolean isOn(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    /// `param` becomes the nearest point's parameter, also when the answer is false.
    Adesk::Boolean isOn(const Point& point, double& param, const AcGeTol& tol = AcGeContext::gTol) const;
    /// Does the parameter lie in the interval, or its point at one of the ends.
    Adesk::Boolean isOn(double param, const AcGeTol& tol = AcGeContext::gTol) const;

    /// False, and the point untouched, for a side without an end.
    Adesk::Boolean hasStartPoint(Point& point) const;
    Adesk::Boolean hasEndPoint(Point& point) const;
    /// Both ends exist and are the same point. Linear curves are never closed.
    virtual Adesk::Boolean isClosed(const AcGeTol& tol = AcGeContext::gTol) const;
    /// A full circle or ellipse, with its period; a periodic spline.
    virtual Adesk::Boolean isPeriodic(double& period) const;
    /// Is the curve straight; `line` becomes its line. A curve without length is not.
    virtual Adesk::Boolean isLinear(Line& line, const AcGeTol& tol = AcGeContext::gTol) const;

    /// Arc length between two parameters, in either order, never negative. Closed form on lines and arcs; on
    /// ellipses and splines with a relative error of 1e-12.
    virtual double length(double fromParam, double toParam, const AcGeTol& tol = AcGeContext::gTol) const;
    /// Parameter at `length` along the curve from a parameter, forward or backward. Not limited to the
    /// interval, except on splines.
    virtual double paramAtLength(double datumParam, double length, Adesk::Boolean forward = Adesk::kTrue,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Box along the axes, exact to rounding; unbounded curves give an infinite one.
    virtual Block orthoBoundBlock() const = 0;
    Block boundBlock() const;

    /// `count` points at equal parameter steps, both ends included; 1 gives the start alone, less gives
    /// nothing, as does an unbounded curve. The arrays are emptied first.
    void getSamplePoints(int count, PointArray& points) const;
    void getSamplePoints(int count, PointArray& points, AcGeDoubleArray& params) const;
    /// Points between two parameters, ends included, such that no chord is farther than `tolerance` from the
    /// curve. Straight parts give their ends only. A tolerance not above 0 is taken as the equal-point
    /// tolerance.
    virtual void getSamplePoints(double fromParam, double toParam, double tolerance, PointArray& points,
                                 AcGeDoubleArray& params) const;

    /// Two new curves, owned by the caller, before and after the parameter. Both null when the parameter is
    /// at or beyond an end.
    virtual void getSplitCurves(double param, Curve*& before, Curve*& after) const;

    /// Parameters, ascending, that cut a bounded curve into pieces that are smooth and turn by less than a
    /// right angle each; what the numeric methods start from. Empty for an unbounded curve.
    virtual void getSmoothPieces(AcGeDoubleArray& params) const;
    /// The largest number that enters the curve's points: coordinates of the centre, the radius. The
    /// allowance of point tests on the curve grows with it. 0 where the points themselves tell it.
    virtual double coordinateMagnitude() const { return 0.0; }

private:
    const Curve& self() const { return static_cast<const Curve&>(*this); }
};

} // namespace AcGeKernel

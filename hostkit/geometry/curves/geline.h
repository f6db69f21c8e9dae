// What lines, rays and segments of the plane and of space share: their bounds and how they are cut.
#pragma once

#include "gelent.h"

namespace AcGeKernel {

/// An unbounded line. The parameter is the distance from the base point along the unit direction.
template <class T>
class LineOf : public T::Linear {
    using Line = typename T::Line;
    using Curve = typename T::Curve;
    using Point = typename T::Point;
    using Vector = typename T::Vector;

public:
    /// The x axis.
    LineOf();
    /// The direction may have any length; a vector below the global vector tolerance makes the line a point.
    LineOf(const Point& point, const Vector& direction);
    LineOf(const Point& point1, const Point& point2);

    static const Line& kXAxis();
    static const Line& kYAxis();

    Line& set(const Point& point, const Vector& direction) { return self() = Line(point, direction); }
    Line& set(const Point& point1, const Point& point2) { return self() = Line(point1, point2); }

    /// Always false: a line stays unbounded.
    Adesk::Boolean setInterval(const AcGeInterval&) override { return Adesk::kFalse; }
    /// Two rays that run away from the point.
    void getSplitCurves(double param, Curve*& before, Curve*& after) const override;

private:
    Line& self() { return static_cast<Line&>(*this); }
};

/// A line from a start point on. The parameter is the distance from the start, 0 to infinity.
template <class T>
class RayOf : public T::Linear {
    using Ray = typename T::Ray;
    using Curve = typename T::Curve;
    using Point = typename T::Point;
    using Vector = typename T::Vector;

public:
    RayOf(); ///< the positive x axis
    RayOf(const Point& point, const Vector& direction);
    RayOf(const Point& start, const Point& through);
    Ray& set(const Point& point, const Vector& direction) {
        return static_cast<Ray&>(*this) = Ray(point, direction);
    }

    /// Always false: a ray stays a ray.
    Adesk::Boolean setInterval(const AcGeInterval&) override { return Adesk::kFalse; }
    /// A segment and a ray.
    void getSplitCurves(double param, Curve*& before, Curve*& after) const override;
};

/// A straight run between two points. The parameter goes from 0 at the start to 1 at the end; both ends come
/// back exactly as they were given.
template <class T>
class SegmentOf : public T::Linear {
    using Segment = typename T::Segment;
    using Point = typename T::Point;
    using Vector = typename T::Vector;

public:
    SegmentOf(); ///< from the origin to the end of the unit vector along x
    SegmentOf(const Point& start, const Point& end);
    SegmentOf(const Point& start, const Vector& vector);
    Segment& set(const Point& start, const Point& end) { return self() = Segment(start, end); }
    Segment& set(const Point& start, const Vector& vector) { return self() = Segment(start, vector); }

    Point startPoint() const { return this->m_origin; }
    Point endPoint() const { return this->m_end; }
    Point midPoint() const { return this->m_origin + this->m_step / 2.0; }
    using T::Linear::length;
    double length() const { return this->m_step.length(); }

    /// The part, or extension, between two parameters becomes the segment, again with the parameters 0 to 1.
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;

private:
    Segment& self() { return static_cast<Segment&>(*this); }
};

} // namespace AcGeKernel

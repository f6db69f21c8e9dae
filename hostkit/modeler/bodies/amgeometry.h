// Stand-in for the host's modeller: Point3d, Vector3d, Plane, Line3d, Circle3d and Interval3d. Covers what bodies are made of and cut with; leaves out lines and planes as curves of their own.
#pragma once

#include "gemat3d.h"
#include "gepnt3d.h"

namespace AModeler {

/// The modeller's absolute tolerance, in drawing units: what is closer than this is one point. 1e-6 until
/// setEpsAbs changes it. One for the process: no operation of the modeller may run beside a change of it.
extern double gEpsAbs;
/// Not above 0, or NaN: Error eEpsilonMustBePositive, and the value stays.
void setEpsAbs(double epsilon);

/// A direction and a length in space.
class Vector3d : public AcGeVector3d {
public:
    using AcGeVector3d::AcGeVector3d;
    constexpr Vector3d() = default;
    constexpr Vector3d(const AcGeVector3d& v)
        : AcGeVector3d(v) {}

    /// No longer than the tolerance.
    [[nodiscard]] bool isNull(double epsilon = gEpsAbs) const { return lengthSqrd() <= epsilon * epsilon; }
};

/// A place in space.
class Point3d : public AcGePoint3d {
public:
    using AcGePoint3d::AcGePoint3d;
    constexpr Point3d() = default;
    constexpr Point3d(const AcGePoint3d& p)
        : AcGePoint3d(p) {}

    /// No farther away than the tolerance. A NaN coordinate is equal to nothing.
    [[nodiscard]] bool isEqual(const AcGePoint3d& p, double epsilon = gEpsAbs) const {
        return distanceSqrdTo(p) <= epsilon * epsilon;
    }
};

/// The points p with normal . p = distance. A default plane has no normal and holds no point.
class Plane {
public:
    constexpr Plane() = default;
    /// Through the point. The normal is made a unit vector; one without a length, or NaN: Error
    /// eNullNormalVector.
    Plane(const AcGePoint3d& point, const AcGeVector3d& normal);

    [[nodiscard]] const Vector3d& normal() const { return m_normal; }
    /// Of the plane from the origin, along the normal.
    [[nodiscard]] double distance() const { return m_distance; }
    /// Signed, positive on the normal's side.
    [[nodiscard]] double distanceTo(const AcGePoint3d& p) const {
        return m_normal.dotProduct(p.asVector()) - m_distance;
    }
    /// The nearest point of the plane.
    [[nodiscard]] Point3d project(const AcGePoint3d& p) const { return p - m_normal * distanceTo(p); }
    [[nodiscard]] bool isNull() const { return m_normal.lengthSqrd() == 0.0; }

private:
    Vector3d m_normal;
    double m_distance = 0.0;
};

/// An unbounded line. The direction is kept as long as it is given: of a cylinder's axis it is the height.
class Line3d {
public:
    Line3d() = default;
    Line3d(const AcGePoint3d& point, const AcGeVector3d& direction)
        : m_point(point)
        , m_direction(direction) {}

    [[nodiscard]] const Point3d& point() const { return m_point; }
    [[nodiscard]] const Vector3d& direction() const { return m_direction; }

private:
    Point3d m_point;
    Vector3d m_direction;
};

/// A circle with the two points of it between which a contour's arc runs.
class Circle3d {
public:
    Circle3d() = default;
    Circle3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
        : m_center(center)
        , m_normal(normal)
        , m_radius(radius) {}
    /// The circle of that radius through both points, in the plane of the normal. Two circles have this
    /// radius; `large` takes the one on which the way from start to end, counter-clockwise about the normal,
    /// is more than a half turn. The contour's arc is the other way: it lies to the left of the chord from
    /// start to end seen against the normal, so that (start, end, a point of the arc) turn about the normal.
    /// A radius below half the chord is taken as half the chord.
    Circle3d(const AcGePoint3d& start, const AcGePoint3d& end, const AcGeVector3d& normal, double radius,
             bool large);

    [[nodiscard]] const Point3d& center() const { return m_center; }
    [[nodiscard]] const Vector3d& normal() const { return m_normal; } ///< of length 1, or null
    [[nodiscard]] double radius() const { return m_radius; }
    [[nodiscard]] const Point3d& startPoint() const { return m_start; }
    [[nodiscard]] const Point3d& endPoint() const { return m_end; }
    /// Radius above 0, a normal, a finite centre.
    [[nodiscard]] bool isValid() const;

private:
    Point3d m_center, m_start, m_end;
    Vector3d m_normal;
    double m_radius = 0.0;
};

/// A box along the axes; empty (a minimum above the maximum) until a point is added.
class Interval3d {
public:
    [[nodiscard]] const Point3d& getMin() const { return m_min; }
    [[nodiscard]] const Point3d& getMax() const { return m_max; }
    [[nodiscard]] bool isEmpty() const { return !(m_min.x <= m_max.x); }
    void add(const AcGePoint3d& p);
    /// Moves all six sides out.
    void enlarge(double by);

private:
    static constexpr double far = 1.0e300;
    Point3d m_min{far, far, far}, m_max{-far, -far, -far};
};

} // namespace AModeler

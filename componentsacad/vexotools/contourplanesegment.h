#pragma once

#include "contourboxchain.h"

#include "gepnt2d.h"

#include <cmath>

namespace vexo {

/// A box along the axes of the plane.
using PlaneBox = BoxChain::Box;

/// A box around the segment, not always the smallest; its bulge is from -1 to 1.
PlaneBox boxOfSegment(const AcGePoint2d& start, const AcGePoint2d& end, double bulge);

/// A directed straight segment, or arc of at most half a circle, in the plane.
///
/// Both are held by the chord and by sine and cosine of half the included angle (0 and 1 for a straight
/// segment). In the chord's frame, u along it and v to the left, its line or circle is where
/// cosine * chord * v - sine * (u * (u - chord) + v * v) is 0 (the inscribed angle is the same all along an
/// arc). Neither centre nor radius occurs, so that the flattest arc is as exact as a line.
class PlaneSegment {
public:
    PlaneSegment() = default;
    /// `bulge` is the host's, from -1 to 1; the ends must differ.
    PlaneSegment(const AcGePoint2d& start, const AcGePoint2d& end, double bulge);

    const AcGePoint2d& start() const { return m_start; }
    const AcGePoint2d& end() const { return m_end; }
    double bulge() const { return m_bulge; }
    double chord() const { return m_chord; }
    bool isStraight() const { return m_sine == 0.0; }
    /// How far the arc's middle lies to the right of the chord's.
    double height() const { return 0.5 * m_bulge * m_chord; }
    AcGePoint2d middle() const;

    /// Is the point to the left of the chord's line.
    bool isLeftOfChord(const AcGePoint2d& point) const { return m_along.crossProduct(point - m_start) > 0.0; }
    /// Distance from the whole line or circle, positive to the left of the direction of travel.
    double distanceLeft(const AcGePoint2d& point) const;
    /// Does the point lie between the normals at the two ends, where the segment is the nearest part of its
    /// line or circle.
    bool isBeside(const AcGePoint2d& point) const;
    bool touches(const AcGePoint2d& point, double tolerance) const {
        return std::abs(distanceLeft(point)) <= tolerance && isBeside(point);
    }
    /// Grows from 0 to 1 along the segment.
    double fractionAt(const AcGePoint2d& pointOnIt) const;
    /// Bulge of the piece between two points on it, negative when `to` comes before `from`.
    double bulgeBetween(const AcGePoint2d& from, const AcGePoint2d& to) const;
    /// The direction from the start to the point of the segment at this distance from it, of length 1.
    /// `distance` is at most the chord.
    AcGeVector2d directionAt(double distance) const;
    PlaneSegment reversed() const { return {m_end, m_start, -m_bulge}; }
    /// Does `other` keep more than `margin` away from the rectangle around this segment along its chord.
    bool isClearOf(const PlaneSegment& other, double margin) const;
    /// Does `other` lie on the outer side of this one's chord, away from the arc, or within `margin` of it.
    bool hasBehindChord(const PlaneSegment& other, double margin) const;

private:
    friend int crossingsOf(const PlaneSegment& a, const PlaneSegment& b, double tolerance,
                           AcGePoint2d points[2]);
    friend struct SegmentCrossings;
    double halfAngleAt(const AcGePoint2d& pointOnIt) const;
    AcGeVector2d normalAt(const AcGePoint2d& point) const;

    AcGePoint2d m_start;
    AcGePoint2d m_end;
    AcGeVector2d m_along; ///< unit vector of the chord
    double m_chord = 0.0;
    double m_bulge = 0.0;
    double m_sine = 0.0;
    double m_cosine = 1.0;
};

/// Where the two segments cross, up to two points; one point where they touch within the tolerance without
/// crossing. Nothing for segments that run together. Points at the very ends may be found or not.
int crossingsOf(const PlaneSegment& a, const PlaneSegment& b, double tolerance, AcGePoint2d points[2]);

} // namespace vexo

#pragma once

#include "gepnt2d.h"

#include <functional>
#include <vector>

class AcDbPolyline;

/// Closed contours laid over each other in the plane z = 0, with their arcs, cut into cells in which nothing
/// changes. It measures what the library has cut without asking the library: it knows no strips, only which
/// points lie in which contours.
///
/// A sweep along x stops wherever a contour begins, ends, turns back or crosses another. Between two stops
/// the curves lie over each other in a fixed order, and the area between neighbours is a trapezoid and the
/// segments of circles on it, which is exact but for rounding (about 1e-12 of the area of the contours' box).
/// A crossing that is missed by rounding shifts area of the order of its square. Contours that run on each
/// other do no harm: nothing lies between them.
class ContourOverlay {
public:
    /// A part of the plane that lies in the same contours throughout.
    struct Cell {
        double area;
        const std::vector<int>& contours; ///< numbers of those it lies in, as `add` gave them; in no order
    };

    /// Numbers count up from 0. Only the outline in the plane counts: the polyline lies in a plane z =
    /// constant and counts as closed. A point lies in a contour by the even-odd rule.
    int add(const AcDbPolyline& contour);

    /// Gives every cell that lies in a contour.
    void forEachCell(const std::function<void(const Cell&)>& visit) const;

private:
    // A piece of a contour over which x grows: straight, or of a circle's upper or lower half.
    struct Piece {
        AcGePoint2d left;
        AcGePoint2d right;
        AcGePoint2d center;
        double radius = 0.0; ///< 0 for a straight piece
        int side = 0;        ///< 1 on the upper half of the circle, -1 on the lower one
        int contour = 0;

        double yAt(double x) const;
        double areaBelow(double from, double to, double nearEnd) const;
        double chordDistance(double fromX, double fromY, double toX, double toY) const;
        double lowest() const;
        double highest() const;
    };

    void addStraight(const AcGePoint2d& from, const AcGePoint2d& to);
    void addArc(const AcGePoint2d& from, const AcGePoint2d& to, double bulge);
    void addHalfArc(const AcGePoint2d& from, const AcGePoint2d& to, const AcGePoint2d& center, double radius,
                    int side);
    std::vector<double> stops() const;
    static void addCrossings(const Piece& a, const Piece& b, std::vector<double>& stops);

    AcGePoint2d m_origin; ///< the first vertex of all: far from zero, digits are saved by counting from there
    bool m_hasOrigin = false;
    int m_count = 0;
    std::vector<Piece> m_pieces;
};

/// The area that lies in the contour by the even-odd rule.
double overlaidArea(const AcDbPolyline& contour);
/// The area that two contours have in common.
double commonArea(const AcDbPolyline& first, const AcDbPolyline& second);

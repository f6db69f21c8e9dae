// Meetings of drawing curves: all curve classes, in space and as seen on a plane; leaves out faces and edges
// of solids.
#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "curvegeometry.h"
#include "dbmaindefs.h"

#include <vector>

class AcDbCurve;

namespace hostkit {

/// A curve taken apart for intersection: straight and circular pieces are held as two points and a bulge and
/// become geometry curves only when a pair of pieces comes near each other.
class CurvePieces {
public:
    struct Piece {
        AcGePoint3d minimum;
        AcGePoint3d maximum;
        double firstParameter; ///< the drawing's parameter at the piece's start
        int geometry;          ///< index of a geometry curve, or -1 for a segment
        AcGePoint3d start;
        AcGePoint3d end;
        double bulge;
    };

    void reserve(std::size_t count) {
        if (!m_other) m_pieces.reserve(count);
    }
    /// Segments that cannot meet any piece of the other curve are passed over from now on.
    void keepOnlyNear(const CurvePieces& other);
    /// `shift` is added to the curve's own drawing parameters.
    void add(const CurveGeometry& geometry, double shift);
    /// A segment of a polyline in the plane with this normal, over one unit of the parameter.
    void addSegment(const AcGePoint3d& start, const AcGePoint3d& end, double bulge,
                    const AcGeVector3d& normal, double firstParameter);
    void setClosed(bool closed) { m_closed = closed; }
    /// The parameter at which a closed curve comes back to its start.
    void setRange(double start, double end) {
        m_start = start;
        m_end = end;
    }

    std::size_t count() const { return m_pieces.size(); }
    const Piece& at(std::size_t index) const { return m_pieces[index]; }
    bool isClosed() const { return m_closed; }
    double startParameter() const { return m_start; }
    double endParameter() const { return m_end; }
    /// The piece as a geometry curve, with the drawing's parameter running from firstParameter over it.
    CurveGeometry curveOf(std::size_t index) const;
    double drawingParameter(std::size_t index, const CurveGeometry& curve, double ownParameter) const;
    /// Is the point an end of the whole curve, which is open.
    bool isEnd(const AcGePoint3d& point) const;

private:
    /// A place at an end of the curve, as far as it is bounded there.
    struct End {
        AcGePoint3d point;
        bool isBounded = false;
    };
    bool isSegmentFar(const AcGePoint3d& start, const AcGePoint3d& end, double bulge) const;
    bool isFar(const Piece& piece) const;

    std::vector<Piece> m_pieces;
    const CurvePieces* m_other = nullptr; ///< what segments have to be near to
    AcGePoint3d m_otherMinimum;
    AcGePoint3d m_otherMaximum;
    End m_firstEnd;
    End m_lastEnd;
    bool m_hasEnds = false;
    std::vector<CurveGeometry> m_geometries;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    bool m_closed = false;
    double m_start = 0.0;
    double m_end = 0.0;
};

/// The arc of a polyline's segment: from start to end, counter-clockwise about its own normal, which is
/// `normal` for a positive bulge. False for a segment that is straight: its height is within the point test's
/// allowance.
bool arcOfSegment(const AcGePoint3d& start, const AcGePoint3d& end, double bulge, const AcGeVector3d& normal,
                  AcGeCircArc3d& arc);
/// Does a segment with this chord and bulge rise above its chord by more than points at `magnitude` can tell.
bool isArcSegment(double chord, double bulge, double magnitude);

/// Appends the meetings in the order of the first curve's parameter; see AcDbEntity::intersectWith. Far fewer
/// than all pairs of pieces are looked at: a tree of boxes over the second curve's pieces
/// leads to them.
/// Points on arcs are computed by way of the centre and have the digits that the radius leaves.
Acad::ErrorStatus intersectCurves(const AcDbCurve& first, const AcDbCurve& second, AcDb::Intersect type,
                                  AcArray<AcGePoint3d>& points);

} // namespace hostkit

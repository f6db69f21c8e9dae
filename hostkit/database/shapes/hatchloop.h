// Boundary loops of hatches: polylines with bulges and the four kinds of edges; leaves out evaluation.
#pragma once

#include "dbid.h"
#include "geell2d.h"
#include "gepnt2d.h"
#include "gevec2d.h"

#include <memory>
#include <vector>

namespace hostkit {

/// One edge of a loop, as the drawing format has it, in the plane of the hatch. Angles are in radians, as
/// filed: an arc that is not counter-clockwise has its angles measured the other way round.
struct HatchEdge {
    enum Kind : unsigned char { kLine = 1, kCircArc = 2, kEllipArc = 3, kSpline = 4 };

    Kind kind = kLine;
    bool isCounterClockwise = true; ///< arcs
    bool isRational = false;        ///< splines
    bool isPeriodic = false;
    short degree = 0;
    AcGePoint2d start;      ///< lines
    AcGePoint2d end;        ///< lines
    AcGePoint2d center;     ///< arcs
    AcGeVector2d majorAxis; ///< elliptic arcs: from the centre to the end of the axis
    double radius = 0.0;    ///< circular arcs
    double ratio = 1.0;     ///< elliptic arcs
    double startAngle = 0.0;
    double endAngle = 0.0;
    /// Elliptic arcs: the curve that the edge was made of. The fields above say the same but for rounding;
    /// null where they were read from a drawing or moved.
    std::shared_ptr<const AcGeEllipArc2d> given;
    double knotTolerance = 1e-9; ///< splines
    std::vector<double> knots;
    std::vector<AcGePoint2d> controlPoints;
    std::vector<double> weights;
    std::vector<AcGePoint2d> fitPoints;
    bool hasTangents = false;
    AcGeVector2d startTangent;
    AcGeVector2d endTangent;
};

/// A loop: a polyline or a chain of edges, by bit 2 of its type.
struct HatchLoop {
    int type = 0;         ///< AcDbHatch::HatchLoopType bits
    bool isClosed = true; ///< polylines
    bool hasBulges = false;
    std::vector<AcGePoint2d> vertices;
    std::vector<double> bulges; ///< as many as vertices where hasBulges
    std::vector<HatchEdge> edges;
    std::vector<AcDbObjectId> sources; ///< the entities that an associative hatch follows
};

/// A family of parallel lines of a pattern, scaled and turned as the hatch has it.
struct HatchPatternLine {
    double angle = 0.0;
    AcGePoint2d base;
    AcGeVector2d offset;
    std::vector<double> dashes;
};

} // namespace hostkit

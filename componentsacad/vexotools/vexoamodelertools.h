#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "amodeler.h"
#include "gearc3d.h"
#include "geplane.h"
#include "modelerenums.h"

#include <vector>

class AcDbExtents;

/// The solid modeller made safe: booleans that leave the first body as it was when they fail, prisms from
/// contours with arcs, cuts by a plane with a retry, and work on the half-edges of a body.
///
/// Nothing here lets an exception of the modeller out: a false or null result tells of it, and outputs stay
/// as they were. Contours are form 2 of vexogeometrytools.h without the repeated point: n points, n arc
/// heights, the i-th of the segment from point i to point i + 1, the last of the closing one. Points are
/// equal within AModeler::gEpsAbs. Null bodies, faces and edges are refused. What a caller owns is listed in
/// docs/ownership.md.
class VEXOAModelerTools {
public:
    /// A modeller's code and its name as a text.
    struct ErrorMessage {
        AModeler::ErrorCode code;
        const wchar_t* text;
    };
    /// In the order of the codes; the record after the last one has the code 0.
    static const ErrorMessage ErrorMessages[];

    VEXOAModelerTools() = default;
    VEXOAModelerTools(const VEXOAModelerTools&) = default;
    VEXOAModelerTools& operator=(const VEXOAModelerTools&) = default;
    virtual ~VEXOAModelerTools();

    // -----------------------------------------------------------------------------------------------------------------
    // Booleans and cuts (vexoamodelertools.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// `a` becomes a + b. False, and `a` as it was, for null and where the modeller refuses. A result without
    /// material is a success, and `a` a null body.
    static bool addBodys(AModeler::Body* a, const AModeler::Body* b);
    static bool subBodys(AModeler::Body* a, const AModeler::Body* b);       ///< a - b
    static bool intersectBodys(AModeler::Body* a, const AModeler::Body* b); ///< a * b
    /// a * b with the modeller's tolerance at 1, 1, 1/10, 10, 1/100, 100, 1/1000 and 1000 times its value
    /// until one works: the first is tried twice. The value is set back in any case; nothing else of the
    /// modeller may run beside.
    static bool intersectBodysEx(AModeler::Body* a, const AModeler::Body* b);
    /// Keeps what lies behind the plane. Tried on copies that are scaled about the mean of the vertices: by
    /// 1, 0.9999, 0.9998 ... 0.9899, then 1.0001 ... 1.0101, until the modeller cuts one; the body becomes
    /// that copy, scaled as it is. False, and the body as it was, when none of the 203 is cut.
    static bool section(AModeler::Body* body, AModeler::Plane plane);
    /// Scales about the mean of all vertices. A body without vertices, and a factor that is not above 0,
    /// change nothing.
    static void inflate(AModeler::Body* body, double factor);
    /// The code's name; for 0 and numbers without a record the modeller's own text. Never null.
    static const wchar_t* getErrorMsg(AModeler::ErrorCode code);

    // -----------------------------------------------------------------------------------------------------------------
    // Bodies from contours (vexoamodelertools_contours.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// A new prism with straight sides; null for fewer than 3 points and where the modeller refuses: the
    /// contour crosses itself, is not flat, or runs along the extrusion. A developer sees why no body came.
    static AModeler::Body* makeBodyFromPolygonalContour(const AcArray<AcGePoint3d>& points,
                                                        const AcGeVector3d& extrusion);
    /// A new prism whose arcs are facets within `deflection` of them (getArcPointsNumber of a full circle, of
    /// which an arc has its share). One point with a bulge above 1e-10 is a cylinder: the centre and the
    /// radius. Null for arrays of different or no length and as above. Points are put on to the plane of the
    /// first three that span one; arcs rise about +Z. The closing segment's arc is taken with its ends
    /// exchanged: it rises to the other side than that of any other segment with the same bulge. Callers give
    /// it that way, and it stays. The last argument is not used.
    static AModeler::Body* makeBodyFromPolygonalContourWithArcs(const AcArray<AcGePoint3d>& points,
                                                                const AcArray<double>& bulges,
                                                                const AcGeVector3d& extrusion,
                                                                double deflection, double unused);
    /// Sides of a full circle of the arc's radius that no chord leaves by more than `deflection`: 5 to 256.
    /// 51 for a radius whose square is at most 1e-20. A deflection of 0 gives 256; one below 0, NaN or not
    /// below the radius 5.
    static int getArcPointsNumber(const AcGeCircArc3d& arc, double deflection);
    /// The arc for the modeller, with its number of sides. A full circle takes its own centre. Null: no
    /// circle, and the count untouched.
    static AModeler::Circle3d makeCircleData(AcGeCircArc3d* arc, int& pointCount, double deflection);
    /// The arc through three points with this included angle. The radius is that of chord and angle, but for
    /// an angle whose tan(angle / 4) squared is at most 1e-20: then the given one.
    static AModeler::Circle3d makeCircleData(AcGePoint3d start, AcGePoint3d middle, AcGePoint3d end,
                                             double angle, double radius, int& pointCount, double deflection);
    /// Deletes the entries of a contour's data, which become null; the array stays. Null is allowed.
    static void removePolygonVertexData(AModeler::PolygonVertexData** data, int count);
    /// Deletes entries and both arrays, which become null.
    static void clearVertexData(AModeler::PolygonVertexData**& data, AModeler::Point3d*& points, int count);
    static void clearVertexData(AModeler::PolygonVertexData**& data, AcGePoint3d*& points, int count);
    /// The same plane; a null one has no normal there either.
    static AcGePlane convertPlaneToGe(const AModeler::Plane& plane);

    // -----------------------------------------------------------------------------------------------------------------
    // Faces and edges (vexoamodelertools_edges.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// Ends whose x and y, or whose z, differ by at most 1e-10.
    static bool isVerticalEdge(AModeler::Edge* edge);
    static bool isHorizontalEdge(AModeler::Edge* edge);
    /// The edge behind this one on the same outline: where a bridge follows, the one behind the bridge's
    /// partner, and so on. Stops at the edge itself.
    static AModeler::Edge* getNextSkipBridge(AModeler::Edge* edge);
    /// The first face that looks along the vector, of any length.
    static bool getFace(AModeler::Body& body, AcGeVector3d normal, AModeler::Face*& face);
    /// The first face that looks along the unit vector, or also against it unless `sameSense`, and has a
    /// corner where the edge begins.
    static bool getFace(AModeler::Body& body, AModeler::Edge* edge, AcGeVector3d normal, bool sameSense,
                        AModeler::Face*& face);
    /// The first edge of the face's loop that begins at the point; null, and false, where there is none.
    static bool getEdge(AModeler::Face* face, AcGePoint3d point, AModeler::Edge*& edge);
    /// Marks each two edges of the loop that run there and back as bridges. True when there were any.
    static bool detectAndSetBridges(AModeler::Face* face);
    /// Takes a side of four edges out of the body and joins what it stood between. The anchor is the first of
    /// its edges that begins at a corner of `other`; the face across the next edge, which has four edges too,
    /// grows over the anchor and the edge before it, and the two corners that are then nobody's leave the
    /// body's list. The face itself lives as long as the body. False, and nothing changed, where no edge is
    /// an anchor or no closed body would remain.
    static bool deleteLateralFace(AModeler::Body& body, AModeler::Face* lateral, AModeler::Face* other);
    /// Level 1: each face is flat within the modeller's tolerance and has three edges, each edge a partner
    /// there and back that runs against it. Any other level: true unasked.
    static bool isValidBody(AModeler::Body& body, int level);
    /// Computes the planes of all faces anew.
    static void evaluateFacePlanes(AModeler::Body& body);
    /// Adds the body's box, each side ten tolerances out. False for one that is null, empty or invalid.
    static bool getGeomExtentsOfBody(const AModeler::Body* body, AcDbExtents& extents);
    /// Appends a new AcDbLine for each edge that two faces share, bridges left out; the caller deletes them.
    static void explodeBody(AModeler::Body* body, AcArray<void*>& lines);
    /// Snap points of all its edges as lines. Status 93 for null, else 0.
    static Acad::ErrorStatus getOsnapPoints(AModeler::Body* body, AcDb::OsnapMode mode,
                                            Adesk::IntPtr gsSelectionMark, const AcGePoint3d& pickPoint,
                                            const AcGePoint3d& lastPoint, const AcGeMatrix3d& viewTransform,
                                            AcGePoint3dArray& snapPoints, AcDbIntArray& geometryIds);
    /// Appends the faces whose plane is closer to the point than the tolerance, whatever their outline.
    static void getAllFacesContainingPoint(const AModeler::Body* body, const AcGePoint3d& point,
                                           std::vector<AModeler::Face*>& faces, double tolerance);
    /// The number of the contour's side that the edge, or its partner where that one bounds the face, is a
    /// part of: the loop's head begins side 0, and the facets of an arc are one side. -1 for an edge that
    /// does not bound the face.
    static int getSideIndexInContour(const AModeler::Edge* edge, const AModeler::Face* face);
};

#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "gearc3d.h"
#include "gelnsg3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <vector>

class AcDb2dPolyline;
class AcDbArc;
class AcDbCurve;
class AcDbEntity;
class AcDbExtents;
class AcDbPolyline;
class AcDbXline;
class AcGeCurve2d;
class AcGeCurve3d;
class AcGeLine3d;
class AcGePlane;

/// Contours with arcs: measures, conversions and the arithmetic under them. Lengths are drawing units, angles
/// radians.
///
/// A contour is a closed or open chain of straight and circular segments in a plane, held in one of three
/// forms:
/// 1. AcDbPolyline, with the host's bulge: tan(included angle / 4), positive for a counter-clockwise arc.
/// 2. A point array and a scalar bulge per segment. A closed contour repeats its first point: V vertices are
///    V+1 points and V bulges. An open one has V points and V-1 bulges.
/// 3. A point array and a bulge vector per point. It is closed by itself and repeats nothing. The vector runs
///    from the chord's middle to the arc's apex (the point half-way along the arc).
///
/// The word bulge alone means the arc's height: the distance from the chord's middle to the apex, positive
/// when the apex lies to the left of the chord seen against the normal (on the side of normal x (p2 - p1)).
/// The run from p1 to p2 is then clockwise; the sign is the opposite of the host's bulge. A bulge is an arc
/// when its square is above 1e-20.
///
/// Arrays, objects and curves that a caller owns are listed in docs/ownership.md. Coordinates and bulges that
/// are NaN give NaN or the neutral value, never a fault. Functions read no state and may run on any thread.
namespace VEXOGeometryTools {

// ---------------------------------------------------------------------------------------------------------------------
// Bulge and arc arithmetic (vexogeometrytools_arcs.cpp)
// ---------------------------------------------------------------------------------------------------------------------

/// First index whose element lies within 0.001 of `value` ((value - element)^2 <= 1e-06); -1 if there is
/// none.
int findValueInDoubleArray(AcArray<double>& values, double value);

/// Removes every point within 0.001 of an earlier one that stays. All pairs count, not only neighbours: a
/// contour that passes twice through a point loses the second passage. With bulge vectors, points go only
/// when the vectors too are within 0.001; an empty bulge array means points alone. Arrays of different
/// lengths stay as they are. Linear in the number of points, but for many equal points with different bulges.
void ClearDooblons(AcArray<AcGePoint3d>& points, AcArray<AcGeVector3d>& bulges);

/// a + (b - a) / 2.
AcGePoint3d getMiddleOf(AcGePoint3d a, AcGePoint3d b);
/// The arc's apex; the chord's middle when the chord has no length or runs along the normal.
AcGePoint3d getMiddleOf(AcGePoint3d a, AcGePoint3d b, double bulge, AcGeVector3d normal);
/// The arc's point half-way between its ends. False, and `middle` untouched, when the arc's own ends are not
/// on it.
bool getMiddleOfArc(AcGeCircArc3d arc, AcGePoint3d& middle);

/// Bulge of the arc from start to end through onArc, from the inscribed angle. 0 when the points are
/// collinear, that is when the angle at onArc is within 1e-10 of pi. onArc on the chord's line outside the
/// chord, or at an end, has no arc: the value is then of the order of 1e16 chords.
double getBulgeFrom3Points(AcGePoint3d start, AcGePoint3d end, AcGePoint3d onArc, AcGeVector3d normal);
/// Bulge of an AcDbArc run from its start to its end; 0 for another curve, null or a failing read. The sign
/// is always taken against +Z, also for an arc with another normal; callers rely on that.
double getBulgeFromCurve(AcDbCurve* curve);
/// Bulge of a kit arc; 0 for null. An arc out of the XY plane always comes out positive.
double getBulgeFromGeArc(AcGeCircArc3d* arc);
/// From the chord's middle to the apex; zero for null.
AcGeVector3d getBulgeVecFromGeArc(AcGeCircArc3d* arc);
/// Bulge of the part of an arc in the XY plane from its start to newPoint or, with keepEndPart, from newPoint
/// to its end. 0 for |bulge| below 1e-10. The arc's apex serves as the part's third point and must lie on the
/// kept part; this is not checked.
double getNewBulge(const AcGePoint3d& start, const AcGePoint3d& end, const double& bulge,
                   const AcGePoint3d& newPoint, bool keepEndPart);
/// The same of a kit arc, about the arc's own normal.
double getNewBulge(const AcGeCircArc3d& arc, const AcGePoint3d& newPoint, bool keepEndPart);

/// Centre of the arc with this bulge: one radius from the apex towards the chord. A bulge of 0 has no centre
/// and gives NaN; the caller asks first.
AcGePoint3d getCenterFromArc(AcGePoint3d start, AcGePoint3d end, double bulge, AcGeVector3d normal);
/// |c^2 / (8 bulge) + bulge / 2| for the chord c (intersecting chords). Never negative; infinite for a bulge
/// of 0, NaN when the chord is 0 too.
double getRadiusFromBulge(AcGePoint3d start, AcGePoint3d end, double bulge);

/// Sets centre, radius and angles of `arc`, the angles measured about `normal` from the world's x axis. The
/// host's arc runs counter-clockwise, so that for a positive bulge it goes from end to start. The arc's own
/// normal is not set: the caller gives it when it is not +Z. Status 154, and the arc unchanged, for a bulge
/// of nearly 0.
Acad::ErrorStatus getArcFromCurve(AcGePoint3d start, AcGePoint3d end, double bulge, AcGeVector3d normal,
                                  AcDbArc& arc);
/// The same of the arc through three points; 154 when they are collinear.
Acad::ErrorStatus getArcFromCurve(AcGePoint3d start, AcGePoint3d end, AcGePoint3d onArc, AcGeVector3d normal,
                                  AcDbArc& arc);
/// Length along the arc; the chord for a bulge of nearly 0.
double getLengthFromCurve(AcGePoint3d start, AcGePoint3d end, double bulge, AcGeVector3d normal);
double getLengthFromCurve(AcGePoint3d start, AcGePoint3d end, AcGePoint3d onArc, AcGeVector3d normal);

/// The host's bulge, tan(included angle / 4) = 2 height / chord, in the XY plane; 0 for a bulge of nearly 0
/// and where start, apex and end are too close to one line for an arc.
double getAcadBulgeFromArc(const AcGePoint3d& start, const AcGePoint3d& end, double bulge);
/// 2 asin(chord / (2 radius)); NaN for a chord longer than the diameter.
double chordToAngle(double chord, double radius);
/// 2 radius sin(angle / 2).
double angleToChord(double angle, double radius);

/// Moves each point along its ray from the centre on to the arc and sorts the points by their parameter on
/// it. A point at the centre is dropped. A point whose line through the centre does not meet the arc exactly
/// twice, or whose own side is not met, stays in place and sorts as parameter 0. Two change places when the
/// later parameter is definitely less (1e-10); n log n when no two are closer.
void getPointsOnCircle(AcGeCircArc3d arc, AcArray<AcGePoint3d>& points);
/// Points where the tangents from `from` touch the circle: the first lies on the ray turned counter-clockwise
/// from the direction to the centre, seen from +Z, the second clockwise. The turn is always about +Z. False,
/// and both untouched, unless `from` is definitely farther from the centre than the radius.
bool getArcTangents(AcGeCircArc3d arc, AcGePoint3d from, AcGePoint3d& tangent1, AcGePoint3d& tangent2);
/// Lengths along the first arc's circle from its start to the second arc's start and from its end to the
/// second's end, seen from the first's centre about +Z; negative where the second arc begins before the
/// first, or ends before it.
void getArcDifferences(AcGeCircArc3d first, AcGeCircArc3d second, double& startDifference,
                       double& endDifference);

/// Straightens the segment that starts at a light polyline's last vertex. False for another curve or null. A
/// polyline without vertices gives true: the host's status is not looked at.
bool setLastBulgeToZero(AcDbCurve* curve);
/// Adds 2 pi to a negative angle, or takes 2 pi off an angle above 2 pi, once only: -7 stays negative. Within
/// 1e-10 of 0 or 2 pi the result is exactly 0.
double GetNormalizedAngle(const double& angle);
/// `value` rounded to the decimals of `step`: (int)log10(1 / step) of them. Rounded, whatever the name says:
/// the text form decides the last digit. A step above 1 leaves no decimals; a step that is 0, negative or NaN
/// leaves the value as it is.
double truncateDecimals(double value, double step);

// ---------------------------------------------------------------------------------------------------------------------
// Measures and orientation (vexogeometrytools_measures.cpp). Seen along +Z; areas take an arc as its chord.
// ---------------------------------------------------------------------------------------------------------------------

/// Sum of x[i] y[i+1] - x[i+1] y[i] around the polygon, halved: positive for a counter-clockwise run. The
/// closing segment is always included, so that a repeated first point changes nothing. 0 for an empty array.
/// The coordinates are taken as they are: the error grows with their square (about n * 1e-16 * X * Y).
double getSignedArea(AcArray<AcGePoint2d> points);
double getSignedArea(AcArray<AcGePoint3d> points);
/// The signed area without its sign.
double getArea(AcArray<AcGePoint2d> points);
double getArea(AcArray<AcGePoint3d> points);
/// The same with a status: 3, and `surface` untouched, for an empty array.
Acad::ErrorStatus calculateSurface(const AcArray<AcGePoint3d>& points, double& surface);

/// Average of the vertices, of the arcs' apexes and, per arc, of a shift along its axis by a dimensionless
/// ratio (three times the height of the circular segment's centroid over the bulge). It is not the area's
/// centroid, and the shift is a length of that many drawing units; callers expect this very value. The origin
/// for arrays of different lengths or empty ones. An arc without a chord adds nothing.
AcGePoint3d GetGravityCenter(AcArray<AcGePoint3d> points, AcArray<AcGeVector3d> bulges);

/// 1 when the polygon through vertices and apexes has a negative sum (twice its area below -1e-10), else 0.
/// Despite the name 1 is a run that a viewer at +Z sees as clockwise; callers compare with it as it is. 0 for
/// arrays of different lengths.
int IsCCW(const AcArray<AcGePoint3d>& points, const AcArray<AcGeVector3d>& bulges);

/// Is the sum of a contour's turns below -1e-10, seen from +Z. The closing segment counts for open curves
/// too. An arc counts as its two half chords. False for null and for a curve that ConvertToPolyline does not
/// take. True here and 1 from IsCCW name the same sense.
bool isContourClockWise(AcDbCurve* curve);

/// Unit normal of the plane through the first point, the first one that differs from it and the first one,
/// from index 2 on, off the line through these; its sense is that of their run. Zero when there is no such
/// plane.
AcGeVector3d getNormalFromPoints(const AcArray<AcGePoint3d>& points);
/// Moves each point along `direction`, of any length but zero, on to the plane. Fewer than 3 points, and
/// points whose line does not meet the plane, stay as they are.
void MakePlanarPolygon(AcArray<AcGePoint3d>& points, const AcGePlane& plane, const AcGeVector3d& direction);

// ---------------------------------------------------------------------------------------------------------------------
// Conversion and tessellation (vexogeometrytools_conversion.cpp, vexogeometrytools_chaining.cpp)
// ---------------------------------------------------------------------------------------------------------------------

/// A new polyline, owned by the caller, of the same shape as a light or 2d polyline, line, circle or arc;
/// null for any other class and for null. Elevation is not kept. A circle becomes two half circles. The
/// normal is kept, and vertices are in its axes; a line's polyline is seen along +Z. Control vertices of a
/// spline-fit 2d polyline, which are not on the curve, are left out.
AcDbPolyline* ConvertToPolyline(const AcDbEntity* entity);
/// Appends vertices for the ends in `points`, each segment's bulge from its point in `middles`, mapped to the
/// plane through the origin with this normal. The signed arc height goes into the vertex's bulge field as it
/// is, not turned into the host's bulge: callers read it back the same way. The first failing host call ends
/// the work with its status. Status 3, and nothing changed, unless there is one point more than middles.
Acad::ErrorStatus ConvertPointsToPolyline(AcArray<AcGePoint3d> points, AcArray<AcGePoint3d> middles,
                                          AcGeVector3d normal, AcDbPolyline& polyline);
/// Appends the vertices with bulges and widths, sets normal and elevation, and closes the target if the
/// source is closed. Status 3 for a null target or source.
Acad::ErrorStatus convert2DbPolyline(AcDb2dPolyline* source, AcDbPolyline* target);
/// Form 1 to form 2: points in the world, bulges as arc heights (-0.5 * host bulge * chord). Both arrays are
/// emptied first. Status 3, and both untouched, for null.
Acad::ErrorStatus convertPolyline(AcDbPolyline* polyline, AcArray<AcGePoint3d>& points,
                                  AcArray<double>& bulges);
/// Makes the target's vertices (with bulges and widths), closed state and normal those of the source.
/// Elevation and thickness are not copied. Null, or one object as both, changes nothing.
void copyAcDbPolyline(const AcDbPolyline* source, AcDbPolyline* target);
/// The segment that starts at vertex `index`, in the world, as `line` or, with isArc set, as `arc`. False for
/// null, an index out of range and segments without length; isArc is false then, but stays as it was for
/// null.
bool getSegmentFromPolyline(AcDbPolyline* polyline, int index, AcGeLineSeg3d& line, AcGeCircArc3d& arc,
                            bool& isArc);

/// A closed contour's points with its arcs sampled, and per arc its own samples. As many bulges as points:
/// the last one belongs to the closing segment. Both outputs are emptied first; status 3, and both untouched,
/// for different lengths. |tolerance| below 1e-10 gives the points as they are. An arc with bulge b gets
/// (int)(pi / step) + 1 samples, ends included, for step = 2 acos((|b| - tolerance) / |b|): the arc height
/// stands where a radius would, callers count on these numbers. At most 1,000,000 samples an arc; a tolerance
/// that gives no step (negative, NaN) gives the two ends. A straight segment adds its start, unless an arc
/// has just ended there. Arcs in a row repeat the point between them. An arc too flat to be told from its
/// chord is a straight segment.
Acad::ErrorStatus getTessellatedPoly(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                     AcArray<AcGePoint3d>& tessellated,
                                     AcArray<AcArray<AcGePoint3d>>& arcSamples, double tolerance,
                                     AcGeVector3d normal);
/// The same of an open contour (form 2) with a fixed number of samples per arc, at most 1,000,000. Missing
/// bulges count as 0. A straight segment adds its start unless that equals the last point added; the last
/// point is added unless an arc ends the contour on it. Status 0 always.
Acad::ErrorStatus getTessellatedPoly(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                                     AcArray<AcGePoint3d>& tessellated,
                                     AcArray<AcArray<AcGePoint3d>>& arcSamples, int samplesPerArc,
                                     AcGeVector3d normal);

/// A new AcDbArc or AcDbLine, owned by the caller, of a circular arc or a bounded straight curve; else null.
AcDbCurve* TransformGe2Db(AcGeCurve3d* curve);
/// The same in the XY plane. An arc gives the full circle, as an AcDbArc over one turn; its angles are
/// dropped.
AcDbCurve* TransformGe2Db(AcGeCurve2d* curve);
/// A new AcGeLineSeg3d or AcGeCircArc3d, owned by the caller, of an AcDbLine or AcDbArc; else null. The
/// arc goes through its start, middle and end: one over a full turn has no such three points and comes out
/// with radius 0.
AcGeCurve3d* TransformDb2Ge(AcDbCurve* curve);

/// Merges collinear AcGeLineSeg3d that touch at an end, within tolerance * 0.001, until none is left; the
/// array holds owned AcGeCurve3d pointers, nulls allowed. The merged segment takes the place and the sense of
/// the earlier one; the old ones are deleted. A segment whose far end coincides with the touching ends ends
/// the search for its partner. Arcs, and collinear segments with a gap, stay. Near linear when few segments
/// along one line share an end.
void ConcatenateLineSegments(AcArray<void*>& segments, const double& tolerance);
/// A new polyline, owned by the caller: first, then second from the end that first ends on; null when either
/// does not convert. When the curves' ends or their starts coincide (1e-06), second is walked backward.
/// `close` closes the result. Vertices equal to their neighbour are dropped, and second's last one when it
/// equals first's start.
AcDbCurve* concatenateCurves(AcDbCurve* first, AcDbCurve* second, bool close);
/// Chains AcDbCurve pointers in any order, beginning with curve 0 and going on each time with the first
/// unused curve that has an end within 1e-10 of the chain's end. Owned by the caller; null for an empty array
/// or a null first curve. The chain is closed when every curve found its place. Curves that never touch stay
/// out, with no report. A chain of several curves lies at elevation 0, so that curves elsewhere join curve 0
/// but not each other. A lone curve comes back as its clone. Near linear when few curves share an end.
AcDbCurve* createPolyLineFromCurves(AcArray<void*> curves);
/// Deletes every open AcDbCurve whose ends and centre (zero but for arcs, circles and ellipses) coincide
/// within 1e-05 with those of an earlier one, seen along viewDir, and takes it out of the array. What lies
/// between the ends is not looked at. Closed curves, and curves that cannot be projected, stay. Near linear
/// when few curves that differ have both ends in common.
void RemoveDuplicates(AcArray<void*>& curves, const AcGeVector3d& viewDir);

/// Drops the points of a closed polygon at which the direction does not change, the first point as the last
/// one looked at; reversals stay. False, and no change, for fewer than 3 points. Points that all coincide
/// leave none.
bool removeCoLinearPoints(AcArray<AcGePoint3d>& points);

// ---------------------------------------------------------------------------------------------------------------------
// Predicates (vexogeometrytools_predicates.cpp, vexogeometrytools_selfintersection.cpp,
// vexogeometrytools_comparison.cpp). Nothing is changed, nothing changes hands. Null, open and empty
// contours, contours without area and NaN have the answers told here; where nothing is told, the answer is
// false.
// ---------------------------------------------------------------------------------------------------------------------

/// 1 inside the polygon or on its boundary, else 0; 0 for an empty one. XY only, arcs are not seen, the
/// closing side is always included. Crossings of the ray downwards are counted; a corner under the point
/// counts by its neighbours to the right, so that a ray through a corner counts once. On means within 1e-10,
/// left and right of a corner however beyond 1e-10 and 1e-10 of the coordinate: a million units from the
/// origin a point within 0.0001 of a corner's x, but not on it, may be counted wrong. A NaN counts nothing.
int IsInteriorPoint(AcArray<AcGePoint3d> polygon, AcGePoint3d point);
/// The same on a ring of 2d segments and arcs, in any order; null and other curves are passed over. The ray
/// runs to the right and is 100000000.0 long: what lies farther is not seen. 1 at a curve's end and on a
/// level segment; on the rest of the boundary the count decides. A curve with an end at the point's height
/// counts by its ends alone: once when the other end is below and the point to the left. An arc with both
/// ends at the point's height counts once more when the point is between them and below the apex: right for a
/// circle in two halves, but a point on the chord of an arc that tops two upright sides comes out as outside.
/// Far from the origin the same holds of heights as of x above.
int IsInteriorPoint(const std::vector<AcGeCurve2d*>& curves, const AcGePoint2d& point);
/// Does the line from the lower side of the contour's box up to the point meet the contour an odd number of
/// times, as intersectWith counts. The contour is taken as ConvertToPolyline gives it: at elevation 0, so
/// that a point off that plane is outside. No promise for points on the boundary, nor for points straight
/// above a corner that the line only touches or above an upright side. An open curve is asked as it is.
bool isPointInsideContour(AcGePoint3d point, AcDbCurve* contour);
/// On a segment, straight or arc, within 1e-06. The chord from the last vertex of an open polyline to its
/// first does not count; segments without length never do.
bool isPointOnPolyLine(AcDbPolyline* polyline, AcGePoint3d point);
/// On a straight segment, within 1e-06, that is parallel to the view direction within 1e-06.
bool isPointOnPolySegParalelWithViewDir(AcDbPolyline* polyline, AcGePoint3d point, AcGeVector3d viewDir);
/// Does the way from first to second, turned left by a right angle, point into the contour: the line through
/// their middle meets it an odd number of times on that side and an even number on the other. Both odd or
/// both even is false, as is first equal to second. A meeting at the middle itself counts for the left side;
/// for any other the sign of its distance along the line tells the side, which holds far from the origin too.
/// For points with different z the perpendicular is that of AcGeVector3d::perpVector.
bool isPerpVectorOrientedInsideContour(AcGePoint3d first, AcGePoint3d second, AcDbCurve* contour);
/// True when second lies apart from first or holds it. False when first's box holds second's (corners within
/// 1e-08), and when the curves cross while a corner of one box is strictly inside the other or the boxes'
/// diagonals meet. So curves that cross with boxes of one height, side by side, are still outside. Boxes are
/// seen along z; the curves must meet in space to cross. False for null and for a curve without a box.
bool isContourOutside(AcDbCurve* first, AcDbCurve* second);
/// Do two of the contour's segments, seen along z, cross. Segment i runs from point i to the next one, back
/// to point 0 after the last; there are as many as points that have a bulge, so that all three ways to write
/// a contour down (closed with or without its first point repeated, open with one bulge less) are taken.
/// Points within scale * 1e-05 of the one before go first. The apex of an arc is found in space, about
/// `normal`; an arc too flat to be told from its chord is straight; segments that are not finite cross
/// nothing.
///
/// Of a pair, one crossing counts unless it lies within scale * 1e-05 of an end of the later segment, so that
/// a contour may touch itself at its vertices; two count unless the segments have both ends in common.
/// Straight segments that run over each other count when the later one's end is on the earlier or the earlier
/// one's start on the later. Near linear, but for segments that all come together at one place.
bool isSelfIntersecting(const AcArray<AcGePoint3d>& points, const AcArray<double>& bulges,
                        const AcGeVector3d& normal, double scale);
/// Do two contours (form 3; a repeated first point and one bulge less are taken too) have the same outline,
/// whatever their start and sense, and wherever straight sides are cut in two. Ends and apexes are compared
/// within tolerance * 0.001. `flatten` sets the points' z to 0 first. Segments without length are dropped;
/// two contours that have no others are the same. False for fewer than 2 points and for open contours.
/// Segments are paired in order, each with the first that fits. Near linear when few segments share an end.
bool ComparePointsAndBulgesForClosedContours(AcArray<AcGePoint3d> points1, AcArray<AcGeVector3d> bulges1,
                                             AcArray<AcGePoint3d> points2, AcArray<AcGeVector3d> bulges2,
                                             double tolerance, bool flatten);
/// Do the arrays differ in length, or at any index by more than 1e-10. A NaN differs from everything.
bool arePointsDiff(const AcArray<AcGePoint3d>& first, const AcArray<AcGePoint3d>& second);
/// Do two boxes overlap in space; boxes that only touch do, within a relative and absolute 1e-10. An empty
/// box overlaps nothing.
bool IsIntersecting(AcDbExtents first, AcDbExtents second);
/// Box around the AcDbEntity pointers in the array, nulls allowed; false, and `extents` untouched, when none
/// has a box.
bool getEntitiesExtents(const AcArray<void*>& entities, AcDbExtents& extents);

// ---------------------------------------------------------------------------------------------------------------------
// Common areas (vexogeometrytools_areas.cpp)
// ---------------------------------------------------------------------------------------------------------------------

/// The area that two closed contours (polylines of both kinds, circles) have in common, as a new closed
/// polyline, owned by the caller. Null when they have no area in common (edges or points that touch enclose
/// none), and for a contour that is null, open, of zero area, has a coordinate that is no number or beyond
/// 1e60, or is no polyline or circle.
///
/// Lines and arcs keep their kind, an arc its circle; vertices that bound the result keep their coordinates
/// to the bit, straight-through ones go. Of several common pieces the one with the largest area is given.
/// Either sense of travel means the same area; a contour that crosses itself bounds all that it runs round.
/// The result runs counter-clockwise about the first contour's normal.
///
/// `second` is seen along the first contour's normal, as in a plan, whatever its elevation; it may be
/// mirrored (the opposite normal). Null when the two normals are not parallel within 1e-10. The result lies
/// in the plane of `first`: its normal and its elevation.
///
/// Parts of the boundaries nearer to each other than 1e-10 of the common box's larger side (or 16 units in
/// the last place of the largest coordinate) are taken to touch; common parts thinner than that are none.
/// Where boundaries run along each other just about that far apart, up to 64 times the distance. Area: within
/// the perimeter times this distance; 4e-13 of the contours' areas seen at 1e6 from the origin. Near linear
/// in vertices plus crossings, but for segments that all come together at one place, and for results of many
/// parts.
AcDbCurve* getComonSurfaceFromPolylines(AcDbCurve* first, AcDbCurve* second);
/// Two closed contours that lie side by side and share one whole segment, line or arc, as one: a new closed
/// polyline, owned by the caller, in the plane and the sense of travel of `first`, without the segment and
/// without straight-through vertices. The contours' own senses do not matter.
///
/// Null when they share no whole segment or several, run together anywhere else for a length, overlap (also
/// with the segment on the same side of both), do not lie in one plane, or for a contour for which
/// getComonSurfaceFromPolylines gives null. Contours that touch in further points are joined; the result then
/// touches itself there. Tolerance: as there. Contours whose boxes are apart cost the reading of their
/// vertices.
AcDbCurve* MergeContoursIfTheyHaveOneComonSegment(AcDbCurve* first, AcDbCurve* second);

// ---------------------------------------------------------------------------------------------------------------------
// Splitting (vexogeometrytools_splitting.cpp, vexogeometrytools_crossings.cpp, vexogeometrytools_slabs.cpp)
// ---------------------------------------------------------------------------------------------------------------------

/// The projection of each point on the line, in order; the tolerance is not consulted.
AcArray<AcGePoint3d> getClosestPointsToLine(const AcGeLine3d& line, const AcArray<AcGePoint3d>& points,
                                            const AcGeTol& tolerance);
/// Sorts points along `dir`, of any length but zero (1e-10), by exchange: two change places when the vector
/// from the earlier to the later is not codirectional with `dir` within 1e-10. With `onLine` the points
/// themselves are compared, else their projections on the line through the first one. Points off one line
/// along `dir` and coincident ones are codirectional with nothing and change places at every comparison;
/// callers give points on a line. n log n when the points stand clearly one behind the other.
void orderPointsByDir(AcGeVector3d dir, AcArray<AcGePoint3d>& points, bool onLine);
/// Keeps the first and the last point, exchanged when the last lies to the left (by more than 1e-10) of the
/// first. An empty array stays empty; a single point becomes both.
void filterArray(AcArray<AcGePoint3d>& points);
/// Where the segments of two curves that ConvertToPolyline takes meet, at elevation 0, in the order of the
/// first's segments and, for each, the second's. Points within 1e-06 of an earlier one are left out. At most
/// two points a pair of segments; lines that run together have none. Empty for null and other curves. Near
/// linear in segments plus crossings.
AcArray<AcGePoint3d> intersectPolyLines(AcDbCurve* first, AcDbCurve* second);
/// Is the point level with a side of the box: its x with the least or greatest x within 1e-06 or, for `inX`
/// false, its y within 1e-10. The two tolerances differ on purpose.
bool isPointsOnExtents(AcGePoint3d point, AcDbExtents extents, bool inX);
/// Moves `left` by 1e-08 to the right when the line along y through it misses the hole, and `right` to the
/// left likewise: once, with no second look. A line that only touches an arc misses it.
void correctExtentsPoints(AcGePoint3d& left, AcGePoint3d& right, AcDbCurve* hole);
/// The pieces of a curve that ConvertToPolyline takes between the points, in the order of the curve, owned by
/// the caller. Points that are not on the curve, or repeated, are passed over. Empty for null, other curves,
/// and when no point cuts.
AcArray<void*> splitPolyLineByPoints(AcDbCurve* curve, AcArray<AcGePoint3d> points);
/// The part of a closed contour between two points, owned by the caller. A point off the contour stands for
/// the nearest one on it; one within 1e-08 of the start is the start. Of the two parts the one that passes
/// nearer to the middle, seen along y, for `nearPart` true, the farther one for false: the middle has the
/// mean x of the points and the y of the first part's start, where the first part is the one from the lower
/// to the higher parameter. On a tie (1e-10) false gives the first part and true the second. The first part
/// when a part does not cross the line along y through the middle. The contour's clone when both points are
/// one; null for null and where a point has no place.
AcDbCurve* giveMeSplitContourByPoints(AcGePoint3d first, AcGePoint3d second, AcDbCurve* contour,
                                      bool nearPart);
/// The two halves of a closed contour along a line parallel to y, closed along the cut, owned by the caller:
/// the first lies to the left of the line's direction. Only the two crossings with the least y cut; the rest
/// of the line is ignored. Empty for null and fewer than two crossings.
AcArray<void*> splitContourByLine(AcDbPolyline* contour, AcDbXline& line);
/// The strips of a closed contour above and below a hole, between two lines parallel to y, owned by the
/// caller. Each is bounded by the hole's upper (lower) run from the one line to the other, as far as it lies
/// between its first and last meeting with the contour, and by the contour's upper (lower) run between these.
/// The strip's side alone says which run is taken: nearness to the middle, by which
/// giveMeSplitContourByPoints chooses, would let strips cover openings in the lower half of a slab. A side
/// that does not meet the contour twice has no strip. Empty when a line misses the hole, and for null.
AcArray<void*> splitContourByLine2(AcDbPolyline* contour, AcDbCurve* hole, AcDbXline& left, AcDbXline& right);
/// A closed contour cut around one hole into simple parts that run along `dir`, owned by the caller, in the
/// order left, right, upper, lower as seen with `dir` to the right. The cuts run across `dir` through the
/// hole's outermost points, moved by correctExtentsPoints where they would only touch it. Together the parts
/// are the contour without the hole; none covers the hole or another one.
///
/// Empty when hole and contour have no area in common, or next to none (two nudges wide), and when the hole
/// covers the contour; splitContourByHoles tells the two apart. The plain cut, at each line's first two
/// crossings with the contour and with one strip above the hole and one below, stands where its parts meet
/// neither the hole nor each other and leave nothing of the contour out. Where they do not (a line crosses
/// the contour more than twice, the hole has several tips equally far along `dir`, its side meets the contour
/// more than twice), the contour is cut only where the line bounds the part that holds the hole; there may
/// then be several parts of a kind, from left to right.
///
/// Contour and hole are looked at along Z and may have any elevation and sense; each lies parallel to the XY
/// plane (normal +Z or -Z). Parts have the contour's elevation, normal, sense and properties. Widths are not
/// kept. The hole is any closed curve that ConvertToPolyline takes. `base` moves nothing: only the direction
/// of the line through it matters; like a `dir` without a part in the XY plane, one that is no number gives
/// an empty result, and so do null, open curves and ones without area.
AcArray<void*> splitContourByHole(AcGePoint3d base, AcGeVector3d dir, AcDbPolyline* contour, AcDbCurve* hole);
/// A closed contour cut around all holes: simple strips along `dir`, owned by the caller, that together are
/// the contour without what the holes cover, within about 1e-10 of its area for each cut. Holes may overlap
/// each other, touch, and cross the contour; what they share with it is cut out, each part by itself where
/// there are several. Each piece, in the order in which pieces come up, is cut by the first hole that has
/// area in common with it, and its parts go to the end of the list; a piece that a hole covers goes. Then
/// strips that share one whole segment are merged, the first such pair of the list first, the merged strip
/// going to the end. A contour that no hole touches gives its clone. Curves in `holes` that are null, open or
/// without area are passed over. For the rest as splitContourByHole.
///
/// The time grows with the number of pieces that holes reach into before strips are merged, since each cut
/// runs across its piece: linear in the holes of a contour that grows in length, with the power 1.2 (holes in
/// any order) to 1.5 (row by row) in one that grows both ways.
AcArray<void*> splitContourByHoles(AcGePoint3d base, AcGeVector3d dir, AcDbPolyline* contour,
                                   AcArray<void*> holes);

} // namespace VEXOGeometryTools

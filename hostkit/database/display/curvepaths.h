// The paths of curves.
#pragma once

#include "picturepath.h"

#include <vector>

class AcDb2dPolyline;
class AcDbEntity;
class AcDbPolyline;
class AcGeNurbCurve3d;

namespace hostkit {

/// The path of a curve in world coordinates: lines, arcs, circles, ellipses, splines (through their fit
/// points, where a drawing gives no others), polylines of all kinds. False, and the path as it was, for
/// another kind or a curve without points.
bool appendCurve(PicturePath& path, const AcDbEntity& entity);

/// The same with its bulges and widths as a light polyline, without what only shapes it; of no drawing.
AcDbPolyline lightPolyline(const AcDb2dPolyline& polyline);

/// Cubics through a spline: exact where it is a cubic without weights, else four pieces for each of its
/// spans.
void appendSpline(PicturePath& path, const AcGeNurbCurve3d& curve);

/// The parts of a polyline that has a width, in world coordinates.
struct WidePiece {
    PicturePath path;
    double width; ///< to stroke the path with; 0: the path is an outline to fill
};
/// One piece where all widths are equal; else a piece a segment, outlines for those that taper. Empty for a
/// polyline without width.
std::vector<WidePiece> widePieces(const AcDbPolyline& polyline);

} // namespace hostkit

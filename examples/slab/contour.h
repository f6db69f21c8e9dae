#pragma once

#include "dbpolyline.h"
#include "gemat3d.h"

#include <memory>
#include <string>
#include <vector>

/// A closed contour where it stands in the drawing.
struct Contour {
    std::wstring layer;
    std::wstring path; ///< handles from the outermost block reference to the contour: "2F/1A"
    std::wstring kind; ///< "polyline", "old polyline", "circle"
    std::unique_ptr<AcDbPolyline> polyline; ///< in the block's coordinates
    AcGeMatrix3d toWorld;                   ///< of the block references around it
};

/// What is known of a contour. Lengths are drawing units, areas their squares, points and normal in the
/// world.
struct ContourMeasures {
    unsigned vertices = 0;
    unsigned arcs = 0;
    double length = 0.0;
    double signedArea = 0.0;   ///< of the chords, seen from above; above 0 when counter-clockwise
    double trueArea = 0.0;     ///< with the arcs, in the contour's own plane
    std::wstring sense;        ///< "cw" or "ccw" seen from above; "-" for a contour that stands upright
    AcGePoint3d gravityCenter; ///< as the library averages it
    AcGePoint3d centroid;      ///< of the area with its arcs
    AcGeVector3d normal;       ///< the axis about which the contour's own coordinates turn counter-clockwise
    std::wstring note;         ///< why there is no area, or why the sense is not sure
    bool hasArea = false;      ///< without it the areas, centres and the sense say nothing
};

ContourMeasures measuresOf(const Contour& contour);

std::unique_ptr<AcDbPolyline> copyOf(const AcDbPolyline& polyline);
/// The last vertex repeats the first: such a contour is closed by its ends, and the vertex counts for
/// nothing.
bool endsMeet(const AcDbPolyline& polyline);
/// Twice the area between an arc of that angle, radius 1, and its chord; small angles keep their digits.
double angleMinusSine(double angle);
/// With its arcs, in the contour's own plane: above 0 when it runs counter-clockwise about its normal.
double signedAreaInPlane(const AcDbPolyline& contour);
/// Segments that are arcs and have a length.
unsigned arcCount(const AcDbPolyline& contour);

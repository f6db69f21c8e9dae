#pragma once

#include "contour.h"

#include <optional>

/// A closed contour as it is seen from above: counter-clockwise in the plane z = 0, without repeated
/// vertices.
struct PlanContour {
    std::wstring layer;
    std::wstring path; ///< handles from the outermost block reference to the contour
    std::unique_ptr<AcDbPolyline> outline;
    double elevation = 0.0; ///< where it lies in the drawing
    double area = 0.0;      ///< with its arcs
    AcGePoint2d low;        ///< of its box, arcs included
    AcGePoint2d high;
};

/// None, and the reason in words, for what does not lie flat, has arcs that uneven scales have made pieces of
/// ellipses, encloses nothing, crosses itself or holds what is no number.
std::optional<PlanContour> planContourOf(const Contour& contour, std::wstring& reason);

#pragma once

#include "contour.h"
#include "planselection.h"

#include <functional>

class AcDbDatabase;

/// What a walk met besides the contours that it gave.
struct ContourWalk {
    struct OpenCurve {
        std::wstring layer;
        std::wstring path;
    };
    std::vector<OpenCurve> openCurves; ///< polylines that are not closed
    bool isCut = false; ///< block references repeat more than is reasonable, or the user broke off
};

/// Gives every closed polyline, old-style polyline and circle of model space in drawing order, and those
/// inside block references where each reference stands, nested ones and arrays too.
/// Where `selected` is given, of these entities of model space alone.
ContourWalk forEachContour(AcDbDatabase& database, const std::function<void(Contour&&)>& visit,
                           const PlanSelection& selected = {});

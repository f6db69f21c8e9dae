#pragma once

#include "plancontour.h"

#include <functional>
#include <string>
#include <vector>

/// A contour of the drawing that takes no part, or with which something is not as it should be, and why.
struct Finding {
    std::wstring layer;
    std::wstring path;
    std::wstring reason;
};

struct Opening {
    const PlanContour* contour = nullptr;
    double area = 0.0; ///< of the part inside the slab
};

struct Slab {
    const PlanContour* contour = nullptr;
    std::vector<Opening> openings; ///< as they were drawn
};

/// Which contours are slabs and which are openings in them.
struct SlabPlan {
    std::vector<std::unique_ptr<PlanContour>> contours; ///< what slabs and openings point at
    std::vector<Slab> slabs;                            ///< as they were drawn
    std::vector<Finding> findings;
};

/// How the roles are given. Layers of none: all closed contours, by containment.
struct SlabRoles {
    std::vector<std::wstring> outlineLayers;
    std::vector<std::wstring> openingLayers;
};

/// Names of layers count without regard to case.
bool isListed(const std::vector<std::wstring>& layers, const std::wstring& name);

/// Gives the roles. Contours at other heights are of other floors and do not meet.
///
/// With layers for both, or for the openings alone: what stands on the openings' layers is an opening of
/// every slab that it has an area in common with; one that meets none is left out. Outlines are the contours
/// of their layers, or, where no layer is given for them, the outermost ones of all others.
///
/// Else by containment, among the contours of the outlines' layers where some are given: outermost contours
/// are slabs, those directly in them openings, those directly in openings slabs again, and so on. A contour
/// that crosses the edge of a slab is an opening of that slab; two openings may overlap each other. Of
/// contours of one role that are the same outline the first drawn counts.
///
/// `look` is called with the share of the work that is done and says whether to go on; when it does not, the
/// plan is not whole.
SlabPlan planSlabs(std::vector<std::unique_ptr<PlanContour>> contours, const SlabRoles& roles,
                   const std::function<bool(double)>& look);

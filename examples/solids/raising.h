#pragma once

#include "amodeler.h"
#include "slabplan.h"

/// How a plan becomes a body. Lengths are drawing units, upwards.
struct RaisingMeasures {
    double thickness = 0.0;    ///< of slabs, from their contour up
    double beamDepth = 0.0;    ///< from the slab's upper side down
    double columnHeight = 0.0; ///< from the slab's lower side down
    double deflection = 0.0;   ///< of facets from their arc
};

/// What stands in a plan: slabs with openings, and contours of what is joined to them.
struct RaisedPlan {
    SlabPlan slabs;
    std::vector<std::unique_ptr<PlanContour>> beams, columns;
};

/// One body of all of it; what could not be raised is told in the plan's findings. Openings are cut out of
/// their slabs alone: beams and columns go through them. Null where nothing could be raised.
///
/// All openings of a slab are subtracted at once, and all parts united at once. Facets share their arc's
/// surface. An outline of two points is raised with its arcs in halves.
AModeler::Body raisedBody(RaisedPlan& plan, const RaisingMeasures& measures);

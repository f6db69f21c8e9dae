// How a space is looked at when something is picked; leaves out views' names, clipping and perspective.
#pragma once

#include "gemat3d.h"

namespace hostkit {

/// World to view plane: x and y of what the matrix gives are the plane's, z goes towards the eye and does not
/// count. The identity is the plan view.
struct PickSight {
    AcGeMatrix3d worldToView;
};

} // namespace hostkit

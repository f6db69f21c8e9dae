// User coordinate systems in the header: the current one of a space, made sound; leaves out named ones.
#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

namespace hostkit {

class HeaderVariables;

/// A user coordinate system in world coordinates; the axes have unit length and are perpendicular.
struct UserAxes {
    AcGePoint3d origin{0.0, 0.0, 0.0};
    AcGeVector3d x{1.0, 0.0, 0.0};
    AcGeVector3d y{0.0, 1.0, 0.0};
};

/// That of model space, or of the sheet: y is put at a right angle to x. The world's where the header has
/// none, or axes that are parallel, of no length or no numbers. All three at once cost a third of asking the
/// database for each.
UserAxes userAxes(const HeaderVariables& header, bool ofSheet);

} // namespace hostkit

// Stand-in for the host's view of the current document. Covers the active viewport's record and the user coordinate system of the header; leaves out the viewports of sheets.
#pragma once

#include "gemat3d.h"

class AcDbDatabase;

namespace hostkit {

/// A view as the viewport's record tells it: target and direction in the world, the middle in the display's
/// coordinates.
struct CurrentView {
    AcGePoint3d target{0.0, 0.0, 0.0};
    AcGeVector3d direction{0.0, 0.0,
                           1.0}; ///< from the target to the eye; its length is the camera's distance
    double middle[2] = {0.0, 0.0};
    double height = 297.0;
    double lensLength = 50.0;
    double frontClip = 0.0;
    double backClip = 0.0;
    double twist = 0.0; ///< radians
    int mode = 0; ///< bits: 1 perspective, 2 front clip, 4 back clip, 8 follows the UCS, 16 front clip not at
                  ///< the eye
};

/// That of the active viewport in model space. On a sheet, and where the drawing has no such record, the plan
/// view of the world onto the drawing's limits.
CurrentView currentView(const AcDbDatabase& database);

/// From the user coordinate system of the space that is current to the world. A header without one, or with
/// axes that are parallel or of no length, means the world's.
AcGeMatrix3d ucsToWorld(const AcDbDatabase& database);
/// From the display's coordinates, whose z axis is the view's direction and whose origin is its target, to
/// the world. The axes in its plane are those of the arbitrary axis, turned back by the twist.
AcGeMatrix3d displayToWorld(const CurrentView& view);

} // namespace hostkit

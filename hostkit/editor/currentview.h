// View of the current document: what the current viewport shows, the display's coordinates and the user
// coordinate system; leaves out perspective.
#pragma once

#include "gemat3d.h"

class AcApDocument;

namespace hostkit {

/// A view as the viewport's record tells it: target and direction in the world, the middle in the display's
/// coordinates.
struct CurrentView {
    AcGePoint3d target{0.0, 0.0, 0.0};
    /// From the target to the eye; its length is the camera's distance.
    AcGeVector3d direction{0.0, 0.0, 1.0};
    double middle[2] = {0.0, 0.0};
    double height = 297.0;
    double lensLength = 50.0;
    double frontClip = 0.0;
    double backClip = 0.0;
    double twist = 0.0; ///< radians
    /// Bits: 1 perspective, 2 front clip, 4 back clip, 8 follows the UCS, 16 front clip not at the eye.
    int mode = 0;
};

/// That of the current viewport: in model space the active one; on a sheet the sheet's own plan view, onto
/// its limits, or what the current viewport on it shows of the model. Where the drawing has no such record,
/// the plan view of the world onto the drawing's limits.
CurrentView currentView(const AcApDocument& document);

/// Model space is current, by itself or through a viewport of the sheet; else the sheet is.
bool isModelCurrent(const AcApDocument& document);
/// From the user coordinate system of the space that is current to the world: the sheet's on the sheet
/// itself, else the model's.
AcGeMatrix3d ucsToWorld(const AcApDocument& document);
/// From the display's coordinates, whose z axis is the view's direction and whose origin is its target, to
/// the world. The axes in its plane are those of the arbitrary axis, turned back by the twist.
AcGeMatrix3d displayToWorld(const CurrentView& view);
/// From the current viewport's display to that of the sheet: the same on the sheet itself, else scaled and
/// moved to the viewport's place. False, with the matrix untouched, in model space, and where the drawing has
/// no such viewport.
bool displayToSheet(const AcApDocument& document, AcGeMatrix3d& matrix);

/// Through a system and back, for a matrix whose columns are perpendicular, of any length but zero.
/// Coordinates are taken off the system's origin first, so that places far out lose nothing.
AcGePoint3d intoSystem(const AcGeMatrix3d& system, const AcGePoint3d& point);
AcGeVector3d intoSystem(const AcGeMatrix3d& system, const AcGeVector3d& vector);

} // namespace hostkit

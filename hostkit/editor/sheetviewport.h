// Viewports on a sheet: where one lies on the sheet and what it shows of the model; leaves out clipping,
// frozen layers and plotting.
#pragma once

#include "currentview.h"

class AcDbDatabase;
class AcDbViewport;

namespace hostkit {

/// A viewport that shows the model on the sheet.
struct SheetViewport {
    AcGePoint3d place{0.0, 0.0, 0.0}; ///< its middle, in the sheet's coordinates
    double height = 0.0;              ///< likewise
    CurrentView view{};               ///< of the model; at the place stands the view's middle

    /// Sheet units for one drawing unit.
    double scale() const { return height / view.height; }
};

/// What the viewport says, usable or not.
SheetViewport sheetViewportOf(const AcDbViewport& viewport);

/// The viewport of that number on the current sheet. False, with the viewport untouched, where there is none,
/// and for one without sizes or with values that are no numbers.
bool findSheetViewport(const AcDbDatabase& database, int number, SheetViewport& viewport);

} // namespace hostkit

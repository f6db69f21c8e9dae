// Viewports on a sheet: where one lies on the sheet and what it shows of the model; leaves out clipping,
// frozen layers and plotting.
#pragma once

#include "currentview.h"

class AcDbDatabase;

namespace hostkit {

/// A viewport that shows the model on the sheet.
struct SheetViewport {
    AcGePoint3d place{0.0, 0.0, 0.0}; ///< its middle, in the sheet's coordinates
    double height = 0.0;              ///< likewise
    CurrentView view{};               ///< of the model; at the place stands the view's middle

    /// Sheet units for one drawing unit.
    double scale() const { return height / view.height; }
};

/// The viewport of that number (group 69) on the current sheet, as the drawing's file has it. False, with the
/// viewport untouched, where there is none, and for one whose record lacks a size (R12 keeps it in extended
/// data, which is not looked at) or has values that are no numbers.
bool findSheetViewport(const AcDbDatabase& database, int number, SheetViewport& viewport);

} // namespace hostkit

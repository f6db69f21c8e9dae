// Closed loops of curves as flat sheets.
#pragma once

#include "shape.h"

#include <vector>

class AcDbCurve;

namespace hostkit {

/// A sheet of one face for each closed loop; see AcDbRegion::createFromCurves.
std::vector<modeler::Shape> sheetsOfCurves(const std::vector<const AcDbCurve*>& curves);

} // namespace hostkit

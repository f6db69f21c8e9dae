// Widths of polylines as areas of the view plane; leaves out the corners of joints, where two segments meet
// at an angle.
#pragma once

#include "regionprobe.h"

class AcDb2dPolyline;
class AcDbEntity;
class AcDbPolyline;

namespace hostkit {

/// Shows what the widths of the segments cover: each segment as far as it goes, ends cut square. An arc that
/// tapers is shown by 32 arcs.
void showWidths(RegionProbe& probe, const ViewMap& toView, const AcDbPolyline& polyline);
/// Vertices without widths have the polyline's.
void showWidths(RegionProbe& probe, const ViewMap& toView, const AcDb2dPolyline& polyline);

/// How far the entity may reach beyond its extents: half of the largest width, 0 for all but polylines.
double widthBeyondExtents(const AcDbEntity& entity);

} // namespace hostkit

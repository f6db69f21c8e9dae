// Curve that a spline shows, by its control points or its fit points; leaves out drawing it.
#pragma once

#include "genurb3d.h"

class AcDbSpline;

namespace hostkit {

/// That of its control points; for a spline that is known by its fit points alone a plain curve through them.
/// Empty where there are neither.
AcGeNurbCurve3d shownCurve(const AcDbSpline& spline);

} // namespace hostkit

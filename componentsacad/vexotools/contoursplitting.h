#pragma once

#include "acarray.h"

class AcDbCurve;
class AcDbPolyline;
class AcDbXline;
class AcGePoint3d;
class AcGeTol;

/// What the splitting of contours shares between its files.
namespace vexo {

AcDbXline lineAlongY(const AcGePoint3d& through);

/// Takes out every point that equals an earlier one which stays.
void removeRepeats(AcArray<AcGePoint3d>& points, const AcGeTol& tolerance);

/// Deletes the curves and empties the array.
void deleteCurves(AcArray<void*>& curves);

/// The strips of splitContourByLine2. `isPlain` is false when a strip's edge on the hole meets the contour
/// more than twice: first and last crossing then need not bound one strip.
AcArray<void*> stripsBetweenLines(AcDbPolyline* contour, AcDbCurve* hole, const AcDbXline& left,
                                  const AcDbXline& right, bool& isPlain);

} // namespace vexo

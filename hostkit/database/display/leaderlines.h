// Lines of leaders with an arrow at their begin.
#pragma once

#include "dbid.h"
#include "gepnt3d.h"

#include <string>
#include <vector>

class AcDbObject;
class AcGiWorldDraw;

namespace hostkit {

struct DimensionVariables;

struct LeaderLine {
    std::vector<AcGePoint3d> points; ///< the arrow stands at the first
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcDbObjectId arrow;     ///< null: the filled closed one
    double arrowSize = 0.0; ///< drawing units; 0: none
    bool isCurved = false;
};

/// Fewer than two points are no line. A straight line ends at the arrow's base where that arrow wants it.
void drawLeaderLine(AcGiWorldDraw& draw, const LeaderLine& line);

/// The variables of the dimension style of that name, or of the standing one, with the overrides of the
/// object's extended data.
DimensionVariables styleOfRecord(const AcDbObject& object, const std::wstring& styleName);

} // namespace hostkit

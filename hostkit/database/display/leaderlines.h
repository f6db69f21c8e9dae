// Lines of leaders with an arrow at their begin.
#pragma once

#include "dbid.h"
#include "gepnt3d.h"
#include "picturepath.h"

#include <string>
#include <vector>

class AcDbObject;
class AcGiWorldDraw;

namespace hostkit {

struct DimensionVariables;

/// Where a line is interrupted, along one of its segments.
struct LeaderGap {
    AcGePoint3d from;
    AcGePoint3d to;
};

struct LeaderLine {
    std::vector<AcGePoint3d> points; ///< the arrow stands at the first
    std::vector<LeaderGap> gaps{};   ///< of a straight line, in any order
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcDbObjectId arrow;     ///< null: the filled closed one
    double arrowSize = 0.0; ///< drawing units; 0: none
    bool isCurved = false;
};

/// Fewer than two points are no line. A straight line ends at the arrow's base where that arrow wants it.
void drawLeaderLine(AcGiWorldDraw& draw, const LeaderLine& line);

/// A straight chain without its gaps; each belongs to the segment that it is nearest to.
PicturePath interruptedChain(const std::vector<AcGePoint3d>& points, const std::vector<LeaderGap>& gaps);

/// The variables of the dimension style of that name, or of the standing one, with the overrides of the
/// object's extended data.
DimensionVariables styleOfRecord(const AcDbObject& object, const std::wstring& styleName);

} // namespace hostkit

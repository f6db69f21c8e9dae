// Pictures of leaders.

#include "acgi.h"
#include "blockdrawing.h"
#include "dbopaque.h"
#include "dimensionvariables.h"
#include "leaderlines.h"
#include "recordcursor.h"
#include "recordpictures.h"

namespace hostkit {

namespace {

struct LeaderRecord {
    LeaderLine line;
    std::wstring style;
    AcGeVector3d horizontal = AcGeVector3d::kXAxis;
    double textWidth = 0.0;
    int contents = 3; ///< 0: a text
    bool hasArrow = true;
    bool isTextAhead = true; ///< in the horizontal direction from the end of the line
};

LeaderRecord readLeader(const AcDbOpaqueEntity& entity) {
    LeaderRecord leader;
    for (RecordCursor group(entity); group.next();) {
        switch (group.code()) {
        case 3:
            leader.style = group.text();
            break;
        case 10:
            leader.line.points.push_back(group.point());
            break;
        case 41:
            leader.textWidth = group.real();
            break;
        case 71:
            leader.hasArrow = group.integer(1) != 0;
            break;
        case 72:
            leader.line.isCurved = group.integer() != 0;
            break;
        case 73:
            leader.contents = static_cast<int>(group.integer(leader.contents));
            break;
        case 74:
            leader.isTextAhead = group.integer() == 0;
            break;
        case 210:
            if (const AcGeVector3d normal = group.vector(); !normal.isZeroLength())
                leader.line.normal = normal.normal();
            break;
        case 211:
            leader.horizontal = group.vector();
            break;
        }
    }
    return leader;
}

} // namespace

void drawLeader(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    LeaderRecord leader = readLeader(entity);
    LeaderLine& line = leader.line;
    if (line.points.size() < 2) return;
    const DimensionVariables style = styleOfRecord(entity, leader.style);
    const double arrowSize = style.dimasz * style.scale();
    if (leader.hasArrow && line.points[0].distanceTo(line.points[1]) >= 2.0 * arrowSize) {
        line.arrowSize = arrowSize;
        line.arrow = blockToShow(style.dimldrblk);
    }
    // A text that stands above the line is underlined by it.
    constexpr int textContents = 0;
    if (leader.contents == textContents && style.dimtad != 0 && leader.textWidth > 0.0) {
        const double length = leader.textWidth + style.dimgap * style.scale();
        line.points.push_back(line.points.back() +
                              leader.horizontal.normal() * (leader.isTextAhead ? length : -length));
    }
    if (style.dimclrd != 0) draw.subEntityTraits().setColor(static_cast<Adesk::UInt16>(style.dimclrd));
    drawLeaderLine(draw, line);
}

} // namespace hostkit

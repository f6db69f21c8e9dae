#include "embeddedparagraph.h"

#include "dbaccess.h"
#include "dbmtext.h"
#include "fieldtable.h"
#include "groupblock.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr short firstLengthCode = 40;
constexpr short lastLengthCode = 46;

void copyInto(AcDbDxfGroup& group, const AcGeVector3d& vector) {
    group.point[0] = vector.x;
    group.point[1] = vector.y;
    group.point[2] = vector.z;
}

} // namespace

// In a paragraph's own record the direction has the code 10 and the place 11; in an attribute's they are the
// other way round, and the place stands before the mark as well. The factor of an attribute's lines (44) is
// no length.
void moveEmbeddedParagraph(AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    GroupBlock* const block = DatabaseAccess::embedded(entity);
    if (!block) return;
    const bool isParagraph = entity.isKindOf(AcDbMText::desc());
    bool isBehindMark = false;
    const double scale = matrix.scale();
    GroupBlock moved;
    GroupWalker walker(*block);
    AcDbDxfGroup group;
    while (walker.next(group)) {
        isBehindMark = isBehindMark || group.code == embeddedObjectCode;
        const short placeCode = isParagraph || !isBehindMark ? 11 : 10;
        const short directionCode = isParagraph ? 10 : 11;
        if (group.code == placeCode) {
            const AcGePoint3d place = matrix * AcGePoint3d(group.point[0], group.point[1], group.point[2]);
            copyInto(group, place.asVector());
        } else if (group.code == directionCode) {
            const AcGeVector3d direction(group.point[0], group.point[1], group.point[2]);
            const AcGeVector3d turned = matrix * direction;
            if (turned.length() > 0.0 && !(turned - direction).isZeroLength())
                copyInto(group, turned * (direction.length() / turned.length()));
        } else if (group.code >= firstLengthCode && group.code <= lastLengthCode &&
                   (isParagraph || group.code != 44)) {
            group.real *= scale;
        }
        moved.append(group);
    }
    *block = std::move(moved);
}

} // namespace hostkit

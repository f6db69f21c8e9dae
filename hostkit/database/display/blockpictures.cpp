// Pictures of what a block shows: tables, and dimensions of kinds without a class.

#include "acgi.h"
#include "blockdrawing.h"
#include "dbaccess.h"
#include "dbblocktable.h"
#include "dbopaque.h"
#include "entitycoordinates.h"
#include "recordcursor.h"
#include "recordpictures.h"

#include <set>

namespace hostkit {

namespace {

struct ShownBlockRecord {
    std::wstring name;
    AcDbObjectId byHandle;
    AcGePoint3d place; ///< in the coordinates of the normal
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    AcGeVector3d horizontal = AcGeVector3d::kXAxis;
};

// The first group of each code: cells of tables have the same ones.
ShownBlockRecord readShownBlock(const AcDbOpaqueEntity& entity, int placeCode, int handleCode) {
    constexpr int nameCode = 2, horizontalCode = 11, normalCode = 210;
    ShownBlockRecord shown;
    std::set<int> met;
    for (RecordCursor group(entity); group.next();) {
        const int code = group.code();
        const bool isWanted = code == nameCode || code == placeCode || code == handleCode ||
                              code == horizontalCode || code == normalCode;
        if (!isWanted || !met.insert(code).second) continue;
        if (code == nameCode) shown.name = group.text();
        if (code == placeCode) shown.place = group.point();
        if (code == handleCode) shown.byHandle = group.id();
        if (code == horizontalCode) shown.horizontal = group.vector();
        if (code != normalCode) continue;
        if (const AcGeVector3d normal = group.vector(); !normal.isZeroLength())
            shown.normal = normal.normal();
    }
    return shown;
}

AcDbObjectId blockOf(const AcDbOpaqueEntity& entity, const ShownBlockRecord& shown) {
    const AcDbDatabase* const database = entity.database();
    const auto* blocks =
        database ? DatabaseAccess::objectOf<AcDbBlockTable>(database->blockTableId()) : nullptr;
    const AcDbObjectId named = blocks ? blocks->find(shown.name) : AcDbObjectId();
    return blockToShow(named.isNull() ? shown.byHandle : named);
}

} // namespace

void drawTable(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    constexpr int placeCode = 10, blockCode = 343;
    const ShownBlockRecord shown = readShownBlock(entity, placeCode, blockCode);
    const AcGeVector3d x = shown.horizontal.normal();
    const AcGeVector3d y = shown.normal.crossProduct(x).normal();
    AcGeMatrix3d place;
    if (!x.isZeroLength() && !y.isZeroLength())
        place.setToAlignCoordSys(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                 AcGeVector3d::kZAxis, toWorld(shown.normal, shown.place), x, y,
                                 x.crossProduct(y));
    drawBlock(draw, blockOf(entity, shown), place);
}

// The block stands in the world, moved by a point that copies have.
void drawDimensionBlock(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    constexpr int placeCode = 12, noCode = -1;
    const ShownBlockRecord shown = readShownBlock(entity, placeCode, noCode);
    drawBlock(draw, blockOf(entity, shown),
              AcGeMatrix3d::translation(toWorld(shown.normal, shown.place).asVector()));
}

} // namespace hostkit

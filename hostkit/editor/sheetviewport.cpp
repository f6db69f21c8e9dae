#include "sheetviewport.h"

#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbviewport.h"

#include <cmath>

namespace hostkit {
namespace {

bool isUsable(const SheetViewport& viewport) {
    const CurrentView& view = viewport.view;
    const double sum = viewport.place.x + viewport.place.y + viewport.place.z + view.middle[0] +
                       view.middle[1] + view.target.x + view.target.y + view.target.z + view.twist +
                       view.direction.length() + view.lensLength + view.frontClip + view.backClip;
    return std::isfinite(sum) && viewport.height > 0.0 && view.height > 0.0 &&
           std::isfinite(viewport.scale()) && viewport.scale() > 0.0 && view.direction.length() > 0.0;
}

} // namespace

SheetViewport sheetViewportOf(const AcDbViewport& viewport) {
    constexpr Adesk::Int32 modeBits = 0x1F;
    SheetViewport result;
    result.place = viewport.centerPoint();
    result.height = viewport.height();
    result.view.target = viewport.viewTarget();
    result.view.direction = viewport.viewDirection();
    result.view.middle[0] = viewport.viewCenter().x;
    result.view.middle[1] = viewport.viewCenter().y;
    result.view.height = viewport.viewHeight();
    result.view.lensLength = viewport.lensLength();
    result.view.frontClip = viewport.frontClipDistance();
    result.view.backClip = viewport.backClipDistance();
    result.view.twist = viewport.twistAngle();
    result.view.mode = viewport.flags() & modeBits;
    return result;
}

bool findSheetViewport(const AcDbDatabase& database, int number, SheetViewport& viewport) {
    const auto* sheet = DatabaseAccess::objectOf<AcDbBlockTableRecord>(database.paperSpaceId());
    for (const AcDbObjectId id : sheet ? sheet->entities() : std::vector<AcDbObjectId>()) {
        const auto* entity = DatabaseAccess::objectOf<AcDbViewport>(id);
        if (!entity || entity->isErased() || entity->number() != number) continue;
        const SheetViewport found = sheetViewportOf(*entity);
        if (!isUsable(found)) continue;
        viewport = found;
        return true;
    }
    return false;
}

} // namespace hostkit

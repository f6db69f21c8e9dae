#include "currentview.h"

#include "acdocman.h"
#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbsymtb.h"
#include "headervariables.h"
#include "sheetviewport.h"
#include "useraxes.h"

#include <cmath>

namespace hostkit {
namespace {

CurrentView planOf(const AcGePoint3d& low, const AcGePoint3d& high) {
    CurrentView view;
    if (high.x <= low.x || high.y <= low.y) return view;
    view.middle[0] = (low.x + high.x) / 2.0;
    view.middle[1] = (low.y + high.y) / 2.0;
    view.height = high.y - low.y;
    return view;
}

CurrentView viewOf(const AcDbViewportTableRecord& record) {
    CurrentView view;
    view.target = record.target();
    const AcGeVector3d direction = record.viewDirection();
    if (direction.length() > 0.0 && std::isfinite(direction.length())) view.direction = direction;
    view.middle[0] = record.centerPoint().x;
    view.middle[1] = record.centerPoint().y;
    view.height = record.height();
    view.lensLength = record.lensLength();
    view.frontClip = record.frontClipDistance();
    view.backClip = record.backClipDistance();
    view.twist = record.viewTwist();
    view.mode = record.viewMode();
    return view;
}

} // namespace

bool isModelCurrent(const AcApDocument& document) {
    return document.database()->tilemode() || document.sheetViewport() > 1;
}

CurrentView currentView(const AcApDocument& document) {
    const AcDbDatabase& database = *document.database();
    if (!database.tilemode()) {
        SheetViewport viewport;
        if (isModelCurrent(document) && findSheetViewport(database, document.sheetViewport(), viewport))
            return viewport.view;
        return planOf(database.header().point(L"PLIMMIN"), database.header().point(L"PLIMMAX"));
    }
    const auto* table = DatabaseAccess::objectOf<AcDbViewportTable>(database.viewportTableId());
    AcDbObjectId id;
    if (table && table->getAt(L"*Active", id) == Acad::eOk)
        if (const auto* record = DatabaseAccess::objectOf<AcDbViewportTableRecord>(id))
            return viewOf(*record);
    return planOf(database.limmin(), database.limmax());
}

AcGeMatrix3d ucsToWorld(const AcApDocument& document) {
    const UserAxes axes = userAxes(document.database()->header(), !isModelCurrent(document));
    AcGeMatrix3d matrix;
    return matrix.setCoordSystem(axes.origin, axes.x, axes.y, axes.x.crossProduct(axes.y));
}

bool displayToSheet(const AcApDocument& document, AcGeMatrix3d& matrix) {
    const AcDbDatabase& database = *document.database();
    if (database.tilemode()) return false;
    if (!isModelCurrent(document)) {
        matrix.setToIdentity();
        return true;
    }
    SheetViewport viewport;
    if (!findSheetViewport(database, document.sheetViewport(), viewport)) return false;
    const double scale = viewport.scale();
    const AcGePoint3d origin(viewport.place.x - scale * viewport.view.middle[0],
                             viewport.place.y - scale * viewport.view.middle[1], 0.0);
    matrix.setCoordSystem(origin, AcGeVector3d(scale, 0.0, 0.0), AcGeVector3d(0.0, scale, 0.0),
                          AcGeVector3d(0.0, 0.0, scale));
    return true;
}

AcGeVector3d intoSystem(const AcGeMatrix3d& system, const AcGeVector3d& vector) {
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
    system.getCoordSystem(origin, x, y, z);
    return {vector.dotProduct(x) / x.dotProduct(x), vector.dotProduct(y) / y.dotProduct(y),
            vector.dotProduct(z) / z.dotProduct(z)};
}

AcGePoint3d intoSystem(const AcGeMatrix3d& system, const AcGePoint3d& point) {
    const AcGeVector3d offset = point.asVector() - system.translation();
    const AcGeVector3d local = intoSystem(system, offset);
    return {local.x, local.y, local.z};
}

AcGeMatrix3d displayToWorld(const CurrentView& view) {
    return AcGeMatrix3d::translation(view.target.asVector()) * AcGeMatrix3d::planeToWorld(view.direction) *
           AcGeMatrix3d::rotation(-view.twist, AcGeVector3d::kZAxis);
}

} // namespace hostkit

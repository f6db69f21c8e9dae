#include "currentview.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbsymtb.h"
#include "headervariables.h"

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

CurrentView currentView(const AcDbDatabase& database) {
    const HeaderVariables& header = database.header();
    if (!database.tilemode()) return planOf(header.point(L"PLIMMIN"), header.point(L"PLIMMAX"));
    CurrentView view = planOf(database.limmin(), database.limmax());
    const auto* table = DatabaseAccess::objectOf<AcDbViewportTable>(database.viewportTableId());
    AcDbObjectId id;
    if (!table || table->getAt(L"*Active", id) != Acad::eOk) return view;
    const auto* record = DatabaseAccess::objectOf<AcDbViewportTableRecord>(id);
    if (!record) return view;
    return viewOf(*record);
}

AcGeMatrix3d ucsToWorld(const AcDbDatabase& database) {
    const bool inModel = database.tilemode();
    const AcGePoint3d origin = inModel ? database.ucsorg() : database.pucsorg();
    const AcGeVector3d x = inModel ? database.ucsxdir() : database.pucsxdir();
    const AcGeVector3d y = inModel ? database.ucsydir() : database.pucsydir();
    AcGeMatrix3d matrix;
    return matrix.setCoordSystem(origin, x, y, x.crossProduct(y));
}

AcGeMatrix3d displayToWorld(const CurrentView& view) {
    return AcGeMatrix3d::translation(view.target.asVector()) * AcGeMatrix3d::planeToWorld(view.direction) *
           AcGeMatrix3d::rotation(-view.twist, AcGeVector3d::kZAxis);
}

} // namespace hostkit

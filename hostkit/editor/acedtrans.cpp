#include "aced.h"

#include "acdbads.h"
#include "currentview.h"
#include "dbaccess.h"
#include "dbent.h"
#include "host.h"

#include <cmath>

namespace {

using hostkit::intoSystem;

enum System { world = 0, user = 1, display = 2, sheetDisplay = 3 };

bool isCode(const resbuf& record, int code) {
    return record.restype == RTSHORT && record.resval.rint == code;
}

bool systemOfNormal(const ads_point coordinates, AcGeMatrix3d& system) {
    const AcGeVector3d normal(coordinates[0], coordinates[1], coordinates[2]);
    if (!std::isfinite(normal.length()) || normal.length() == 0.0) return false;
    system = AcGeMatrix3d::planeToWorld(normal);
    return true;
}

bool systemOfEntity(const ads_name name, AcGeMatrix3d& system) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != Acad::eOk || id.isErased()) return false;
    const auto* entity = AcDbEntity::cast(hostkit::DatabaseAccess::objectOf<AcDbObject>(id));
    if (!entity) return false;
    entity->getEcs(system);
    return true;
}

// The system's matrix to the world; the sheet's display has none of its own.
bool systemOf(const AcApDocument& document, const resbuf& record, AcGeMatrix3d& system) {
    switch (record.restype) {
    case RT3DPOINT:
        return systemOfNormal(record.resval.rpoint, system);
    case RTENAME:
        return systemOfEntity(record.resval.rlname, system);
    case RTSHORT:
        break;
    default:
        return false;
    }
    switch (record.resval.rint) {
    case world:
        system.setToIdentity();
        return true;
    case user:
        system = hostkit::ucsToWorld(document);
        return true;
    case display:
        system = hostkit::displayToWorld(hostkit::currentView(document));
        return true;
    default:
        return false;
    }
}

// Both by their matrices into one common system; false where they have none.
bool systemsOf(const AcApDocument& document, const resbuf& from, const resbuf& to, AcGeMatrix3d& source,
               AcGeMatrix3d& target) {
    const bool fromSheet = isCode(from, sheetDisplay), toSheet = isCode(to, sheetDisplay);
    if (!fromSheet && !toSheet) return systemOf(document, from, source) && systemOf(document, to, target);
    if (!isCode(fromSheet ? to : from, display)) return false;
    return hostkit::displayToSheet(document, fromSheet ? target : source);
}

void give(double x, double y, double z, ads_point result) {
    result[0] = x;
    result[1] = y;
    result[2] = z;
}

} // namespace

int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int displacement,
              ads_point result) {
    hostkit::Host* host = hostkit::Host::current();
    const AcApDocument* document = host ? host->documents().curDocument() : nullptr;
    if (!document || !point || !from || !to || !result) return RTERROR;
    AcGeMatrix3d source, target;
    if (!systemsOf(*document, *from, *to, source, target)) return RTERROR;
    if (displacement != 0) {
        const AcGeVector3d moved = intoSystem(target, source * AcGeVector3d(point[0], point[1], point[2]));
        give(moved.x, moved.y, moved.z, result);
        return RTNORM;
    }
    const AcGePoint3d moved = intoSystem(target, source * AcGePoint3d(point[0], point[1], point[2]));
    give(moved.x, moved.y, moved.z, result);
    return RTNORM;
}

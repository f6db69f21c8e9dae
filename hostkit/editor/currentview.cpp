#include "currentview.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbsymtb.h"
#include "headervariables.h"

#include <cmath>
#include <numbers>

namespace hostkit {
namespace {

// Shorter axes are no directions: the header keeps unit vectors.
constexpr double shortestAxis = 1e-9;

bool isUsable(const AcGeVector3d& axis) {
    return std::isfinite(axis.x) && std::isfinite(axis.y) && std::isfinite(axis.z) &&
           axis.length() > shortestAxis;
}

void takeGroup(CurrentView& view, const AcDbDxfGroup& group) {
    const auto setPair = [&](double* pair) {
        pair[0] = group.point[0];
        pair[1] = group.point[1];
    };
    switch (group.code) {
    case 12:
        return setPair(view.middle);
    case 16:
        view.direction.set(group.point[0], group.point[1], group.point[2]);
        return;
    case 17:
        view.target.set(group.point[0], group.point[1], group.point[2]);
        return;
    case 40:
    case 45:
        view.height = group.real;
        return; // the older form has it in 40, the newer one in 45
    case 42:
        view.lensLength = group.real;
        return;
    case 43:
        view.frontClip = group.real;
        return;
    case 44:
        view.backClip = group.real;
        return;
    case 51:
        view.twist = group.real * std::numbers::pi / 180.0;
        return;
    case 71:
        view.mode = static_cast<int>(group.integer);
        return;
    default:
        return;
    }
}

CurrentView planOf(const AcGePoint3d& low, const AcGePoint3d& high) {
    CurrentView view;
    if (high.x <= low.x || high.y <= low.y) return view;
    view.middle[0] = (low.x + high.x) / 2.0;
    view.middle[1] = (low.y + high.y) / 2.0;
    view.height = high.y - low.y;
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
    GroupWalker walker(record->groups());
    for (AcDbDxfGroup group; walker.next(group);) takeGroup(view, group);
    if (!isUsable(view.direction)) view.direction.set(0.0, 0.0, 1.0);
    return view;
}

AcGeMatrix3d ucsToWorld(const AcDbDatabase& database) {
    const HeaderVariables& header = database.header();
    const std::wstring front = database.tilemode() ? L"UCS" : L"PUCS";
    const AcGeVector3d x = header.point(front + L"XDIR").asVector().normal();
    const AcGeVector3d y = header.point(front + L"YDIR").asVector().normal();
    const AcGeVector3d z = x.crossProduct(y);
    AcGeMatrix3d matrix;
    if (!isUsable(x) || !isUsable(y) || !isUsable(z)) return matrix;
    const AcGeVector3d up = z.normal();
    return matrix.setCoordSystem(header.point(front + L"ORG"), x, up.crossProduct(x), up);
}

AcGeMatrix3d displayToWorld(const CurrentView& view) {
    return AcGeMatrix3d::translation(view.target.asVector()) * AcGeMatrix3d::planeToWorld(view.direction) *
           AcGeMatrix3d::rotation(-view.twist, AcGeVector3d::kZAxis);
}

} // namespace hostkit

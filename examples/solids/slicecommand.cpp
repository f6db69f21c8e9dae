#include "solidcommands.h"

#include "acdocman.h"
#include "aced.h"
#include "bodymeasures.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "dbpolyline.h"
#include "modulecommand.h"
#include "namedsolids.h"
#include "reporttext.h"
#include "vexoamodelertools.h"
#include "vexolayertools.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned short sliceColor = 1;     // red, as cuts are drawn
constexpr double sameDirection = 1.0 - 1e-9; // of two unit normals: their cosine
constexpr double closeness = 1e3;            // of a cut's face to its plane, in the modeller's tolerance

struct Request {
    SolidChoice choice;
    AcGePoint3d through;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    std::wstring layer = L"SLICES";
};

bool refuse(const wchar_t* reason) {
    hostkit::failCommand(Acad::eInvalidInput, reason);
    return false;
}

bool readOption(const CString& option, Request& request) {
    if (option == L"NAme") return readSolidName(request.choice);
    if (option == L"NOrmal") {
        ads_point point;
        if (acedGetPoint(nullptr, L"Normal as a vector <0,0,1>: ", point) != RTNORM)
            return refuse(L"the normal is a vector: x,y,z");
        request.normal.set(point[0], point[1], point[2]);
        const bool isDirection = std::isfinite(request.normal.length()) && !request.normal.isZeroLength();
        return isDirection || refuse(L"the normal has no length");
    }
    CString name;
    if (acedGetString(0, L"Layer of the contours <SLICES>: ", name) != RTNORM) return false;
    if (!name.IsEmpty()) request.layer = name.GetString();
    return true;
}

bool readRequest(Request& request) {
    ads_point point;
    if (acedGetPoint(nullptr, L"Point of the plane: ", point) != RTNORM)
        return refuse(L"the plane goes through a point: x,y,z");
    request.through.set(point[0], point[1], point[2]);
    for (;;) {
        CString option;
        acedInitGet(0, L"NAme NOrmal LAyer");
        const int answer = acedGetKword(L"Option [NAme/NOrmal/LAyer] <done>: ", option);
        if (answer == RTNONE) return true;
        if (answer == RTREJ) return refuse(L"the options are NAME, NORMAL and LAYER");
        if (answer != RTNORM || !readOption(option, request)) return false;
    }
}

struct Cut {
    std::vector<std::vector<AcGePoint3d>> contours;
    double area = 0.0;
};

/// The faces with which a cut closes what it leaves behind the plane. False where the modeller cannot cut.
bool cutBody(AModeler::Body body, const AModeler::Plane& plane, Cut& cut) {
    if (!VEXOAModelerTools::section(&body, plane)) return false;
    std::vector<AModeler::Face*> faces;
    VEXOAModelerTools::getAllFacesContainingPoint(&body, plane.project(body.centerOfGravity()), faces,
                                                  closeness * AModeler::gEpsAbs);
    for (const AModeler::Face* face : faces) {
        if (face->plane().normal().dotProduct(plane.normal()) < sameDirection) continue;
        cut.area += areaOf(*face);
        for (std::vector<AcGePoint3d>& loop : loopsOf(*face)) cut.contours.push_back(std::move(loop));
    }
    return true;
}

/// Closed, in the plane of its points.
std::unique_ptr<AcDbPolyline> polylineOf(const std::vector<AcGePoint3d>& contour,
                                         const AcGeVector3d& normal) {
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned>(contour.size()));
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
    double elevation = 0.0;
    for (const AcGePoint3d& point : contour) {
        const AcGePoint3d local = toPlane * point;
        elevation += local.z / static_cast<double>(contour.size());
        polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(local.x, local.y));
    }
    polyline->setNormal(normal);
    polyline->setElevation(elevation);
    polyline->setClosed(true);
    return polyline;
}

bool drawCut(AcDbDatabase& database, const Request& request, const Cut& cut) {
    for (const std::vector<AcGePoint3d>& contour : cut.contours) {
        AcDbObjectId id;
        const Acad::ErrorStatus status =
            addToModel(database, polylineOf(contour, request.normal), request.layer, sliceColor, L"", id);
        if (status == Acad::eOk) continue;
        hostkit::failCommand(status, L"the contours cannot be drawn");
        return false;
    }
    return true;
}

} // namespace

void sliceCommand() {
    CVxLogEntry entry(L"SOLIDS::slice");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    AcDbDatabase& database = *document->database();
    Request request;
    if (!readRequest(request) || !findSolids(database, request.choice)) return;
    request.normal.normalize();
    const AModeler::Plane plane(request.through, request.normal);
    const int decimals = std::clamp<int>(database.luprec(), 0, 8);
    for (const NamedSolid& solid : request.choice.solids) {
        Cut cut;
        if (!cutBody(solid.body, plane, cut)) {
            const std::wstring reason = solid.name + L" cannot be cut by that plane";
            return hostkit::failCommand(Acad::eInvalidInput, reason);
        }
        if (!drawCut(database, request, cut)) return;
        acutPrintf(L"%s: %d contours, area %s\n", solid.name.c_str(), static_cast<int>(cut.contours.size()),
                   fixedNumber(cut.area, decimals).c_str());
    }
    tellFaults(request.choice);
}

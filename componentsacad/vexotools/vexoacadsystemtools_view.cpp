#include "vexoacadsystemtools.h"

#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "dbviewtablerecord.h"
#include "vexoacadsystemtools_internal.h"
#include "vexosmartopen.h"

#include <optional>
#include <unordered_set>
#include <vector>

using namespace vexo;

namespace {

// Coordinate systems of acedTrans.
constexpr short worldSystem = 0;
constexpr short userSystem = 1;
constexpr short displaySystem = 2;

constexpr int perspectiveBit = 1;
constexpr int frontClipBit = 2;
constexpr int backClipBit = 4;
constexpr int frontClipNotAtEyeBit = 16;

// A variable's point in the user coordinate system, taken to another one.
std::optional<AcGePoint3d> pointOfVariable(const wchar_t* name, short system, bool isDirection) {
    const Variable variable(name);
    if (!variable.has(RT3DPOINT)) return std::nullopt;
    resbuf from{}, to{};
    from.restype = to.restype = RTSHORT;
    from.resval.rint = userSystem;
    to.resval.rint = system;
    ads_point result;
    if (acedTrans(variable.value().rpoint, &from, &to, isDirection ? 1 : 0, result) != RTNORM)
        return std::nullopt;
    return AcGePoint3d(result[0], result[1], result[2]);
}

void setClipping(AcDbViewTableRecord& view, int mode) {
    view.setPerspectiveEnabled((mode & perspectiveBit) != 0);
    view.setFrontClipEnabled((mode & frontClipBit) != 0);
    view.setBackClipEnabled((mode & backClipBit) != 0);
    view.setFrontClipAtEye((mode & frontClipNotAtEyeBit) == 0);
}

void appendReactors(const AcDbEntity& entity, std::vector<AcDbObjectId>& ids) {
    const AcArray<void*>* const reactors = entity.reactors();
    if (!reactors) return;
    for (int i = 0; i < reactors->length(); ++i)
        if (acdbIsPersistentReactor(reactors->at(i)))
            ids.push_back(acdbPersistentReactorObjectId(reactors->at(i)));
}

// A drawing may have long chains of reactors, and rings: no recursion, and each one once.
void setReactorsVisibility(AcDb::Visibility visibility, const AcDbEntity& entity) {
    std::unordered_set<AcDbObjectId> seen{entity.objectId()};
    std::vector<AcDbObjectId> waiting;
    appendReactors(entity, waiting);
    while (!waiting.empty()) {
        const AcDbObjectId id = waiting.back();
        waiting.pop_back();
        if (!seen.insert(id).second) continue;
        const VEXOSmartOpen<AcDbEntity> reactor(id, AcDb::kForWrite, false);
        if (reactor.status() != Acad::eOk || reactor->setVisibility(visibility) != Acad::eOk) continue;
        appendReactors(*reactor, waiting);
    }
}

} // namespace

bool VEXOAcadSystemTools::isModelSpace() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isModelSpace");
    return getSysVar(L"TILEMODE") == 1;
}

bool VEXOAcadSystemTools::isPaperSpace() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isPaperSpace");
    return getSysVar(L"TILEMODE") == 0 && getSysVar(L"CVPORT") == 1;
}

bool VEXOAcadSystemTools::isFloatingSpace() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isFloatingSpace");
    return getSysVar(L"TILEMODE") == 0 && getSysVar(L"CVPORT") > 1;
}

void VEXOAcadSystemTools::setModelSpace() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setModelSpace");
    setSysVar(L"TILEMODE", 1);
}

void VEXOAcadSystemTools::setPaperSpace() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setPaperSpace");
    if (isModelSpace())
        setSysVar(L"TILEMODE", 0);
    else
        acedCommand(RTSTR, L"_PSPACE", 0);
}

void VEXOAcadSystemTools::setFloatingSpace() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setFloatingSpace");
    if (isModelSpace()) setSysVar(L"TILEMODE", 0);
    acedCommand(RTSTR, L"_MSPACE", 0);
}

AcGeVector3d VEXOAcadSystemTools::getUcsXAxis(AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getUcsXAxis");
    const AcDbDatabase* const drawing = workingDatabaseOr(database);
    return drawing ? drawing->ucsxdir() : AcGeVector3d::kXAxis;
}

AcGeVector3d VEXOAcadSystemTools::getUcsYAxis(AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getUcsYAxis");
    const AcDbDatabase* const drawing = workingDatabaseOr(database);
    return drawing ? drawing->ucsydir() : AcGeVector3d::kYAxis;
}

AcGeVector3d VEXOAcadSystemTools::getUcsZAxis(AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getUcsZAxis");
    const AcDbDatabase* const drawing = workingDatabaseOr(database);
    return drawing ? drawing->ucsxdir().crossProduct(drawing->ucsydir()).normal() : AcGeVector3d::kZAxis;
}

AcGePlane VEXOAcadSystemTools::getUcsPlane(AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getUcsPlane");
    const AcDbDatabase* const drawing = workingDatabaseOr(database);
    return drawing ? AcGePlane(drawing->ucsorg(), drawing->ucsxdir(), drawing->ucsydir())
                   : AcGePlane::kXYPlane();
}

void VEXOAcadSystemTools::GetCurrentView(AcDbViewTableRecord& view) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::GetCurrentView");
    if (const Variable mode(L"VIEWMODE"); mode.has(RTSHORT)) setClipping(view, mode.value().rint);
    if (const Variable distance(L"BACKZ"); distance.has(RTREAL))
        view.setBackClipDistance(distance.value().rreal);
    if (const auto middle = pointOfVariable(L"VIEWCTR", displaySystem, false))
        view.setCenterPoint(AcGePoint2d(middle->x, middle->y));
    if (const Variable distance(L"FRONTZ"); distance.has(RTREAL))
        view.setFrontClipDistance(distance.value().rreal);
    if (const Variable length(L"LENSLENGTH"); length.has(RTREAL)) view.setLensLength(length.value().rreal);
    if (const auto target = pointOfVariable(L"TARGET", worldSystem, false)) view.setTarget(*target);
    if (const auto direction = pointOfVariable(L"VIEWDIR", worldSystem, true))
        view.setViewDirection(direction->asVector());
    if (const Variable height(L"VIEWSIZE"); height.has(RTREAL)) view.setHeight(height.value().rreal);
}

bool VEXOAcadSystemTools::IsEditingXref() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::IsEditingXref");
    const Variable name(L"REFEDITNAME");
    return name.text() && *name.text() != L'\0';
}

Acad::ErrorStatus VEXOAcadSystemTools::setVisibility(AcDb::Visibility visibility, AcDbEntity* entity,
                                                     int recurse) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setVisibility");
    if (!entity) return Acad::eNullEntityPointer;
    if (!entity->isWriteEnabled()) return Acad::eNotOpenForWrite;
    const Acad::ErrorStatus status = entity->setVisibility(visibility);
    if (status == Acad::eOk && recurse != 0) setReactorsVisibility(visibility, *entity);
    return status;
}

Acad::ErrorStatus VEXOAcadSystemTools::setVisibility(AcDb::Visibility visibility, AcDbObjectId id,
                                                     int recurse) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setVisibility");
    const VEXOSmartOpen<AcDbEntity> opened(id, AcDb::kForWrite, false);
    if (opened.status() != Acad::eOk) return opened.status();
    return setVisibility(visibility, opened.object(), recurse);
}

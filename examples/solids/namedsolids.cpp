#include "namedsolids.h"

#include "aced.h"
#include "dbdatabase.h"
#include "dblayertablerecord.h"
#include "dbobjptr.h"
#include "dbsol3d.h"
#include "modulecommand.h"
#include "planselection.h"
#include "reporttext.h"
#include "vexoacadsystemtools.h"
#include "vexodatabasetools.h"
#include "vexolayertools.h"

#include <algorithm>

namespace {

constexpr const wchar_t* application = L"ORDANE";
constexpr const wchar_t* nameKey = L"SOLID_NAME";

bool isSameName(const std::wstring& a, const std::wstring& b) {
    return CString(a.c_str()).CompareNoCase(b.c_str()) == 0;
}

std::wstring nameOf(AcDb3dSolid& solid) {
    CString name;
    const bool isNamed =
        VEXODatabaseTools::getStringValueInEntityXData(&solid, application, nameKey, name) && !name.IsEmpty();
    return isNamed ? std::wstring(name.GetString()) : handleText(solid.handle());
}

/// Calls visit(solid) for each solid of model space; those of the list alone where there is one.
template <class F>
void forEachSolid(AcDbDatabase& database, const PlanSelection& selected, AcDb::OpenMode mode, F&& visit) {
    AcDbObjectIdArray ids;
    if (selected)
        ids = *selected;
    else
        VEXODatabaseTools::getFromModelSpace(ids, &database);
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDb3dSolid> solid(id, mode);
        if (solid.object() && solid->ownerId() == database.modelSpaceId()) visit(*solid.object());
    }
}

std::wstring layerOf(const AcDbEntity& entity) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead);
    return layer.object() ? layer->name() : L"0";
}

} // namespace

bool readSolidName(SolidChoice& choice) {
    CString name;
    if (acedGetString(0, L"Name of the solid: ", name) != RTNORM) return false;
    if (!name.IsEmpty()) {
        choice.names.emplace_back(name.GetString());
        return true;
    }
    hostkit::failCommand(Acad::eInvalidInput, L"NAME needs the name of a solid behind it");
    return false;
}

bool findSolids(AcDbDatabase& database, SolidChoice& choice) {
    std::vector<bool> isFound(choice.names.size(), false);
    const PlanSelection selected = choice.names.empty() ? impliedPlan() : PlanSelection();
    forEachSolid(database, selected, AcDb::kForRead, [&](AcDb3dSolid& solid) {
        NamedSolid found{nameOf(solid), handleText(solid.handle()), layerOf(solid), {}};
        const auto wanted =
            std::find_if(choice.names.begin(), choice.names.end(),
                         [&](const std::wstring& name) { return isSameName(name, found.name); });
        if (!choice.names.empty() && wanted == choice.names.end()) return;
        if (wanted != choice.names.end())
            isFound[static_cast<std::size_t>(wanted - choice.names.begin())] = true;
        if (solid.getBody(found.body) == Acad::eOk)
            choice.solids.push_back(std::move(found));
        else
            choice.faults.push_back(
                found.name + L": " +
                (solid.isNull() ? L"holds no body" : L"its body is not made of known faces"));
    });
    const auto missing = std::find(isFound.begin(), isFound.end(), false);
    if (missing != isFound.end()) {
        const std::wstring& name = choice.names[static_cast<std::size_t>(missing - isFound.begin())];
        hostkit::failCommand(Acad::eKeyNotFound, L"there is no solid \"" + name + L"\"; BODIES lists them");
        return false;
    }
    if (!choice.solids.empty()) return true;
    tellFaults(choice);
    hostkit::failCommand(Acad::eInvalidInput, selected
                                                  ? L"no solid was selected"
                                                  : L"the drawing has no solid; RAISE makes one of a plan");
    return false;
}

void tellFaults(const SolidChoice& choice) {
    for (const std::wstring& fault : choice.faults) acutPrintf(L"Left out: %s\n", fault.c_str());
}

Acad::ErrorStatus eraseSolid(AcDbDatabase& database, const std::wstring& name) {
    Acad::ErrorStatus status = Acad::eOk;
    forEachSolid(database, {}, AcDb::kForWrite, [&](AcDb3dSolid& solid) {
        if (!isSameName(nameOf(solid), name)) return;
        const Acad::ErrorStatus erased = solid.erase();
        if (status == Acad::eOk) status = erased;
    });
    return status;
}

Acad::ErrorStatus addToModel(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity,
                             const std::wstring& layer, unsigned short layerColor, const std::wstring& name,
                             AcDbObjectId& id) {
    AcDbObjectId layerId;
    if (!VEXOLayerTools::addLayer(layer.c_str(), layerId, &database, 1, 0, layerColor))
        return Acad::eInvalidInput;
    entity->setDatabaseDefaults(&database);
    entity->setColorIndex(256);
    Acad::ErrorStatus status = entity->setLayer(layerId);
    if (status != Acad::eOk) return status;
    if (VEXODatabaseTools::appendEntity(entity.get(), L"*Model_Space", id, &database) != 1)
        return Acad::eInvalidInput;
    AcDbEntity* const added = entity.release(); // the drawing's from here on
    const bool isNamed =
        name.empty() ||
        (VEXOAcadSystemTools::RegisterXDataFor(application) == Acad::eOk &&
         VEXODatabaseTools::setStringValueInEntityXData(added, application, nameKey, name.c_str()));
    if (!isNamed) (void)added->erase();
    status = added->close();
    return isNamed ? status : Acad::eInvalidInput;
}

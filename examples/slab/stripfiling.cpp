#include "stripfiling.h"

#include "adsdef.h"
#include "dbdatabase.h"
#include "dbdictionary.h"
#include "dbent.h"
#include "dblayertablerecord.h"
#include "dbobjptr.h"
#include "dbxrecrd.h"
#include "reporttext.h"
#include "tchar.h"
#include "vexoacadsystemtools.h"
#include "vexodatabasetools.h"

#include <memory>

namespace {

constexpr const wchar_t* application = L"ORDANE";
constexpr const wchar_t* numberKey = L"SLABSTRIP";
constexpr const wchar_t* areaKey = L"SLABSTRIP_AREA";
constexpr const wchar_t* runDictionary = L"VEXO_SLABSTRIPS";
constexpr short layerCode = 1;
constexpr short referenceCode = 330;

using Records = std::unique_ptr<resbuf, decltype(&acutRelRb)>;

bool isMarked(AcDbEntity& entity) {
    long number = 0;
    return VEXODatabaseTools::getLongValueInEntityXData(&entity, application, numberKey, number);
}

Records recordsOf(const AcDbXrecord& record) {
    resbuf* list = nullptr;
    record.rbChain(&list);
    return Records(list, &acutRelRb);
}

Records recordsOf(const std::wstring& layer, const std::vector<AcDbObjectId>& made) {
    Records list(acutBuildList(layerCode, layer.c_str(), 0), &acutRelRb);
    resbuf* last = list.get();
    for (const AcDbObjectId id : made) {
        if (!last) return Records(nullptr, &acutRelRb);
        last->rbnext = acutBuildList(referenceCode, handleText(id.handle()).c_str(), 0);
        last = last->rbnext;
    }
    return list;
}

// Drawings of the oldest form have no place for a record; there the marks alone tell what runs made.
bool hasRunRecords(const AcDbDatabase& database) { return database.originalFileVersion() != AcDb::kDHL_1009; }

struct MarkedEntity {
    AcDbObjectId id;
    std::wstring layer;
};

std::vector<MarkedEntity> markedEntities(AcDbDatabase& database) {
    std::vector<MarkedEntity> found;
    AcDbObjectIdArray ids;
    VEXODatabaseTools::getFromModelSpace(ids, &database);
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity.object() || !entity->hasXData() || !isMarked(*entity.object())) continue;
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId(), AcDb::kForRead);
        if (layer.object()) found.push_back({id, layer->name()});
    }
    return found;
}

// The run's record of that layer; null when there is none.
AcDbObjectId runRecord(AcDbDatabase& database, const std::wstring& layer) {
    AcDbObjectId id;
    if (!VEXODatabaseTools::getFromDictionary(runDictionary, layer.c_str(), id, &database))
        return AcDbObjectId();
    return id;
}

} // namespace

Acad::ErrorStatus registerMarks() { return VEXOAcadSystemTools::RegisterXDataFor(application); }

bool markStrip(AcDbEntity& entity, int number, const double* area) {
    VEXODatabaseTools::setLongValueInEntityXData(&entity, application, numberKey, number);
    if (area) VEXODatabaseTools::setDoubleValueInEntityXData(&entity, application, areaKey, *area);
    return isMarked(entity); // the setters do not say whether the drawing took it
}

std::vector<std::wstring> filedStripLayers(AcDbDatabase& database) {
    std::vector<std::wstring> layers;
    if (!hasRunRecords(database))
        for (MarkedEntity& each : markedEntities(database))
            if (layers.empty() || layers.back() != each.layer) layers.push_back(std::move(each.layer));
    AcDbObjectIdArray runs;
    VEXODatabaseTools::getFromDictionary(runDictionary, runs, &database);
    for (const AcDbObjectId id : runs) {
        const AcDbObjectPointer<AcDbXrecord> run(id, AcDb::kForRead);
        if (!run.object()) continue;
        const Records list = recordsOf(*run.object());
        if (list && list->restype == layerCode) layers.push_back(list->resval.rstring);
    }
    return layers;
}

std::vector<AcDbObjectId> filedStrips(AcDbDatabase& database, const std::wstring& layer) {
    std::vector<AcDbObjectId> found;
    if (!hasRunRecords(database))
        for (const MarkedEntity& each : markedEntities(database))
            if (_wcsicmp(each.layer.c_str(), layer.c_str()) == 0) found.push_back(each.id);
    const AcDbObjectPointer<AcDbXrecord> run(runRecord(database, layer), AcDb::kForRead);
    if (!run.object()) return found;
    const Records list = recordsOf(*run.object());
    for (const resbuf* each = list.get(); each; each = each->rbnext) {
        AcDbObjectId id;
        if (each->restype != referenceCode ||
            database.getAcDbObjectId(id, false, AcDbHandle(each->resval.rstring)) != Acad::eOk ||
            id.isErased())
            continue;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.object() && isMarked(*entity.object())) found.push_back(id);
    }
    return found;
}

Acad::ErrorStatus fileStrips(AcDbDatabase& database, const std::wstring& layer,
                             const std::vector<AcDbObjectId>& made) {
    if (!hasRunRecords(database)) return Acad::eOk;
    const Records list = recordsOf(layer, made);
    AcDbObjectId id = runRecord(database, layer);
    if (!id.isNull()) {
        const AcDbObjectPointer<AcDbXrecord> run(id, AcDb::kForWrite);
        return run.object() ? run->setFromRbChain(*list) : run.openStatus();
    }
    auto run = std::make_unique<AcDbXrecord>();
    const Acad::ErrorStatus status = run->setFromRbChain(*list);
    if (status != Acad::eOk) return status;
    AcDbDictionary* dictionary =
        VEXODatabaseTools::openDictionary(runDictionary, AcDb::kForWrite, &database, 1);
    if (!dictionary) return Acad::eLockViolation;
    VEXODatabaseTools::appendToDictionary(dictionary, run.get(), id, layer.c_str());
    dictionary->close();
    if (id.isNull()) return Acad::eInvalidKey;
    (void)run.release(); // the drawing has it, closed
    return Acad::eOk;
}

#include "aced.h"
#include "cvxlogentry.h"
#include "dbblockreference.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "layerchoice.h"
#include "layercommands.h"
#include "modulecommand.h"
#include "vexolayertools.h"
#include "vexosmartopen.h"

#include <unordered_map>

namespace {

using Showings = std::unordered_map<AcDbObjectId, int>;

/// How often model space shows each entity of a block through references, on whatever layer these are.
Showings showingsOf(const AcDbObjectIdArray& layers, AcDbDatabase& drawing) {
    AcDbObjectIdArray all, shown;
    std::vector<AcGeMatrix3d> matrices;
    VEXOLayerTools::getAllLayers(all, &drawing);
    VEXOLayerTools::recursiveGetEntitiesFromLayersEx(all, shown, layers, matrices);
    Showings showings;
    for (const AcDbObjectId id : shown) ++showings[id];
    return showings;
}

CString placeOf(const AcDbEntity& entity, const Showings& showings) {
    const VEXOSmartOpen<AcDbBlockTableRecord> block(entity.blockId(), AcDb::kForRead, false);
    const wchar_t* name = L"";
    if (block.status() != Acad::eOk || block->getName(name) != Acad::eOk) return L"nowhere";
    if (entity.blockId() == entity.database()->modelSpaceId()) return L"model space";
    if (acutWcMatch(CString(name).MakeUpper(), L"`*PAPER_SPACE*") == RTNORM) return L"a sheet";
    CString place;
    if (AcDbBlockReference::cast(&entity)) {
        place.Format(L"block \"%s\"", name); // shown are what it refers to, and not the reference
        return place;
    }
    const auto found = showings.find(entity.objectId());
    const int count = found == showings.end() ? 0 : found->second;
    place.Format(count == 0 ? L"block \"%s\", not inserted" : L"block \"%s\", inserted %d x", name, count);
    return place;
}

void print(AcDbObjectId id, const Showings& showings) {
    const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
    if (entity.status() != Acad::eOk) return;
    wchar_t handle[17];
    id.handle().getIntoAsciiBuffer(handle);
    acutPrintf(L"%-8s %-14s %-20s %s\n", handle, entity->dxfName(), nameOf(entity->layerId()),
               placeOf(*entity, showings));
}

CString reasonOfLeaving(const AcDbObjectIdArray& layers) {
    AcDbObjectIdArray locked;
    for (const AcDbObjectId layer : layers)
        if (VEXOLayerTools::isLockedLayer(layer)) locked.append(layer);
    return locked.isEmpty() ? L"they are in use" : namesOf(locked) + L" locked";
}

} // namespace

void countEntities() {
    CVxLogEntry entry(L"LAYERS::countEntities");
    AcDbDatabase* const drawing = drawingOrFail();
    AcDbObjectIdArray layers;
    if (!drawing || !readLayers(layers)) return;
    for (const AcDbObjectId layer : layers)
        acutPrintf(L"\"%s\": %s in model space and on sheets, %ld with those of blocks\n", nameOf(layer),
                   countedEntities(VEXOLayerTools::getEntityCountOnLayer(layer)),
                   VEXOLayerTools::getEntityCountOnLayerEx(layer, drawing));
}

void listEntities() {
    CVxLogEntry entry(L"LAYERS::listEntities");
    AcDbDatabase* const drawing = drawingOrFail();
    AcDbObjectIdArray layers, entities;
    if (!drawing || !readLayers(layers)) return;
    VEXOLayerTools::getEntitiesFromLayers(layers, entities);
    const Showings showings = showingsOf(layers, *drawing);
    for (const AcDbObjectId id : entities) {
        if (acedUsrBrk()) return;
        print(id, showings);
    }
    acutPrintf(L"%s\n", countedEntities(entities.length()));
}

void emptyLayers() {
    CVxLogEntry entry(L"LAYERS::emptyLayers");
    AcDbObjectIdArray layers, before, after;
    if (!readLayers(layers)) return;
    VEXOLayerTools::getEntitiesFromLayers(layers, before);
    const bool isEmptied = VEXOLayerTools::emptyLayers(layers);
    VEXOLayerTools::getEntitiesFromLayers(layers, after);
    acutPrintf(L"%s erased from %s\n", countedEntities(before.length() - after.length()),
               countedLayers(layers.length()));
    if (!isEmptied)
        hostkit::failCommand(Acad::eCannotBeErasedByCaller,
                             (countedEntities(after.length()) + L" left: " + reasonOfLeaving(layers)).view());
}

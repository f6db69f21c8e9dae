#include "vexodatabasetools.h"
#include "vexolayertools.h"
#include "vexolayertools_internal.h"
#include "vexoselectiontools.h"
#include "vexoselectiontools_internal.h"
#include "vexosmartpointer.h"

#include "aced.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "dbents.h"

#include <algorithm>
#include <span>
#include <unordered_map>

namespace vexo {
namespace {

// The entities of all blocks that lie on some layers, in the drawing's order, and what could not be looked
// at.
struct EntitiesOnLayers {
    std::unordered_map<AcDbObjectId, std::vector<AcDbObjectId>> byLayer;
    bool lacksBlocks = false;   ///< a block, or an entity's id, could not be had
    bool lacksEntities = false; ///< an entity could not be opened, and not because it was erased meanwhile
};

void lookAt(AcDbObjectId id, EntitiesOnLayers& found) {
    const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
    if (entity.status() != Acad::eOk) {
        found.lacksEntities |= entity.status() != Acad::eWasErased;
        return;
    }
    const auto wanted = found.byLayer.find(entity->layerId());
    if (wanted != found.byLayer.end()) wanted->second.push_back(id);
}

void lookAtBlock(AcDbObjectId id, EntitiesOnLayers& found) {
    AcDbBlockTableRecordIterator* opened = nullptr;
    {
        const VEXOSmartOpen<AcDbBlockTableRecord> block(id, AcDb::kForRead, false);
        if (block.status() != Acad::eOk || block->newIterator(opened) != Acad::eOk) {
            found.lacksBlocks = true;
            return;
        }
    }
    const VEXOSmartPointer<AcDbBlockTableRecordIterator> iterator(opened);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId entity;
        if (iterator->getEntityId(entity) == Acad::eOk)
            lookAt(entity, found);
        else
            found.lacksBlocks = true;
    }
}

EntitiesOnLayers walk(const AcDbDatabase* database, std::span<const AcDbObjectId> layers) {
    EntitiesOnLayers found;
    for (const AcDbObjectId layer : layers) found.byLayer[layer];
    AcDbBlockTableIterator* opened = nullptr;
    if (database) {
        const VEXOSmartOpen<AcDbBlockTable> table(database->blockTableId(), AcDb::kForRead, false);
        if (table.status() == Acad::eOk) table->newIterator(opened);
    }
    const VEXOSmartPointer<AcDbBlockTableIterator> iterator(opened);
    found.lacksBlocks = !opened;
    for (bool more = opened && !iterator->done(); more; iterator->step(), more = !iterator->done()) {
        AcDbObjectId block;
        if (iterator->getRecordId(block) == Acad::eOk)
            lookAtBlock(block, found);
        else
            found.lacksBlocks = true;
    }
    return found;
}

// Null where nothing lies on it.
const std::vector<AcDbObjectId>& on(AcDbObjectId layer, const EntitiesOnLayers& found) {
    static const std::vector<AcDbObjectId> none;
    const auto place = found.byLayer.find(layer);
    return place == found.byLayer.end() ? none : place->second;
}

bool eraseEntitiesOn(AcDbObjectId layer, const EntitiesOnLayers& found) {
    bool isDone = !found.lacksBlocks && !found.lacksEntities;
    for (const AcDbObjectId id : on(layer, found)) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
        if (entity.status() == Acad::eWasErased) continue;
        if (entity.status() != Acad::eOk || entity->upgradeOpen() != Acad::eOk)
            isDone = false;
        else
            entity->erase(true);
    }
    return isDone;
}

bool moveEntitiesOn(AcDbObjectId layer, const EntitiesOnLayers& found) {
    if (found.lacksBlocks) return false;
    const AcDbObjectId layerZero = layer.database()->layerZero();
    for (const AcDbObjectId id : on(layer, found)) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForWrite, false);
        if (entity.status() == Acad::eWasErased) continue;
        if (entity.status() != Acad::eOk) return false;
        entity->setLayer(layerZero, true);
    }
    return true;
}

bool mayDelete(AcDbObjectId layer) {
    return layer.isValid() && layer != layer.database()->layerZero() && layer != layer.database()->clayer();
}

bool deleteLayer(AcDbObjectId layer, bool eraseEntities, const EntitiesOnLayers& found) {
    VEXOLayerTools::lockLayer(layer, false);
    if (!(eraseEntities ? eraseEntitiesOn(layer, found) : moveEntitiesOn(layer, found))) return false;
    const OpenLayer record(layer, AcDb::kForWrite, false);
    return record.status() == Acad::eOk && record->erase(true) == Acad::eOk;
}

// What is erased is looked for in the working database, what is moved in the layer's own.
AcDbDatabase* databaseOf(AcDbObjectId layer, bool eraseEntities) {
    return eraseEntities ? workingDatabase() : layer.database();
}

CString layerName(AcDbObjectId layer) {
    const OpenLayer record(layer, AcDb::kForRead, false);
    return record.status() == Acad::eOk ? record->name().c_str() : L"";
}

// The name as a pattern of a filter that it alone fits.
CString literalPattern(const CString& name) {
    CString pattern;
    for (const wchar_t character : name.view()) {
        if (std::wstring_view(L"#@.*?~[],`").find(character) != std::wstring_view::npos) pattern += L'`';
        pattern += character;
    }
    return pattern;
}

// All of the layer on the drawing's sheets and in model space; RTNORM, and the set is the caller's to free.
int selectOnLayer(const CString& name, ads_name set) {
    resbuf* const filter = acutBuildList(8, literalPattern(name).GetString(), 0);
    const int result = acedSSGet(L"_X", nullptr, nullptr, filter, set);
    acutRelRb(filter);
    return result;
}

// References below one another, as they are walked.
struct BlocksOnTheWay {
    std::vector<AcDbObjectId> blocks;
    bool has(AcDbObjectId block) const {
        return std::find(blocks.begin(), blocks.end(), block) != blocks.end();
    }
};

// What is done with an entity of a block, and with a reference before its block is entered.
struct BlockVisitor {
    virtual ~BlockVisitor() = default;
    virtual void enter(const AcDbBlockReference&) {}
    virtual void take(const AcDbEntity& entity) = 0;
};

void visitBlock(const AcDbBlockReference& reference, BlockVisitor& visitor, BlocksOnTheWay& way) {
    if (way.has(reference.blockTableRecord())) return;
    way.blocks.push_back(reference.blockTableRecord());
    visitor.enter(reference);
    AcDbObjectIdArray contents;
    getBlockContents(reference, contents);
    for (const AcDbObjectId id : contents) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
        if (entity.status() != Acad::eOk) continue;
        if (const auto* inner = AcDbBlockReference::cast(entity.object()))
            visitBlock(*inner, visitor, way);
        else
            visitor.take(*entity);
    }
    way.blocks.pop_back();
}

void visitBlock(const AcDbBlockReference* reference, BlockVisitor& visitor) {
    BlocksOnTheWay way;
    if (reference) visitBlock(*reference, visitor, way);
}

struct LayersMet final : BlockVisitor {
    LayersMet(const AcDbObjectIdArray& layers, AcDbObjectIdArray& found)
        : filter(layers)
        , ids(found) {}
    void take(const AcDbEntity& entity) override {
        if (filter.has(entity.layerId())) ids.append(entity.layerId());
    }
    LayerList filter;
    AcDbObjectIdArray& ids;
};

struct EntitiesPlaced final : BlockVisitor {
    EntitiesPlaced(const AcDbObjectIdArray& layers, AcDbObjectIdArray& found, AcGeMatrix3d& runningMatrix,
                   std::vector<AcGeMatrix3d>& places)
        : filter(layers)
        , ids(found)
        , running(runningMatrix)
        , matrices(places) {}
    void enter(const AcDbBlockReference& reference) override {
        running.preMultBy(reference.blockTransform());
    }
    void take(const AcDbEntity& entity) override {
        if (!filter.has(entity.layerId())) return;
        ids.append(entity.objectId());
        matrices.push_back(running);
    }
    LayerList filter;
    AcDbObjectIdArray& ids;
    AcGeMatrix3d& running;
    std::vector<AcGeMatrix3d>& matrices;
};

// Those of the ids that stand in their drawing's model space, on one of the layers.
template <class TakeReference, class TakeEntity>
void visitModelSpace(const AcDbObjectIdArray& ids, const LayerList& layers, TakeReference takeReference,
                     TakeEntity takeEntity) {
    for (const AcDbObjectId id : ids) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
        if (entity.status() != Acad::eOk || entity->ownerId() != entity->database()->modelSpaceId()) continue;
        if (!layers.has(entity->layerId())) continue;
        if (const auto* reference = AcDbBlockReference::cast(entity.object()))
            takeReference(*reference);
        else
            takeEntity(id);
    }
}

void collectLayersMet(const AcDbObjectIdArray& candidates, const AcDbObjectIdArray& layers,
                      AcDbObjectIdArray& ids, const AcDbObjectIdArray& filter) {
    visitModelSpace(
        candidates, LayerList(layers),
        [&](const AcDbBlockReference& reference) {
            VEXOLayerTools::recursiveGetBlockEntities(&reference, ids, filter);
        },
        [&](AcDbObjectId id) { ids.append(id); });
}

} // namespace
} // namespace vexo

bool VEXOLayerTools::delLayer(const AcDbObjectId& layer, bool eraseEntities) {
    CVxLogEntry entry(L"VEXOLayerTools::delLayer");
    if (!vexo::mayDelete(layer)) return false;
    const AcDbObjectId id = layer;
    return vexo::deleteLayer(id, eraseEntities, vexo::walk(vexo::databaseOf(id, eraseEntities), {&id, 1}));
}

void VEXOLayerTools::delLayers(const AcDbObjectIdArray& layers, bool eraseEntities) {
    CVxLogEntry entry(L"VEXOLayerTools::delLayers");
    std::unordered_map<AcDbDatabase*, std::vector<AcDbObjectId>> layersOf;
    for (const AcDbObjectId layer : layers)
        if (vexo::mayDelete(layer)) layersOf[vexo::databaseOf(layer, eraseEntities)].push_back(layer);
    for (const auto& [database, ids] : layersOf) {
        const vexo::EntitiesOnLayers found = vexo::walk(database, ids);
        for (const AcDbObjectId layer : ids) vexo::deleteLayer(layer, eraseEntities, found);
    }
}

bool VEXOLayerTools::emptyLayer(const AcDbObjectId& layer) {
    CVxLogEntry entry(L"VEXOLayerTools::emptyLayer");
    const AcDbObjectId id = layer;
    return vexo::eraseEntitiesOn(id, vexo::walk(vexo::workingDatabase(), {&id, 1}));
}

bool VEXOLayerTools::emptyLayers(const AcDbObjectIdArray& layers) {
    CVxLogEntry entry(L"VEXOLayerTools::emptyLayers");
    const std::vector<AcDbObjectId> ids(layers.begin(), layers.end());
    if (ids.empty()) return false;
    const vexo::EntitiesOnLayers found = vexo::walk(vexo::workingDatabase(), ids);
    bool areEmpty = true;
    for (const AcDbObjectId layer : ids) areEmpty &= vexo::eraseEntitiesOn(layer, found);
    return areEmpty;
}

long VEXOLayerTools::getEntityCountOnLayer(const AcDbObjectId& layer) {
    CVxLogEntry entry(L"VEXOLayerTools::getEntityCountOnLayer");
    if (!layer.isValid()) return 0;
    ads_name set = {0, 0};
    Adesk::Int32 count = 0;
    if (vexo::selectOnLayer(vexo::layerName(layer), set) == RTNORM) acedSSLength(set, &count);
    acedSSFree(set);
    return count;
}

long VEXOLayerTools::getEntityCountOnLayerEx(const AcDbObjectId& layer, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXOLayerTools::getEntityCountOnLayerEx");
    const AcDbObjectId id = layer;
    const vexo::EntitiesOnLayers found = vexo::walk(vexo::workingDatabaseOr(database), {&id, 1});
    return found.lacksBlocks ? -1 : static_cast<long>(vexo::on(id, found).size());
}

bool VEXOLayerTools::getEntitiesFromLayer(const AcDbObjectId& layer, AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getEntitiesFromLayer");
    ids.removeAll();
    if (!layer.isValid()) return false;
    const CString name = vexo::layerName(layer);
    if (name.FindOneOf(L"[]") >= 0) return getEntitiesFromLayerEx(layer, ids);
    ads_name set = {0, 0};
    if (vexo::selectOnLayer(name, set) == RTNORM) VEXOSelectionTools::enameSetToObjIds(set, ids);
    acedSSFree(set);
    return true;
}

bool VEXOLayerTools::getEntitiesFromLayerEx(const AcDbObjectId& layer, AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getEntitiesFromLayerEx");
    // What the walk finds stands in it once.
    const std::unordered_set<AcDbObjectId> taken(ids.begin(), ids.end());
    const AcDbObjectId id = layer;
    const vexo::EntitiesOnLayers found = vexo::walk(id.database(), {&id, 1});
    for (const AcDbObjectId entity : vexo::on(id, found))
        if (taken.empty() || !taken.contains(entity)) ids.append(entity);
    return true;
}

bool VEXOLayerTools::getEntitiesFromLayers(const AcDbObjectIdArray& layers, AcDbObjectIdArray& ids) {
    CVxLogEntry entry(L"VEXOLayerTools::getEntitiesFromLayers");
    constexpr int growth = 1000;
    ids.removeAll();
    ids.setGrowLength(growth);
    if (layers.isEmpty()) return true;
    const vexo::LayerList listed(layers);
    AcDbObjectIdArray all;
    VEXODatabaseTools::getFromBlockTable(all, layers[0].database());
    for (const AcDbObjectId id : all) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForRead, false);
        if (entity.status() == Acad::eOk && listed.has(entity->layerId())) ids.append(id);
    }
    return true;
}

void VEXOLayerTools::recursiveGetEntitiesFromLayer(const AcDbObjectId& layer, AcDbObjectIdArray& ids,
                                                   const AcDbObjectIdArray& filter) {
    CVxLogEntry entry(L"VEXOLayerTools::recursiveGetEntitiesFromLayer");
    AcDbObjectIdArray candidates, layers;
    getEntitiesFromLayer(layer, candidates);
    layers.append(layer);
    vexo::collectLayersMet(candidates, layers, ids, filter);
}

void VEXOLayerTools::recursiveGetEntitiesFromLayers(const AcDbObjectIdArray& layers, AcDbObjectIdArray& ids,
                                                    const AcDbObjectIdArray& filter) {
    CVxLogEntry entry(L"VEXOLayerTools::recursiveGetEntitiesFromLayers");
    AcDbObjectIdArray candidates;
    getEntitiesFromLayers(layers, candidates);
    vexo::collectLayersMet(candidates, layers, ids, filter);
}

void VEXOLayerTools::recursiveGetBlockEntities(const AcDbBlockReference* reference, AcDbObjectIdArray& ids,
                                               const AcDbObjectIdArray& filter) {
    CVxLogEntry entry(L"VEXOLayerTools::recursiveGetBlockEntities");
    vexo::LayersMet visitor(filter, ids);
    vexo::visitBlock(reference, visitor);
}

void VEXOLayerTools::recursiveGetEntitiesFromLayersEx(const AcDbObjectIdArray& layers, AcDbObjectIdArray& ids,
                                                      const AcDbObjectIdArray& filter,
                                                      std::vector<AcGeMatrix3d>& matrices) {
    CVxLogEntry entry(L"VEXOLayerTools::recursiveGetEntitiesFromLayersEx");
    AcDbObjectIdArray candidates;
    getEntitiesFromLayers(layers, candidates);
    vexo::visitModelSpace(
        candidates, vexo::LayerList(layers),
        [&](const AcDbBlockReference& reference) {
            AcGeMatrix3d matrix;
            recursiveGetBlockEntitiesEx(&reference, ids, filter, matrix, matrices);
        },
        [&](AcDbObjectId id) {
            ids.append(id);
            matrices.push_back(AcGeMatrix3d::kIdentity);
        });
}

void VEXOLayerTools::recursiveGetBlockEntitiesEx(const AcDbBlockReference* reference, AcDbObjectIdArray& ids,
                                                 const AcDbObjectIdArray& filter, AcGeMatrix3d& matrix,
                                                 std::vector<AcGeMatrix3d>& matrices) {
    CVxLogEntry entry(L"VEXOLayerTools::recursiveGetBlockEntitiesEx");
    vexo::EntitiesPlaced visitor(filter, ids, matrix, matrices);
    vexo::visitBlock(reference, visitor);
}

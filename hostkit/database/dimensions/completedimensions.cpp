#include "completedimensions.h"

#include "blockholding.h"
#include "changelog.h"
#include "dbaccess.h"
#include "dbblocktable.h"
#include "dbdimension.h"
#include "dblayertable.h"
#include "dbopen.h"
#include "dimensionpicture.h"
#include "newblock.h"

#include <set>
#include <utility>

namespace hostkit {

class DimensionCompletion {
public:
    explicit DimensionCompletion(AcDbDatabase& database)
        : m_database(database) {}

    int run();

private:
    static bool needsBlock(const AcDbObject& object);
    bool complete(AcDbDimension& dimension);
    void makeDefinitionLayer();
    void eraseFormer();

    AcDbDatabase& m_database;
    std::set<AcDbObjectId> m_former; ///< blocks that showed what has new ones
};

bool DimensionCompletion::needsBlock(const AcDbObject& object) {
    if (object.isErased() || !object.isKindOf(AcDbDimension::desc())) return false;
    const auto& dimension = static_cast<const AcDbDimension&>(object);
    const bool isOpen = object.isWriteEnabled() || object.isNotifyEnabled();
    return dimension.dimBlockId().isNull() && dimension.m_wantsBlock && !isOpen &&
           !dimension.blockId().isNull() && dimension.isComplete();
}

void DimensionCompletion::makeDefinitionLayer() {
    auto* const layers = DatabaseAccess::objectOf<AcDbLayerTable>(m_database.layerTableId());
    if (!layers || !layers->find(definitionLayerName).isNull()) return;
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    DatabaseAccess::setRecordName(*layer, definitionLayerName);
    (void)layer->setLinetypeObjectId(m_database.continuousLinetype());
    (void)layer->setIsPlottable(false);
    ChangeLog::of(*layers).changing(*layers);
    DatabaseAccess::markChanged(*layers);
    (void)DatabaseAccess::addOpen(m_database, layer.get(), layers->objectId());
    AcDbLayerTableRecord& added = *layer.release();
    DatabaseAccess::enterRecord(*layers, added);
    (void)added.close();
}

bool DimensionCompletion::complete(AcDbDimension& dimension) {
    auto* const blocks = DatabaseAccess::objectOf<AcDbBlockTable>(m_database.blockTableId());
    DimensionPicture picture;
    if (!blocks || !layOutDimension(dimension, picture)) return false;
    makeDefinitionLayer();
    auto record = std::make_unique<AcDbBlockTableRecord>();
    DatabaseAccess::markAnonymous(*record);
    const AcDbObjectId block = addBlock(*blocks, std::move(record), blocks->freeName(L"*D"),
                                        entitiesOf(dimension, picture, PieceUse::inBlock));
    ChangeLog::of(dimension).changing(dimension);
    DatabaseAccess::markChanged(dimension);
    dimension.takeLayout(picture);
    constexpr int placeOfBlock = 2; // the point 12: the block stands where it is seen
    dimension.m_points[placeOfBlock] = {};
    constexpr int ownBlock = 32; // of the type: nobody else shows the block
    dimension.m_type = static_cast<Adesk::Int16>(dimension.m_type | ownBlock);
    dimension.m_blockId = block;
    const AcDbObjectId former = std::exchange(dimension.m_formerBlockId, AcDbObjectId());
    const auto* const shown = DatabaseAccess::objectOf<AcDbBlockTableRecord>(former);
    if (shown && former.database() == &m_database && !former.isErased() && shown->name().starts_with(L"*D"))
        m_former.insert(former);
    return true;
}

// One walk for all of them. What is erased may be restored, and then shows its block again.
void DimensionCompletion::eraseFormer() {
    if (m_former.empty()) return;
    DatabaseAccess::forEachObject(m_database, [this](AcDbObject& object) {
        if ((object.objectId().stub()->flags & kStubTakenBack) != 0) return;
        m_former.erase(shownBlock(object));
        if (object.isKindOf(AcDbDimension::desc()))
            m_former.erase(static_cast<const AcDbDimension&>(object).m_shownBlockId);
    });
    for (const AcDbObjectId former : m_former) {
        AcDbObject* block = nullptr;
        if (openPart(block, former) != Acad::eOk) continue;
        (void)block->erase();
        block->close();
    }
}

int DimensionCompletion::run() {
    std::vector<AcDbDimension*> wanting;
    DatabaseAccess::forEachObject(m_database, [&](AcDbObject& object) {
        if (needsBlock(object)) wanting.push_back(static_cast<AcDbDimension*>(&object));
    });
    int made = 0;
    for (AcDbDimension* dimension : wanting)
        if (complete(*dimension)) ++made;
    eraseFormer();
    return made;
}

int completeDimensions(AcDbDatabase& database) { return DimensionCompletion(database).run(); }

} // namespace hostkit

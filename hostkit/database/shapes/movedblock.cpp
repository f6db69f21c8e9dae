#include "movedblock.h"

#include "blockusers.h"
#include "changelog.h"
#include "dbaccess.h"
#include "dbblocktable.h"
#include "dbdim.h"
#include "openparts.h"

#include <memory>
#include <vector>

namespace hostkit {

namespace {

using Copies = std::vector<std::unique_ptr<AcDbEntity>>;

bool copyMoved(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix, Copies& copies) {
    for (const AcDbObjectId id : block.entities()) {
        const auto* entity = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbEntity>(id);
        if (!entity) continue;
        AcDbEntity* copy = nullptr;
        if (entity->getTransformedCopy(matrix, copy) != Acad::eOk) return false;
        copies.emplace_back(copy);
    }
    return true;
}

bool moveInPlace(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix) {
    OpenParts parts;
    return parts.open(block.entities()) == Acad::eOk && parts.transformBy(matrix) == Acad::eOk;
}

AcDbObjectId addBlock(AcDbBlockTable& table, const AcDbBlockTableRecord& earlier, Copies&& contents) {
    auto record = std::make_unique<AcDbBlockTableRecord>(earlier);
    DatabaseAccess::setRecordName(*record, table.freeName(L"*D"));
    // Callers walk the table while they move dimensions: it need not be open for this, but it changes.
    ChangeLog::of(table).changing(table);
    DatabaseAccess::markChanged(table);
    const AcDbObjectId id = DatabaseAccess::addOpen(*table.database(), record.get(), table.objectId());
    AcDbBlockTableRecord& added = *record.release();
    DatabaseAccess::enterRecord(table, added);
    for (std::unique_ptr<AcDbEntity>& copy : contents) {
        AcDbEntity* const entity = copy.release();
        DatabaseAccess::appendToBlock(added, DatabaseAccess::addOpen(*table.database(), entity, id));
        (void)entity->close();
    }
    (void)added.close();
    return id;
}

} // namespace

AcDbObjectId movedBlock(const AcDbDimension& dimension, AcDbObjectId earlier, const AcGeMatrix3d& matrix) {
    AcDbDatabase& database = *dimension.database();
    auto* table = DatabaseAccess::objectOf<AcDbBlockTable>(database.blockTableId());
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(earlier);
    // The copies also tell beforehand whether all of it can follow.
    Copies copies;
    if (!table || !block || earlier.database() != &database || !copyMoved(*block, matrix, copies)) return {};
    const bool isOwn =
        !earlier.isErased() && !DatabaseAccess::blockUsers(database).isUsedByOther(earlier, dimension);
    return isOwn && moveInPlace(*block, matrix) ? earlier : addBlock(*table, *block, std::move(copies));
}

AcGeMatrix3d blockPlacement(const AcDbDimension& dimension) {
    constexpr int placeOfBlockCode = 12;
    AcGeMatrix3d plane;
    dimension.getEcs(plane);
    return AcGeMatrix3d::translation(plane * dimension.pointOf(placeOfBlockCode).asVector());
}

} // namespace hostkit

#include "movedblock.h"

#include "changelog.h"
#include "dbaccess.h"
#include "dbblocktable.h"
#include "dbopen.h"

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

} // namespace

AcDbObjectId addMovedBlock(AcDbDatabase& database, AcDbObjectId block, const AcGeMatrix3d& matrix) {
    auto* table = DatabaseAccess::objectOf<AcDbBlockTable>(database.blockTableId());
    const auto* earlier = DatabaseAccess::objectOf<AcDbBlockTableRecord>(block);
    Copies copies;
    if (!table || !earlier || block.database() != &database || !copyMoved(*earlier, matrix, copies))
        return {};
    auto record = std::make_unique<AcDbBlockTableRecord>(*earlier);
    DatabaseAccess::setRecordName(*record, table->freeName(L"*D"));
    // Callers walk the table while they move dimensions: it need not be open for this, but it changes.
    ChangeLog::of(*table).changing(*table);
    DatabaseAccess::markChanged(*table);
    const AcDbObjectId id = DatabaseAccess::addOpen(database, record.get(), table->objectId());
    AcDbBlockTableRecord& added = *record.release();
    DatabaseAccess::enterRecord(*table, added);
    for (std::unique_ptr<AcDbEntity>& copy : copies) {
        AcDbEntity* const entity = copy.release();
        (void)added.appendAcDbEntity(entity);
        (void)entity->close();
    }
    (void)added.close();
    return id;
}

void eraseBlock(AcDbObjectId block) {
    AcDbBlockTableRecord* record = nullptr;
    if (acdbOpenObject(record, block, AcDb::kForWrite) != Acad::eOk) return;
    (void)record->erase();
    (void)record->close();
}

} // namespace hostkit

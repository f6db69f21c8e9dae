#include "newblock.h"

#include "changelog.h"
#include "dbaccess.h"
#include "dbblocktable.h"

namespace hostkit {

AcDbObjectId addBlock(AcDbBlockTable& table, std::unique_ptr<AcDbBlockTableRecord> record,
                      std::wstring_view name, BlockContents&& contents) {
    DatabaseAccess::setRecordName(*record, name);
    ChangeLog::of(table).changing(table);
    DatabaseAccess::markChanged(table);
    const AcDbObjectId id = DatabaseAccess::addOpen(*table.database(), record.get(), table.objectId());
    AcDbBlockTableRecord& added = *record.release();
    DatabaseAccess::enterRecord(table, added);
    for (std::unique_ptr<AcDbEntity>& each : contents) {
        AcDbEntity* const entity = each.release();
        DatabaseAccess::appendToBlock(added, DatabaseAccess::addOpen(*table.database(), entity, id));
        (void)entity->close();
    }
    (void)added.close();
    return id;
}

} // namespace hostkit

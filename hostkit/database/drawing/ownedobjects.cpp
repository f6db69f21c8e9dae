#include "ownedobjects.h"

#include "dbent.h"
#include "dbsymboltablerecord.h"
#include "ownederasure.h"

namespace hostkit {

void OwnedObjects::add(AcDbObject& object) {
    if (object.ownerId().isNull() || object.isKindOf(AcDbEntity::desc()) ||
        object.isKindOf(AcDbSymbolTableRecord::desc()))
        return;
    m_byOwner[object.ownerId().stub()].push_back(object.objectId());
}

void OwnedObjects::eraseWith(const AcDbObject& owner, bool erasing) {
    m_scan.lookAtNew(*owner.database(), [this](AcDbObject& object) { add(object); });
    const auto found = m_byOwner.find(owner.objectId().stub());
    if (found == m_byOwner.end()) return;
    // What is erased may own something itself, and the map grows then.
    const std::vector<AcDbObjectId> owned = found->second;
    for (const AcDbObjectId id : owned)
        if (DatabaseAccess::object(id)->ownerId() == owner.objectId()) eraseWithOwner(id, erasing);
}

} // namespace hostkit

#include "ownederasure.h"

#include "dbaccess.h"
#include "dbobject.h"
#include "dbopen.h"
#include "ownedobjects.h"

namespace hostkit {

void eraseWithOwner(AcDbObjectId id, bool erasing) {
    if (!id.isResident() || id.isErased() == erasing) return;
    AcDbStub& stub = *id.stub();
    if (!erasing && !(stub.flags & kStubErasedWithOwner)) return;
    AcDbObject* object = nullptr;
    if (openPart(object, id, true) != Acad::eOk) return;
    if (object->erase(erasing) == Acad::eOk)
        stub.flags = static_cast<Adesk::UInt8>(stub.flags | (erasing ? kStubErasedWithOwner : 0));
    object->close();
}

void eraseOwned(const AcDbObject& owner, bool erasing) {
    eraseWithOwner(DatabaseAccess::extensionDictionary(owner), erasing);
    DatabaseAccess::ownedObjects(*owner.database()).eraseWith(owner, erasing);
}

} // namespace hostkit

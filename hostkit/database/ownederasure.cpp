#include "ownederasure.h"

#include "dbobject.h"
#include "dbopen.h"

namespace hostkit {

void eraseWithOwner(AcDbObjectId id, bool erasing) {
    if (!id.isResident() || id.isErased() == erasing) return;
    AcDbStub& stub = *id.stub();
    if (!erasing && !(stub.flags & kStubErasedWithOwner)) return;
    AcDbObject* object = nullptr;
    if (acdbOpenAcDbObject(object, id, AcDb::kForWrite, true) != Acad::eOk) return;
    if (object->erase(erasing) == Acad::eOk)
        stub.flags = static_cast<Adesk::UInt8>(erasing ? stub.flags | kStubErasedWithOwner
                                                       : stub.flags & ~kStubErasedWithOwner);
    object->close();
}

} // namespace hostkit

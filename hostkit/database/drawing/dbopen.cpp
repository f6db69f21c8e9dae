#include "dbopen.h"

#include "dbdatabase.h"
#include "dbent.h"
#include "dblayertablerecord.h"
#include "dbobject.h"

Acad::ErrorStatus hostkit::refusalToWrite(const AcDbObject& object) {
    if (!object.database()->mayWrite()) return Acad::eLockViolation;
    if (!object.isKindOf(AcDbEntity::desc())) return Acad::eOk;
    const AcDbStub* layer = static_cast<const AcDbEntity&>(object).layerId().stub();
    const auto* record = layer ? AcDbLayerTableRecord::cast(layer->object) : nullptr;
    return record && record->isLocked() ? Acad::eOnLockedLayer : Acad::eOk;
}

AcRxClass* AcDbObjectId::objectClass() const {
    return m_stub && m_stub->object ? m_stub->object->isA() : nullptr;
}

namespace {

Acad::ErrorStatus refusal(const AcDbStub& stub, AcDb::OpenMode mode) {
    if (stub.openMode & hostkit::kOpenForNotify) return Acad::eWasOpenForNotify;
    if (mode == AcDb::kForNotify) return Acad::eOk;
    if (stub.openMode & (hostkit::kOpenForWrite | hostkit::kHeldForWrite)) return Acad::eWasOpenForWrite;
    if (mode == AcDb::kForWrite)
        return stub.readers > 0 || (stub.openMode & hostkit::kHeldForRead) ? Acad::eWasOpenForRead
                                                                           : Acad::eOk;
    return stub.readers >= hostkit::maxReaders ? Acad::eAtMaxReaders : Acad::eOk;
}

void enterState(AcDbStub& stub, AcDb::OpenMode mode) {
    if (mode == AcDb::kForRead)
        ++stub.readers;
    else
        stub.openMode |= mode == AcDb::kForWrite ? hostkit::kOpenForWrite : hostkit::kOpenForNotify;
}

enum class Lock : unsigned char { asked, notAsked };

template <Lock lock>
Acad::ErrorStatus open(AcDbObject*& object, AcDbObjectId id, const AcRxClass* wanted, AcDb::OpenMode mode,
                       bool openErased) {
    object = nullptr;
    AcDbStub* stub = id.stub();
    if (!stub) return Acad::eNullObjectId;
    if (!stub->object || (stub->flags & hostkit::kStubTakenBack)) return Acad::ePermanentlyErased;
    if ((stub->flags & hostkit::kStubErased) && !openErased) return Acad::eWasErased;
    if (mode != AcDb::kForRead && mode != AcDb::kForWrite && mode != AcDb::kForNotify)
        return Acad::eInvalidInput;
    if (wanted && !stub->object->isKindOf(wanted)) return Acad::eNotThatKindOfClass;
    const Acad::ErrorStatus status = refusal(*stub, mode);
    if (status != Acad::eOk) return status;
    if (lock == Lock::asked && mode == AcDb::kForWrite) {
        const Acad::ErrorStatus locked = hostkit::refusalToWrite(*stub->object);
        if (locked != Acad::eOk) return locked;
    }
    enterState(*stub, mode);
    object = stub->object;
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id, const AcRxClass* wanted,
                                 AcDb::OpenMode mode, bool openErased) {
    return open<Lock::asked>(object, id, wanted, mode, openErased);
}

Acad::ErrorStatus hostkit::openPart(AcDbObject*& part, AcDbObjectId id, bool openErased) {
    return open<Lock::notAsked>(part, id, nullptr, AcDb::kForWrite, openErased);
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return acdbOpenObject(object, id, nullptr, mode, openErased);
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
    return acdbOpenObject(entity, id, mode, openErased);
}

// Stand-in for the host's open functions. Covers opening by id with and without a class check; leaves out opening by name.
#pragma once

#include "dbmaindefs.h"

#include "acadstrc.h"
#include "dbid.h"

class AcDbEntity;
class AcDbObject;
class AcRxClass;

// On failure the pointer is null. What is opened is closed by the caller. Statuses: eNullObjectId,
// ePermanentlyErased (an id whose object never came), eWasErased, eNotThatKindOfClass, by the open state
// eWasOpenForRead, eWasOpenForWrite, eWasOpenForNotify, eAtMaxReaders, and for writing eLockViolation where
// nobody holds a lock on the drawing's document, eOnLockedLayer for an entity whose layer is locked;
// docs/open-modes.md has them all.

namespace hostkit {

constexpr int maxReaders = 256;

/// eOk, or why nobody may open the object of a drawing for write: eLockViolation, eOnLockedLayer.
Acad::ErrorStatus refusalToWrite(const AcDbObject& object);

/// Opens for write what belongs to an object that is open for write itself: that one's open has asked for the
/// lock, and what became of it since does not tear the two apart.
Acad::ErrorStatus openPart(AcDbObject*& part, AcDbObjectId id, bool openErased = false);

} // namespace hostkit

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
/// The class is looked at before the object is opened. A null class stands for any.
Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id, const AcRxClass* wanted,
                                 AcDb::OpenMode mode, bool openErased = false);

template <typename T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    AcDbObject* opened = nullptr;
    const Acad::ErrorStatus status = acdbOpenObject(opened, id, T::desc(), mode, openErased);
    object = static_cast<T*>(opened);
    return status;
}

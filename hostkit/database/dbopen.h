// Stand-in for the host's open functions. Covers opening by id with and without a class check; leaves out opening by name.
#pragma once

#include "dbmaindefs.h"

#include "acadstrc.h"
#include "dbid.h"

class AcDbEntity;
class AcDbObject;
class AcRxClass;

// On failure the pointer is null. What is opened is closed by the caller. Statuses: eNullObjectId,
// ePermanentlyErased (an id whose object never came), eWasErased, eNotThatKindOfClass, and by the open state
// eWasOpenForRead, eWasOpenForWrite, eWasOpenForNotify, eAtMaxReaders; docs/open-modes.md has them all.

namespace hostkit {
constexpr int maxReaders = 256;
}

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

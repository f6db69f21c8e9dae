#include "dbobject.h"

#include "fieldtable.h"
#include "groupblock.h"

using namespace hostkit;

// The head of a record (handle, owner, reactors, extension dictionary) is filed by who files the drawing.
Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) {
    return filer ? filer->filerStatus() : Acad::eNullObjectPointer;
}

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* filer) const {
    return filer ? filer->filerStatus() : Acad::eNullObjectPointer;
}

Acad::ErrorStatus AcDbObject::dxfIn(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = dxfInFields(filer);
    if (status != Acad::eOk || !filer->atExtendedData()) return status;
    GroupBlock data;
    AcDbDxfGroup group;
    Acad::ErrorStatus result = filer->readItem(group);
    for (; result == Acad::eOk; result = filer->readItem(group)) data.append(group);
    return result == Acad::eEndOfObject ? setExtendedData(std::move(data)) : result;
}

Acad::ErrorStatus AcDbObject::dxfOut(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = dxfOutFields(filer);
    if (status != Acad::eOk || !extendedData()) return status;
    writeBlock(*filer, *extendedData());
    return filer->filerStatus();
}

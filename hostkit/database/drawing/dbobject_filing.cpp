#include "dbobject.h"

#include "dbaccess.h"
#include "extendeddata.h"
#include "fielditemreader.h"
#include "fielditemwriter.h"
#include "fieldtable.h"
#include "groupblock.h"

#include "acarray.h"
#include "groupcodes.h"

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

// The binary form.

namespace {

/// Each application: true, its id (null where it is not registered), its name, its groups; false behind the
/// last one.
Acad::ErrorStatus writeExtendedData(AcDbDwgFiler& filer, const GroupBlock& data, AcDbDatabase* database) {
    GroupWalker walker(data);
    AcDbDxfGroup group;
    bool isMore = walker.next(group);
    while (isMore && group.code != applicationCode) isMore = walker.next(group);
    while (isMore) {
        (void)filer.writeBool(true);
        (void)filer.writeHardPointerId(database ? registeredApplication(*database, group.text)
                                                : AcDbObjectId());
        (void)filer.writeString(group.text.data()); // the walker's text has its end mark
        FieldItemWriter values(filer, database);
        while ((isMore = walker.next(group)) && group.code != applicationCode) values.writeGroup(group);
        const Acad::ErrorStatus status = values.finish();
        if (status != Acad::eOk) return status;
    }
    return filer.writeBool(false);
}

/// An application is known by its id, where it has one: its record may have another name by now.
Acad::ErrorStatus readApplication(AcDbDwgFiler& filer, GroupBlock& data, AcDbDatabase* database) {
    AcDbObjectId id;
    wchar_t* name = nullptr;
    (void)filer.readHardPointerId(&id);
    Acad::ErrorStatus status = filer.readString(&name);
    if (status != Acad::eOk) return status;
    const auto* record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
    data.appendText(applicationCode, record ? record->name() : name);
    acutDelString(name);
    FieldItemReader values(filer, database);
    AcDbDxfGroup group;
    while ((status = values.readItem(group)) == Acad::eOk) data.append(group);
    return status == Acad::eEndOfObject ? values.finish() : status;
}

Acad::ErrorStatus readExtendedData(AcDbDwgFiler& filer, GroupBlock& data, AcDbDatabase* database) {
    for (;;) {
        bool isMore = false;
        Acad::ErrorStatus status = filer.readBool(&isMore);
        if (status != Acad::eOk || !isMore) return status;
        status = readApplication(filer, data, database);
        if (status != Acad::eOk) return status;
    }
}

/// What ties an object to the rest of its drawing.
struct Ties {
    AcDbObjectId owner;
    AcDbObjectId extensionDictionary;
    std::vector<AcDbObjectId> reactors;

    Acad::ErrorStatus write(AcDbDwgFiler& filer) const {
        (void)filer.writeSoftPointerId(owner);
        (void)filer.writeInt32(static_cast<Adesk::Int32>(reactors.size()));
        for (const AcDbObjectId reactor : reactors) (void)filer.writeSoftPointerId(reactor);
        return filer.writeHardOwnershipId(extensionDictionary);
    }

    Acad::ErrorStatus read(AcDbDwgFiler& filer) {
        Adesk::Int32 count = 0;
        (void)filer.readSoftPointerId(&owner);
        (void)filer.readInt32(&count);
        for (; count > 0 && filer.filerStatus() == Acad::eOk; --count)
            (void)filer.readSoftPointerId(&reactors.emplace_back());
        return filer.readHardOwnershipId(&extensionDictionary);
    }
};

} // namespace

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* filer) {
    return filer ? filer->filerStatus() : Acad::eNullObjectPointer;
}

Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* filer) const {
    return filer ? filer->filerStatus() : Acad::eNullObjectPointer;
}

Acad::ErrorStatus AcDbObject::dwgOut(AcDbDwgFiler* filer) const {
    if (!filer) return Acad::eNullObjectPointer;
    Acad::ErrorStatus status = assertReadEnabled();
    if (status != Acad::eOk) return status;
    status =
        Ties{ownerId(), DatabaseAccess::extensionDictionary(*this), DatabaseAccess::persistentReactors(*this)}
            .write(*filer);
    if (status == Acad::eOk) status = dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    static const GroupBlock none;
    return writeExtendedData(*filer, extendedData() ? *extendedData() : none,
                             database() ? database() : filer->database());
}

Acad::ErrorStatus AcDbObject::dwgIn(AcDbDwgFiler* filer) {
    if (!filer) return Acad::eNullObjectPointer;
    Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    Ties ties;
    GroupBlock data;
    status = ties.read(*filer);
    if (status == Acad::eOk) status = dwgInFields(filer);
    if (status == Acad::eOk)
        status = readExtendedData(*filer, data, database() ? database() : filer->database());
    if (status != Acad::eOk) return status;
    if (!m_id.isNull()) {
        m_ownerId = ties.owner;
        DatabaseAccess::setExtensionDictionary(*this, ties.extensionDictionary);
        DatabaseAccess::setPersistentReactors(*this, std::move(ties.reactors));
    }
    return setExtendedData(std::move(data));
}

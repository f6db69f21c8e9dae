#include "vexodatabasetools.h"

#include "cvxlogentry.h"
#include "dbdeepclonefiler.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "vexoidfiller.h"

#include <memory>

namespace {

/// The part of an id that is compared where stubs are told apart.
Adesk::UInt32 lowPart(AcDbObjectId id) { return static_cast<Adesk::UInt32>(id.asOldId()); }

/// The table has a record that the id stands for without being its id.
bool isDoubledIn(const AcDbRegAppTable& table, AcDbObjectId filed) {
    AcDbRegAppTableIterator* opened = nullptr;
    if (table.newIterator(opened) != Acad::eOk) return false;
    for (const std::unique_ptr<AcDbRegAppTableIterator> iterator(opened); !iterator->done();
         iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) == Acad::eOk && c5ObjIdIsEqualTo(id, filed) &&
            lowPart(id) != lowPart(filed))
            return true;
    }
    return false;
}

bool liesAbout(AcDbObjectId filed) {
    const AcDbObjectPointer<AcDbRegAppTableRecord> record(filed, AcDb::kForRead);
    if (!record.object()) return false;
    const AcDbObjectPointer<AcDbRegAppTable> table(record->ownerId(), AcDb::kForRead);
    return table.object() && isDoubledIn(*table.object(), filed);
}

} // namespace

bool VEXODatabaseTools::XDataAppLies(AcDbObject* object) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::XDataAppLies");
    if (!object) return false;
    VEXOIdFiller filler;
    (void)object->dwgOut(&filler);
    for (const AcDbObjectId id : filler.ids())
        if (id.isValid() && liesAbout(id)) return true;
    return false;
}

AcDbObject* VEXODatabaseTools::cloneWithoutXData(AcDbObject* object) {
    CVxLogEntry logEntry(L"VEXODatabaseTools::cloneWithoutXData");
    if (!object) return nullptr;
    std::unique_ptr<AcRxObject> made(object->isA()->create());
    AcDbObject* const copy = AcDbObject::cast(made.get());
    if (!copy) return nullptr;
    AcDbDeepCloneFiler filer(object->database());
    if (object->dwgOutFields(&filer) != Acad::eOk || filer.seek(0, 0) != Acad::eOk ||
        copy->dwgInFields(&filer) != Acad::eOk)
        return nullptr;
    (void)made.release();
    return copy;
}

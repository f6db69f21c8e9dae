#include "fielditems.h"

#include "dbaccess.h"
#include "fielditemreader.h"
#include "fielditemwriter.h"

namespace hostkit {

namespace {

AcDbDatabase* drawingOf(const AcDbDwgFiler& filer, const AcDbObject& object) {
    return object.database() ? object.database() : filer.database();
}

/// A symbol record in a table is found by the name that it has now; one that another record has is refused.
class NameFollower {
public:
    explicit NameFollower(AcDbObject& object)
        : m_record(AcDbSymbolTableRecord::cast(&object)) {
        if (m_record) m_name = m_record->name();
    }
    NameFollower(const NameFollower&) = delete;
    NameFollower& operator=(const NameFollower&) = delete;

    Acad::ErrorStatus follow() const {
        const bool isNew = m_record && m_record->name() != m_name;
        return isNew && !DatabaseAccess::followName(*m_record, m_name) ? Acad::eDuplicateKey : Acad::eOk;
    }

private:
    AcDbSymbolTableRecord* m_record;
    std::wstring m_name;
};

} // namespace

Acad::ErrorStatus writeFieldItems(AcDbDwgFiler* filer, const AcDbObject& object, FieldsOut fields) {
    if (!filer) return Acad::eNullObjectPointer;
    Acad::ErrorStatus status = object.assertReadEnabled();
    if (status != Acad::eOk) return status;
    FieldItemWriter groups(*filer, drawingOf(*filer, object));
    status = fields(object, &groups);
    const Acad::ErrorStatus finished = groups.finish();
    return status == Acad::eOk ? finished : status;
}

Acad::ErrorStatus readFieldItems(AcDbDwgFiler* filer, AcDbObject& object, FieldsIn fields) {
    if (!filer) return Acad::eNullObjectPointer;
    Acad::ErrorStatus status = object.assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const NameFollower follower(object);
    FieldItemReader groups(*filer, drawingOf(*filer, object));
    status = fields(object, &groups);
    const Acad::ErrorStatus finished = groups.finish();
    const Acad::ErrorStatus named = follower.follow();
    if (status == Acad::eOk) status = finished;
    return status == Acad::eOk ? named : status;
}

} // namespace hostkit

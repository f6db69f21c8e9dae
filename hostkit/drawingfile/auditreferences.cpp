// The check of what records refer to: of an object as it was read by its record in the file, of any other by
// what it would file.

#include "auditing.h"

#include "dbopaque.h"
#include "dbsource.h"
#include "drawingreading.h"

namespace hostkit {

namespace {

constexpr int firstReferenceCode = 320;
constexpr int extendedDataCode = 1000;

bool isReferenceCode(int code) {
    return code >= firstReferenceCode && code < extendedDataCode &&
           AcDb::groupKind(code) == AcDb::GroupKind::kHandle;
}

// 340 to 349 and 390 on are hard pointers, 360 to 369 hard owners: a drawing is not whole without these.
bool isHardCode(int code) { return code >= 360 || (code >= 340 && code <= 349); }

bool isOfDictionary(int code) { return code == 350 || code == 360; }

// A class of its own that gave up on the record, in place of a kind that has none.
bool isDamaged(const AcDbObject& object, const DrawingRecord& record) {
    if (object.isKindOf(AcDbOpaqueEntity::desc()))
        return !makeEntity(record)->isKindOf(AcDbOpaqueEntity::desc());
    return object.isKindOf(AcDbOpaqueObject::desc()) &&
           !makeObject(record)->isKindOf(AcDbOpaqueObject::desc());
}

} // namespace

/// Hears of every reference that an object files.
class DrawingAudit::ReferenceFiler final : public AcDbDxfFiler {
public:
    explicit ReferenceFiler(DrawingAudit& audit)
        : m_audit(audit) {}

    void check(const AcDbObject& object) {
        m_object = &object;
        resetFilerStatus();
        (void)object.dxfOutFields(this);
    }

    AcDb::FilerType filerType() const override { return AcDb::kBagFiler; }
    AcDbDatabase* database() const override { return const_cast<AcDbDatabase*>(&m_audit.m_database); }
    AcDb::AcDbDwgVersion dwgVersion() const override { return AcDb::kDHL_1032; }
    void writeText(short, std::wstring_view) override {}
    void writeReal(short, double) override {}
    void writePoint(short, const double*, int) override {}
    void writeInteger(short, Adesk::Int64) override {}
    void writeBinary(short, const void*, std::size_t) override {}
    void writeSubclassMark(const wchar_t*) override {}
    void writeHandle(short code, Adesk::UInt64 handle) override {
        m_audit.checkReference(*m_object, code, handle);
    }
    void writeId(short code, AcDbObjectId id) override {
        m_audit.checkReference(*m_object, code, id.handle().value());
    }
    void writeRecordName(short code, AcDbObjectId record, std::wstring_view name) override {
        if (record.isNull() || isLive(record)) return;
        m_audit.fault(AuditCheck::kReference, m_object,
                      L"group " + std::to_wstring(code) + L" names " + std::wstring(name) + L" (" +
                          handleText(record) + L"), which is " + lackOf(record));
    }

private:
    DrawingAudit& m_audit;
    const AcDbObject* m_object = nullptr;
};

void DrawingAudit::checkReference(const AcDbObject& object, int code, AcDbHandleValue handle) {
    if (handle == 0 || !isReferenceCode(code)) return;
    // The check of dictionaries tells these by their keys.
    if (isOfDictionary(code) && object.isKindOf(AcDbDictionary::desc())) return;
    const AcDbObjectId id = DatabaseAccess::find(m_database, handle);
    if (isLive(id)) return;
    find(AuditCheck::kReference, isHardCode(code) ? AuditSeverity::kFault : AuditSeverity::kRemark, &object,
         L"group " + std::to_wstring(code) + L" refers to " + handleText(handle) + L", which is " +
             lackOf(id));
}

void DrawingAudit::checkReferences() {
    ReferenceFiler filer(*this);
    const std::shared_ptr<const DrawingSource> source = m_database.source();
    DrawingRecord record;
    forEachLive([&](AcDbObject& object) {
        for (const AcDbObjectId reactor : DatabaseAccess::persistentReactors(object))
            if (!isLive(reactor))
                remark(AuditCheck::kReference, &object,
                       L"its reactor " + handleText(reactor) + L" is " + lackOf(reactor));
        if (!source || object.differsFromSource()) return filer.check(object);
        GroupScanner scanner(source->bytes, object.sourceSpan().offset);
        RawGroup first;
        if (scanner.next(first) == ScanResult::kGroup) {
            (void)scanRecord(scanner, first, record);
            checkRecord(object, record, versionOfFiler(source->version));
        }
    });
}

void DrawingAudit::checkRecord(const AcDbObject& object, DrawingRecord& record, DrawingVersion version) {
    if (isDamaged(object, record))
        fault(AuditCheck::kRecord, &object,
              L"a value is none for its group; the record is kept as it stands");
    if (record.extendedDataBegin < record.groups.size() && !object.extendedData())
        fault(AuditCheck::kExtendedData, &object, L"its extended data is damaged and kept as it stands");
    RecordHead head;
    readHead(record, head);
    for (std::size_t i = 1; i < record.extendedDataBegin; ++i)
        if (const RecordGroup& group = record.groups[i]; !group.isTaken())
            checkReference(object, group.code, handleFromText(group.value).value_or(0));
    if (head.owner == 0 || head.owner == object.ownerId().handle().value()) return;
    // Some programs name the block in vertices and attributes; others have got used to it.
    const bool isThere = isLive(DatabaseAccess::find(m_database, head.owner));
    find(AuditCheck::kOwner, isThere ? AuditSeverity::kRemark : AuditSeverity::kFault, &object,
         L"its record names the owner " + handleText(head.owner) + (isThere ? L"" : L", which is missing") +
             L"; it belongs to " + handleText(object.ownerId()));
}

} // namespace hostkit

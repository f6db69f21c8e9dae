// Stand-in for the host's check of a drawing, inside. Covers what the checks share; leaves out the checks, a file each.
#pragma once

#include "drawingaudit.h"
#include "drawingversion.h"

#include "dbaccess.h"

#include <unordered_map>

class AcDbBlockReference;
class AcDbLayout;

namespace hostkit {

struct DrawingRecord;

/// One run of the check over one drawing.
class DrawingAudit {
public:
    DrawingAudit(const AcDbDatabase& database, std::size_t findingLimit)
        : m_database(database)
        , m_limit(findingLimit) {}
    AuditReport run();

private:
    // auditowners.cpp
    void gatherHolders();
    void gatherHolders(AcDbObject& container);
    void hold(AcDbObjectId held, const AcDbObject& holder, const wchar_t* what);
    void checkHandle(const AcDbObject& object);
    void checkOwner(const AcDbObject& object);
    void checkOwnerCircles();
    bool mayHaveNoOwner(const AcDbObject& object) const;
    // auditreferences.cpp
    void checkReferences();
    class ReferenceFiler;
    void checkReference(const AcDbObject& object, int code, AcDbHandleValue handle);
    void checkRecord(const AcDbObject& object, DrawingRecord& record, DrawingVersion version);
    // audittables.cpp
    void checkTables();
    void checkTable(TableKind kind);
    void checkDictionaries();
    void checkDictionary(const AcDbDictionary& dictionary);
    void checkBlocks();
    void checkReferenceToBlock(const AcDbBlockReference& reference);
    void checkLayout(const AcDbLayout& layout);
    void checkExtendedReference(const AcDbObject& object, const AcDbDxfGroup& group);
    void checkExtendedData(const AcDbObject& object, const GroupBlock& data);

    template <typename F>
    void forEachLive(F&& f) const {
        DatabaseAccess::forEachObject(m_database, [&](AcDbObject& object) {
            if (!object.isErased()) f(object);
        });
    }
    static bool isLive(AcDbObjectId id) { return id.isResident() && !id.isErased(); }
    /// "missing" or "erased", of an id that is not live.
    static std::wstring lackOf(AcDbObjectId id) { return id.isResident() ? L"erased" : L"missing"; }
    static std::wstring handleText(AcDbHandleValue handle);
    static std::wstring handleText(AcDbObjectId id) { return handleText(id.handle().value()); }

    void find(AuditCheck check, AuditSeverity severity, const AcDbObject* object, std::wstring text);
    void fault(AuditCheck check, const AcDbObject* object, std::wstring text) {
        find(check, AuditSeverity::kFault, object, std::move(text));
    }
    void remark(AuditCheck check, const AcDbObject* object, std::wstring text) {
        find(check, AuditSeverity::kRemark, object, std::move(text));
    }

    const AcDbDatabase& m_database;
    std::size_t m_limit;
    AuditReport m_report;
    std::array<std::size_t, auditCheckCount * 2> m_listed{};
    /// Who holds an object as its own. The first holder counts; a second one is a fault.
    std::unordered_map<AcDbObjectId, const AcDbObject*> m_holders;
};

} // namespace hostkit

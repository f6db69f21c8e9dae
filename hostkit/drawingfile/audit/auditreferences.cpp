// The check of what records refer to, by handle and by name.

#include "auditing.h"

namespace hostkit {

namespace {

// 340 to 349 and 390 on are hard pointers, 350 to 369 owners: a drawing is not whole without these. What the
// others lead to may have gone.
bool isHardCode(int code) {
    return (code >= 340 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481;
}

void checkHandle(AuditRun& run, const AuditHandleReference& reference) {
    auto& drawing = run.drawing;
    if (reference.handle == 0) return;
    const AuditRecord& record = drawing.records[reference.record];
    const AuditIndex found = drawing.find(reference.handle);
    if (found != noAuditIndex) {
        const AuditRecord& target = drawing.records[found];
        if (!reference.target.empty() && target.type != reference.target)
            run.findings.fault(AuditCheck::kReference, &record, reference.line, L"group ", reference.code,
                               L" leads to the ", target.type, L" ", AuditHandleText{reference.handle},
                               L", where a ", reference.target, L" belongs");
        return;
    }
    const AuditHandleText handle{reference.handle};
    switch (reference.link) {
    case AuditLink::kReactor:
        return run.findings.remark(AuditCheck::kReference, &record, reference.line, L"its reactor ", handle,
                                   L" is missing");
    case AuditLink::kExtension:
        return run.findings.fault(AuditCheck::kDictionary, &record, reference.line,
                                  L"its extension dictionary ", handle, L" is missing");
    case AuditLink::kExtendedData:
        return run.findings.remark(AuditCheck::kExtendedData, &record, reference.line,
                                   L"its extended data refers to ", handle, L", which is missing");
    default:
        break;
    }
    const AuditSeverity severity = isHardCode(reference.code) && record.type != "XRECORD"
                                       ? AuditSeverity::kFault
                                       : AuditSeverity::kRemark;
    run.findings.tell(AuditCheck::kReference, severity, &record, reference.line, L"group ", reference.code,
                      L" refers to ", handle, L", which is missing");
}

struct Named {
    const wchar_t* what;
    AuditTable table;
    AuditSeverity severity;
};
// Programs make a layer that has no record; for the others there is no such help.
constexpr Named namedThings[] = {
    {L"the layer ", AuditTable::kLayer, AuditSeverity::kRemark},
    {L"the linetype ", AuditTable::kLinetype, AuditSeverity::kFault},
    {L"the text style ", AuditTable::kStyle, AuditSeverity::kFault},
    {L"the dimension style ", AuditTable::kDimStyle, AuditSeverity::kFault},
    {L"the block ", AuditTable::kBlock, AuditSeverity::kFault},
    {L"the application ", AuditTable::kApplication, AuditSeverity::kFault},
};

/// Names that are there without a record.
class Standing {
public:
    explicit Standing(AuditedDrawing& drawing) {
        for (const std::string_view name : {"BYLAYER", "BYBLOCK", "CONTINUOUS"})
            m_names.emplace_back(AuditTable::kLinetype, drawing.names.idOf(name));
        m_names.emplace_back(AuditTable::kLayer, drawing.names.idOf("0"));
        if (drawing.hasMarks()) return;
        for (const AuditTable table : {AuditTable::kStyle, AuditTable::kDimStyle})
            m_names.emplace_back(table, drawing.names.idOf("STANDARD"));
    }
    bool has(AuditTable table, AuditNames::Id name) const {
        for (const auto& each : m_names)
            if (each.first == table && each.second == name) return true;
        return false;
    }

private:
    std::vector<std::pair<AuditTable, AuditNames::Id>> m_names;
};

bool isThere(const AuditedDrawing& drawing, AuditTable table, AuditNames::Id name) {
    return drawing.find(table, name) != noAuditIndex ||
           (table == AuditTable::kBlock && drawing.blocks.contains(name));
}

void checkName(AuditRun& run, const AuditNameReference& reference) {
    auto& drawing = run.drawing;
    const std::string_view name = drawing.names.spelling(reference.name);
    const AuditRecord* const record = drawing.at(reference.record);
    for (const Named& each : namedThings) {
        if (each.table != reference.table) continue;
        if (!record)
            return run.findings.fault(AuditCheck::kTable, nullptr, reference.line, L"the header names ",
                                      each.what, name, L" as the current one, which is missing");
        if (reference.code == 1001)
            return run.findings.fault(AuditCheck::kExtendedData, record, reference.line, each.what, name,
                                      L" is not registered");
        const AuditCheck check = reference.code >= 1000 ? AuditCheck::kExtendedData : AuditCheck::kReference;
        return run.findings.tell(check, each.severity, record, reference.line, L"group ", reference.code,
                                 L" names ", each.what, name, L", which is missing");
    }
}

} // namespace

void auditReferences(AuditRun& run) {
    if (!run.drawing.isReadWhole) return;
    for (const AuditHandleReference& each : run.drawing.handleReferences) checkHandle(run, each);
    const Standing standing(run.drawing);
    for (const AuditNameReference& each : run.drawing.nameReferences)
        if (!isThere(run.drawing, each.table, each.name) && !standing.has(each.table, each.name))
            checkName(run, each);
}

} // namespace hostkit

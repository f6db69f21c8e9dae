#include "drawingaudit.h"

#include "auditing.h"

#include <algorithm>
#include <numeric>

namespace hostkit {

const wchar_t* auditCheckName(AuditCheck check) {
    constexpr const wchar_t* names[auditCheckCount] = {L"record", L"handle",     L"owner", L"reference",
                                                       L"table",  L"dictionary", L"block", L"extended data"};
    return names[static_cast<std::size_t>(check)];
}

std::size_t AuditReport::faultCount() const {
    return std::accumulate(faults.begin(), faults.end(), std::size_t{0});
}

std::size_t AuditReport::remarkCount() const {
    return std::accumulate(remarks.begin(), remarks.end(), std::size_t{0});
}

std::wstring DrawingAudit::handleText(AcDbHandleValue handle) {
    wchar_t text[17] = {};
    (void)AcDbHandle(handle).getIntoAsciiBuffer(text);
    return text;
}

void DrawingAudit::find(AuditCheck check, AuditSeverity severity, const AcDbObject* object,
                        std::wstring text) {
    const auto place = static_cast<std::size_t>(check);
    const bool isFault = severity == AuditSeverity::kFault;
    ++(isFault ? m_report.faults : m_report.remarks)[place];
    if (m_listed[place * 2 + isFault]++ >= m_limit) return;
    m_report.findings.push_back({check, severity, object ? object->handle().value() : 0,
                                 object ? object->dxfName() : L"", std::move(text)});
}

AuditReport DrawingAudit::run() {
    gatherHolders();
    for (std::size_t index = 0; index < DatabaseAccess::stubCount(m_database); ++index) {
        const AcDbStub* const stub = DatabaseAccess::stubAt(m_database, index);
        const AcDbObject* const object = stub->object;
        if (!object || object->isErased()) continue;
        ++m_report.objects;
        checkHandle(*object);
        checkOwner(*object);
        if (const GroupBlock* const data = object->extendedData()) checkExtendedData(*object, *data);
    }
    checkOwnerCircles();
    checkReferences();
    checkTables();
    checkDictionaries();
    checkBlocks();
    std::stable_sort(m_report.findings.begin(), m_report.findings.end(),
                     [](const AuditFinding& a, const AuditFinding& b) {
                         return a.severity != b.severity ? a.severity < b.severity : a.check < b.check;
                     });
    return std::move(m_report);
}

AuditReport auditDrawing(const AcDbDatabase& database, std::size_t findingLimit) {
    return DrawingAudit(database, findingLimit).run();
}

} // namespace hostkit

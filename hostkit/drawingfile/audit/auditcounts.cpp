// The check of counts and lists that the rules of single groups cannot tell.

#include "auditing.h"

#include <algorithm>

namespace hostkit {

namespace {

using Range = std::pair<std::size_t, std::size_t>;

template <class... Pieces>
void fault(AuditRun& run, const AuditRecord& record, std::uint32_t line, const Pieces&... pieces) {
    run.findings.fault(AuditCheck::kRecord, &record, line, pieces...);
}

void checkLightPolyline(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    const AuditGroup* const count = content.find(90);
    if (count && auditInteger(count->value) == 0) fault(run, record, count->line, L"it has no vertices");
}

void checkKnots(AuditRun& run, const AuditContent& content, const AuditRecord& record, Range part) {
    double before = 0;
    bool isFirst = true;
    for (std::size_t i = part.first; i < part.second; ++i) {
        const AuditGroup& group = content.groups[i];
        if (group.code != 40) continue;
        const double knot = auditReal(group.value).value_or(before);
        if (!isFirst && knot < before)
            return fault(run, record, group.line, L"its knot ", group.value,
                         L" lies below the one before it");
        before = knot;
        isFirst = false;
    }
}

void checkSpline(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    const Range part = content.partOf("AcDbSpline");
    const std::size_t knots = content.countOf(40, part.first, part.second);
    const std::size_t weights = content.countOf(41, part.first, part.second);
    const std::size_t controls = content.countOf(10, part.first, part.second);
    const std::int64_t degree = content.integer(71).value_or(0);
    if (degree < 1 || degree > 25) fault(run, record, record.line, L"its degree, group 71, is ", degree);
    if (controls == 0 && content.countOf(11, part.first, part.second) == 0)
        fault(run, record, record.line, L"it has neither control points nor fit points");
    const bool isTold =
        content.integer(72).value_or(static_cast<std::int64_t>(knots)) == static_cast<std::int64_t>(knots) &&
        content.integer(73).value_or(static_cast<std::int64_t>(controls)) ==
            static_cast<std::int64_t>(controls);
    if (controls > 0 && isTold && degree >= 1 && knots != controls + static_cast<std::size_t>(degree) + 1) {
        fault(run, record, record.line, L"it has ", knots, L" knots; ", controls,
              L" control points of degree ", degree, L" need ",
              controls + static_cast<std::size_t>(degree) + 1);
        const std::int64_t fitting =
            static_cast<std::int64_t>(knots) - static_cast<std::int64_t>(controls) - 1;
        if (fitting >= 1 && fitting <= 25) run.findings.remedy(71, fitting);
    }
    if (weights != 0 && weights != controls)
        fault(run, record, record.line, L"it has ", weights, L" weights for ", controls, L" control points");
    checkKnots(run, content, record, part);
}

// Each vertex has as many elements as the style, and each element tells how many parameters follow.
void checkMultiline(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    const Range part = content.partOf("AcDbMline");
    const auto vertices = static_cast<std::int64_t>(content.countOf(11, part.first, part.second));
    const std::int64_t elements = content.integer(73).value_or(0);
    for (const auto& [counter, counted] : {std::pair{74, 41}, std::pair{75, 42}}) {
        const auto found = static_cast<std::int64_t>(content.countOf(counter, part.first, part.second));
        if (found != vertices * elements)
            fault(run, record, record.line, vertices, L" vertices of ", elements, L" elements need ",
                  vertices * elements, L" groups ", counter, L", but ", found,
                  found == 1 ? L" stands" : L" stand", L" there");
        if (found != vertices * elements && vertices > 0 && found > 0 && found % vertices == 0)
            run.findings.remedy(73, found / vertices);
        std::int64_t told = 0;
        for (std::size_t i = part.first; i < part.second; ++i)
            if (content.groups[i].code == counter) told += auditInteger(content.groups[i].value).value_or(0);
        const auto there = static_cast<std::int64_t>(content.countOf(counted, part.first, part.second));
        if (told != there)
            fault(run, record, record.line, L"its groups ", counter, L" ask for ", told, L" groups ", counted,
                  L", but ", there, there == 1 ? L" stands" : L" stand", L" there");
    }
}

// A picture of the record in bytes, for programs that do not know its kind.
void checkPreview(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    const Range part = content.partOf("AcDbEntity");
    const AuditGroup* size = content.find(160, part.first, part.second);
    if (!size) size = content.find(92, part.first, part.second);
    if (!size) return;
    std::size_t digits = 0;
    for (std::size_t i = part.first; i < part.second; ++i)
        if (content.groups[i].code == 310) digits += content.groups[i].value.size();
    const std::int64_t told = auditInteger(size->value).value_or(0);
    if (told != static_cast<std::int64_t>(digits / 2))
        fault(run, record, size->line, L"group ", size->code, L" says that ", told, L" bytes follow, but ",
              digits / 2, digits / 2 == 1 ? L" does" : L" do");
    if (told != static_cast<std::int64_t>(digits / 2))
        run.findings.remedy(size->code, static_cast<std::int64_t>(digits / 2));
}

void checkDashes(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    const AuditGroup* const length = content.find(40);
    if (!length || content.countOf(49, 0, content.extendedBegin) == 0) return;
    double sum = 0;
    for (std::size_t i = 0; i < content.extendedBegin; ++i)
        if (content.groups[i].code == 49) sum += std::abs(auditReal(content.groups[i].value).value_or(0));
    const double told = auditReal(length->value).value_or(sum);
    if (std::abs(told - sum) > 1e-4 * std::max(1.0, sum))
        run.findings.remark(AuditCheck::kRecord, &record, length->line, L"its pattern's length is ",
                            length->value, L", but its dashes are ", std::to_wstring(sum), L" long together");
}

} // namespace

void auditCounts(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    if (record.isEntity && run.drawing.hasMarks()) checkPreview(run, content, record);
    if (record.type == "LWPOLYLINE") checkLightPolyline(run, content, record);
    if (record.type == "SPLINE") checkSpline(run, content, record);
    if (record.type == "MLINE") checkMultiline(run, content, record);
    if (record.type == "LTYPE") checkDashes(run, content, record);
}

} // namespace hostkit

// The check of the header's variables and of the classes.

#include "auditing.h"

#include <algorithm>
#include <unordered_set>

namespace hostkit {

namespace {

constexpr std::string_view knownForms[] = {
    "AC1.2",  "AC1.40", "AC1.50", "AC2.10", "AC2.21", "AC2.22", "AC1001", "AC1002", "AC1003", "AC1004",
    "AC1006", "AC1009", "AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};
constexpr int oldestForm = 1009;
constexpr int newestForm = 1032;

struct CurrentName {
    std::string_view variable;
    AuditTable table;
};
constexpr CurrentName currentNames[] = {
    {"$CLAYER", AuditTable::kLayer},
    {"$CELTYPE", AuditTable::kLinetype},
    {"$TEXTSTYLE", AuditTable::kStyle},
    {"$DIMSTYLE", AuditTable::kDimStyle},
};

/// One variable: the group 9 with its name, and its values.
struct Variable {
    const AuditContent& content;
    std::size_t first, end;

    std::string_view name() const { return content.groups[first].value; }
    std::uint32_t line() const { return content.groups[first].line; }
    const AuditGroup& value() const { return content.groups[first + 1]; }
};

void checkForm(AuditRun& run, const AuditGroup& group) {
    const bool isKnown =
        std::find(std::begin(knownForms), std::end(knownForms), group.value) != std::end(knownForms);
    const bool hasNumber = group.value.starts_with("AC") && group.value.size() == 6;
    const auto number = static_cast<int>(hasNumber ? auditInteger(group.value.substr(2)).value_or(0) : 0);
    run.drawing.form = isKnown || number > 0 ? std::max(number, oldestForm) : newestForm;
    if (!isKnown)
        run.findings.fault(AuditCheck::kRecord, nullptr, group.line, L"$ACADVER is ", group.value,
                           L", which is no known form of drawings");
}

// A point is two or three reals in a row; all else is one value.
void checkVariable(AuditRun& run, const Variable& variable) {
    const auto fault = [&](const auto&... pieces) {
        run.findings.fault(AuditCheck::kRecord, nullptr, variable.line(), L"the header's ", variable.name(),
                           pieces...);
    };
    const std::size_t count = variable.end - variable.first - 1;
    if (count == 0) return fault(L" has no value");
    for (std::size_t i = 0; i < count; ++i) {
        const AuditGroup& group = variable.content.groups[variable.first + 1 + i];
        const int wanted = variable.value().code + static_cast<int>(i) * 10;
        if (i > 0 && (variable.value().code != 10 || i > 2 || group.code != wanted))
            return fault(L" has a group ", group.code, L" that does not belong to it");
        if (!isAuditValue(auditValueOf(group.code), group.value))
            return fault(L" is ", group.value, L", which is not ", auditValueName(auditValueOf(group.code)));
    }
    if (variable.value().code == 10 && count == 1) fault(L" has no second coordinate, group 20");
}

void gatherVariable(AuditRun& run, const Variable& variable) {
    if (variable.end == variable.first + 1) return;
    const AuditGroup& value = variable.value();
    if (variable.name() == "$ACADVER") checkForm(run, value);
    if (variable.name() == "$HANDSEED") {
        run.drawing.seed = auditHandle(value.value).value_or(0);
        run.drawing.seedLine = value.line;
    }
    for (const CurrentName& each : currentNames)
        if (each.variable == variable.name() && !value.value.empty())
            run.drawing.nameReferences.push_back({noAuditIndex, value.line,
                                                  run.drawing.names.idOf(value.value),
                                                  static_cast<short>(value.code), each.table});
}

} // namespace

void auditHeader(AuditRun& run, const AuditContent& content) {
    std::unordered_set<std::string_view> known;
    const std::size_t end = content.groups.size();
    for (std::size_t first = 1; first < end;) {
        std::size_t next = first + 1;
        while (next < end && content.groups[next].code != 9) ++next;
        const Variable variable{content, first, next};
        first = next;
        if (content.groups[variable.first].code != 9) {
            run.findings.fault(AuditCheck::kRecord, nullptr, variable.line(),
                               L"a value stands in the header before the first variable's name");
            continue;
        }
        if (!known.insert(variable.name()).second)
            run.findings.fault(AuditCheck::kRecord, nullptr, variable.line(), L"the header's ",
                               variable.name(), L" stands twice");
        checkVariable(run, variable);
        gatherVariable(run, variable);
    }
}

// How many objects of the class there are, group 91, may be missing.
void auditClass(AuditRun& run, const AuditContent& content, const AuditRecord& record) {
    if (record.type != "CLASS")
        return run.findings.fault(AuditCheck::kStructure, &record, record.line,
                                  L"it stands in the section CLASSES");
    const AuditGroup* const name = content.find(1);
    for (const int code : {1, 2})
        if (!content.find(code))
            run.findings.fault(AuditCheck::kRecord, &record, record.line, L"its group ", code,
                               L" is missing");
    if (!name) return;
    auto& classes = run.drawing.classes;
    if (std::find(classes.begin(), classes.end(), name->value) != classes.end())
        run.findings.fault(AuditCheck::kRecord, &record, name->line, L"the class ", name->value,
                           L" stands twice");
    classes.push_back(name->value);
}

} // namespace hostkit

// The check of dictionaries, extension dictionaries and reactors.

#include "auditing.h"

#include <algorithm>

namespace hostkit {

namespace {

bool isDictionary(const AuditRecord& record) {
    return record.type == "DICTIONARY" || record.type == "ACDBDICTIONARYWDFLT";
}

void checkKeys(AuditRun& run) {
    auto& drawing = run.drawing;
    std::unordered_map<std::uint64_t, std::uint32_t> lines;
    for (const AuditEntry& each : drawing.entries) {
        const AuditRecord& dictionary = drawing.records[each.dictionary];
        if (each.key.empty()) {
            run.findings.fault(AuditCheck::kDictionary, &dictionary, each.line, L"an entry has no name");
            continue;
        }
        const std::uint64_t place = std::uint64_t{each.dictionary} << 32 | drawing.names.idOf(each.key);
        if (const auto [first, isNew] = lines.try_emplace(place, each.line); !isNew)
            run.findings.fault(AuditCheck::kDictionary, &dictionary, each.line, L"its entry ", each.key,
                               L" has the name of that in line ", first->second);
    }
}

void checkEntries(AuditRun& run) {
    const auto& drawing = run.drawing;
    for (const AuditEntry& each : drawing.entries) {
        const AuditRecord& dictionary = drawing.records[each.dictionary];
        const auto fault = [&](const auto&... pieces) {
            run.findings.fault(AuditCheck::kDictionary, &dictionary, each.line, L"its entry ", each.key,
                               pieces...);
        };
        const AuditIndex entry = drawing.find(each.handle);
        if (entry == noAuditIndex)
            fault(L", ", AuditHandleText{each.handle}, L", is missing");
        else if (entry == each.dictionary)
            fault(L" is the dictionary itself");
    }
}

// What has an extension dictionary owns it.
void checkExtension(AuditRun& run, const AuditHandleReference& link) {
    const auto& drawing = run.drawing;
    const AuditRecord* const found = drawing.at(drawing.find(link.handle));
    if (!found) return;
    const AuditRecord& record = drawing.records[link.record];
    if (!isDictionary(*found))
        run.findings.fault(AuditCheck::kDictionary, &record, link.line, L"its extension dictionary ",
                           AuditHandleText{link.handle}, L" is a ", found->type);
    else if (found->owner != record.handle && found->ownerLine != 0)
        run.findings.fault(AuditCheck::kDictionary, &record, link.line, L"its extension dictionary ",
                           AuditHandleText{link.handle}, L" belongs to ", AuditHandleText{found->owner});
}

// Entries of dictionaries hear of them; a dictionary that an object listens to, but that does not hold it,
// has lost it.
void checkReactors(AuditRun& run) {
    const auto& drawing = run.drawing;
    std::unordered_map<std::uint64_t, bool> held;
    for (const AuditEntry& each : drawing.entries) {
        const AuditIndex entry = drawing.find(each.handle);
        if (entry != noAuditIndex) held.emplace(std::uint64_t{each.dictionary} << 32 | entry, true);
    }
    for (const AuditHandleReference& each : drawing.handleReferences) {
        if (each.link != AuditLink::kReactor) continue;
        const AuditIndex found = drawing.find(each.handle);
        if (found == noAuditIndex || !isDictionary(drawing.records[found])) continue;
        if (!held.contains(std::uint64_t{found} << 32 | each.record))
            run.findings.remark(AuditCheck::kDictionary, &drawing.records[each.record], each.line,
                                L"its reactor, the dictionary ", AuditHandleText{each.handle},
                                L", does not hold it");
    }
}

void checkRoot(AuditRun& run) {
    const auto& drawing = run.drawing;
    constexpr unsigned objects = 1U << static_cast<unsigned>(AuditSection::kObjects);
    if ((drawing.sections & objects) == 0) return;
    const auto first = std::find_if(drawing.records.begin(), drawing.records.end(),
                                    [](const AuditRecord& each) { return each.isObject; });
    if (first == drawing.records.end() || first->type != "DICTIONARY" || first->owner != 0)
        run.findings.fault(AuditCheck::kDictionary, first == drawing.records.end() ? nullptr : &*first,
                           first == drawing.records.end() ? 0 : first->line,
                           L"the first object is not the named-object dictionary");
}

} // namespace

void auditDictionaries(AuditRun& run) {
    if (!run.drawing.isReadWhole) return;
    if (run.drawing.hasMarks()) checkRoot(run);
    checkKeys(run);
    checkEntries(run);
    for (const AuditHandleReference& each : run.drawing.handleReferences)
        if (each.link == AuditLink::kExtension) checkExtension(run, each);
    checkReactors(run);
}

} // namespace hostkit

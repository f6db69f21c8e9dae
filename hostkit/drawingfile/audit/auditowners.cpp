// The check of handles and owners.

#include "auditing.h"

#include <unordered_set>

namespace hostkit {

namespace {

/// Owners of one drawing, with what is asked about them.
class OwnerCheck {
public:
    explicit OwnerCheck(AuditRun& run)
        : m_run(run)
        , m_drawing(run.drawing) {
        for (const AuditEntry& each : m_drawing.entries)
            m_held.insert(pairOf(m_drawing.records[each.dictionary].handle, each.handle));
        for (const AuditHandleReference& each : m_drawing.handleReferences)
            if (each.link == AuditLink::kExtension || (each.code >= 360 && each.code <= 369))
                m_held.insert(pairOf(m_drawing.records[each.record].handle, each.handle));
    }

    void check() {
        for (const AuditRecord& record : m_drawing.records) check(record);
        checkCircles();
    }

private:
    struct Pair {
        AcDbHandleValue owner, owned;
        bool operator==(const Pair&) const = default;
    };
    struct PairHash {
        std::size_t operator()(const Pair& pair) const {
            return std::hash<AcDbHandleValue>()(pair.owner * 0x9E3779B97F4A7C15U ^ pair.owned);
        }
    };
    static Pair pairOf(AcDbHandleValue owner, AcDbHandleValue owned) { return {owner, owned}; }

    template <class... Pieces>
    void fault(const AuditRecord& record, const Pieces&... pieces) {
        m_run.findings.fault(AuditCheck::kOwner, &record, record.ownerLine, pieces...);
    }
    bool isRoot(const AuditRecord& record) const { return record.isObject && record.type == "DICTIONARY"; }

    void check(const AuditRecord& record) {
        if (record.ownerLine == 0) {
            if (record.type != "TABLE")
                m_run.findings.remark(AuditCheck::kOwner, &record, record.line,
                                      L"it names no owner, group 330");
            return;
        }
        if (record.owner == 0) {
            if (record.type != "TABLE" && !isRoot(record)) fault(record, L"it has no owner");
            return;
        }
        const AuditRecord* const owner = m_drawing.at(ownerOf(record));
        if (!owner) return fault(record, L"its owner ", AuditHandleText{record.owner}, L" is missing");
        if (record.isObject)
            checkObject(record, *owner);
        else if (record.type == "TABLE")
            fault(record, L"a table has no owner, but this one names ", AuditHandleText{record.owner});
        else
            checkContained(record, *owner);
    }

    // Dictionaries and records that know their own are asked whether they do.
    void checkObject(const AuditRecord& record, const AuditRecord& owner) {
        const bool isEntry = owner.type == "DICTIONARY" || owner.type == "ACDBDICTIONARYWDFLT";
        const bool isExtension = record.type == "DICTIONARY" && !isEntry;
        if ((isEntry || isExtension) && !m_held.contains(pairOf(record.owner, record.handle)))
            fault(record, L"its owner, the ", owner.type, L" ", AuditHandleText{record.owner},
                  L", does not hold it");
    }

    AcDbHandleValue blockRecordOf(const AuditRecord& block) const {
        const AuditIndex found =
            block.name == AuditNames::none ? noAuditIndex : m_drawing.find(AuditTable::kBlock, block.name);
        return found == noAuditIndex ? block.owner : m_drawing.records[found].handle;
    }
    // The block's record that holds what stands beside this.
    AcDbHandleValue holderOf(const AuditRecord& record) const {
        const AuditRecord* const container = m_drawing.at(record.container);
        if (!container) return record.owner;
        return container->type == "BLOCK" ? blockRecordOf(*container) : container->owner;
    }

    void checkContained(const AuditRecord& record, const AuditRecord& owner) {
        const AuditRecord* const container = m_drawing.at(record.container);
        if (record.type == "BLOCK") {
            const AcDbHandleValue wanted = blockRecordOf(record);
            if (owner.type != "BLOCK_RECORD" || wanted != record.owner)
                fault(record, L"its owner is the ", owner.type, L" ", AuditHandleText{record.owner},
                      L"; the record of its name is ", AuditHandleText{wanted});
        } else if (!container) {
            if (record.isEntity) checkInEntities(record, owner);
        } else if (container->type == "BLOCK") {
            tellOfOther(record, owner, *container, blockRecordOf(*container));
        } else if (container->type == "TABLE") {
            tellOfOther(record, owner, *container, container->handle);
        } else if (record.owner != container->handle && record.owner == holderOf(*container)) {
            // Some programs name the block in vertices and attributes; others have got used to it.
            m_run.findings.remark(AuditCheck::kOwner, &record, record.ownerLine, L"its owner is the block ",
                                  AuditHandleText{record.owner}, L"; it belongs to the ", container->type,
                                  L" ", AuditHandleText{container->handle});
        } else {
            tellOfOther(record, owner, *container, container->handle);
        }
    }

    void tellOfOther(const AuditRecord& record, const AuditRecord& owner, const AuditRecord& container,
                     AcDbHandleValue wanted) {
        if (record.owner != wanted)
            fault(record, L"its owner is the ", owner.type, L" ", AuditHandleText{record.owner},
                  L", but it stands in the ", container.type, L" of ", AuditHandleText{wanted});
    }

    void checkInEntities(const AuditRecord& record, const AuditRecord& owner) {
        if (owner.type != "BLOCK_RECORD")
            return fault(record, L"its owner is the ", owner.type, L" ", AuditHandleText{record.owner},
                         L", but it stands in the section of entities");
        const std::wstring name = nameOf(owner);
        const bool isModel = name == L"*MODEL_SPACE";
        if (!isModel && !name.starts_with(L"*PAPER_SPACE"))
            fault(record, L"its owner is the block ", std::wstring_view(name),
                  L", which is no layout, but it stands in the section of entities");
        else if (isModel && record.isOnPaper)
            m_run.findings.remark(AuditCheck::kOwner, &record, record.ownerLine,
                                  L"its group 67 says paper space, but its owner is the model space");
    }

    std::wstring nameOf(const AuditRecord& record) const {
        if (record.name == AuditNames::none) return {};
        std::wstring name = AuditNames::charactersOf(m_drawing.names.spelling(record.name));
        for (wchar_t& each : name)
            if (each >= L'a' && each <= L'z') each = static_cast<wchar_t>(each - 32);
        return name;
    }

    // Neighbours mostly belong to the same one.
    AuditIndex ownerOf(const AuditRecord& record) {
        if (record.owner == 0) return noAuditIndex;
        if (record.owner == m_lastOwner) return m_lastIndex;
        m_lastOwner = record.owner;
        return m_lastIndex = m_drawing.find(record.owner);
    }

    // Follows each chain of owners until it meets one that was followed before.
    void checkCircles() {
        std::vector<AuditIndex> startedFrom(m_drawing.records.size(), noAuditIndex);
        for (AuditIndex start = 0; start < m_drawing.records.size(); ++start)
            for (AuditIndex each = start; each != noAuditIndex;) {
                if (startedFrom[each] != noAuditIndex) {
                    if (startedFrom[each] == start)
                        fault(m_drawing.records[each], L"its owners form a circle");
                    break;
                }
                startedFrom[each] = start;
                each = ownerOf(m_drawing.records[each]);
            }
    }

    AuditRun& m_run;
    const AuditedDrawing& m_drawing;
    std::unordered_set<Pair, PairHash> m_held;
    AcDbHandleValue m_lastOwner = 0;
    AuditIndex m_lastIndex = noAuditIndex;
};

} // namespace

void auditHandles(AuditRun& run) {
    auto& drawing = run.drawing;
    if (!drawing.isReadWhole) return;
    AcDbHandleValue highest = 0;
    for (const AuditRecord& record : drawing.records) highest = std::max(highest, record.handle);
    if (drawing.seedLine != 0 && drawing.seed <= highest)
        run.findings.fault(AuditCheck::kHandle, nullptr, drawing.seedLine, L"the next handle, $HANDSEED, is ",
                           AuditHandleText{drawing.seed}, L", but ", AuditHandleText{highest},
                           L" is given already");
    if (drawing.seedLine == 0 && drawing.hasMarks())
        run.findings.remark(AuditCheck::kHandle, nullptr, 0,
                            L"the header does not tell the next handle, $HANDSEED");
}

void auditOwners(AuditRun& run) {
    if (run.drawing.isReadWhole && run.drawing.hasOwners()) OwnerCheck(run).check();
}

} // namespace hostkit

// The check of blocks, of their records, and of layouts.

#include "auditing.h"

#include <algorithm>

namespace hostkit {

namespace {

void checkBlocksAndRecords(AuditRun& run) {
    const auto& drawing = run.drawing;
    const auto& recordsOfBlocks = drawing.table(AuditTable::kBlock);
    for (const AuditRecord& record : drawing.records) {
        if (record.name == AuditNames::none) continue;
        const std::string_view name = drawing.names.spelling(record.name);
        if (record.type == "BLOCK" && !recordsOfBlocks.contains(record.name))
            run.findings.fault(AuditCheck::kBlock, &record, record.nameLine, L"the block ", name,
                               L" has no record in the table BLOCK_RECORD");
        if (record.type == "BLOCK_RECORD" && !record.isObject && !drawing.blocks.contains(record.name))
            run.findings.fault(AuditCheck::kBlock, &record, record.nameLine, L"the block ", name,
                               L" is missing in the section BLOCKS");
    }
}

/// Walks the blocks that blocks insert, without recursion.
class CircleWalk {
public:
    explicit CircleWalk(AuditRun& run)
        : m_run(run) {
        const auto& records = run.drawing.records;
        for (AuditIndex i = 0; i < records.size(); ++i) {
            const AuditRecord& record = records[i];
            if (record.name == AuditNames::none || (record.type != "INSERT" && record.type != "DIMENSION"))
                continue;
            const AuditRecord* const container = run.drawing.at(record.container);
            if (container && container->type == "BLOCK") m_inserted[container->name].push_back(i);
        }
    }

    // Blocks in the order of the drawing, so that the same circle is told at the same place.
    void walk() {
        for (const AuditRecord& record : m_run.drawing.records)
            if (record.type == "BLOCK" && record.name != AuditNames::none) walkFrom(record.name);
    }

private:
    struct Step {
        AuditNames::Id block;
        std::size_t next = 0;
    };

    void walkFrom(AuditNames::Id start) {
        if (!enter(start)) return;
        while (!m_path.empty()) {
            const AuditNames::Id block = m_path.back().block;
            const auto inserts = m_inserted.find(block);
            if (inserts == m_inserted.end() || m_path.back().next == inserts->second.size()) {
                m_isOpen[block] = false;
                m_path.pop_back();
                continue;
            }
            const AuditRecord& insert = m_run.drawing.records[inserts->second[m_path.back().next++]];
            if (!enter(insert.name) && m_isOpen[insert.name]) tell(insert);
        }
    }

    bool enter(AuditNames::Id block) {
        if (!m_isOpen.emplace(block, true).second) return false;
        m_path.push_back({block});
        return true;
    }

    void tell(const AuditRecord& insert) {
        const auto& names = m_run.drawing.names;
        std::wstring way;
        for (auto step = m_path.rbegin(); step != m_path.rend() && step->block != insert.name; ++step) {
            way += way.empty() ? L", by way of " : L" and ";
            appendWords(way, names.spelling(step->block));
        }
        m_run.findings.fault(AuditCheck::kBlock, &insert, insert.nameLine, L"the block ",
                             names.spelling(insert.name), L" contains itself", std::wstring_view(way));
    }

    AuditRun& m_run;
    std::unordered_map<AuditNames::Id, std::vector<AuditIndex>> m_inserted;
    std::unordered_map<AuditNames::Id, bool> m_isOpen;
    std::vector<Step> m_path;
};

// A layout names its block, and the block's record its layout.
void checkLayouts(AuditRun& run) {
    const auto& drawing = run.drawing;
    for (const auto& [index, link] : drawing.layouts) {
        if (link.handle == 0) continue;
        const AuditIndex other = drawing.find(link.handle);
        const auto back = drawing.layouts.find(other);
        if (other == noAuditIndex || back == drawing.layouts.end()) continue;
        if (back->second.handle != drawing.records[index].handle)
            run.findings.fault(AuditCheck::kBlock, &drawing.records[index], link.line, L"group ", link.code,
                               L" leads to the ", drawing.records[other].type, L" ",
                               AuditHandleText{link.handle}, L", which leads to ",
                               AuditHandleText{back->second.handle}, L" instead");
    }
}

} // namespace

void auditBlocks(AuditRun& run) {
    if (!run.drawing.isReadWhole) return;
    if (run.drawing.hasMarks()) checkBlocksAndRecords(run);
    CircleWalk(run).walk();
    checkLayouts(run);
}

} // namespace hostkit

// Check of a drawing, its walk: sections, tables, blocks and sequences, and what each record stands in;
// leaves out what is in the records.
#pragma once

#include "auditing.h"

namespace hostkit {

/// Walks the text once, record by record, and has each checked where it stands.
class AuditWalk {
public:
    AuditWalk(AuditRun& run, std::string_view bytes)
        : m_run(run)
        , m_scanner(bytes) {}
    void walk();

private:
    void finishRecord();
    void beginSection();
    void endSection();
    void noteSection(std::string_view name);
    void tellOfUnfinished(const AuditGroup& last, AuditScan result);
    void tellOfMissingSections();

    void visit(AuditRecord record);
    void placeInTable(AuditIndex index);
    void endTable(std::uint32_t line);
    void placeInBlock(AuditIndex index);
    void placeInSequence(AuditIndex index);
    void beginSequence(AuditIndex polylineOrInsert);
    void endSequence(AuditRecord& record);
    void closeTable();
    void closeBlock();
    void closeSequence();
    void checkVertices(AuditIndex polyline);

    const AuditRecord* at(AuditIndex index) const {
        return index == noAuditIndex ? nullptr : &m_run.drawing.records[index];
    }
    void fault(const AuditRecord* record, std::uint32_t line, std::wstring_view text) {
        m_run.findings.fault(AuditCheck::kStructure, record, line, text);
    }

    /// A POLYLINE or INSERT whose parts may follow.
    struct Sequence {
        AuditIndex owner = noAuditIndex;
        bool isPolyline = false;
        bool isAnnounced = false; ///< group 66
        std::size_t parts = 0;
        std::int64_t meshRows = 0;
        std::int64_t meshVertices = -1; ///< what a mesh says; below 0 where it says nothing
    };

    AuditRun& m_run;
    AuditScanner m_scanner;
    AuditGroup m_head; ///< the group 0 of the record
    bool m_hasHead = false;
    AuditContent m_content;
    AuditSection m_section = AuditSection::kNone;
    std::string_view m_sectionName;
    bool m_isEnded = false;
    AuditIndex m_table = noAuditIndex;
    std::string_view m_tableName;
    AuditIndex m_block = noAuditIndex;
    Sequence m_sequence;
};

} // namespace hostkit

#include "auditwalk.h"

namespace hostkit {

namespace {

constexpr std::string_view sectionNames[] = {"",       "HEADER",   "CLASSES", "TABLES",
                                             "BLOCKS", "ENTITIES", "OBJECTS"};

constexpr int applicationCode = 1001;
constexpr std::int64_t meshFlag = 16;

AuditSection sectionOf(std::string_view name) {
    for (std::size_t i = 1; i < std::size(sectionNames); ++i)
        if (sectionNames[i] == name) return static_cast<AuditSection>(i);
    return AuditSection::kOther;
}

// Blanks behind a keyword are what some writers leave; they mean nothing.
std::string_view keywordOf(std::string_view value) {
    while (!value.empty() && (value.back() == ' ' || value.back() == '\t')) value.remove_suffix(1);
    while (!value.empty() && value.front() == ' ') value.remove_prefix(1);
    return value;
}

std::wstring wideKeyword(std::string_view name) {
    std::wstring text;
    appendWords(text, name);
    return text;
}

} // namespace

void AuditWalk::walk() {
    AuditGroup group;
    AuditScan result = AuditScan::kEnd;
    while (!m_isEnded && (result = m_scanner.next(group)) == AuditScan::kGroup) {
        if (group.code != 0) {
            if (group.code != 999) m_content.groups.push_back(group);
            continue;
        }
        finishRecord();
        m_head = group;
        m_head.value = keywordOf(group.value);
        m_hasHead = true;
        m_isEnded = m_head.value == "EOF";
    }
    // A record in which the text breaks off may lack anything.
    if (m_isEnded) {
        finishRecord();
        if (m_scanner.next(group) != AuditScan::kEnd)
            m_run.findings.remark(AuditCheck::kStructure, nullptr, group.line, L"lines follow the mark EOF");
    } else {
        tellOfUnfinished(group, result);
    }
    tellOfMissingSections();
}

void AuditWalk::tellOfUnfinished(const AuditGroup& last, AuditScan result) {
    m_run.drawing.isReadWhole = false;
    if (result == AuditScan::kBadCode)
        return m_run.findings.fault(AuditCheck::kStructure, nullptr, last.line, L"the line ", last.value,
                                    L" stands where a group code belongs; nothing behind it was checked");
    if (result == AuditScan::kNoValue)
        return m_run.findings.fault(AuditCheck::kStructure, nullptr, last.line,
                                    L"the file ends behind the group code ", last.value,
                                    L", without its value");
    fault(nullptr, last.line, L"the mark EOF is missing; the file may be cut");
}

void AuditWalk::tellOfMissingSections() {
    if (!m_run.drawing.isReadWhole) return;
    const auto has = [this](AuditSection section) {
        return (m_run.drawing.sections >> static_cast<unsigned>(section) & 1U) != 0;
    };
    if (!has(AuditSection::kEntities))
        m_run.findings.remark(AuditCheck::kStructure, nullptr, 0, L"the section ENTITIES is missing");
    if (!m_run.drawing.hasMarks()) return;
    for (const AuditSection section : {AuditSection::kTables, AuditSection::kBlocks, AuditSection::kObjects})
        if (!has(section))
            m_run.findings.remark(AuditCheck::kStructure, nullptr, 0, L"the section ",
                                  sectionNames[static_cast<std::size_t>(section)], L" is missing");
}

void AuditWalk::finishRecord() {
    m_content.extendedBegin = m_content.groups.size();
    for (std::size_t i = 0; i < m_content.groups.size(); ++i)
        if (m_content.groups[i].code == applicationCode) {
            m_content.extendedBegin = i;
            break;
        }
    if (!m_hasHead) {
        if (!m_content.groups.empty())
            fault(nullptr, m_content.groups.front().line, L"groups stand before the first record");
    } else if (m_head.value == "SECTION") {
        beginSection();
    } else if (m_head.value == "ENDSEC") {
        if (m_section == AuditSection::kNone)
            fault(nullptr, m_head.line, L"ENDSEC stands outside of a section");
        endSection();
    } else if (m_head.value == "EOF") {
        if (m_section != AuditSection::kNone)
            fault(nullptr, m_head.line, L"the section " + wideKeyword(m_sectionName) + L" has no ENDSEC");
        endSection();
    } else {
        visit({.type = m_head.value, .line = m_head.line});
    }
    m_content.groups.clear();
}

void AuditWalk::beginSection() {
    if (m_section != AuditSection::kNone) {
        fault(nullptr, m_head.line,
              L"a section begins within the section " + wideKeyword(m_sectionName) +
                  L", which has no ENDSEC");
        endSection();
    }
    if (m_content.groups.empty() || m_content.groups.front().code != 2) {
        fault(nullptr, m_head.line, L"a section has no name");
        m_section = AuditSection::kOther;
        return;
    }
    noteSection(keywordOf(m_content.groups.front().value));
    if (m_section == AuditSection::kHeader)
        auditHeader(m_run, m_content);
    else if (m_section != AuditSection::kOther && m_content.groups.size() > 1)
        fault(nullptr, m_content.groups[1].line, L"groups stand before the first record of a section");
}

void AuditWalk::noteSection(std::string_view name) {
    m_section = sectionOf(name);
    m_sectionName = name;
    const unsigned bit = 1U << static_cast<unsigned>(m_section);
    if (m_section != AuditSection::kOther && (m_run.drawing.sections & bit) != 0)
        fault(nullptr, m_head.line, L"the section " + wideKeyword(name) + L" stands twice");
    m_run.drawing.sections |= bit;
}

void AuditWalk::endSection() {
    closeSequence();
    closeTable();
    closeBlock();
    m_section = AuditSection::kNone;
}

void AuditWalk::visit(AuditRecord record) {
    if (m_section == AuditSection::kOther) return;
    if (m_section == AuditSection::kNone || m_section == AuditSection::kHeader)
        return m_run.findings.fault(AuditCheck::kStructure, &record, record.line,
                                    L"it stands outside of the sections");
    if (m_section == AuditSection::kClasses) return auditClass(m_run, m_content, record);
    if (m_section == AuditSection::kTables && record.type == "ENDTAB") return endTable(record.line);
    record.kind = findAuditKind(record.type);
    record.isObject = m_section == AuditSection::kObjects;
    record.isEntity = m_section == AuditSection::kBlocks || m_section == AuditSection::kEntities;
    m_run.findings.countObject();
    const auto index = static_cast<AuditIndex>(m_run.drawing.records.size());
    m_run.drawing.records.push_back(record);
    auditRecord(m_run, m_content, index);
    if (record.isEntity) placeInSequence(index);
    if (m_section == AuditSection::kTables) placeInTable(index);
    if (m_section == AuditSection::kBlocks) placeInBlock(index);
}

// Tables.

void AuditWalk::closeTable() {
    if (m_table != noAuditIndex)
        fault(at(m_table), at(m_table)->line, L"the table " + wideKeyword(m_tableName) + L" has no ENDTAB");
    m_table = noAuditIndex;
}

void AuditWalk::endTable(std::uint32_t line) {
    if (m_table == noAuditIndex) fault(nullptr, line, L"ENDTAB stands outside of a table");
    m_table = noAuditIndex;
}

void AuditWalk::placeInTable(AuditIndex index) {
    AuditRecord& record = m_run.drawing.records[index];
    if (record.type == "TABLE") {
        closeTable();
        const AuditGroup* const name = m_content.find(2);
        m_tableName = name ? keywordOf(name->value) : "";
        if (!name) fault(&record, record.line, L"a table has no name");
        m_table = index;
        return;
    }
    if (m_table == noAuditIndex)
        fault(&record, record.line, L"it stands outside of a table");
    else if (record.type != m_tableName)
        m_run.findings.fault(AuditCheck::kTable, &record, record.line, L"it is no record for the table ",
                             m_tableName);
    record.container = m_table;
}

// Blocks.

void AuditWalk::closeBlock() {
    if (m_block != noAuditIndex) fault(at(m_block), at(m_block)->line, L"its ENDBLK is missing");
    m_block = noAuditIndex;
}

void AuditWalk::placeInBlock(AuditIndex index) {
    AuditRecord& record = m_run.drawing.records[index];
    if (record.type == "BLOCK") {
        closeBlock();
        m_block = index;
        return;
    }
    if (m_block == noAuditIndex)
        fault(&record, record.line, L"it stands in the section BLOCKS, but in no block");
    if (record.container == noAuditIndex) record.container = m_block;
    if (record.type == "ENDBLK") m_block = noAuditIndex;
}

// Sequences.

void AuditWalk::placeInSequence(AuditIndex index) {
    AuditRecord& record = m_run.drawing.records[index];
    const bool isVertex = record.type == "VERTEX";
    if (record.type == "SEQEND") return endSequence(record);
    if (isVertex || record.type == "ATTRIB") {
        if (m_sequence.owner == noAuditIndex || isVertex != m_sequence.isPolyline)
            return fault(&record, record.line,
                         isVertex ? L"it stands behind no polyline" : L"it stands behind no block reference");
        record.container = m_sequence.owner;
        const bool needsFlag = !m_sequence.isPolyline || !m_run.drawing.hasMarks();
        if (++m_sequence.parts == 1 && !m_sequence.isAnnounced && needsFlag)
            fault(at(m_sequence.owner), at(m_sequence.owner)->line,
                  isVertex ? L"vertices follow, but its group 66 does not say so"
                           : L"attributes follow, but its group 66 does not say so");
        return;
    }
    closeSequence();
    if (record.type == "POLYLINE" || record.type == "INSERT") beginSequence(index);
}

void AuditWalk::beginSequence(AuditIndex index) {
    m_sequence.owner = index;
    m_sequence.isPolyline = at(index)->type == "POLYLINE";
    m_sequence.isAnnounced = m_content.integer(66).value_or(0) != 0;
    const std::int64_t flags = m_content.integer(70).value_or(0);
    const bool isSmoothed = m_content.integer(75).value_or(0) != 0; // and has more vertices than it tells
    m_sequence.meshRows = m_content.integer(71).value_or(0);
    if (m_sequence.isPolyline && (flags & meshFlag) != 0 && !isSmoothed)
        m_sequence.meshVertices = m_content.integer(71).value_or(0) * m_content.integer(72).value_or(0);
}

void AuditWalk::endSequence(AuditRecord& record) {
    if (m_sequence.owner == noAuditIndex)
        return fault(&record, record.line, L"it stands behind no polyline and no block reference");
    record.container = m_sequence.owner;
    if (m_sequence.isPolyline)
        checkVertices(m_sequence.owner);
    else if (m_sequence.parts == 0 && m_sequence.isAnnounced)
        fault(at(m_sequence.owner), at(m_sequence.owner)->line,
              L"its group 66 says that attributes follow, but none does");
    m_sequence = {};
}

void AuditWalk::checkVertices(AuditIndex polyline) {
    if (m_sequence.parts == 0) return fault(at(polyline), at(polyline)->line, L"it has no vertices");
    if (m_sequence.meshVertices < 0 || static_cast<std::size_t>(m_sequence.meshVertices) == m_sequence.parts)
        return;
    m_run.findings.fault(AuditCheck::kRecord, at(polyline), at(polyline)->line,
                         L"its groups 71 and 72 ask for ", m_sequence.meshVertices, L" vertices, but ",
                         m_sequence.parts, L" follow");
    const auto parts = static_cast<std::int64_t>(m_sequence.parts);
    if (m_sequence.meshRows > 0 && parts % m_sequence.meshRows == 0)
        m_run.findings.remedy(72, parts / m_sequence.meshRows);
}

void AuditWalk::closeSequence() {
    const AuditRecord* const owner = at(m_sequence.owner);
    if (owner) {
        if (m_sequence.isPolyline || m_sequence.parts > 0)
            fault(owner, owner->line, L"the SEQEND behind its parts is missing");
        else if (m_sequence.isAnnounced)
            fault(owner, owner->line, L"its group 66 says that attributes follow, but none does");
    }
    m_sequence = {};
}

} // namespace hostkit

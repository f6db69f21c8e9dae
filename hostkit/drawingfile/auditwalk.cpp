#include "auditwalk.h"

namespace hostkit {

namespace {

constexpr std::string_view sectionNames[] = {"",       "HEADER",   "CLASSES", "TABLES",
                                             "BLOCKS", "ENTITIES", "OBJECTS"};

constexpr int applicationCode = 1001;

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
    finishRecord();
    if (m_isEnded) {
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
        endSection(m_head.line);
    } else if (m_head.value == "EOF") {
        if (m_section != AuditSection::kNone)
            fault(nullptr, m_head.line, L"the section " + wideKeyword(m_sectionName) + L" has no ENDSEC");
        endSection(m_head.line);
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
        endSection(m_head.line);
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

void AuditWalk::endSection(std::uint32_t) {
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
    record.kind = findAuditKind(record.type);
    record.isObject = m_section == AuditSection::kObjects;
    record.isEntity = m_section == AuditSection::kBlocks || m_section == AuditSection::kEntities;
    if (!place(record)) return;
    m_run.findings.countObject();
    const auto index = static_cast<AuditIndex>(m_run.drawing.records.size());
    m_run.drawing.records.push_back(record);
    if (record.type == "TABLE") m_table = index;
    if (record.type == "BLOCK") m_block = index;
    if (m_sequence.owner == noAuditIndex && (record.type == "POLYLINE" || record.type == "INSERT"))
        m_sequence.owner = index;
    auditRecord(m_run, m_content, index);
}

bool AuditWalk::place(AuditRecord& record) {
    if (record.isEntity) placeInSequence(record);
    if (m_section == AuditSection::kTables) return placeInTable(record);
    if (m_section == AuditSection::kBlocks) return placeInBlock(record);
    return true;
}

// Tables.

void AuditWalk::closeTable() {
    if (m_table != noAuditIndex)
        fault(at(m_table), at(m_table)->line, L"the table " + wideKeyword(m_tableName) + L" has no ENDTAB");
    m_table = noAuditIndex;
}

bool AuditWalk::placeInTable(AuditRecord& record) {
    if (record.type == "TABLE") {
        closeTable();
        const AuditGroup* const name = m_content.find(2);
        m_tableName = name ? keywordOf(name->value) : "";
        if (!name) fault(&record, record.line, L"a table has no name");
        return true;
    }
    if (record.type == "ENDTAB") {
        if (m_table == noAuditIndex) fault(nullptr, record.line, L"ENDTAB stands outside of a table");
        m_table = noAuditIndex;
        return false;
    }
    if (m_table == noAuditIndex)
        fault(&record, record.line, L"it stands outside of a table");
    else if (record.type != m_tableName)
        m_run.findings.fault(AuditCheck::kTable, &record, record.line, L"it is no record for the table ",
                             m_tableName);
    record.container = m_table;
    return true;
}

// Blocks.

void AuditWalk::closeBlock() {
    if (m_block != noAuditIndex) fault(at(m_block), at(m_block)->line, L"its ENDBLK is missing");
    m_block = noAuditIndex;
}

bool AuditWalk::placeInBlock(AuditRecord& record) {
    if (record.type == "BLOCK") {
        closeBlock();
        return true;
    }
    if (m_block == noAuditIndex)
        fault(&record, record.line, L"it stands in the section BLOCKS, but in no block");
    if (record.container == noAuditIndex) record.container = m_block;
    if (record.type == "ENDBLK") m_block = noAuditIndex;
    return true;
}

// Sequences.

void AuditWalk::placeInSequence(AuditRecord& record) {
    const bool isVertex = record.type == "VERTEX";
    if (isVertex || record.type == "ATTRIB" || record.type == "SEQEND") {
        const bool isOpen = m_sequence.owner != noAuditIndex;
        if (!isOpen || (record.type != "SEQEND" && isVertex != m_sequence.isPolyline))
            return fault(&record, record.line,
                         isVertex ? L"it stands behind no polyline" : L"it stands behind no block reference");
        record.container = m_sequence.owner;
        if (record.type == "SEQEND") {
            if (m_sequence.isPolyline) checkVertices(m_sequence.owner);
            if (!m_sequence.isPolyline && m_sequence.parts == 0 && m_sequence.isAnnounced)
                fault(at(m_sequence.owner), at(m_sequence.owner)->line,
                      L"its group 66 says that attributes follow, but none does");
            m_sequence = {};
            return;
        }
        if (++m_sequence.parts == 1 && !m_sequence.isAnnounced &&
            (!m_sequence.isPolyline || !m_run.drawing.hasMarks()))
            fault(at(m_sequence.owner), at(m_sequence.owner)->line,
                  isVertex ? L"vertices follow, but its group 66 does not say so"
                           : L"attributes follow, but its group 66 does not say so");
        return;
    }
    closeSequence();
    if (record.type != "POLYLINE" && record.type != "INSERT") return;
    m_sequence = {};
    m_sequence.isPolyline = record.type == "POLYLINE";
    m_sequence.isAnnounced = m_content.integer(66).value_or(0) != 0;
    constexpr std::int64_t meshFlag = 16;
    const std::int64_t flags = m_content.integer(70).value_or(0);
    if (m_sequence.isPolyline && (flags & meshFlag) != 0 && m_content.integer(75).value_or(0) == 0)
        m_sequence.meshVertices = m_content.integer(71).value_or(0) * m_content.integer(72).value_or(0);
}

void AuditWalk::checkVertices(AuditIndex polyline) {
    if (m_sequence.parts == 0) return fault(at(polyline), at(polyline)->line, L"it has no vertices");
    if (m_sequence.meshVertices >= 0 && static_cast<std::size_t>(m_sequence.meshVertices) != m_sequence.parts)
        m_run.findings.fault(AuditCheck::kRecord, at(polyline), at(polyline)->line,
                             L"its groups 71 and 72 ask for ", m_sequence.meshVertices, L" vertices, but ",
                             m_sequence.parts, L" follow");
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

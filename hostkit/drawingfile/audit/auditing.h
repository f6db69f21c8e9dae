// Check of a drawing, inside: what the checks share; leaves out the checks, a file each.
#pragma once

#include "auditnames.h"
#include "auditrules.h"
#include "auditscanner.h"
#include "auditvalues.h"
#include "drawingaudit.h"

#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace hostkit {

using AuditIndex = std::uint32_t;
constexpr AuditIndex noAuditIndex = 0xFFFFFFFF;

/// What is kept of a record when the walk has gone on.
struct AuditRecord {
    std::string_view type;
    const AuditKind* kind = nullptr; ///< null for a kind without rules
    AcDbHandleValue handle = 0;
    AcDbHandleValue owner = 0;
    std::uint32_t line = 0;
    std::uint32_t ownerLine = 0;         ///< 0 where no owner is named
    AuditIndex container = noAuditIndex; ///< the record that it stands in: BLOCK, TABLE, POLYLINE, INSERT
    AuditNames::Id name =
        AuditNames::none; ///< of a table, its record, a block, or the block that is inserted
    std::uint32_t nameLine = 0;
    bool isEntity = false;  ///< of blocks or the section of entities
    bool isObject = false;  ///< of the section of objects
    bool isOnPaper = false; ///< group 67
};

/// The groups of the record that the walk stands at.
struct AuditContent {
    std::vector<AuditGroup> groups; ///< behind the record's name
    std::size_t extendedBegin = 0;  ///< the first one of extended data

    const AuditGroup* find(int code, std::size_t first, std::size_t end) const;
    const AuditGroup* find(int code) const { return find(code, 0, extendedBegin); }
    std::size_t countOf(int code, std::size_t first, std::size_t end) const;
    /// The integer value of the first such group.
    std::optional<std::int64_t> integer(int code) const;
    /// The groups behind a class mark, up to the next one; all of the record's own where it has no marks.
    std::pair<std::size_t, std::size_t> partOf(std::string_view mark) const;
};

/// A handle in a sentence.
struct AuditHandleText {
    AcDbHandleValue value;
};

void appendWords(std::wstring& text, std::wstring_view words);
/// Bytes of the drawing: UTF-8, else Windows-1252; a long text is cut.
void appendWords(std::wstring& text, std::string_view bytes);
void appendWords(std::wstring& text, AuditHandleText handle);
template <std::integral T>
void appendWords(std::wstring& text, T number) {
    text += std::to_wstring(number);
}

/// Collects what is found. A null record stands for the drawing itself.
class AuditFindings {
public:
    explicit AuditFindings(std::size_t limit)
        : m_limit(limit) {}

    template <class... Pieces>
    void fault(AuditCheck check, const AuditRecord* record, std::uint32_t line, const Pieces&... pieces) {
        tell(check, AuditSeverity::kFault, record, line, pieces...);
    }
    template <class... Pieces>
    void remark(AuditCheck check, const AuditRecord* record, std::uint32_t line, const Pieces&... pieces) {
        tell(check, AuditSeverity::kRemark, record, line, pieces...);
    }
    /// The sentence is put together from texts, bytes of the drawing, numbers and handles.
    template <class... Pieces>
    void tell(AuditCheck check, AuditSeverity severity, const AuditRecord* record, std::uint32_t line,
              const Pieces&... pieces) {
        m_isLastListed = !(record && m_passedOver.contains(record->handle)) && count(check, severity);
        if (!m_isLastListed) return;
        std::wstring text;
        (appendWords(text, pieces), ...);
        add(check, severity, record, line, std::move(text));
    }
    /// What the last one told would have to be.
    void remedy(int code, std::int64_t value) {
        if (!m_isLastListed) return;
        m_report.findings.back().remedyCode = static_cast<short>(code);
        m_report.findings.back().remedyValue = value;
    }
    /// Nothing is said of the content of this record: it is not in the text.
    void passOver(AcDbHandleValue handle) { m_passedOver.insert(handle); }
    AuditReport take();
    void countObject() { ++m_report.objects; }

private:
    bool count(AuditCheck check, AuditSeverity severity);
    void add(AuditCheck check, AuditSeverity severity, const AuditRecord* record, std::uint32_t line,
             std::wstring text);

    std::unordered_set<AcDbHandleValue> m_passedOver;
    std::size_t m_limit;
    AuditReport m_report;
    std::array<std::size_t, auditCheckCount * 2> m_listed{};
    bool m_isLastListed = false;
};

enum class AuditLink : unsigned char { kReference, kReactor, kExtension, kExtendedData };

struct AuditHandleReference {
    AcDbHandleValue handle;
    std::string_view target; ///< the type that it should lead to; empty for any
    AuditIndex record;
    std::uint32_t line;
    short code;
    AuditLink link;
};

struct AuditNameReference {
    AuditIndex record;
    std::uint32_t line;
    AuditNames::Id name;
    short code;
    AuditTable table;
};

struct AuditEntry {
    AuditIndex dictionary;
    std::uint32_t line;
    std::string_view key;
    AcDbHandleValue handle;
};

/// The names that a table's records have, with the first record of each.
using AuditTableNames = std::unordered_map<AuditNames::Id, AuditIndex>;

/// What the walk gathers and the checks between records look at.
struct AuditedDrawing {
    static constexpr std::size_t tableCount = 10; ///< of AuditTable

    int form = 0; ///< the number of $ACADVER; 0 where the drawing does not tell
    AcDbHandleValue seed = 0;
    std::uint32_t seedLine = 0;
    std::vector<AuditRecord> records;
    std::unordered_map<AcDbHandleValue, AuditIndex> handles; ///< the first record of each
    std::vector<AuditHandleReference> handleReferences;
    std::vector<AuditNameReference> nameReferences;
    std::vector<AuditEntry> entries;
    std::array<AuditTableNames, tableCount> tables;
    AuditTableNames blocks; ///< BLOCK records; those of the table BLOCK_RECORD stand in tables
    std::map<AuditIndex, std::optional<std::int64_t>>
        tableCounts; ///< of each table: how many records it says to have, where it does
    /// Of a block's record its layout, of a layout its block.
    std::map<AuditIndex, AuditHandleReference> layouts;
    std::vector<std::string_view> classes; ///< the record names that the classes give
    AuditNames names;
    unsigned sections = 0;   ///< a bit for each of AuditSection
    bool isReadWhole = true; ///< false where the text could not be followed to its end

    /// From R13 on records have class marks and every object a handle; from 2000 on an owner; from 2007 on
    /// all text is UTF-8.
    bool hasMarks() const { return form >= 1012; }
    bool hasOwners() const { return form >= 1015; }
    bool isUtf8() const { return form >= 1021; }

    /// For as many records as a text of that size mostly has.
    void makeRoom(std::size_t size) {
        constexpr std::size_t typicalRecord = 280;
        records.reserve(size / typicalRecord);
        handles.reserve(size / typicalRecord);
    }
    AuditIndex find(AcDbHandleValue handle) const {
        const auto found = handles.find(handle);
        return found == handles.end() ? noAuditIndex : found->second;
    }
    const AuditTableNames& table(AuditTable which) const { return tables[static_cast<std::size_t>(which)]; }
    const AuditRecord* at(AuditIndex index) const {
        return index == noAuditIndex ? nullptr : &records[index];
    }
    AuditIndex find(AuditTable which, AuditNames::Id name) const {
        const auto found = table(which).find(name);
        return found == table(which).end() ? noAuditIndex : found->second;
    }
};

enum class AuditSection : unsigned char {
    kNone,
    kHeader,
    kClasses,
    kTables,
    kBlocks,
    kEntities,
    kObjects,
    kOther
};

struct AuditRun {
    AuditedDrawing drawing;
    AuditFindings findings;
};

// Checks of the record that the walk stands at. They gather what the others need.
void auditHeader(AuditRun& run, const AuditContent& content);
void auditClass(AuditRun& run, const AuditContent& content, const AuditRecord& record);
void auditRecord(AuditRun& run, const AuditContent& content, AuditIndex index);
void auditPart(AuditRun& run, const AuditContent& content, AuditIndex index, const AuditPart& part,
               std::size_t first, std::size_t end);
void auditCounts(AuditRun& run, const AuditContent& content, const AuditRecord& record);
void auditHatch(AuditRun& run, const AuditContent& content, const AuditRecord& record);
void auditExtendedData(AuditRun& run, const AuditContent& content, AuditIndex index);
void auditTableRecord(AuditRun& run, const AuditContent& content, AuditIndex index);

// Checks between records, when all are known.
void auditHandles(AuditRun& run);
void auditOwners(AuditRun& run);
void auditReferences(AuditRun& run);
void auditTables(AuditRun& run);
void auditDictionaries(AuditRun& run);
void auditBlocks(AuditRun& run);

} // namespace hostkit

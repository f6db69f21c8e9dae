// Check of a drawing: the saved text: structure, values, class marks and groups, counts, handles, owners,
// references, tables, dictionaries, blocks and extended data; leaves out repairing.
#pragma once

#include "dbhandle.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;

namespace hostkit {

enum class AuditCheck : unsigned char {
    kStructure,    ///< sections, tables, blocks and sequences begin and end where they should
    kRecord,       ///< class marks, groups, values and counts are those of the record's kind
    kHandle,       ///< each object has one of its own, and the next one given is free
    kOwner,        ///< the owner is there and is what the record stands in
    kReference,    ///< what a record refers to, by handle or by name, is there and of the right kind
    kTable,        ///< the tables, their standing records, names and what the header names as current
    kDictionary,   ///< the root, keys and entries
    kBlock,        ///< blocks do not contain themselves, and agree with their records and layouts
    kExtendedData, ///< registered applications, codes, size and braces
};
constexpr std::size_t auditCheckCount = 9;
/// In lower case: "handle", "extended data" and so on.
const wchar_t* auditCheckName(AuditCheck check);

enum class AuditSeverity : unsigned char {
    kFault,  ///< another program may refuse the drawing, or lose something of it
    kRemark, ///< what programs leave behind and accept: a soft reference to nothing, a layer without its
             ///< record
};

struct AuditFinding {
    AuditCheck check;
    AuditSeverity severity;
    AcDbHandleValue
        handle; ///< of the record it was found in; 0 where that has none, or the drawing itself is meant
    std::wstring type; ///< the record's name: "LINE"; empty where the drawing itself is meant
    std::wstring text; ///< a sentence's end: "its owner 1A is missing"
    std::size_t line;  ///< of the group's code in the text, counted from 1; 0 where no line can be named
    /// Where one group with another value would make it right, its code and that value; code 0 elsewhere. It
    /// is the group at the line where that has the code, else the record's first one of it.
    short remedyCode = 0;
    std::int64_t remedyValue = 0;
};

struct AuditReport {
    std::vector<AuditFinding> findings; ///< at most findingLimit of each check, faults before remarks
    std::array<std::size_t, auditCheckCount> faults{};  ///< all, by check
    std::array<std::size_t, auditCheckCount> remarks{}; ///< likewise
    std::size_t objects = 0; ///< records that were looked at, in tables, blocks, entities and objects

    std::size_t faultCount() const;
    std::size_t remarkCount() const;
};

/// Checks the text of a drawing, whole or not: what the reader would refuse is found like everything else.
/// The check reads the lines itself and has its own rules, none of those of the reader and the writer. Where
/// a group's code is no number, or a value is missing, nothing behind it is looked at, and nothing is said of
/// what the rest might have held. A drawing of the binary exchange form is checked as the text that its
/// groups make, whose lines are told; a binary drawing as the text that is made of its records, and what was
/// found in making it (checksums, maps, sections, records that end too early, lists that lead to nothing) is
/// a fault with its byte. Nothing is said of the content of records that have no groups in that text. Time
/// and memory are linear in the text.
AuditReport auditDrawingText(std::string_view bytes, std::size_t findingLimit = 100);

/// Checks the text as which the drawing would be saved now, in the form that it was read in; of a drawing
/// that was not changed, that is the file that was read. Changes nothing. A drawing that cannot be saved has
/// one fault, with the reason; for want of memory it throws, as containers do.
AuditReport auditDrawing(const AcDbDatabase& database, std::size_t findingLimit = 100);

} // namespace hostkit

// Stand-in for the host's check of a drawing. Covers owners, handles, references, tables, dictionaries, blocks and extended data; leaves out repairing and geometry.
#pragma once

#include "dbhandle.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

class AcDbDatabase;

namespace hostkit {

enum class AuditCheck : unsigned char {
    kRecord,       ///< values are what their groups allow
    kHandle,       ///< a handle leads to its own object alone, and the next one given is free
    kOwner,        ///< everything has one owner, who holds it, up to the root without a circle
    kReference,    ///< what a record refers to is there
    kTable,        ///< the nine tables, their standing records and names
    kDictionary,   ///< the root, keys and entries
    kBlock,        ///< blocks do not contain themselves, and agree with their layouts
    kExtendedData, ///< registered applications, size and braces
};
constexpr std::size_t auditCheckCount = 8;
/// In lower case: "handle", "extended data" and so on.
const wchar_t* auditCheckName(AuditCheck check);

enum class AuditSeverity : unsigned char {
    kFault,  ///< another program may refuse the drawing, or lose something of it
    kRemark, ///< a soft reference to what is not there; programs leave such behind and accept them
};

struct AuditFinding {
    AuditCheck check;
    AuditSeverity severity;
    AcDbHandleValue handle; ///< of the object it was found at; 0 where the drawing itself is meant
    std::wstring type;      ///< the record's name: "LINE"; empty with handle 0
    std::wstring text;      ///< a sentence's end: "its owner 1A is missing"
};

struct AuditReport {
    std::vector<AuditFinding> findings; ///< at most findingLimit of each check, faults before remarks
    std::array<std::size_t, auditCheckCount> faults{};  ///< all, by check
    std::array<std::size_t, auditCheckCount> remarks{}; ///< likewise
    std::size_t objects = 0;                            ///< that were looked at; erased ones are not

    std::size_t faultCount() const;
    std::size_t remarkCount() const;
};

/// Looks at every object that is not erased as it stands, open or not, and changes nothing. Where an object
/// is as it was read, its record in the file is what is checked, also the groups that no class knows; else
/// what it would file. Time and memory are linear in the drawing.
AuditReport auditDrawing(const AcDbDatabase& database, std::size_t findingLimit = 100);

} // namespace hostkit

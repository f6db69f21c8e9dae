// Stand-in for the host's memory of where an object's record stood in its file. Covers the packed span and the bytes themselves; leaves out reading them.
#pragma once

#include "dbmaindefs.h"

#include "adesk.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace hostkit {

/// A stretch of the source bytes: a record from the line of its group 0 on, to that of the next.
struct SourceSpan {
    Adesk::UInt64 offset = 0;
    Adesk::UInt32 length = 0;
    bool isEmpty() const { return length == 0; }
};

/// A span and the mark "changed since", in eight bytes: 35 bits of offset (32 GiB), 28 bits of length (256
/// MiB).
class PackedSource {
public:
    static constexpr Adesk::UInt64 maxOffset = (1ull << 35) - 1;
    static constexpr Adesk::UInt32 maxLength = (1u << 28) - 1;

    PackedSource() = default;
    /// A span beyond the limits is kept as no span at all, so that its object is written from its fields.
    explicit PackedSource(SourceSpan span)
        : m_bits(span.offset > maxOffset || span.length > maxLength
                     ? 0
                     : span.offset << 29 | static_cast<Adesk::UInt64>(span.length) << 1) {}
    SourceSpan span() const { return {m_bits >> 29, static_cast<Adesk::UInt32>(m_bits >> 1) & maxLength}; }
    bool isModified() const { return (m_bits & 1) != 0; }
    void setModified(bool modified = true) { m_bits = (m_bits & ~1ull) | (modified ? 1 : 0); }

private:
    Adesk::UInt64 m_bits = 0;
};

/// One named section of a drawing file, from its "0 SECTION" to the line after its "0 ENDSEC".
struct SourceSection {
    std::wstring name;
    Adesk::UInt64 offset = 0;
    Adesk::UInt64 length = 0;
};

/// The bytes a drawing was read from, kept as long as the drawing lives, so that what was not changed can be
/// written as it stood.
struct DrawingSource {
    std::string bytes;
    std::vector<SourceSection> sections; ///< in the order of the file
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown;
    int codePage = 0;              ///< 65001 for UTF-8
    bool endsLinesWithCrLf = true; ///< of the file's first line
    /// The records, by handle, of what the file lacks and the drawing was given (tables' standing records, layouts,
    /// dictionaries): they come into the file when they are no longer as they were given.
    std::unordered_map<Adesk::UInt64, std::string> given;
};

} // namespace hostkit

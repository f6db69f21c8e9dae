// Memory of where an object's record stood in its file: the packed span and the bytes themselves; leaves out
// reading them.
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

/// A span and the marks "changed since" and "a copy", in eight bytes: 34 bits of offset (16 GiB), 28 bits of
/// length (256 MiB). A copy has no record of its own; the span is that of the object it was copied from,
/// whose record says what no class reads.
class PackedSource {
public:
    static constexpr Adesk::UInt64 maxOffset = (1ull << 34) - 1;
    static constexpr Adesk::UInt32 maxLength = (1u << 28) - 1;

    PackedSource() = default;
    /// A span beyond the limits is kept as no span at all, so that its object is written from its fields.
    explicit PackedSource(SourceSpan span)
        : m_bits(span.offset > maxOffset || span.length > maxLength
                     ? 0
                     : span.offset << 30 | static_cast<Adesk::UInt64>(span.length) << 2) {}
    /// For a copy of the object that has this one.
    PackedSource forCopy() const {
        PackedSource copy;
        copy.m_bits = (m_bits >> 2) == 0 ? 0 : (m_bits & ~1ull) | 2;
        return copy;
    }
    SourceSpan span() const { return (m_bits & 2) != 0 ? SourceSpan() : anySpan(); }
    /// Of the object that this one is a copy of; empty for one that is none.
    SourceSpan originalSpan() const { return (m_bits & 2) != 0 ? anySpan() : SourceSpan(); }
    bool isModified() const { return (m_bits & 1) != 0; }
    void setModified(bool modified = true) { m_bits = (m_bits & ~1ull) | (modified ? 1 : 0); }

private:
    SourceSpan anySpan() const { return {m_bits >> 30, static_cast<Adesk::UInt32>(m_bits >> 2) & maxLength}; }

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
    /// The records, by handle, of what the file lacks and the drawing was given (tables' standing records,
    /// layouts, dictionaries): they come into the file when they are no longer as they were given.
    std::unordered_map<Adesk::UInt64, std::string> given;
};

} // namespace hostkit

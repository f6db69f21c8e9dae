// Names in records: which groups name a record of a table, by the kind of record; leaves out references by
// handle.
#pragma once

#include "drawingrecord.h"

#include <cstdint>
#include <string_view>

namespace hostkit {

/// What a name in a record may stand for.
enum class NamedKind : unsigned char {
    kLayer,
    kLinetype,
    kTextStyle,
    kDimStyle,
    kBlock,
    kApplication,
    kEntry, ///< an entry of a dictionary: a style of multilines, tables or multileaders, a material
};
constexpr std::size_t namedKindCount = 7;

/// A bit for each NamedKind.
using NamedKinds = std::uint8_t;
constexpr NamedKinds bitOf(NamedKind kind) {
    return static_cast<NamedKinds>(1U << static_cast<unsigned>(kind));
}

/// What a group of a record's own data may name. Of a published kind of record what the format says; of any
/// other one all that the code could mean, so that a name is rather taken for a use than overlooked. The
/// record's own name is none.
NamedKinds namedBy(std::string_view recordName, int code);
/// The same for a group of extended data of an application. Overrides of a dimension's variables name their
/// records as plain texts in drawings of the R12 form.
NamedKinds namedByExtendedData(std::string_view application, int code);
/// The same for a variable of the header, without its $.
NamedKinds namedByHeader(std::wstring_view variable);

} // namespace hostkit

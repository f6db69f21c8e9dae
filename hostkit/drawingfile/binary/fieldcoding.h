// Single fields of binary drawings, written by their bit codes.
#pragma once

#include "binarycontainer.h"
#include "bitwriter.h"
#include "recordlayout.h"
#include "recordvalues.h"

namespace hostkit {

/// Where fields are written to. Up to 2004 texts stand among the data, and `text` stays empty.
struct FieldStreams {
    int form = 15;   ///< 15, 18, 21, 24, 27, 32
    ByteSpan source; ///< what runs of bits refer to: the bytes that the values were read from
    BitWriter data, text, references;

    void clear() { data = text = references = BitWriter(); }
};

/// One field of any code but those below, `opaque` and `tooDeep`, which write nothing. Which member of the
/// value counts is as it was read:
///   whole       bits, raw and bit numbers, cut to their width; the number of bytes before the zero for
///               zeroEnded, each of which is written as 1
///   real        doubles, points, directions, thickness; `standard` has an ordinate each for codes that are
///               told by what they differ in (the point before for standardChain). A value that is infinite
///               or no number is written as 0
///   run         text, bytes, bodyData. Bytes elsewhere are a text of the drawing's code page up to 2004,
///   from
///               then on UTF-8. A text ends after 65535 characters: its count goes no further
///   color       color and longColor without names; entityColor
///   reference   reference, ownHandle, an element of references: code and number as they stand
void writeField(FieldStreams& out, FieldCode code, const RecordValue& value,
                const double* standard = nullptr);

/// A colour with the names of itself and its book: null where it has none. Up to 2004's form `color` has
/// neither names nor long form.
void writeColor(FieldStreams& out, FieldCode code, const ValueColor& color, const RecordValue* name,
                const RecordValue* book);

/// Extended data: each application's handle and its bytes, in turn, and the end.
void writeExtendedData(FieldStreams& out, std::span<const RecordValue> values);

[[nodiscard]] bool isWholeCode(FieldCode code);     ///< `whole` counts
[[nodiscard]] unsigned ordinatesOf(FieldCode code); ///< how many of `real` count; 0 where others do

} // namespace hostkit

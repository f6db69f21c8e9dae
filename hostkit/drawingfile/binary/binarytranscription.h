// Binary drawings as text drawings: sections of the exchange form, which the reader of text drawings takes,
// made from the records; leaves out what the records mean.
#pragma once

#include "binaryheader.h"
#include "recordfields.h"

#include <cstdint>
#include <string>
#include <vector>

namespace hostkit {

/// Where a record of a binary drawing stands, and the text that was made of it.
struct TranscribedRecord {
    std::uint64_t handle = 0;
    std::uint64_t offset = 0;       ///< in the section of objects
    std::uint64_t text = 0;         ///< offset of its group 0
    std::uint32_t length : 31 = 0;  ///< of its text; 0 where none was made
    std::uint32_t isOpaque : 1 = 0; ///< the text has its head alone
};
static_assert(sizeof(TranscribedRecord) == 32);

/// What a binary drawing was, as long as the text made of it is in use: for messages and for a later save.
struct TranscribedDrawing {
    BinaryContainer container; ///< its faults are all that was found by the transcription too
    std::vector<BinaryClass> classes;
    BinaryHeader header;
    std::vector<TranscribedRecord> records; ///< by ascending handle

    /// Null where the map of objects has none of that handle.
    [[nodiscard]] const TranscribedRecord* find(std::uint64_t handle) const;
    /// The record whose text has that byte; null where it belongs to none.
    [[nodiscard]] const TranscribedRecord* recordAt(std::size_t textOffset) const;
};

/// The drawing as the text of a drawing of the same form: header, classes, tables, blocks, entities, objects,
/// data of bodies. Texts are bytes of the drawing's code page up to 2004, from then on UTF-8. What is damaged
/// costs the record that it is in, or, where a record was not read whole, all but its head; each is told in
/// the container's faults. Records of kinds without a transcript have their heads alone.
///
/// False where the container cannot be opened; the last fault says why. Several threads, as many as the
/// machine has for 0, make the same text as one.
[[nodiscard]] bool textFromDrawing(ByteSpan file, std::string& text, TranscribedDrawing& drawing,
                                   unsigned threads = 0);
/// The same of the sections in `drawing.container`.
void textFromSections(std::string& text, TranscribedDrawing& drawing, unsigned threads = 0);

} // namespace hostkit

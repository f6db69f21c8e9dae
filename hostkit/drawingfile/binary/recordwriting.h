// Many records of a binary drawing written as groups, by several threads.
#pragma once

#include "binarytranscription.h"
#include "drawingorder.h"

namespace hostkit {

/// What a record stands in.
struct RecordItem {
    MapIndex record = noRecord;
    std::uint32_t block = ~0U;  ///< of an entity: its block in the order
    std::uint32_t viewport = 0; ///< of a viewport in a paper space: its number there, from 1
};

/// The entities of the block of that number.
[[nodiscard]] std::vector<RecordItem> itemsOf(const DrawingOrder& order, std::size_t block);

/// The offset of the first group of that code from the group at `from` on; the text's end where there is
/// none.
[[nodiscard]] std::size_t groupAt(std::string_view text, std::size_t from, int code);
/// The end of the group at that offset.
[[nodiscard]] std::size_t groupEnd(std::string_view text, std::size_t at);

/// What stands for the opening and closing record of a block that has none.
void appendMissingBegin(const OrderedBlock& block, const DrawingStyle& style, std::string& bytes);
void appendMissingEnd(const OrderedBlock& block, const DrawingStyle& style, std::string& bytes);

struct WritingRules {
    const DrawingOrder& order;
    const DrawingStyle& style;
    unsigned threads = 0; ///< 0: as many as there are
};

/// Appends the records in the order of the items, notes where each one's text is, and tells what was wrong.
/// The opening record of a block gets what the block's table record tells of it, the table record the block's
/// full name, a viewport its number.
void writeRecords(const WritingRules& rules, std::span<const RecordItem> items, std::string& text,
                  TranscribedDrawing& drawing);

} // namespace hostkit

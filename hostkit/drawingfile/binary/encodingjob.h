// One record of a binary drawing that is to be written, and what all of them share.
#pragma once

#include "binarytranscription.h"
#include "encodinglists.h"
#include "exchangeoutline.h"
#include "recordgathering.h"
#include "recordlayout.h"
#include "recordnames.h"

#include <cstddef>
#include <cstdint>
#include <unordered_set>

namespace hostkit {

/// One record that is to be written.
struct EncodingJob {
    enum class Kind : std::uint8_t { plain, blockHeader, sequence, control };

    OutlinedRecord record;
    const RecordLayout* layout = nullptr; ///< null: it keeps its bits, or its data
    unsigned type = 0;
    Kind kind = Kind::plain;
    RecordLinks links;
    bool isPlaceKept = false; ///< what it lists and what is beside it are as they were
    std::size_t list =
        0; ///< of a block: its number; of a sequence: of its entity; of a control: of its table
};

/// What stands when records are written: nothing of it changes then, so that threads may share it.
struct EncodingContext {
    DrawingVersion version;
    unsigned codePage;
    const ExchangeOutline& outline;
    const ExchangeOutline* before;      ///< of the drawing as it was; null, as the original, where it was in
    const TranscribedDrawing* original; ///< no file of this form
    const RecordNames& names;
    const EncodingLists& lists;
    const std::unordered_set<std::uint64_t>& gone; ///< left out

    [[nodiscard]] const TranscribedRecord* originalOf(std::uint64_t handle) const {
        return original ? original->find(handle) : nullptr;
    }
};

} // namespace hostkit

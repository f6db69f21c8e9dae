// The data store of binary drawings of the forms 2013 and 2018: bodies and pictures by the records that they
// belong to.
#pragma once

#include "binarycontainer.h"

namespace hostkit {

struct StoredData {
    std::uint64_t handle = 0; ///< of the record that it belongs to
    std::string_view kind;    ///< the name of its schema: "AcDb3DSolid_ASM_Data", "AcDb_Thumbnail_Schema"
    std::vector<std::uint8_t> bytes;
};

/// All that the store's index leads to; what leads past the end of the section, or is longer than it, is told
/// in the container. `kind` is a part of the container's section.
[[nodiscard]] std::vector<StoredData> readDataStore(BinaryContainer& container);

} // namespace hostkit

// Where the records of a binary drawing stand.
#pragma once

#include "binarycontainer.h"

namespace hostkit {

struct ObjectPlace {
    std::uint64_t handle = 0;
    std::size_t offset = 0; ///< in the section of objects
};

/// In the order of the handles. What a damaged part of the map tells is taken as far as it ascends and leads
/// into `objects`; the rest is told in `container`.
[[nodiscard]] std::vector<ObjectPlace> readObjectMap(BinaryContainer& container);

/// The section's bytes for places of ascending handles.
[[nodiscard]] std::vector<std::uint8_t> writeObjectMap(std::span<const ObjectPlace> places);

} // namespace hostkit

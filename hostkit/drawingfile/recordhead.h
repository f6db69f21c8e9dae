// Stand-in for the host's record heads. Covers handle, owner, extension dictionary and reactors of a record; leaves out other application groups, which stay in the file.
#pragma once

#include "drawingrecord.h"
#include "drawingversion.h"

#include <cstdint>
#include <vector>

namespace hostkit {

/// What stands in a record before its class' own groups.
struct RecordHead {
    std::uint64_t handle = 0; ///< 0: none
    std::uint64_t owner = 0;
    std::uint64_t extensionDictionary = 0;
    std::vector<std::uint64_t> reactors;
    const RecordGroup* faulty = nullptr; ///< a handle that is none
};

/// Reads the head and marks its groups as taken. The storage of `head` is used again.
void readHead(DrawingRecord& record, DrawingVersion version, RecordHead& head);
/// The group code of a record's handle: 105 for a dimension style, whose 5 was a block's name once.
short handleCodeOf(std::string_view recordName);

} // namespace hostkit

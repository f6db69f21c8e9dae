// Record heads: handle, owner, extension dictionary and reactors of a record; leaves out other application
// groups, which stay in the file.
#pragma once

#include "drawingrecord.h"

#include <cstdint>
#include <vector>

namespace hostkit {

/// A handle from here on is a slip: it leaves no room for others above it.
constexpr std::uint64_t handleLimit = UINT64_MAX / 2;

/// What stands in a record before its class' own groups.
struct RecordHead {
    std::uint64_t handle = 0; ///< 0: none
    std::uint64_t owner = 0;
    std::uint64_t extensionDictionary = 0;
    std::vector<std::uint64_t> reactors;
    const RecordGroup* faulty = nullptr; ///< a handle that is none
};

/// Reads the head and marks its groups as the head's, those of other applications as foreign. What is head is
/// told by the record alone: it stands before the first subclass mark, or behind it where a careless program
/// put it. The storage of `head` is used again.
void readHead(DrawingRecord& record, RecordHead& head);
/// The group code of a record's handle: 105 for a dimension style, whose 5 was a block's name once.
short handleCodeOf(std::string_view recordName);

} // namespace hostkit

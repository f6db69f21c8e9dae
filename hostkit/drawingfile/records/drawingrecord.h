// Drawing record: one record's groups with its parts: head, class data and extended data; leaves out what the
// groups mean.
#pragma once

#include "groupscanner.h"
#include "recordparts.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace hostkit {

/// One group of a record, and whose field it is.
struct RecordGroup {
    std::string_view value;
    const char* start = nullptr; ///< of the line with the code
    const char* end = nullptr;   ///< behind the value's line end
    short code = 0;
    RecordPart part = nobodysPart;

    /// A field has the group: on saving it is written once, at its place, with the field's value.
    bool isTaken() const { return part >= headPart; }
    std::string_view bytes() const { return {start, static_cast<std::size_t>(end - start)}; }
};

/// A record from its "0" group to the next one. `groups` has the "0" group first and the extended data last,
/// wherever in the record it stands.
struct DrawingRecord {
    std::vector<RecordGroup> groups;
    std::size_t extendedDataBegin = 0; ///< index of the first extended data group; groups.size() without
    bool hasMarks = false;             ///< there is a subclass mark
    bool isRearranged = false;         ///< extended data stood before other groups
    const char* last = nullptr;        ///< behind the last group as the file has it

    std::string_view name() const { return withoutBlanks(groups.front().value); }
    const char* begin() const { return groups.front().start; }
    const char* end() const { return last; }
    std::string_view bytes() const { return {begin(), static_cast<std::size_t>(end() - begin())}; }
    /// The value of the first group of that code before the extended data; null where there is none.
    const RecordGroup* find(int code) const;
};

/// Reads the record that begins with `first`, a "0" group that the scanner has just given, and leaves the
/// scanner before the next "0" group or at the fault. The record's storage is used again.
ScanResult scanRecord(GroupScanner& scanner, const RawGroup& first, DrawingRecord& record);

/// The record that stands at that stretch of the bytes.
void scanRecordAt(std::string_view bytes, std::size_t offset, std::size_t length, DrawingRecord& record);

} // namespace hostkit

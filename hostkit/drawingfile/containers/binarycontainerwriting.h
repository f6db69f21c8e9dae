// The sections of a binary drawing, written as a file.
#pragma once

#include "binaryheader.h"
#include "objectmap.h"

namespace hostkit {

/// All records of a drawing.
struct BinaryRecords {
    ByteSpan bytes;                  ///< one after the other, each from its size to its checksum
    std::vector<ObjectPlace> places; ///< of ascending handles; offsets in `bytes`
};

/// The records as they stand in an open drawing, for places that its map gave: nothing is copied.
[[nodiscard]] BinaryRecords recordsOf(const BinaryContainer& container, std::span<const ObjectPlace> places);

/// The file of a drawing of the container's form, for 2000, 2004, 2010, 2013 and 2018. Of the container's
/// sections all are written but those that follow from the records (AcDb:AcDbObjects, AcDb:Handles) and
/// signatures, which vouch for other bytes (AcDb:Security, AcDb:Signature); the form 2000 has no place for
/// others than header, classes, free space, measurement, auxiliary header and preview. AcDb:Header and
/// AcDb:Classes have to be there; preview, properties, auxiliary header and others that readers ask for are
/// made where they are missing. Addresses in the preview are set to where it comes to stand. Pages are packed
/// on all cores.
///
/// False, `file` untouched, for the form 2007, without header or classes, where places are out of order or
/// outside of the records, and for a file of the form 2000 of 2 GB; `reason` then says why.
[[nodiscard]] bool writeContainer(const BinaryContainer& container, const BinaryRecords& records,
                                  std::vector<std::uint8_t>& file, std::wstring& reason);

// The forms, each for itself, for a container whose header, classes and records are as told above.
[[nodiscard]] bool writeContainer2000(const BinaryContainer& container, const BinaryHeader& header,
                                      const BinaryRecords& records, std::vector<std::uint8_t>& file,
                                      std::wstring& reason);
/// And 2010, 2013, 2018.
void writeContainer2004(const BinaryContainer& container, const BinaryHeader& header,
                        const BinaryRecords& records, std::vector<std::uint8_t>& file);

/// What stands before the first record.
constexpr std::uint32_t recordsMark = 0x0DCA;

inline void append(std::vector<std::uint8_t>& bytes, ByteSpan more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

} // namespace hostkit

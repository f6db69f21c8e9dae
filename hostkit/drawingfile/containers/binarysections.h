// The small sections of binary drawings: properties, measurement, auxiliary header and what else each file
// has.
#pragma once

#include "binaryheader.h"
#include "textencoding.h"

#include <string>
#include <utility>
#include <vector>

namespace hostkit {

/// The format's number of a code page, and its name as the exchange form has it ($DWGCODEPAGE). Empty, and 0,
/// for what is not known. Upper and lower case are the same.
[[nodiscard]] std::wstring_view codePageName(unsigned number);
[[nodiscard]] unsigned codePageNumber(std::wstring_view name);
/// Windows-1252 for those that have no equal.
[[nodiscard]] CodePage codePageOf(unsigned number);
[[nodiscard]] CodePage codePageOf(const BinaryContainer& container);

/// A day of the Julian calendar and milliseconds of it, or days and milliseconds of a span.
struct BinaryDate {
    std::uint32_t day = 0, milliseconds = 0;
    friend bool operator==(BinaryDate, BinaryDate) = default;
};

/// What the drawing tells about itself (section AcDb:SummaryInfo, from 2004 on). Texts are bytes of the
/// drawing's code page in 2004, from then on UTF-8.
struct DrawingProperties {
    std::string title, subject, author, keywords, comments, lastSavedBy, revision, hyperlinkBase;
    BinaryDate editingTime, created, updated;
    std::vector<std::pair<std::string, std::string>> custom; ///< name and value
    friend bool operator==(const DrawingProperties&, const DrawingProperties&) = default;
};

/// Nothing where the drawing has none. What a damaged section tells is taken up to the damage, which is told
/// in the container.
[[nodiscard]] std::optional<DrawingProperties> readProperties(BinaryContainer& container);
/// Texts end before a zero and after 65534 characters, custom properties after 65535.
[[nodiscard]] std::vector<std::uint8_t> writeProperties(const BinaryContainer& form,
                                                        const DrawingProperties& properties);

/// $MEASUREMENT, which stands in the section AcDb:Template alone: 0 imperial, 1 metric. 0 where it is
/// missing.
[[nodiscard]] int readMeasurement(const BinaryContainer& container);
[[nodiscard]] std::vector<std::uint8_t> writeMeasurement(const BinaryContainer& form, int measurement);

// What a file without them gets; the header tells dates and the handle seed.

/// The container's own one with the header's update and handle seed, or a new one.
[[nodiscard]] std::vector<std::uint8_t> auxHeaderOf(const BinaryContainer& container,
                                                    const BinaryHeader& header);
[[nodiscard]] std::vector<std::uint8_t> makeFreeSpace(const BinaryContainer& form, const BinaryHeader& header,
                                                      std::size_t objects);
[[nodiscard]] std::vector<std::uint8_t> makeAppInfo();
[[nodiscard]] std::vector<std::uint8_t> makeRevisionHistory();
[[nodiscard]] std::vector<std::uint8_t> makeEmptyPreview();

/// The preview as it stands at another address of the file: pictures in it are found by their addresses.
/// Bytes that are no preview stay as they are.
void movePreview(std::span<std::uint8_t> preview, std::size_t address);

// Little-endian numbers in a file.

inline void appendNumber(std::vector<std::uint8_t>& bytes, std::uint64_t value, unsigned count) {
    for (unsigned i = 0; i < count; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}
inline void putNumber(std::span<std::uint8_t> bytes, std::size_t at, std::uint64_t value, unsigned count) {
    for (unsigned i = 0; i < count; ++i) bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

/// The number of the program's release that is customary for files of the form.
[[nodiscard]] unsigned customaryWriter(DrawingVersion version);

} // namespace hostkit

// The sections of a binary drawing: taken out of the file's pages, unpacked, by name.
#pragma once

#include "drawingversion.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

using ByteSpan = std::span<const std::uint8_t>;

/// What of a binary drawing could not be had, and where.
struct BinaryFault {
    std::size_t offset = 0; ///< in the file, or in its section where `section` names one
    std::string section;
    std::wstring reason;
};

/// A binary drawing of the forms 2000 to 2018 as its sections. In the form 2000 the section of objects is the
/// whole file, since the map has addresses in it, and the preview a section though it stands outside of all;
/// in all others these are sections like others.
struct BinaryContainer {
    DrawingVersion version = DrawingVersion::k2000;
    unsigned maintenance = 0;                   ///< of the form
    unsigned codePage = 30;                     ///< the format's own number; 30 is Windows-1252
    unsigned writer = 0, writerMaintenance = 0; ///< release of the program that wrote it; 0: of none
    std::map<std::string, std::vector<std::uint8_t>, std::less<>> sections; ///< "AcDb:Header", ...
    std::vector<BinaryFault>
        faults; ///< a page that is damaged leaves zeros in its section; at most faultLimit

    static constexpr std::size_t faultLimit = 1000;

    /// Empty where there is none.
    [[nodiscard]] ByteSpan section(std::string_view name) const;
    void addFault(std::size_t offset, std::string section, std::wstring reason);
};

/// Whether the bytes begin as a binary drawing of any form does: "AC10" and two digits, no line end behind.
[[nodiscard]] bool isBinaryDrawing(ByteSpan file);

/// False where the file is of no form that is known, is locked by a password, or holds no section; the last
/// fault says why. `file` must live as long as nothing but the call.
[[nodiscard]] bool openContainer(ByteSpan file, BinaryContainer& container);

// The forms, each for itself.
[[nodiscard]] bool openContainer2000(ByteSpan file, BinaryContainer& container);
[[nodiscard]] bool openContainer2004(ByteSpan file, BinaryContainer& container); ///< and 2010, 2013, 2018
[[nodiscard]] bool openContainer2007(ByteSpan file, BinaryContainer& container);

/// Little-endian numbers at a byte; 0 past the end.
[[nodiscard]] std::uint64_t littleEndian(ByteSpan bytes, std::size_t at, std::size_t count);
inline std::uint32_t longAt(ByteSpan bytes, std::size_t at) {
    return static_cast<std::uint32_t>(littleEndian(bytes, at, 4));
}
inline std::uint64_t longLongAt(ByteSpan bytes, std::size_t at) { return littleEndian(bytes, at, 8); }
/// The part that lies within the bytes.
[[nodiscard]] ByteSpan partOf(ByteSpan bytes, std::size_t at, std::size_t count);

} // namespace hostkit

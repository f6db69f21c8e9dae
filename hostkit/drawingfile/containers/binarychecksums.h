// Checksums of binary drawings.
#pragma once

#include <cstdint>
#include <span>

namespace hostkit {

/// The reflected 16-bit checksum with the polynomial A001. Records, sections and maps begin with C0C1.
[[nodiscard]] std::uint16_t checksum16(std::span<const std::uint8_t> bytes, std::uint16_t start = 0xC0C1);
/// Two 16-bit sums modulo FFF1, of the pages from 2004 on. A sum over several runs of bytes goes on from the
/// one before.
[[nodiscard]] std::uint32_t pageChecksum(std::span<const std::uint8_t> bytes, std::uint32_t start = 0);
/// The usual reflected 32-bit checksum with the polynomial EDB88320, of the scrambled file header.
[[nodiscard]] std::uint32_t checksum32(std::span<const std::uint8_t> bytes);

} // namespace hostkit

// Bit codes of binary drawings, written: each value in its shortest form.
#pragma once

#include "bitreader.h"

#include <span>
#include <vector>

namespace hostkit {

/// The counterpart of BitReader: what it writes, that reads.
class BitWriter {
public:
    void clear() { m_bits = 0; }
    [[nodiscard]] std::size_t position() const { return m_bits; }
    /// Full bytes, until the next is written; the last one is filled up with zeros.
    [[nodiscard]] std::span<const std::uint8_t> bytes() const { return {m_bytes.data(), (m_bits + 7) / 8}; }
    [[nodiscard]] std::vector<std::uint8_t> copy() const { return {bytes().begin(), bytes().end()}; }

    void bits(std::uint64_t value, unsigned count); ///< the lowest `count`, at most 64
    void bit(bool value) { bits(value ? 1 : 0, 1); }
    void rawByte(std::uint8_t value) { bits(value, 8); }
    void rawShort(std::uint16_t value) { bits(__builtin_bswap16(value), 16); }
    void rawLong(std::uint32_t value) { bits(__builtin_bswap32(value), 32); }
    void rawLongLong(std::uint64_t value) { bits(__builtin_bswap64(value), 64); }
    void rawDouble(double value);

    void bitShort(int value);
    void bitLong(std::int32_t value);
    void bitLongLong(std::uint64_t value);
    void bitDouble(double value);
    void bitDouble(double value, double standard);
    void modularChar(std::int64_t value);
    void unsignedModularChar(std::uint64_t value);
    void modularShort(std::uint32_t value); ///< below 2 to the 30
    void objectType(unsigned type);
    void handle(BinaryHandle handle);

    /// Appends bits of another place.
    void append(std::span<const std::uint8_t> bytes, std::size_t firstBit, std::size_t endBit);
    void append(const BitWriter& other) { append(other.bytes(), 0, other.m_bits); }
    /// Fills up to a full byte.
    void pad(bool value);
    /// Puts a raw long over what was written at the bit.
    void overwriteLong(std::size_t bit, std::uint32_t value);

private:
    std::vector<std::uint8_t> m_bytes; ///< with room behind those that are written
    std::size_t m_bits = 0;
};

} // namespace hostkit

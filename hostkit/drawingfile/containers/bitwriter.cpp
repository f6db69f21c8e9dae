#include "bitwriter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace hostkit {

// All bits of a call go as one word, behind those that its first byte has.
void BitWriter::bits(std::uint64_t value, unsigned count) {
    constexpr unsigned most = 56;
    if (count > most) {
        bits(value >> 32, count - 32);
        count = 32;
    }
    if (count == 0) return;
    const std::size_t at = m_bits >> 3;
    const auto used = static_cast<unsigned>(m_bits & 7);
    if (m_bytes.size() < at + sizeof value) m_bytes.resize(2 * (at + sizeof value));
    std::uint64_t word = value << (64 - count) >> used;
    if (used) word |= std::uint64_t(m_bytes[at] & (0xFF00U >> used)) << 56;
    word = __builtin_bswap64(word);
    std::memcpy(&m_bytes[at], &word, sizeof word);
    m_bits += count;
}

void BitWriter::rawDouble(double value) { rawLongLong(std::bit_cast<std::uint64_t>(value)); }

void BitWriter::bitShort(int value) {
    if (value == 0) return bits(2, 2);
    if (value == 256) return bits(3, 2);
    const bool isByte = value > 0 && value < 256;
    bits(isByte ? 1 : 0, 2);
    isByte ? rawByte(static_cast<std::uint8_t>(value)) : rawShort(static_cast<std::uint16_t>(value));
}

void BitWriter::bitLong(std::int32_t value) {
    if (value == 0) return bits(2, 2);
    const bool isByte = value > 0 && value < 256;
    bits(isByte ? 1 : 0, 2);
    isByte ? rawByte(static_cast<std::uint8_t>(value)) : rawLong(static_cast<std::uint32_t>(value));
}

void BitWriter::bitLongLong(std::uint64_t value) {
    const auto count = static_cast<unsigned>((std::bit_width(value) + 7) / 8);
    bits(std::min(count, 7U), 3);
    for (unsigned i = 0; i < std::min(count, 7U); ++i) rawByte(static_cast<std::uint8_t>(value >> (8 * i)));
}

void BitWriter::bitDouble(double value) {
    if (value == 1.0) return bits(1, 2);
    if (value == 0.0 && !std::signbit(value)) return bits(2, 2);
    bits(0, 2);
    rawDouble(value);
}

void BitWriter::bitDouble(double value, double standard) {
    const auto own = std::bit_cast<std::uint64_t>(value), other = std::bit_cast<std::uint64_t>(standard);
    if (own == other) return bits(0, 2);
    if (own >> 32 == other >> 32) {
        bits(1, 2);
        return rawLong(static_cast<std::uint32_t>(own));
    }
    if (own >> 48 == other >> 48) {
        bits(2, 2);
        rawShort(static_cast<std::uint16_t>(own >> 32));
        return rawLong(static_cast<std::uint32_t>(own));
    }
    bits(3, 2);
    rawDouble(value);
}

void BitWriter::modularChar(std::int64_t value) {
    std::uint64_t rest = value < 0 ? -static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    for (; rest > 0x3F; rest >>= 7) rawByte(static_cast<std::uint8_t>((rest & 0x7F) | 0x80));
    rawByte(static_cast<std::uint8_t>(rest | (value < 0 ? 0x40 : 0)));
}

void BitWriter::unsignedModularChar(std::uint64_t value) {
    for (; value > 0x7F; value >>= 7) rawByte(static_cast<std::uint8_t>((value & 0x7F) | 0x80));
    rawByte(static_cast<std::uint8_t>(value));
}

void BitWriter::modularShort(std::uint32_t value) {
    if (value > 0x7FFF) {
        rawShort(static_cast<std::uint16_t>((value & 0x7FFF) | 0x8000));
        value >>= 15;
    }
    rawShort(static_cast<std::uint16_t>(value));
}

void BitWriter::objectType(unsigned type) {
    if (type < 0x100) {
        bits(0, 2);
        return rawByte(static_cast<std::uint8_t>(type));
    }
    if (type >= 0x1F0 && type < 0x2F0) {
        bits(1, 2);
        return rawByte(static_cast<std::uint8_t>(type - 0x1F0));
    }
    bits(2, 2);
    rawShort(static_cast<std::uint16_t>(type));
}

void BitWriter::handle(BinaryHandle handle) {
    const auto count = static_cast<unsigned>((std::bit_width(handle.value) + 7) / 8);
    bits(handle.code, 4);
    bits(count, 4);
    for (unsigned i = count; i-- > 0;) rawByte(static_cast<std::uint8_t>(handle.value >> (8 * i)));
}

void BitWriter::append(std::span<const std::uint8_t> bytes, std::size_t firstBit, std::size_t endBit) {
    BitReader reader(bytes, firstBit, endBit);
    while (reader.left() > 0) {
        const auto count = static_cast<unsigned>(std::min<std::size_t>(reader.left(), 56));
        bits(reader.bits(count), count);
    }
}

void BitWriter::pad(bool value) {
    while (m_bits & 7) bit(value);
}

void BitWriter::overwriteLong(std::size_t bit, std::uint32_t value) {
    value = __builtin_bswap32(value);
    for (unsigned i = 0; i < 32; ++i, ++bit) {
        const auto mask = static_cast<std::uint8_t>(0x80 >> (bit & 7));
        std::uint8_t& byte = m_bytes[bit >> 3];
        byte = static_cast<std::uint8_t>(value >> (31 - i) & 1 ? byte | mask : byte & ~mask);
    }
}

} // namespace hostkit

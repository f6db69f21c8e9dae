// Bit codes of binary drawings, read: numbers of a few bits, handles, and the fields of records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace hostkit {

/// A reference as it stands in a record: what kind of reference, and a handle or its distance from the
/// record's own.
struct BinaryHandle {
    std::uint8_t code = 0;
    std::uint64_t value = 0;

    /// The handle itself: codes 6, 8, A and C tell it by its distance from `own`. 0 refers to nothing.
    [[nodiscard]] std::uint64_t resolved(std::uint64_t own) const {
        switch (code) {
        case 0x6:
            return own + 1;
        case 0x8:
            return own - 1;
        case 0xA:
            return own + value;
        case 0xC:
            return own - value;
        default:
            return value;
        }
    }
};

/// Takes values from the most significant bit of each byte on. What would be read past the end is 0, and
/// everything after it too; `failed` then says so, so that a record is read whole and looked at once.
class BitReader {
public:
    explicit BitReader(std::span<const std::uint8_t> bytes)
        : BitReader(bytes, 0, bytes.size() * 8) {}
    /// From one bit up to another, which is cut at the end of the bytes.
    BitReader(std::span<const std::uint8_t> bytes, std::size_t firstBit, std::size_t endBit)
        : m_bytes(bytes)
        , m_end(endBit < bytes.size() * 8 ? endBit : bytes.size() * 8)
        , m_at(firstBit < m_end ? firstBit : m_end) {}

    [[nodiscard]] std::size_t position() const { return m_at; } ///< of the next bit
    [[nodiscard]] std::size_t end() const { return m_end; }
    [[nodiscard]] std::size_t left() const { return m_end - m_at; }
    [[nodiscard]] bool failed() const { return m_failed; }
    void fail() {
        m_failed = true;
        m_at = m_end;
    }
    void moveTo(std::size_t bit) { bit <= m_end ? void(m_at = bit) : fail(); }

    /// At most 56 bits.
    std::uint64_t bits(unsigned count) {
        if (count > left()) {
            fail();
            return 0;
        }
        const std::uint64_t value = count == 0 ? 0 : window() << (m_at & 7) >> (64 - count);
        m_at += count;
        return value;
    }
    bool bit() { return bits(1) != 0; }

    std::uint8_t rawByte() { return static_cast<std::uint8_t>(bits(8)); }
    std::uint16_t rawShort() { return __builtin_bswap16(static_cast<std::uint16_t>(bits(16))); }
    std::uint32_t rawLong() { return __builtin_bswap32(static_cast<std::uint32_t>(bits(32))); }
    std::uint64_t rawLongLong() {
        const std::uint64_t low = rawLong();
        return low | static_cast<std::uint64_t>(rawLong()) << 32;
    }
    double rawDouble();

    int bitShort(); ///< of 16 bits with a sign; a byte has none
    std::int32_t bitLong();
    std::uint64_t bitLongLong();
    double bitDouble();
    double bitDouble(double standard); ///< told by what it differs in from the standard
    std::int64_t modularChar();
    std::uint64_t unsignedModularChar();
    std::uint32_t modularShort();
    /// The number of a record's kind as it is coded from 2010 on.
    unsigned objectType();
    BinaryHandle handle(); ///< of more than 8 bytes: fails

private:
    /// The 64 bits from the byte of the next bit on, zeros behind the end.
    [[nodiscard]] std::uint64_t window() const {
        const std::size_t byte = m_at >> 3;
        std::uint64_t value = 0;
        if (byte + 8 <= m_bytes.size()) {
            std::memcpy(&value, m_bytes.data() + byte, 8);
            return __builtin_bswap64(value);
        }
        for (std::size_t i = byte; i < m_bytes.size(); ++i)
            value |= static_cast<std::uint64_t>(m_bytes[i]) << (56 - 8 * (i - byte));
        return value;
    }

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_end, m_at;
    bool m_failed = false;
};

} // namespace hostkit

#include "bitreader.h"

#include <bit>

namespace hostkit {

double BitReader::rawDouble() { return std::bit_cast<double>(rawLongLong()); }

int BitReader::bitShort() {
    switch (bits(2)) {
    case 0:
        return static_cast<std::int16_t>(rawShort());
    case 1:
        return rawByte();
    case 2:
        return 0;
    default:
        return 256;
    }
}

std::int32_t BitReader::bitLong() {
    switch (bits(2)) {
    case 0:
        return static_cast<std::int32_t>(rawLong());
    case 1:
        return rawByte();
    case 2:
        return 0;
    default:
        fail();
        return 0;
    }
}

std::uint64_t BitReader::bitLongLong() {
    std::uint64_t value = 0;
    const auto count = static_cast<unsigned>(bits(3));
    for (unsigned i = 0; i < count; ++i) value |= static_cast<std::uint64_t>(rawByte()) << (8 * i);
    return value;
}

double BitReader::bitDouble() {
    switch (bits(2)) {
    case 0:
        return rawDouble();
    case 1:
        return 1.0;
    case 2:
        return 0.0;
    default:
        fail();
        return 0.0;
    }
}

double BitReader::bitDouble(double standard) {
    constexpr std::uint64_t lowFour = 0xFFFFFFFFU;
    auto value = std::bit_cast<std::uint64_t>(standard);
    switch (bits(2)) {
    case 0:
        return standard;
    case 1:
        return std::bit_cast<double>((value & ~lowFour) | rawLong());
    case 2: {
        const auto fifthAndSixth = static_cast<std::uint64_t>(rawShort()) << 32;
        const std::uint64_t low = rawLong();
        return std::bit_cast<double>((value & 0xFFFF000000000000U) | fifthAndSixth | low);
    }
    default:
        return rawDouble();
    }
}

std::int64_t BitReader::modularChar() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        const std::uint8_t byte = rawByte();
        if (byte & 0x80) {
            value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
            continue;
        }
        value |= static_cast<std::uint64_t>(byte & 0x3F) << shift;
        return byte & 0x40 ? -static_cast<std::int64_t>(value) : static_cast<std::int64_t>(value);
    }
    fail();
    return 0;
}

std::uint64_t BitReader::unsignedModularChar() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
        const std::uint8_t byte = rawByte();
        value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
        if (!(byte & 0x80)) return value;
    }
    fail();
    return 0;
}

std::uint32_t BitReader::modularShort() {
    std::uint32_t value = 0;
    for (unsigned shift = 0; shift < 30; shift += 15) {
        const std::uint16_t word = rawShort();
        value |= static_cast<std::uint32_t>(word & 0x7FFF) << shift;
        if (!(word & 0x8000)) return value;
    }
    fail();
    return 0;
}

unsigned BitReader::objectType() {
    switch (bits(2)) {
    case 0:
        return rawByte();
    case 1:
        return rawByte() + 0x1F0U;
    default:
        return rawShort();
    }
}

BinaryHandle BitReader::handle() {
    BinaryHandle handle;
    handle.code = static_cast<std::uint8_t>(bits(4));
    const auto count = static_cast<unsigned>(bits(4));
    if (count > 8) fail();
    for (unsigned i = 0; i < count && !m_failed; ++i) handle.value = handle.value << 8 | rawByte();
    return handle;
}

} // namespace hostkit

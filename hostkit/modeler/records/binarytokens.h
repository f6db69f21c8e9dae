// Tokens of the binary twin of body data: one table of tags and sizes for reading and writing.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace hostkit::modeler {

enum class BinaryTag : std::uint8_t {
    integer = 0x04,
    real = 0x06,
    string = 0x07,
    string16 = 0x08,
    string32 = 0x09,
    isTrue = 0x0A,
    isFalse = 0x0B,
    pointer = 0x0C,
    nameEnd = 0x0D,
    namePart = 0x0E,
    begin = 0x0F,
    end = 0x10,
    recordEnd = 0x11,
    longString = 0x12,
    position = 0x13,
    direction = 0x14,
    enumeration = 0x15,
    pairOfReals = 0x16,
    integer64 = 0x17,
};

/// "ACIS BinaryFile" and "ASM BinaryFile4" are equally long.
inline constexpr std::size_t kBinarySignatureSize = 15;

struct BinaryToken {
    BinaryTag tag;
    std::string_view bytes; ///< of the value; of a string its characters
};

// Little-endian, whatever the machine.

inline std::uint64_t binaryBits(std::string_view bytes, std::size_t size) {
    std::uint64_t bits = 0;
    for (std::size_t place = size; place-- > 0;) bits = bits << 8 | static_cast<unsigned char>(bytes[place]);
    return bits;
}
inline std::int32_t binaryInteger(std::string_view bytes) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(binaryBits(bytes, 4)));
}
inline double binaryReal(std::string_view bytes) {
    const std::uint64_t bits = binaryBits(bytes, 8);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// Takes the next token off the front; nothing where it is cut or of an unknown tag.
inline std::optional<BinaryToken> takeBinaryToken(std::string_view& rest) {
    if (rest.empty()) return {};
    const auto tag = static_cast<BinaryTag>(rest.front());
    std::size_t countSize = 0; // of strings, of the count before them
    std::size_t size = 0;
    switch (tag) {
    case BinaryTag::isTrue:
    case BinaryTag::isFalse:
    case BinaryTag::begin:
    case BinaryTag::end:
    case BinaryTag::recordEnd:
        break;
    case BinaryTag::integer:
    case BinaryTag::pointer:
    case BinaryTag::enumeration:
        size = 4;
        break;
    case BinaryTag::real:
    case BinaryTag::integer64:
        size = 8;
        break;
    case BinaryTag::pairOfReals:
        size = 16;
        break;
    case BinaryTag::position:
    case BinaryTag::direction:
        size = 24;
        break;
    case BinaryTag::string:
    case BinaryTag::nameEnd:
    case BinaryTag::namePart:
        countSize = 1;
        break;
    case BinaryTag::string16:
        countSize = 2;
        break;
    case BinaryTag::string32:
    case BinaryTag::longString:
        countSize = 4;
        break;
    default:
        return {};
    }
    rest.remove_prefix(1);
    if (rest.size() < countSize) return {};
    if (countSize > 0) size = binaryBits(rest, countSize);
    rest.remove_prefix(countSize);
    if (rest.size() < size) return {};
    const BinaryToken token{tag, rest.substr(0, size)};
    rest.remove_prefix(size);
    return token;
}

} // namespace hostkit::modeler

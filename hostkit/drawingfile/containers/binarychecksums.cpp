#include "binarychecksums.h"

#include <array>

namespace hostkit {
namespace {

template <class Word>
constexpr std::array<Word, 256> tableOf(Word polynomial) {
    std::array<Word, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        Word value = static_cast<Word>(i);
        for (int bit = 0; bit < 8; ++bit)
            value = static_cast<Word>(value & 1 ? (value >> 1) ^ polynomial : value >> 1);
        table[i] = value;
    }
    return table;
}

template <class Word>
Word updated(const std::array<Word, 256>& table, Word value, std::span<const std::uint8_t> bytes) {
    for (std::uint8_t byte : bytes) value = static_cast<Word>((value >> 8) ^ table[(value ^ byte) & 0xFF]);
    return value;
}

/// What a byte adds to the sum that so many bytes follow.
constexpr std::size_t stride = 8;
constexpr auto tables16 = [] {
    std::array<std::array<std::uint16_t, 256>, stride> tables{};
    tables[0] = tableOf<std::uint16_t>(0xA001);
    for (std::size_t following = 1; following < stride; ++following)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint16_t before = tables[following - 1][byte];
            tables[following][byte] = static_cast<std::uint16_t>((before >> 8) ^ tables[0][before & 0xFF]);
        }
    return tables;
}();

} // namespace

std::uint16_t checksum16(std::span<const std::uint8_t> bytes, std::uint16_t start) {
    std::uint16_t value = start;
    for (; bytes.size() >= stride; bytes = bytes.subspan(stride)) {
        std::uint16_t sum = tables16[7][bytes[0] ^ (value & 0xFF)] ^ tables16[6][bytes[1] ^ (value >> 8)];
        for (std::size_t i = 2; i < stride; ++i) sum ^= tables16[stride - 1 - i][bytes[i]];
        value = sum;
    }
    return updated(tables16[0], value, bytes);
}

std::uint32_t pageChecksum(std::span<const std::uint8_t> bytes, std::uint32_t start) {
    constexpr std::uint32_t modulus = 0xFFF1;
    constexpr std::size_t run = 4096; // sums of so many bytes do not leave 32 bits
    std::uint32_t low = start & 0xFFFF, high = start >> 16;
    while (!bytes.empty()) {
        const auto part = bytes.first(bytes.size() < run ? bytes.size() : run);
        for (std::uint8_t byte : part) {
            low += byte;
            high += low;
        }
        low %= modulus;
        high %= modulus;
        bytes = bytes.subspan(part.size());
    }
    return high << 16 | low;
}

std::uint32_t checksum32(std::span<const std::uint8_t> bytes) {
    static constexpr auto table = tableOf<std::uint32_t>(0xEDB88320);
    return ~updated(table, ~std::uint32_t{0}, bytes);
}

} // namespace hostkit

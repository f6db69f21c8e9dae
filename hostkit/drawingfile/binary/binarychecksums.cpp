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

} // namespace

std::uint16_t checksum16(std::span<const std::uint8_t> bytes, std::uint16_t start) {
    static constexpr auto table = tableOf<std::uint16_t>(0xA001);
    return updated(table, start, bytes);
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

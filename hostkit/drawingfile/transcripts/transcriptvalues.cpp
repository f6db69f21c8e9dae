#include "transcriptvalues.h"

#include <algorithm>
#include <array>
#include <bit>

namespace hostkit {

namespace {

constexpr int firstRule = 29; // by layer, by block, the standard
constexpr std::array<short, 24> weights{0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                        53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr char caret = '^';
constexpr char controlShift = 0x40;

/// The character at the place, which moves behind it.
char32_t nextOfUtf8(std::string_view bytes, std::size_t& at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const std::size_t count = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 0;
    char32_t character = count == 4 ? first & 7U : count == 3 ? first & 15U : first & 31U;
    bool isSound = count > 0 && at + count <= bytes.size();
    for (std::size_t i = 1; isSound && i < count; ++i) {
        const auto next = static_cast<unsigned char>(bytes[at + i]);
        isSound = (next & 0xC0) == 0x80;
        character = character << 6 | (next & 63U);
    }
    at += isSound ? count : 1;
    return isSound ? character : 0xDC00U + first;
}

bool isPlain(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == caret;
    });
}

} // namespace

int weightOfIndex(int index) {
    if (index >= firstRule) return firstRule - 1 - index;
    return index >= 0 && index < static_cast<int>(weights.size()) ? weights[static_cast<std::size_t>(index)]
                                                                  : -3;
}

int indexOfWeight(int weight) {
    if (weight < 0) return weight >= -3 ? firstRule - 1 - weight : firstRule + 2;
    const auto found = std::find(weights.begin(), weights.end(), weight);
    return found == weights.end() ? firstRule + 2 : static_cast<int>(found - weights.begin());
}

void appendEscaped(std::string_view text, std::string& bytes) {
    if (isPlain(text)) {
        bytes += text;
        return;
    }
    for (const char character : text) {
        const bool isControl = static_cast<unsigned char>(character) < ' ';
        if (isControl || character == caret) bytes += caret;
        if (character == caret)
            bytes += ' ';
        else
            bytes += isControl ? static_cast<char>(character + controlShift) : character;
    }
}

void appendUnescaped(std::string_view value, std::string& text) {
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char next = value[i] == caret && i + 1 < value.size() ? value[i + 1] : '\0';
        if (next == ' ') {
            text += caret;
            ++i;
        } else if (next >= controlShift && next < controlShift + ' ') {
            text += static_cast<char>(next - controlShift);
            ++i;
        } else {
            text += value[i];
        }
    }
}

std::string upperCaseAscii(std::string_view text) {
    std::string result(text);
    for (char& character : result)
        if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
    return result;
}

void appendDigits(std::string_view digits, std::string& bytes) {
    const auto valueOf = [](char digit) {
        return digit >= '0' && digit <= '9'   ? digit - '0'
               : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10
               : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
                                              : 0;
    };
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(valueOf(digits[i]) << 4 | valueOf(digits[i + 1]));
}

void appendNumber(std::uint64_t value, int count, std::string& bytes) {
    for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> 8 * i);
}

void appendDouble(double value, std::string& bytes) {
    appendNumber(std::bit_cast<std::uint64_t>(value), sizeof value, bytes);
}

void utf16Of(std::string_view text, std::vector<std::uint16_t>& units) {
    units.clear();
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            units.push_back(static_cast<std::uint16_t>(text[at++]));
            continue;
        }
        const char32_t character = nextOfUtf8(text, at);
        if (character < 0x10000) {
            units.push_back(static_cast<std::uint16_t>(character));
        } else {
            units.push_back(static_cast<std::uint16_t>(0xD800 + ((character - 0x10000) >> 10)));
            units.push_back(static_cast<std::uint16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
        }
    }
}

} // namespace hostkit

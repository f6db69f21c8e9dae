#include "transcriptvalues.h"

#include <algorithm>
#include <array>

namespace hostkit {

namespace {

constexpr int firstRule = 29; // by layer, by block, the standard
constexpr std::array<short, 24> weights{0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                        53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr char caret = '^';
constexpr char controlShift = 0x40;

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

} // namespace hostkit

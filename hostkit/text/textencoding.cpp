#include "textencoding.h"

namespace hostkit {

namespace {

// Windows-1252 where it differs from the first 256 characters of Unicode: bytes 80 to 9F. The five undefined
// bytes stand for the control characters of the same number.
constexpr wchar_t ansiUpper[32] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178,
};

constexpr wchar_t replacement = 0xFFFD;

bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// The length of the valid sequence at the start of bytes, its value in character; 0 when there is none.
std::size_t decodeSequence(std::string_view bytes, wchar_t& character) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = at(0);
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;
    char32_t value = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(at(i))) return 0;
        value = value << 6 | (at(i) & 0x3Fu);
    }
    constexpr char32_t smallest[5] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < smallest[length] || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return 0;
    character = static_cast<wchar_t>(value);
    return length;
}

} // namespace

wchar_t wideFromAnsi(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? ansiUpper[byte - 0x80] : byte;
}

std::wstring wideFromAnsi(std::string_view bytes) {
    std::wstring text(bytes.size(), L'\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        text[i] = wideFromAnsi(static_cast<unsigned char>(bytes[i]));
    return text;
}

std::optional<unsigned char> ansiFromWide(wchar_t character) {
    const char32_t code = static_cast<char32_t>(character);
    if (code < 0x80 || (code >= 0xA0 && code < 0x100)) return static_cast<unsigned char>(code);
    for (unsigned i = 0; i < 32; ++i)
        if (ansiUpper[i] == character) return static_cast<unsigned char>(0x80 + i);
    return std::nullopt;
}

std::string ansiFromWide(std::wstring_view text) {
    std::string bytes(text.size(), '?');
    for (std::size_t i = 0; i < text.size(); ++i)
        if (const auto byte = ansiFromWide(text[i])) bytes[i] = static_cast<char>(*byte);
    return bytes;
}

std::wstring wideFromUtf8(std::string_view bytes, std::optional<Utf8Fault>* fault) {
    if (fault) fault->reset();
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        wchar_t character = replacement;
        const std::size_t length = decodeSequence(bytes.substr(at), character);
        if (length == 0 && fault && !*fault) *fault = Utf8Fault{at};
        text.push_back(length == 0 ? replacement : character);
        at += length == 0 ? 1 : length;
    }
    return text;
}

bool isValidUtf8(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        wchar_t character;
        const std::size_t length = decodeSequence(bytes.substr(at), character);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

void appendUtf8(std::string& bytes, wchar_t character) {
    char32_t code = static_cast<char32_t>(character);
    if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) code = replacement;
    const auto tail = [&](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        bytes += static_cast<char>(code);
    } else if (code < 0x800) {
        bytes += {static_cast<char>(0xC0 | code >> 6), tail(0)};
    } else if (code < 0x10000) {
        bytes += {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
    } else {
        bytes += {static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
    }
}

std::string utf8FromWide(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) appendUtf8(bytes, character);
    return bytes;
}

} // namespace hostkit

#include "drawingtext.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace hostkit {

namespace {

constexpr wchar_t escapedByteBase = 0xDC00;

bool isPlain(unsigned char byte) { return byte < 0x80 && byte != '\\' && byte != '^' && byte != 0; }

// The length of the well-formed UTF-8 character at the front, or 0.
std::size_t characterLength(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes.front());
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    if (length == 0 || length > bytes.size() || !isValidUtf8(bytes.substr(0, length))) return 0;
    return length;
}

void decodeBrokenUtf8(std::string_view bytes, std::wstring& text) {
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0)
            text += static_cast<wchar_t>(escapedByteBase + static_cast<unsigned char>(bytes.front()));
        else
            text += wideFromUtf8(bytes.substr(0, length));
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

std::optional<unsigned> hexadecimalAt(std::wstring_view text, std::size_t place, std::size_t digits) {
    if (place + digits > text.size()) return {};
    unsigned value = 0;
    for (const wchar_t digit : text.substr(place, digits)) {
        value *= 16;
        if (digit >= L'0' && digit <= L'9')
            value += static_cast<unsigned>(digit - L'0');
        else if (digit >= L'A' && digit <= L'F')
            value += static_cast<unsigned>(digit - L'A') + 10;
        else if (digit >= L'a' && digit <= L'f')
            value += static_cast<unsigned>(digit - L'a') + 10;
        else
            return {};
    }
    return value;
}

std::optional<unsigned> unicodeEscapeAt(std::wstring_view text, std::size_t place) {
    if (text.compare(place, 3, L"\\U+") != 0 && text.compare(place, 3, L"\\u+") != 0) return {};
    return hexadecimalAt(text, place + 3, 4);
}

// The eastern code pages by their number in an \M+ escape; the fourth (Johab) has no decoder here.
std::optional<CodePage> easternPage(wchar_t number) {
    switch (number) {
    case L'1':
        return CodePage::japanese932;
    case L'2':
        return CodePage::chinese950;
    case L'3':
        return CodePage::korean949;
    case L'5':
        return CodePage::chinese936;
    default:
        return {};
    }
}

// Appends the character of the escape at `place` and returns the escape's length; 0 where there is none.
std::size_t appendUnicodeEscape(std::wstring_view text, std::size_t place, std::wstring& result) {
    const std::optional<unsigned> value = unicodeEscapeAt(text, place);
    if (!value || *value < 0x20) return 0;
    if (*value >= 0xD800 && *value < 0xDC00) {
        const std::optional<unsigned> low =
            place + 7 < text.size() ? unicodeEscapeAt(text, place + 7) : std::nullopt;
        if (!low || *low < 0xDC00 || *low > 0xDFFF) return 0;
        result += static_cast<wchar_t>(0x10000 + ((*value - 0xD800) << 10) + (*low - 0xDC00));
        return 14;
    }
    if (*value >= 0xDC00 && *value <= 0xDFFF) return 0;
    result += static_cast<wchar_t>(*value);
    return 7;
}

std::size_t appendEasternEscape(std::wstring_view text, std::size_t place, std::wstring& result) {
    if (text.compare(place, 3, L"\\M+") != 0 || place + 8 > text.size()) return 0;
    const std::optional<CodePage> page = easternPage(text[place + 3]);
    const std::optional<unsigned> value = hexadecimalAt(text, place + 4, 4);
    if (!page || !value) return 0;
    const char bytes[2] = {static_cast<char>(*value >> 8), static_cast<char>(*value & 0xFF)};
    const std::wstring character = decodeText(*page, std::string_view(bytes, 2));
    if (character.size() != 1 || character[0] == 0xFFFD || character[0] < 0x20) return 0;
    result += character;
    return 8;
}

std::size_t appendCaretEscape(std::wstring_view text, std::size_t place, std::wstring& result) {
    if (place + 1 >= text.size()) return 0;
    const wchar_t next = text[place + 1];
    if (next == L' ')
        result += L'^';
    else if (next > L'@' && next <= L'_')
        result += static_cast<wchar_t>(next - L'@');
    else
        return 0;
    return 2;
}

std::size_t appendEscape(std::wstring_view text, std::size_t place, std::wstring& result) {
    if (text[place] == L'^') return appendCaretEscape(text, place, result);
    if (text[place] != L'\\') return 0;
    const std::size_t length = appendUnicodeEscape(text, place, result);
    return length ? length : appendEasternEscape(text, place, result);
}

void resolveEscapes(std::wstring& text) {
    if (text.find_first_of(L"\\^") == std::wstring::npos) return;
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t length = appendEscape(text, place, result);
        if (length == 0) result += text[place];
        place += std::max<std::size_t>(length, 1);
    }
    text.swap(result);
}

void appendUnicode(std::string& bytes, unsigned value) {
    char escape[16];
    bytes.append(escape, static_cast<std::size_t>(std::snprintf(escape, sizeof escape, "\\U+%04X", value)));
}

void appendUnmappable(std::string& bytes, wchar_t character) {
    const auto value = static_cast<unsigned>(character);
    if (value < 0x10000) return appendUnicode(bytes, value);
    appendUnicode(bytes, 0xD800 + ((value - 0x10000) >> 10 & 0x3FF));
    appendUnicode(bytes, 0xDC00 + ((value - 0x10000) & 0x3FF));
}

// A backslash that would begin an escape is one itself.
bool beginsEscape(std::wstring_view text, std::size_t place) {
    std::wstring ignored;
    return text[place] == L'\\' && appendEscape(text, place, ignored) != 0;
}

// NUL has no escape that every reader takes back; a text cannot hold one, so it is dropped.
std::wstring withControlsEscaped(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size() + 8);
    for (std::size_t place = 0; place < text.size(); ++place) {
        const wchar_t character = text[place];
        if (character == L'^')
            result += L"^ ";
        else if (beginsEscape(text, place))
            result += L"\\U+005C";
        else if (character == 0)
            continue;
        else if (character > 0 && character < 0x20)
            (result += L'^') += static_cast<wchar_t>(character + L'@');
        else
            result += character;
    }
    return result;
}

} // namespace

void DrawingText::decodeBytes(std::string_view bytes, std::wstring& text) const {
    if (m_page != CodePage::utf8)
        text = decodeText(m_page, bytes);
    else if (isValidUtf8(bytes))
        text = wideFromUtf8(bytes);
    else
        decodeBrokenUtf8(bytes, text);
}

void DrawingText::decode(std::string_view bytes, std::wstring& text) const {
    text.clear();
    if (std::all_of(bytes.begin(), bytes.end(),
                    [](char byte) { return isPlain(static_cast<unsigned char>(byte)); })) {
        text.assign(bytes.begin(), bytes.end());
        return;
    }
    decodeBytes(bytes, text);
    resolveEscapes(text);
    std::erase(text, L'\0'); // as nothing could be written that reads back to it
}

std::wstring DrawingText::decode(std::string_view bytes) const {
    std::wstring text;
    decode(bytes, text);
    return text;
}

void DrawingText::encode(std::wstring_view text, std::string& bytes) const {
    const auto isPlainWide = [](wchar_t character) {
        return character >= 0x20 && character < 0x7F && character != L'^';
    };
    const bool mayEscape = text.find(L"\\U+") != std::wstring_view::npos ||
                           text.find(L"\\u+") != std::wstring_view::npos ||
                           text.find(L"\\M+") != std::wstring_view::npos;
    if (!mayEscape && std::all_of(text.begin(), text.end(), isPlainWide)) {
        bytes.append(text.begin(), text.end());
        return;
    }
    const std::wstring escaped = withControlsEscaped(text);
    if (m_page != CodePage::utf8) {
        bytes += encodeText(m_page, escaped, appendUnmappable);
        return;
    }
    for (const wchar_t character : escaped) {
        if (character > escapedByteBase + 0x7F && character <= escapedByteBase + 0xFF)
            bytes += static_cast<char>(character - escapedByteBase);
        else
            appendUtf8(bytes, character);
    }
}

} // namespace hostkit

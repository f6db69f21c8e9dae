#include "escaping.h"

#include "textencoding.h"

#include <charconv>
#include <cmath>

namespace hostkit {

namespace {

bool isForbiddenInXml(wchar_t character) {
    const auto code = static_cast<char32_t>(character);
    return (code < 0x20 && code != 9 && code != 10) || code == 0xFFFE || code == 0xFFFF ||
           (code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF;
}

} // namespace

void appendXmlText(std::wstring_view text, std::string& xml) {
    for (const wchar_t character : text) {
        if (character == L'&')
            xml += "&amp;";
        else if (character == L'<')
            xml += "&lt;";
        else if (character == L'>')
            xml += "&gt;";
        else if (character == L'"')
            xml += "&quot;";
        else
            appendUtf8(xml, isForbiddenInXml(character) ? L'\uFFFD' : character);
    }
}

void appendJsonText(std::wstring_view text, std::string& json) {
    json += '"';
    for (const wchar_t character : text) {
        if (character == L'"' || character == L'\\') {
            json += '\\';
            json += static_cast<char>(character);
        } else if (character >= 0 && character < 0x20) {
            constexpr char digits[] = "0123456789abcdef";
            json += "\\u00";
            json += digits[character >> 4];
            json += digits[character & 15];
        } else {
            appendUtf8(json, character);
        }
    }
    json += '"';
}

void appendJsonNumber(double value, std::string& json) {
    if (!std::isfinite(value)) {
        json += "null";
        return;
    }
    char digits[32];
    json.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

} // namespace hostkit

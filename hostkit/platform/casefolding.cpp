#include "casefolding.h"

#include <cwctype>
#include <locale.h>

namespace hostkit {

namespace {

// A locale object of our own: the answers do not depend on setlocale, nor on the environment of the process.
locale_t caseTables() {
    static const locale_t tables = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return tables;
}

// Where the system has no such locale: the letters of the languages that the application is sold in.
wchar_t lowerWithoutTables(wchar_t c) {
    const bool latin = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    const bool greek = c >= 0x391 && c <= 0x3A9 && c != 0x3A2;
    const bool cyrillic = c >= 0x410 && c <= 0x42F;
    return latin || greek || cyrillic ? static_cast<wchar_t>(c + 0x20) : c;
}

wchar_t upperWithoutTables(wchar_t c) {
    if (c == 0xFF) return 0x178;
    const wchar_t upper = static_cast<wchar_t>(c - 0x20);
    return c > 0x20 && lowerWithoutTables(upper) == c ? upper : c;
}

} // namespace

wchar_t lowerCase(wchar_t character) {
    if (static_cast<unsigned>(character) < 0x80)
        return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + 0x20) : character;
    const locale_t tables = caseTables();
    if (!tables) return lowerWithoutTables(character);
    return static_cast<wchar_t>(towlower_l(static_cast<wint_t>(character), tables));
}

wchar_t upperCase(wchar_t character) {
    if (static_cast<unsigned>(character) < 0x80)
        return character >= L'a' && character <= L'z' ? static_cast<wchar_t>(character - 0x20) : character;
    const locale_t tables = caseTables();
    if (!tables) return upperWithoutTables(character);
    return static_cast<wchar_t>(towupper_l(static_cast<wint_t>(character), tables));
}

std::wstring lowerCase(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& character : result) character = lowerCase(character);
    return result;
}

std::wstring upperCase(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& character : result) character = upperCase(character);
    return result;
}

bool isWhiteSpace(wchar_t c) {
    if (c == L' ' || (c >= L'\t' && c <= L'\r')) return true;
    if (static_cast<unsigned>(c) < 0x80) return false;
    return c == 0x85 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 ||
           c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

int compareNoCase(std::wstring_view first, std::wstring_view second) {
    const std::size_t common = first.size() < second.size() ? first.size() : second.size();
    for (std::size_t i = 0; i < common; ++i) {
        if (first[i] == second[i]) continue;
        const wchar_t a = lowerCase(first[i]);
        const wchar_t b = lowerCase(second[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    if (first.size() == second.size()) return 0;
    return first.size() < second.size() ? -1 : 1;
}

bool matchesWildcard(std::wstring_view pattern, std::wstring_view text) {
    std::size_t p = 0;
    std::size_t t = 0;
    std::size_t star = std::wstring_view::npos;
    std::size_t resume = 0;
    // Only the last star is ever taken back, so the cost is at most the product of the lengths.
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            resume = t;
        } else if (p < pattern.size() &&
                   (pattern[p] == L'?' || lowerCase(pattern[p]) == lowerCase(text[t]))) {
            ++p;
            ++t;
        } else if (star != std::wstring_view::npos) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == L'*') ++p;
    return p == pattern.size();
}

} // namespace hostkit

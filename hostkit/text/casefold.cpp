#include "casefold.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cwctype>
#include <locale.h>

namespace hostkit {

namespace {

// The system's own Unicode locale, so that setlocale and the environment of the process have no say.
locale_t unicodeLocale() {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return unicode;
}

// Where the system has no such locale: the letters of the languages that the application is sold in.
wchar_t lowerWithoutLocale(wchar_t c) {
    const bool ascii = c >= L'A' && c <= L'Z';
    const bool latin = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    const bool greek = c >= 0x391 && c <= 0x3A9 && c != 0x3A2;
    const bool cyrillic = c >= 0x410 && c <= 0x42F;
    return ascii || latin || greek || cyrillic ? static_cast<wchar_t>(c + 0x20) : c;
}

wchar_t upperWithoutLocale(wchar_t c) {
    if (c == 0xFF) return 0x178;
    const wchar_t upper = static_cast<wchar_t>(c - 0x20);
    return c > 0x20 && lowerWithoutLocale(upper) == c ? upper : c;
}

wchar_t computedLower(wchar_t c) {
    const locale_t unicode = unicodeLocale();
    return unicode ? static_cast<wchar_t>(towlower_l(static_cast<wint_t>(c), unicode))
                   : lowerWithoutLocale(c);
}

// Up to the letters that drawings and names are full of, looked up; the others are asked for.
constexpr std::size_t tableSize = 0x600;

const std::array<wchar_t, tableSize>& lowerTable() {
    static const std::array<wchar_t, tableSize> table = [] {
        std::array<wchar_t, tableSize> lower;
        for (std::size_t i = 0; i < tableSize; ++i) lower[i] = computedLower(static_cast<wchar_t>(i));
        return lower;
    }();
    return table;
}

} // namespace

wchar_t foldCase(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    return code < tableSize ? lowerTable()[code] : computedLower(character);
}

std::wstring foldCase(std::wstring_view text) {
    std::wstring folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](wchar_t c) { return foldCase(c); });
    return folded;
}

wchar_t upperCase(wchar_t character) {
    if (static_cast<std::uint32_t>(character) < 0x80)
        return character >= L'a' && character <= L'z' ? static_cast<wchar_t>(character - 0x20) : character;
    const locale_t unicode = unicodeLocale();
    return unicode ? static_cast<wchar_t>(towupper_l(static_cast<wint_t>(character), unicode))
                   : upperWithoutLocale(character);
}

std::wstring upperCase(std::wstring_view text) {
    std::wstring result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](wchar_t c) { return upperCase(c); });
    return result;
}

int compareFolded(std::wstring_view left, std::wstring_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (left[i] == right[i]) continue;
        const wchar_t a = foldCase(left[i]);
        const wchar_t b = foldCase(right[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
}

std::size_t FoldedHash::operator()(std::wstring_view text) const {
    std::size_t hash = 1469598103934665603ull; // FNV-1a, offset and prime
    for (const wchar_t c : text) hash = (hash ^ static_cast<std::uint32_t>(foldCase(c))) * 1099511628211ull;
    return hash;
}

bool isWhiteSpace(wchar_t c) {
    if (c == L' ' || (c >= L'\t' && c <= L'\r')) return true;
    if (static_cast<unsigned>(c) < 0x80) return false;
    return c == 0x85 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 ||
           c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

bool isLetter(wchar_t c) {
    if (static_cast<std::uint32_t>(c) < 0x80) return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
    const locale_t unicode = unicodeLocale();
    return unicode ? iswalpha_l(static_cast<wint_t>(c), unicode) != 0
                   : lowerWithoutLocale(c) != c || upperWithoutLocale(c) != c;
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
        } else if (p < pattern.size() && (pattern[p] == L'?' || foldCase(pattern[p]) == foldCase(text[t]))) {
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

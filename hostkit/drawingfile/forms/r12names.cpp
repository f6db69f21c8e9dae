#include "r12names.h"

#include "casefold.h"

#include <algorithm>

namespace hostkit {

namespace {

// U+00C0 to U+00FF of Latin-1, by their places there.
constexpr std::wstring_view plainLatin[] = {
    L"A", L"A", L"A", L"A", L"Ae", L"A", L"AE", L"C", L"E", L"E", L"E", L"E", L"I",  L"I", L"I",  L"I",
    L"D", L"N", L"O", L"O", L"O",  L"O", L"Oe", L"_", L"O", L"U", L"U", L"U", L"Ue", L"Y", L"Th", L"ss",
    L"a", L"a", L"a", L"a", L"ae", L"a", L"ae", L"c", L"e", L"e", L"e", L"e", L"i",  L"i", L"i",  L"i",
    L"d", L"n", L"o", L"o", L"o",  L"o", L"oe", L"_", L"o", L"u", L"u", L"u", L"ue", L"y", L"th", L"y"};

bool canStand(wchar_t character) {
    return (character >= L'0' && character <= L'9') || (character >= L'A' && character <= L'Z') ||
           (character >= L'a' && character <= L'z') || character == L'$' || character == L'-' ||
           character == L'_';
}

std::wstring withPlainLetters(std::wstring_view name) {
    std::wstring plain;
    if (!name.empty() && name.front() == L'*') {
        plain = L"*";
        name.remove_prefix(1);
    }
    for (const wchar_t character : name) {
        const auto place = static_cast<std::size_t>(character) - 0xC0;
        if (canStand(character))
            plain += character;
        else if (place < std::size(plainLatin))
            plain += plainLatin[place];
        else
            plain += L'_';
    }
    return plain;
}

// The middle goes: families of names differ at their ends.
std::wstring shortened(const std::wstring& name, std::size_t length) {
    if (name.size() <= length) return name;
    const std::size_t head = length * 2 / 5;
    const std::size_t tail = length - head - 1;
    return name.substr(0, head) + L"_" + name.substr(name.size() - tail);
}

} // namespace

bool R12Names::isSound(std::wstring_view name) {
    return name.size() <= longest && withPlainLetters(name) == name;
}

std::wstring R12Names::take(std::wstring_view name) {
    const std::wstring plain = withPlainLetters(name);
    std::wstring candidate = shortened(plain, longest);
    for (int number = 2; !m_taken.insert(foldCase(candidate)).second; ++number) {
        const std::wstring suffix = L"_" + std::to_wstring(number);
        candidate = shortened(plain, longest - suffix.size()) + suffix;
    }
    return candidate;
}

} // namespace hostkit

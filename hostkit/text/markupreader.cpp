#include "markupreader.h"

#include <algorithm>
#include <utility>

namespace hostkit {

namespace {

using Kind = MarkupPiece::Kind;

constexpr std::pair<wchar_t, wchar_t> signs[] = {
    {L'c', L'\u2300'}, {L'd', L'\u00B0'}, {L'p', L'\u00B1'}, {L'%', L'%'}};
constexpr std::pair<wchar_t, wchar_t> toggles[] = {{L'u', L'L'}, {L'o', L'O'}, {L'k', L'K'}};
constexpr wchar_t fixedBlank = L'\u00A0';
constexpr std::size_t percentLength = 2;     // %%
constexpr std::size_t numberLength = 3;      // %%nnn
constexpr std::size_t prefixLength = 3;      // \U+
constexpr std::size_t hexadecimalLength = 4; // \U+hhhh

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

// No code of either kind of text begins with it.
bool isPlain(wchar_t character) {
    return character >= L' ' && character != L'%' && character != L'\\' && character != L'^' &&
           character != L'{' && character != L'}';
}

wchar_t lowerCase(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
}

int hexadecimalDigit(wchar_t character) {
    const wchar_t digit = lowerCase(character);
    if (isDigit(digit)) return digit - L'0';
    return digit >= L'a' && digit <= L'f' ? digit - L'a' + 10 : -1;
}

} // namespace

std::optional<MarkupPiece> MarkupReader::next() {
    if (m_rest.empty()) return std::nullopt;
    std::optional<MarkupPiece> piece = plainLetters();
    if (!piece) piece = percentCode();
    if (!piece) piece = hexadecimalCharacter();
    if (!piece) piece = m_extent == Extent::line ? letters(1, m_rest.substr(0, 1)) : paragraphPiece();
    m_rest.remove_prefix(piece->source.size());
    return piece;
}

MarkupPiece MarkupReader::letters(std::size_t length, std::wstring_view seen) const {
    return {Kind::letters, 0, seen, m_rest.substr(0, length)};
}

MarkupPiece MarkupReader::character(std::size_t length, wchar_t seen) {
    m_character = seen;
    return letters(length, {&m_character, 1});
}

MarkupPiece MarkupReader::code(std::size_t length, Kind kind, wchar_t letter) const {
    return {kind, letter, {}, m_rest.substr(0, length)};
}

MarkupPiece MarkupReader::codeWithArgument(std::size_t end, Kind kind) const {
    const std::wstring_view whole = m_rest.substr(0, end);
    return {kind, whole[1], whole.substr(2), m_rest.substr(0, whole.size() + 1)};
}

std::optional<MarkupPiece> MarkupReader::plainLetters() const {
    const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), isPlain);
    const auto length = static_cast<std::size_t>(end - m_rest.begin());
    if (length == 0) return std::nullopt;
    return letters(length, m_rest.substr(0, length));
}

std::optional<MarkupPiece> MarkupReader::percentCode() {
    if (m_rest.size() <= percentLength || !m_rest.starts_with(L"%%")) return std::nullopt;
    const wchar_t letter = lowerCase(m_rest[percentLength]);
    if (isDigit(letter)) return characterByNumber();
    for (const auto& [name, sign] : signs)
        if (name == letter) return character(percentLength + 1, sign);
    for (const auto& [name, line] : toggles)
        if (name == letter) return code(percentLength + 1, Kind::toggle, line);
    return std::nullopt;
}

MarkupPiece MarkupReader::characterByNumber() {
    int number = 0;
    std::size_t length = percentLength;
    for (; length < percentLength + numberLength && length < m_rest.size() && isDigit(m_rest[length]);
         ++length)
        number = number * 10 + (m_rest[length] - L'0');
    return number < L' ' ? letters(length, {}) : character(length, static_cast<wchar_t>(number));
}

std::optional<MarkupPiece> MarkupReader::hexadecimalCharacter() {
    constexpr std::size_t length = prefixLength + hexadecimalLength;
    if (m_rest.size() < length || !(m_rest.starts_with(L"\\U+") || m_rest.starts_with(L"\\u+")))
        return std::nullopt;
    int number = 0;
    for (const wchar_t each : m_rest.substr(prefixLength, hexadecimalLength)) {
        const int digit = hexadecimalDigit(each);
        if (digit < 0) return std::nullopt;
        number = number * 16 + digit;
    }
    return character(length, static_cast<wchar_t>(number));
}

MarkupPiece MarkupReader::paragraphPiece() {
    const wchar_t first = m_rest.front();
    if (m_rest.size() > 1 && first == L'\\') return backslashCode(m_rest[1]);
    if (m_rest.size() > 1 && first == L'^') return caretCode(m_rest[1]);
    if (first == L'{') return code(1, Kind::groupBegin);
    if (first == L'}') return code(1, Kind::groupEnd);
    if (first == L'\n') return code(1, Kind::lineEnd);
    const bool isSeen = first >= L' ' || first == L'\t';
    return letters(1, isSeen ? m_rest.substr(0, 1) : std::wstring_view());
}

MarkupPiece MarkupReader::backslashCode(wchar_t letter) {
    const auto isOneOf = [letter](std::wstring_view codes) { return codes.find(letter) != codes.npos; };
    if (isOneOf(L"PNX")) return code(2, Kind::lineEnd);
    if (isOneOf(L"LlOoKk")) return code(2, Kind::form, letter);
    if (isOneOf(L"HCcfFpAWQT")) return codeWithArgument(m_rest.find(L';', 2), Kind::form);
    if (letter == L'S') return codeWithArgument(endOfStack(), Kind::stack);
    if (letter == L'~') return character(2, fixedBlank);
    return letters(2, isOneOf(L"\\{}") ? m_rest.substr(1, 1) : m_rest.substr(0, 2));
}

MarkupPiece MarkupReader::caretCode(wchar_t letter) const {
    if (letter == L'J') return code(2, Kind::lineEnd);
    if (letter == L'I') return letters(2, L"\t");
    if (letter == L' ') return letters(2, L"^");
    return letters(2, letter == L'M' ? std::wstring_view() : m_rest.substr(0, 2));
}

std::size_t MarkupReader::endOfStack() const {
    std::wstring_view rest = m_rest.substr(2);
    while (!rest.empty() && rest.front() != L';') takeStackCharacter(rest);
    return m_rest.size() - rest.size();
}

StackCharacter takeStackCharacter(std::wstring_view& stack) {
    const bool isEscaped = stack.front() == L'\\' && stack.size() > 1;
    const wchar_t character = stack[isEscaped ? 1 : 0];
    stack.remove_prefix(isEscaped ? 2 : 1);
    return {character, !isEscaped && (character == L'/' || character == L'#' || character == L'^')};
}

wchar_t alignmentAskedBy(std::wstring_view paragraphForm) {
    const std::size_t letter = paragraphForm.find(L'q');
    const bool isAsked = letter != paragraphForm.npos && letter + 1 < paragraphForm.size();
    return isAsked ? paragraphForm[letter + 1] : L'\0';
}

} // namespace hostkit

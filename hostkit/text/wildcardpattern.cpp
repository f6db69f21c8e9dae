#include "wildcardpattern.h"

#include "casefold.h"

#include <algorithm>
#include <cstdint>

namespace hostkit {

namespace {

constexpr wchar_t escapeMark = L'`';
constexpr wchar_t negationMark = L'~';
constexpr wchar_t alternativeMark = L',';

constexpr bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// A character of a set, its escape taken off; `at` stands behind it afterwards.
wchar_t takeSetCharacter(std::wstring_view pattern, std::size_t& at) {
    if (pattern[at] == escapeMark && at + 1 < pattern.size()) ++at;
    return pattern[at++];
}

/// Where the set that opens at `at` closes; the pattern's size where it does not.
std::size_t closingBracket(std::wstring_view pattern, std::size_t at) {
    ++at;
    if (at < pattern.size() && pattern[at] == negationMark) ++at;
    if (at < pattern.size() && pattern[at] == L']') ++at;
    while (at < pattern.size() && pattern[at] != L']') takeSetCharacter(pattern, at);
    return at;
}

} // namespace

WildcardPattern::WildcardPattern(std::wstring_view pattern, LetterCase letterCase)
    : m_case(letterCase) {
    m_elements.reserve(pattern.size());
    for (std::size_t at = readAlternative(pattern, 0); at < pattern.size();)
        at = readAlternative(pattern, at + 1);
}

std::size_t WildcardPattern::readAlternative(std::wstring_view pattern, std::size_t at) {
    Alternative alternative{m_elements.size(), 0, at < pattern.size() && pattern[at] == negationMark};
    if (alternative.isNegated) ++at;
    while (at < pattern.size() && pattern[at] != alternativeMark) at = readElement(pattern, at);
    alternative.end = m_elements.size();
    m_alternatives.push_back(alternative);
    return at;
}

std::size_t WildcardPattern::readElement(std::wstring_view pattern, std::size_t at) {
    switch (pattern[at]) {
    case L'*':
        append(Kind::kRun);
        break;
    case L'?':
        append(Kind::kAny);
        break;
    case L'#':
        append(Kind::kDigit);
        break;
    case L'@':
        append(Kind::kLetter);
        break;
    case L'.':
        append(Kind::kOther);
        break;
    case L'[':
        return readSet(pattern, at);
    case escapeMark:
        if (at + 1 < pattern.size()) ++at;
        [[fallthrough]];
    default:
        appendCharacter(pattern[at]);
    }
    return at + 1;
}

std::size_t WildcardPattern::readSet(std::wstring_view pattern, std::size_t at) {
    const std::size_t end = closingBracket(pattern, at);
    if (end >= pattern.size()) {
        appendCharacter(L'[');
        return at + 1;
    }
    ++at;
    const bool isNegated = pattern[at] == negationMark;
    if (isNegated) ++at;
    append(isNegated ? Kind::kNoneOf : Kind::kOneOf);
    m_elements.back().firstRange = static_cast<std::uint32_t>(m_ranges.size());
    while (at < end) {
        const wchar_t first = takeSetCharacter(pattern, at);
        wchar_t last = first;
        if (at + 1 < end && pattern[at] == L'-') last = takeSetCharacter(pattern, ++at);
        m_ranges.push_back({first, last});
    }
    m_elements.back().endRange = static_cast<std::uint32_t>(m_ranges.size());
    return end + 1;
}

void WildcardPattern::append(Kind kind) { m_elements.push_back({kind}); }

void WildcardPattern::appendCharacter(wchar_t character) {
    append(Kind::kCharacter);
    Element& element = m_elements.back();
    element.character = m_case == LetterCase::kFolded ? foldCase(character) : character;
    element.upper = m_case == LetterCase::kFolded ? upperCase(element.character) : character;
}

bool WildcardPattern::matches(std::wstring_view text) const {
    return std::any_of(m_alternatives.begin(), m_alternatives.end(), [&](const Alternative& alternative) {
        return matchesAlternative(alternative, text) != alternative.isNegated;
    });
}

// Every element but a run takes one character, so that only the last run is ever taken back.
bool WildcardPattern::matchesAlternative(const Alternative& alternative, std::wstring_view text) const {
    const Element* at = m_elements.data() + alternative.begin;
    const Element* const end = m_elements.data() + alternative.end;
    const Element* behindRun = nullptr;
    std::size_t resume = 0;
    for (std::size_t place = 0; place < text.size();) {
        if (at != end && at->kind == Kind::kRun) {
            behindRun = ++at;
            resume = place;
            if (at == end) return true;
        } else if (at != end && matchesElement(*at, text[place])) {
            ++at;
            ++place;
        } else if (behindRun) {
            at = behindRun;
            place = ++resume;
        } else {
            return false;
        }
    }
    while (at != end && at->kind == Kind::kRun) ++at;
    return at == end;
}

bool WildcardPattern::matchesElement(const Element& element, wchar_t character) const {
    switch (element.kind) {
    case Kind::kCharacter:
        if (element.character == character || element.upper == character) return true;
        // A letter of the first 128 has no other forms than these two.
        return static_cast<std::uint32_t>(character) >= 0x80 && m_case == LetterCase::kFolded &&
               element.character == foldCase(character);
    case Kind::kDigit:
        return isDigit(character);
    case Kind::kLetter:
        return isLetter(character);
    case Kind::kOther:
        return !isDigit(character) && !isLetter(character);
    case Kind::kOneOf:
        return isInSet(element, character);
    case Kind::kNoneOf:
        return !isInSet(element, character);
    default:
        return true;
    }
}

bool WildcardPattern::isInSet(const Element& set, wchar_t character) const {
    const auto has = [&](wchar_t wanted) {
        for (std::uint32_t place = set.firstRange; place < set.endRange; ++place)
            if (wanted >= m_ranges[place].first && wanted <= m_ranges[place].last) return true;
        return false;
    };
    if (has(character) || m_case == LetterCase::kExact) return has(character);
    const wchar_t folded = foldCase(character);
    return has(folded) || has(upperCase(folded));
}

} // namespace hostkit

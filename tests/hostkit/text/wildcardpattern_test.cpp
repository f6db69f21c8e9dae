#include "wildcardpattern.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <random>
#include <string>

namespace {

using hostkit::LetterCase;
using hostkit::WildcardPattern;

/// The rules read off a pattern's letters at each step, every run tried in every length.
class PlainMatcher {
public:
    PlainMatcher(std::wstring pattern, bool isFolded)
        : m_pattern(std::move(pattern))
        , m_isFolded(isFolded) {}

    bool matches(const std::wstring& text) const {
        std::size_t begin = 0;
        for (;;) {
            const std::size_t end = alternativeEnd(begin);
            const bool isNegated = begin < end && m_pattern[begin] == L'~';
            if (matches(m_pattern.substr(begin, end - begin).substr(isNegated), text) != isNegated)
                return true;
            if (end == m_pattern.size()) return false;
            begin = end + 1;
        }
    }

private:
    /// How many letters of a pattern its first element takes.
    static std::size_t elementLength(const std::wstring& pattern) {
        if (pattern[0] == L'`') return std::min<std::size_t>(2, pattern.size());
        if (pattern[0] != L'[') return 1;
        std::size_t at = pattern.substr(1, 1) == L"~" ? 2 : 1;
        for (bool isFirst = true; at < pattern.size(); ++at, isFirst = false) {
            if (pattern[at] == L']' && !isFirst) return at + 1;
            if (pattern[at] == L'`' && at + 1 < pattern.size()) ++at;
        }
        return 1;
    }
    std::size_t alternativeEnd(std::size_t at) const {
        if (at < m_pattern.size() && m_pattern[at] == L'~') ++at;
        while (at < m_pattern.size() && m_pattern[at] != L',') at += elementLength(m_pattern.substr(at));
        return at;
    }
    bool same(wchar_t left, wchar_t right) const {
        return m_isFolded
                   ? std::towlower(static_cast<wint_t>(left)) == std::towlower(static_cast<wint_t>(right))
                   : left == right;
    }
    bool isInSet(std::wstring set, wchar_t wanted) const {
        std::wstring members;
        for (std::size_t at = 0; at < set.size(); ++at) {
            if (set[at] == L'`' && at + 1 < set.size()) ++at;
            const wchar_t first = set[at];
            wchar_t last = first;
            if (at + 2 < set.size() && set[at + 1] == L'-') {
                at += 2;
                if (set[at] == L'`' && at + 1 < set.size()) ++at;
                last = set[at];
            }
            for (wchar_t member = first; member <= last; ++member) members += member;
        }
        for (const wchar_t member : members)
            if (same(member, wanted)) return true;
        return false;
    }
    bool matchesOne(const std::wstring& element, wchar_t letter) const {
        const bool isDigit = letter >= L'0' && letter <= L'9';
        const bool isLetter = !isDigit && std::iswalpha(static_cast<wint_t>(letter)) != 0;
        if (element.size() > 1 && element[0] == L'`') return letter == element[1] || same(letter, element[1]);
        if (element.size() > 1) {
            const bool isNegated = element[1] == L'~';
            const std::size_t begin = isNegated ? 2 : 1;
            return isInSet(element.substr(begin, element.size() - 1 - begin), letter) != isNegated;
        }
        if (element == L"?") return true;
        if (element == L"#") return isDigit;
        if (element == L"@") return isLetter;
        if (element == L".") return !isDigit && !isLetter;
        return same(element[0], letter);
    }
    bool matches(const std::wstring& pattern, const std::wstring& text) const {
        if (pattern.empty()) return text.empty();
        const std::size_t length = elementLength(pattern);
        const std::wstring rest = pattern.substr(length);
        if (pattern[0] == L'*')
            return matches(rest, text) || (!text.empty() && matches(pattern, text.substr(1)));
        return !text.empty() && matchesOne(pattern.substr(0, length), text[0]) &&
               matches(rest, text.substr(1));
    }

    std::wstring m_pattern;
    bool m_isFolded;
};

TEST(WildcardPattern, AgreesWithThePlainRulesOnRandomPatterns) {
    std::mt19937 random(20261);
    const auto text = [&](std::wstring_view letters, std::size_t longest) {
        std::wstring result(random() % (longest + 1), L' ');
        for (wchar_t& letter : result) letter = letters[random() % letters.size()];
        return result;
    };
    int matching = 0;
    for (int round = 0; round < 60000; ++round) {
        const bool isFolded = round % 2 == 0;
        const std::wstring pattern = round % 3 == 0 ? text(L"aB*?", 7) : text(L"abcABC129-_,~[]`*?#@.", 9);
        const WildcardPattern compiled(pattern, isFolded ? LetterCase::kFolded : LetterCase::kExact);
        const PlainMatcher plain(pattern, isFolded);
        for (int i = 0; i < 6; ++i) {
            const std::wstring candidate = text(i % 2 ? L"aAbB" : L"abAB19-_,~[]`", 5);
            const bool expected = plain.matches(candidate);
            matching += expected;
            ASSERT_EQ(compiled.matches(candidate), expected)
                << "pattern " << pattern << " text " << candidate << " folded " << isFolded;
        }
    }
    EXPECT_GT(matching, 30000); // the question is not idle
}

TEST(WildcardPattern, ReadsNamesAsPeopleWriteThem) {
    const struct {
        const wchar_t* pattern;
        const wchar_t* text;
        bool folded;
        bool exact;
    } cases[] = {
        {L"WALL*", L"wall-1", true, false},
        {L"LINE,ARC", L"ARC", true, true},
        {L"~*wall*,wall", L"floor", true, true},
        {L"\u00C9TAGE-#", L"\u00E9tage-3", true, false},
        {L"@", L"\u00DF", true, true},
        {L"@", L"7", false, false},
        {L"[\u00C0-\u00D6]", L"\u00E9", true, false},
        {L"[]a]", L"]", true, true},
        {L"[~]a]", L"b", true, true},
        {L"[a-]", L"-", true, true},
        {L"[c-a]", L"b", false, false},
        {L"a[b", L"a[b", true, true},
        {L"a`*", L"a*", true, true},
        {L"a`", L"a`", true, true},
        {L"[a`-c]", L"b", false, false},
        {L"a,", L"", true, true},
        {L"", L"a", false, false},
        {L"~", L"", false, false},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(WildcardPattern(each.pattern).matches(each.text), each.folded) << each.pattern;
        EXPECT_EQ(WildcardPattern(each.pattern, LetterCase::kExact).matches(each.text), each.exact)
            << each.pattern;
    }
}

TEST(WildcardPattern, ManyRunsComeToAnEnd) {
    std::wstring pattern;
    for (int i = 0; i < 200; ++i) pattern += L"*a";
    EXPECT_FALSE(WildcardPattern(pattern + L"*b").matches(std::wstring(5000, L'a')));
    EXPECT_TRUE(WildcardPattern(pattern + L"*").matches(std::wstring(5000, L'a')));
}

} // namespace

// Patterns of names and texts: alternatives, wildcards, sets of characters and escapes, read once and matched
// often; leaves out telling what matched where.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace hostkit {

enum class LetterCase : unsigned char { kExact, kFolded };

/// What a text must be as a whole. In a pattern stand for
///
/// - `*` any run of characters, also none; `?` one character;
/// - `#` a digit, 0 to 9; `@` a letter of any language; `.` one character that is neither;
/// - `[abc]` or `[a-c]` one of these characters, `[~abc]` one that is none of them. A `]` directly behind the
///   opening and a `-` at either end mean themselves, and so does a comma;
/// - `,` or: the text must be as one of the alternatives says;
/// - `~` at the start of an alternative: not as the rest of it says;
/// - a backquote: the next character means itself.
///
/// All else means itself, also a `[` without its `]` and a backquote at the end. An empty pattern matches the
/// empty text. The cost is at most the product of both lengths, whatever the pattern.
class WildcardPattern {
public:
    explicit WildcardPattern(std::wstring_view pattern, LetterCase letterCase = LetterCase::kFolded);

    bool matches(std::wstring_view text) const;

private:
    enum class Kind : unsigned char { kCharacter, kRun, kAny, kDigit, kLetter, kOther, kOneOf, kNoneOf };
    struct Element {
        Kind kind = Kind::kCharacter;
        wchar_t character = 0; ///< of kCharacter, folded where case does not count
        wchar_t upper = 0;     ///< its upper-case form then
        std::uint32_t firstRange = 0;
        std::uint32_t endRange = 0;
    };
    struct Range {
        wchar_t first;
        wchar_t last;
    };
    struct Alternative {
        std::size_t begin;
        std::size_t end;
        bool isNegated;
    };

    std::size_t readAlternative(std::wstring_view pattern, std::size_t at);
    std::size_t readElement(std::wstring_view pattern, std::size_t at);
    std::size_t readSet(std::wstring_view pattern, std::size_t at);
    void append(Kind kind);
    void appendCharacter(wchar_t character);
    bool matchesElement(const Element& element, wchar_t character) const;
    bool isInSet(const Element& set, wchar_t character) const;
    bool matchesAlternative(const Alternative& alternative, std::wstring_view text) const;

    LetterCase m_case;
    std::vector<Alternative> m_alternatives;
    std::vector<Element> m_elements;
    std::vector<Range> m_ranges;
};

} // namespace hostkit

// Case of wide texts: folding, comparison and simple patterns without regard to it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hostkit {

/// The lower-case form by the Unicode simple mapping, the same in every locale that the process may be in;
/// accented, Greek and Cyrillic letters included. What has no case, or whose other case has a different
/// length (sharp s), stays as it is.
wchar_t foldCase(wchar_t character);
std::wstring foldCase(std::wstring_view text);
wchar_t upperCase(wchar_t character);
std::wstring upperCase(std::wstring_view text);

/// Blank, tab, line feed, vertical tab, form feed, carriage return, and the blanks of Unicode.
bool isWhiteSpace(wchar_t character);
/// A letter of any language, the same in every locale; 0 to 9 are none.
bool isLetter(wchar_t character);

/// Negative, 0, positive by the codes of the folded texts. A total order of folded texts, so it serves as an
/// order of keys.
int compareFolded(std::wstring_view left, std::wstring_view right);
inline bool equalFolded(std::wstring_view left, std::wstring_view right) {
    return left.size() == right.size() && compareFolded(left, right) == 0;
}

// For containers keyed by names.

struct FoldedHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const;
};
struct FoldedEqual {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const {
        return equalFolded(left, right);
    }
};
struct FoldedLess {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const {
        return compareFolded(left, right) < 0;
    }
};

/// True when the whole text matches the pattern, '*' for any run and '?' for one character, without regard to
/// case.
bool matchesWildcard(std::wstring_view pattern, std::wstring_view text);

} // namespace hostkit

// Stand-in for the host's case tables. Covers one-to-one case mapping of all letters; leaves out mappings that change the length.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hostkit {

/// The same in every locale that the process may be in; accented, Greek and Cyrillic letters included. A
/// letter whose other case has a different length (sharp s) stays as it is.
wchar_t lowerCase(wchar_t character);
wchar_t upperCase(wchar_t character);
std::wstring lowerCase(std::wstring_view text);
std::wstring upperCase(std::wstring_view text);

/// Blank, tab, line feed, vertical tab, form feed, carriage return, and the blanks of Unicode.
bool isWhiteSpace(wchar_t character);

/// Negative, 0, positive by lower-case codes. A total order of folded texts, so it serves as an order of
/// keys.
int compareNoCase(std::wstring_view first, std::wstring_view second);
inline bool equalNoCase(std::wstring_view first, std::wstring_view second) {
    return first.size() == second.size() && compareNoCase(first, second) == 0;
}

/// Less without regard to case, for maps keyed by names.
struct LessNoCase {
    using is_transparent = void;
    bool operator()(std::wstring_view first, std::wstring_view second) const {
        return compareNoCase(first, second) < 0;
    }
};

/// True when the whole text matches the pattern, '*' for any run and '?' for one character, without regard to
/// case.
bool matchesWildcard(std::wstring_view pattern, std::wstring_view text);

} // namespace hostkit

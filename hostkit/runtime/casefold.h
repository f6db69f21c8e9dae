// Stand-in for the host's comparison of names without regard to case. Covers all letters, accented ones too, in every locale; leaves out mappings that change the length.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hostkit {

/// The lower-case form of one character by the Unicode simple mapping; characters without case come back
/// unchanged.
wchar_t foldCase(wchar_t character);
std::wstring foldCase(std::wstring_view text);
/// Below, equal or above zero, as wcscmp on the folded texts.
int compareFolded(std::wstring_view left, std::wstring_view right);
inline bool equalFolded(std::wstring_view left, std::wstring_view right) {
    return left.size() == right.size() && compareFolded(left, right) == 0;
}

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

} // namespace hostkit

#include "casefold.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cwctype>
#include <locale.h>

namespace hostkit {
namespace {

// One fixed table, filled from the system's own Unicode locale once, so that the user's locale has no say.
constexpr std::size_t tableSize = 0x600;

struct FoldTable {
    std::array<wchar_t, tableSize> lower;
    locale_t unicode;

    FoldTable()
        : unicode(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
        for (std::size_t i = 0; i < tableSize; ++i) lower[i] = compute(static_cast<wchar_t>(i));
    }
    ~FoldTable() {
        if (unicode) freelocale(unicode);
    }
    wchar_t compute(wchar_t c) const {
        if (!unicode) return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
        return static_cast<wchar_t>(towlower_l(static_cast<wint_t>(c), unicode));
    }
};

const FoldTable& foldTable() {
    static const FoldTable table;
    return table;
}

} // namespace

wchar_t foldCase(wchar_t character) {
    const FoldTable& table = foldTable();
    const auto code = static_cast<std::uint32_t>(character);
    return code < tableSize ? table.lower[code] : table.compute(character);
}

std::wstring foldCase(std::wstring_view text) {
    std::wstring folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](wchar_t c) { return foldCase(c); });
    return folded;
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

} // namespace hostkit

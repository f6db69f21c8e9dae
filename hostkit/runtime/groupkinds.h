// Kinds of group codes, for code that looks up many: a table of the published range; leaves out what a kind
// means, which adscodes.h tells.
#pragma once

#include "adscodes.h"

#include <array>
#include <cstddef>

namespace hostkit {

/// Of the published group codes, the first of which is 0.
constexpr short lastGroupCode = 1071;
constexpr std::size_t tabledCodes = lastGroupCode + 1;

constexpr std::array<AcDb::GroupKind, tabledCodes> tableOfKinds() {
    std::array<AcDb::GroupKind, tabledCodes> kinds{};
    for (std::size_t code = 0; code < tabledCodes; ++code)
        kinds[code] = AcDb::groupKind(static_cast<int>(code));
    return kinds;
}
inline constexpr std::array<AcDb::GroupKind, tabledCodes> kindsByCode = tableOfKinds();

/// As AcDb::groupKind, by one look.
constexpr AcDb::GroupKind kindOfCode(int code) {
    return static_cast<std::size_t>(code) < tabledCodes ? kindsByCode[static_cast<std::size_t>(code)]
                                                        : AcDb::groupKind(code);
}

} // namespace hostkit

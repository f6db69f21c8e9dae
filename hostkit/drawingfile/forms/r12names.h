// Names of older drawings: a name of R12 for any name of a later form; leaves out which records have names.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

namespace hostkit {

/// The names that the records of one table get in R12: at most 31 letters, digits, $, - and _, a leading *
/// for nameless blocks. Lower case stays, as R12 compares names without it.
class R12Names {
public:
    static constexpr std::size_t longest = 31;

    /// A name that none got before, without regard to case: the name itself where it can stand, else with
    /// accents taken off, ligatures written out, all other characters as _, without its middle
    /// where it is too long, and with a number where that name is taken. "Dalle épaisse (20)" becomes
    /// "Dalle_epaisse__20_".
    std::wstring take(std::wstring_view name);
    /// Whether the name can stand as it is. Such names are taken first, so that none of them is given away.
    static bool isSound(std::wstring_view name);

private:
    std::unordered_set<std::wstring> m_taken; ///< folded
};

} // namespace hostkit

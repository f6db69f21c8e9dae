// Commands in which every point of failure is tried, each with what it needs.
#pragma once

#include <string>
#include <vector>

namespace faults {

struct Case {
    std::string module{};  ///< of the examples; empty for the console's own commands
    std::string prepare{}; ///< commands before it, a line each
    std::string command;   ///< $F in it is a folder, $D the drawing
    bool isUndone = true;  ///< U takes back what it did
    bool opens = false;    ///< another drawing takes the place of the one that is open
};

std::vector<Case> allCases();
/// Those that the short run takes.
std::vector<Case> fewCases();

} // namespace faults

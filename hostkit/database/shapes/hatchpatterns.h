// Predefined hatch patterns by name: what their lines are, in millimetres at scale 1; leaves out SOLID, which
// has none.
#pragma once

#include "hatchloop.h"

#include <span>
#include <vector>

namespace hostkit {

/// A family of lines as patterns are written down: angle in degrees, a point of the first line, and from
/// there to the next line along and across. Of the dashes, above 0 is drawn, below 0 left out, 0 is a dot.
struct PatternFamily {
    double degrees;
    double x;
    double y;
    double along;
    double across;
    std::span<const double> dashes;
};

struct PredefinedPattern {
    const wchar_t* name;
    const char* use; ///< what it stands for in drawings of reinforced concrete
    std::span<const PatternFamily> families;
};

/// LINE, NET, DASH, DOTS, ANSI31, ANSI32, ANSI37, BRICK, EARTH and AR-CONC. The names are the usual ones, so
/// that other programs know them; the lines are this kit's own.
std::span<const PredefinedPattern> predefinedPatterns();
/// In any case of letters; null for a name that is none.
const PredefinedPattern* predefinedPattern(const wchar_t* name);

/// The lines of the pattern turned about the origin by an angle in radians, and scaled.
std::vector<HatchPatternLine> definitionLines(const PredefinedPattern& pattern, double angle, double scale);
/// Unbroken lines through the origin at that angle, in radians, and `space` apart; crossed by others where
/// `isDouble`.
std::vector<HatchPatternLine> userDefinedLines(double angle, double space, bool isDouble);

} // namespace hostkit

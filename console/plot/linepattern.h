#pragma once

#include "gepnt2d.h"

#include <vector>

/// A pattern as a drawing has it: lengths above 0 are drawn, below 0 left out, 0 is a dot. As a picture wants
/// it: drawn and empty lengths in turn, the first one drawn, and how far into it the pattern begins. No
/// dashes: unbroken.
struct DashArray {
    std::vector<double> dashes{};
    double start = 0.0;
};
DashArray dashArray(const std::vector<double>& pattern, double scale);

/// One family of parallel lines of a hatch pattern.
struct PatternLine {
    double angle = 0.0;    ///< radians
    AcGePoint2d base{};    ///< a point of the first line, where its dashes begin
    AcGeVector2d offset{}; ///< from one line to the next
    std::vector<double> dashes{};
};

/// One line of a family, cut to a box.
struct PatternStroke {
    AcGePoint2d from;
    AcGePoint2d to;
    double dashStart; ///< length from a start of the pattern to `from`
};

/// The distance between the lines of a family; 0 when they all lie on one.
double spacingOf(const PatternLine& line);

/// The lines of the family that cross the box. At most `limit` of them: nothing when there would be more, or
/// when the family has values that are no numbers.
std::vector<PatternStroke> strokesOf(const PatternLine& line, const AcGePoint2d& low, const AcGePoint2d& high,
                                     std::size_t limit);

#pragma once

#include <vector>

/// A pattern as a drawing has it: lengths above 0 are drawn, below 0 left out, 0 is a dot. As a picture wants
/// it: drawn and empty lengths in turn, the first one drawn, and how far into it the pattern begins. No
/// dashes: unbroken.
struct DashArray {
    std::vector<double> dashes{};
    double start = 0.0;
};
DashArray dashArray(const std::vector<double>& pattern, double scale);

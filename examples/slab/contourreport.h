#pragma once

#include "contour.h"

#include <string>
#include <vector>

struct ContourRow {
    std::wstring layer;
    std::wstring path;
    std::wstring kind;
    ContourMeasures measures;
};

struct ContourReport {
    std::wstring unit; ///< of lengths: "mm"; empty for a drawing without a unit
    int decimals = 4;  ///< that the drawing shows lengths with
    std::vector<ContourRow> rows;
    std::size_t openCurves = 0;
    bool isCut = false;
};

/// A table for people, numbers with the drawing's decimals, with a line of totals.
std::wstring reportAsText(const ContourReport& report);
/// One line a contour and one of headings; numbers in full. What a contour has no value for is empty.
std::wstring reportAsCsv(const ContourReport& report);
/// An object with the unit, the contours and the totals; numbers in full, null for what a contour has no
/// value for.
std::wstring reportAsJson(const ContourReport& report);

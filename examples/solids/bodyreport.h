#pragma once

#include "bodymeasures.h"
#include "namedsolids.h"

struct BodyRow {
    std::wstring name, handle, layer;
    BodyMeasures measures;
};

struct BodyReport {
    std::wstring unit; ///< of lengths: "mm"; empty for a drawing without a unit
    int decimals = 4;  ///< that the drawing shows lengths with
    std::vector<BodyRow> rows;
};

/// A table for people, numbers with the drawing's decimals, with a line of totals.
std::wstring bodiesAsText(const BodyReport& report);
/// One line a body and one of headings; numbers in full.
std::wstring bodiesAsCsv(const BodyReport& report);
/// An object with the unit, the bodies and the totals; numbers in full.
std::wstring bodiesAsJson(const BodyReport& report);

#pragma once

#include "striprun.h"

class AcDbDatabase;

/// How strips are drawn.
struct StripLook {
    std::wstring layer;
    bool hasNumbers = false; ///< a number in each strip
    double angle = 0.0;      ///< of the strips, radians
};

/// The default layer of strips, and its colour where it has to be made.
constexpr const wchar_t* defaultStripLayer = L"SLABSTRIPS";

/// Puts the strips of all slabs into model space as closed polylines at the height of their slab, on their
/// layer, which is made where it is missing, and numbers them through. What was made stands in each slab's
/// `made`, and is filed (stripfiling.h): what an earlier run made on this layer is replaced. On failure what
/// came in is erased again, and the status says why; strips of an earlier run that cannot be erased stay
/// beside the new ones, with a status too.
Acad::ErrorStatus drawStrips(AcDbDatabase& database, StripRun& run, const StripLook& look);

#pragma once

#include "dbpolyline.h"
#include "gevec3d.h"

#include <memory>
#include <vector>

/// How the strips run.
struct CuttingFrame {
    AcGePoint3d base;
    AcGeVector3d direction; ///< of any length but 0, in the plane
};

using Outline = std::unique_ptr<AcDbPolyline>;
using Outlines = std::vector<Outline>;
using OutlineViews = std::vector<const AcDbPolyline*>;

/// Of the slab's area: what the sum of the strips may be off.
inline constexpr double provedWithin = 1e-7;

double areaOf(const AcDbPolyline& outline);
double sumOfAreas(const Outlines& outlines);
/// A copy in the directions of the strips: +x along them.
Outline turned(const AcDbPolyline& outline, const CuttingFrame& frame);

/// Areas of slab, openings and strips laid over each other, computed apart from the library.
struct Balance {
    double openings = 0.0; ///< in the slab
    double covered = 0.0;  ///< in the slab, in no opening, in a strip

    /// The strips are the slab without its openings: their areas add up to it, and they lie nowhere else.
    bool isProof(double slabArea, double stripsArea, double allowed) const;
};

Balance balanceOf(const AcDbPolyline& slab, const OutlineViews& openings, const Outlines& strips,
                  const CuttingFrame& frame);

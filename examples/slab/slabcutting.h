#pragma once

#include "slabplan.h"
#include "slabproof.h"

#include <functional>
#include <memory>
#include <vector>

/// A strip in the plane z = 0.
struct Strip {
    std::unique_ptr<AcDbPolyline> outline;
    double area = 0.0;   ///< with its arcs
    double length = 0.0; ///< of its box along the direction
    double width = 0.0;  ///< of its box across it
    unsigned arcs = 0;
};

/// A slab in strips, with the areas that prove it.
struct CutSlab {
    std::vector<Strip> strips; ///< from the side to the right of the direction to its left, then along it
    double slabArea = 0.0;
    double openingsArea = 0.0; ///< of the parts inside the slab, what they share counted once
    double stripsArea = 0.0;
    double coveredArea = 0.0; ///< of slab without openings, where there is a strip
    std::vector<Finding> findings;

    double wantedArea() const { return slabArea - openingsArea; }
    /// The strips are the slab without its openings: their areas add up to it, and they lie nowhere else.
    bool isProved() const;
};

/// Cuts the slab around its openings through the library, and proves the result by its areas, which are
/// computed apart from the library. Where the proof fails, the slab is cut by one opening after the other,
/// each cut is proved, and an opening whose cut does not come off is named and left uncut. `look` is asked
/// between the steps, with the share that is done, whether to go on; when it says no, the result is not
/// whole.
CutSlab cutSlab(const Slab& slab, const CuttingFrame& frame, const std::function<bool(double)>& look);

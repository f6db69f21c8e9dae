#pragma once

#include "slabcutting.h"

#include "dbid.h"

/// What one run made of one strip.
struct MadeStrip {
    int number = 0;
    AcDbObjectId outline;
    AcDbObjectId label;  ///< null where no numbers are drawn
    std::wstring handle; ///< of the outline
};

/// A slab with its cut and what was drawn of it.
struct SlabResult {
    const Slab* slab = nullptr;
    CutSlab cut;
    std::vector<MadeStrip> made; ///< one for each strip, in the same order
};

/// All of one run, for its table and for whoever files it.
struct StripRun {
    SlabPlan plan;
    std::vector<SlabResult> slabs;
    std::vector<Finding> findings;
    std::wstring unit;  ///< of lengths; empty for a drawing without a unit
    int decimals = 4;   ///< that the drawing shows lengths with
    bool isCut = false; ///< block references repeat more than is reasonable: there may be more slabs
    bool isByContainment = false; ///< no layers were named
};

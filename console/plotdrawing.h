#pragma once

#include "picturesink.h"

#include <cstddef>
#include <map>
#include <string>

class AcDbDatabase;

struct PlotReport {
    std::size_t drawn = 0;                        ///< entities, those inside block references too
    std::map<std::wstring, std::size_t> notDrawn; ///< by record name: kinds that have no picture here
    bool isCut = false;                           ///< block references repeat more than is reasonable
};

/// Draws model space, or the first paper space that holds something where model space is empty. Entities on
/// layers that are off, frozen or not to be plotted are left out, as are invisible ones. Ends early when the
/// user breaks off.
PlotReport plotDrawing(AcDbDatabase& database, PictureSink& sink);

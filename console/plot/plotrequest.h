#pragma once

#include "outputfiles.h"
#include "plotdrawing.h"
#include "sheet.h"

#include "gepnt2d.h"

#include <optional>

class AcApDocument;

/// What PLOT was asked for.
struct PlotRequest {
    hostkit::OutputFile file;
    double width = 0.0; ///< millimetres; the page is just that large where isExactSize
    double height = 0.0;
    bool isExactSize = false;
    bool hasWeights = false;
    std::optional<std::pair<AcGePoint2d, AcGePoint2d>> window{}; ///< lower left and upper right, in the world
    double scale = 0.0; ///< lengths on paper for lengths drawn; 0: fitted
    std::optional<Sheet> sheet{};
    PlotChoice choice{};
};

/// Reads the command's input to its end. False: the command has failed, with the reason told.
bool readPlotRequest(const AcApDocument& document, PlotRequest& request);

#pragma once

#include "picturegeometry.h"

#include "dbid.h"

#include <optional>
#include <vector>

class AcDbDatabase;

/// What is drawn, and how.
struct PlotChoice {
    AcDbObjectId block{}; ///< a space; null: model space, or the first sheet that holds something where that
                          ///< is empty
    std::vector<AcDbObjectId> filledLayers{};
    std::vector<AcDbObjectId> marked{};
    std::wstring layerPattern{}; ///< only layers whose names fit; empty: all
    Paper paper{};
    /// A view of lines from there, those behind solids hidden; else all is seen from above. Has a length.
    std::optional<AcGeVector3d> towardsViewer{};
};

/// Draws a space. Ends early when the user breaks off.
///
/// What is marked among the entities of that space stands on a band of one light colour, beneath all lines.
///
/// Closed curves of that space on the layers to be filled get a tone of their colour, beneath all that is
/// drawn; three tones in turn tell neighbours apart.
PlotReport plotDrawing(AcDbDatabase& database, PictureSink& sink, const PlotChoice& choice = {});

#pragma once

#include "picturegeometry.h"

#include "dbid.h"

#include <vector>

class AcDbDatabase;

/// Draws model space, or the first paper space that holds something where model space is empty. Entities on
/// layers that are off, frozen or not to be plotted are left out, as are invisible ones. Ends early when the
/// user breaks off.
///
/// What is marked among the entities of that space stands on a band of one light colour, beneath all lines.
///
/// Closed curves of that space on the layers to be filled get a tone of their colour, beneath all that is
/// drawn; three tones in turn tell neighbours apart.
PlotReport plotDrawing(AcDbDatabase& database, PictureSink& sink,
                       const std::vector<AcDbObjectId>& filledLayers = {},
                       const std::vector<AcDbObjectId>& marked = {});

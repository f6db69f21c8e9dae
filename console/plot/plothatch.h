#pragma once

#include "picturesink.h"

class AcDbHatch;

/// Draws a hatch, moved by the matrix: filled with its islands open, or with its pattern's lines cut off at
/// the boundary. A pattern whose lines would stand closer than a pen can draw is shown as a light tone, and
/// one with an absurd number of lines too.
void drawHatch(PictureSink& sink, const AcDbHatch& hatch, const AcGeMatrix3d& toWorld,
               const StrokeStyle& style);

#pragma once

#include "picturesink.h"

class AcDbDatabase;
class AcDbDimension;

/// How a drawing writes its dimensions' numbers where no block shows them.
struct DimensionText {
    double height = 2.5; ///< drawing units
    int decimals = 2;    ///< at most; closing zeros are left out
};
/// By the header's text height, overall scale and decimals of dimensions.
DimensionText dimensionTextOf(AcDbDatabase& database);

/// A plain form of a rotated, aligned, radial or diametric dimension by its points: its lines with ticks for
/// arrows, and its text. False for other types.
bool plainDimension(const AcDbDimension& dimension, const DimensionText& form, std::uint32_t rgb,
                    PicturePath& lines, PlacedText& text);

// The picture of a dimension: its layout by its style, overrides and points, and the entities that show it.
#pragma once

#include "dbdimension.h"
#include "dimensionlayout.h"

#include <memory>
#include <string_view>
#include <vector>

namespace hostkit {

/// The layer of the points that a dimension measures; it is never plotted, whatever its record says.
constexpr std::wstring_view definitionLayerName = L"Defpoints";

/// A dimension laid out, with all that its pieces look by.
struct DimensionPicture {
    DimensionVariables variables;
    DimensionShape shape;
    DimensionWording wording;
    DimensionLayout layout;
    double measure = 0.0;
};

DimensionShape dimensionShape(const AcDbDimension& dimension);
/// False where the dimension has no figure: points that are no numbers, a kind that is not laid out.
bool layOutDimension(const AcDbDimension& dimension, DimensionPicture& picture);

enum class PieceUse : unsigned char {
    inBlock, ///< by-block looks stay; the points go to the layer of definition points, where there is one
    plotted, ///< as in a block, without the points, which no plot shows
    loose    ///< by-block looks are the dimension's own
};

/// The pieces as non-resident entities, in the order of a block and in world coordinates.
std::vector<std::unique_ptr<AcDbEntity>> entitiesOf(const AcDbDimension& dimension,
                                                    const DimensionPicture& picture, PieceUse use);
/// By-block colour, lineweight and linetype become the other entity's.
void takeLookOfBlock(AcDbEntity& entity, const AcDbEntity& user);

} // namespace hostkit

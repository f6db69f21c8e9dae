// How entities that only their records describe draw themselves: a drawer for each kind that is known.
#pragma once

#include <string_view>

class AcDbOpaqueEntity;
class AcGiWorldDraw;

namespace hostkit {

/// Draws an entity by the groups of its record, in the look that the traits have. Groups that are missing or
/// damaged leave out what they would show; nothing is made by a count that a record tells.
using RecordDrawer = void (*)(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);

/// By the record's name; null for a kind of which nothing is shown.
RecordDrawer recordDrawer(std::wstring_view recordName);

// Lines.

/// Straight or curved, with the arrow by dimension style and overrides, and the line under a text above it.
/// What it leads to is an entity of its own. A first segment shorter than two arrows has none.
void drawLeader(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// Lines, landings, arrows and contents as its context has them, with the ground of its text; breaks of
/// curved lines are shown closed.
void drawMultileader(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// Elements with their breaks, joints, square and round caps, and the fill, by its style.
void drawMline(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// The spline of its record.
void drawHelix(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);

// Meshes, by their edges.

/// A net of rows and columns, smoothed where the record says so, or faces with their visible edges.
void drawPolylineMesh(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// Faces as they were before any subdivision.
void drawSubdivisionMesh(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);

// Frames in place of what they hold.

/// The clip boundary, or the whole rectangle.
void drawImageFrame(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// The colour of paper, where the drawing order is that of the entities, and its frame where the drawing
/// shows these.
void drawWipeout(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// The clip boundary, in the underlay's own coordinates; a cross of one of its units at the place of a whole
/// one, whose size only its file tells.
void drawUnderlayFrame(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
void drawEmbeddedFrame(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// A crossed square of the shape's size: the figure is in a file of its own.
void drawShapeMark(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);

// Others.

/// Boxes with texts, one row for each line; letters of the symbol font as the characters that they show.
void drawTolerance(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// The block that shows a table.
void drawTable(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);
/// The block that shows a dimension of a kind without a class.
void drawDimensionBlock(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity);

} // namespace hostkit

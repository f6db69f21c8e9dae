#pragma once

/// Makes one solid of a plan's slabs, openings, beams and columns.
void raiseCommand();
/// Volume, areas, box and topology of solids.
void bodiesCommand();
/// Draws the contours in which a plane cuts solids.
void sliceCommand();
/// Writes the triangles of solids into a file.
void meshCommand();

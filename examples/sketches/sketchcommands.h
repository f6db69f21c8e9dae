#pragma once

/// SKETCHTAKE NAME SELECTION: the entities leave their blocks and go into the sketch of that name, which is
/// made where it is missing. Those of kinds that a sketch cannot file stay.
void sketchTakeCommand();
/// SKETCHLIST: every sketch with its entities: class, colour, and the box around each.
void sketchListCommand();
/// SKETCHMOVE NAME FROM TO: moves a sketch's entities.
void sketchMoveCommand();
/// SKETCHPUT NAME: the entities go into model space, on the current layer, and the sketch is erased.
void sketchPutCommand();

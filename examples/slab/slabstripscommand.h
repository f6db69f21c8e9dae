#pragma once

/// SLABSTRIPS: cuts the slabs of the drawing into strips around their openings. Options in any order, each
/// once or more; the form, or Enter, ends them:
///
///     OUTLINES LAYER[,LAYER...]   OPENINGS LAYER[,LAYER...]   DIRECTION X,Y | ANGLE DEGREES   BASE X,Y
///     LAYER NAME   NUMBERS   TEXT | CSV | JSON [FILE]
///
/// Which contours are slabs and which are openings: see SlabRoles. All strips are cut and proved before the
/// first one is drawn; a user who breaks off finds the drawing as it was.
void slabStripsCommand();

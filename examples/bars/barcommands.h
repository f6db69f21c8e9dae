#pragma once

/// BAR START END DIAMETER: puts a bar into model space, on the current layer.
void barCommand();
/// BARLIST: the implied selection, or what the user selects: bars by diameter, with their number and length.
/// Other entities are left out.
void barListCommand();
/// BARNEAR POINT DISTANCE: the bars within that distance of the point along each axis, those in blocks too.
void barNearCommand();

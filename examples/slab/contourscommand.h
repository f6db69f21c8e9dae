#pragma once

/// CONTOURS [TEXT | CSV | JSON] [FILE]: measures every closed contour of the drawing.
void contoursCommand();

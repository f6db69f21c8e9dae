// Question whether an object is still there: erased objects and what erased ones own; leaves out erasing.
#pragma once

#include "dbobject.h"

namespace hostkit {

/// The object is erased, or an object that it belongs to is, however far up. Such an object is not part of
/// the drawing any more, though nobody erased it by itself: its record is known only as a whole, it was open
/// when its owner went, or it came from a file that way. A chain of owners that runs in a circle, or to an id
/// that never had an object, ends there.
bool isGone(const AcDbObject& object);

} // namespace hostkit

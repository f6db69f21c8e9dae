// Records of classes in a drawing's section CLASSES; leaves out those that are there.
#pragma once

#include "groupformat.h"

#include <string>
#include <string_view>

class AcDbDatabase;

namespace hostkit {

/// The records of the classes of applications, and of arc length dimensions, that the drawing's objects have
/// and that stand in no record of `present`, the bytes of the section as it is; programs that lack such a
/// class keep its objects by them. Empty for a form without that section.
std::string missingClassRecords(const AcDbDatabase& database, const DrawingStyle& style,
                                std::string_view present);

} // namespace hostkit

// Objects whose class comes after their drawing was read; leaves out classes that leave again.
#pragma once

#include <cstddef>

class AcDbDatabase;

namespace hostkit {

/// Objects that were read as opaque ones, for want of their class, become those of a class that a module has
/// made known since: read from their records anew, with the same id. What was changed since it was read, is
/// open, or has a record that its class does not take, stays opaque. The number of those that changed their
/// class.
std::size_t adoptApplicationClasses(AcDbDatabase& database);

} // namespace hostkit

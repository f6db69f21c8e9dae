// Changes of body data without understanding the body.
#pragma once

#include "gemat3d.h"

#include <optional>
#include <string>
#include <string_view>

namespace hostkit::modeler {

/// The data with the motion put behind the body's own transform; all other bytes stay, but for a count of
/// records. Nothing for a matrix that turns inside out or changes sizes, for data with a history or several
/// bodies, and for such as cannot be read.
[[nodiscard]] std::optional<std::string> movedBodyData(std::string_view data, const AcGeMatrix3d& matrix);

} // namespace hostkit::modeler

// Entities by the handles that a person types; leaves out other names of objects.
#pragma once

#include "dbid.h"

#include <string_view>

class AcDbDatabase;

namespace hostkit {

/// The entity of that handle (hexadecimal digits), in any space or block; null where there is none or it is
/// erased.
AcDbObjectId entityOfHandleText(const AcDbDatabase& database, std::wstring_view text);

} // namespace hostkit

// Named groups of a drawing's entities, as its file has them; leaves out making and changing them.
#pragma once

#include "dbid.h"

#include <string_view>
#include <vector>

class AcDbDatabase;

namespace hostkit {

/// The members of a group that are not erased, in its order. False, with the list untouched, where there is
/// no group of that name (compared without regard to case).
bool groupMembers(const AcDbDatabase& database, std::wstring_view name, std::vector<AcDbObjectId>& members);

} // namespace hostkit

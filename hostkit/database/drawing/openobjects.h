// Objects of a drawing that are open: which, and how; leaves out who opened them.
#pragma once

#include "dbid.h"

#include <string>
#include <vector>

class AcDbDatabase;

namespace hostkit {

struct OpenObject {
    AcDbObjectId id{};
    std::wstring name{}; ///< class and handle: "AcDbLine 2F"
    std::wstring mode{}; ///< "read", "write" or "notify"; the strongest
};

/// In the order in which they came into the drawing. Looks at the state of each object.
std::vector<OpenObject> openObjects(const AcDbDatabase& database);

/// Closes all that is open, as whoever opened it should have: what was changed stays changed. What
/// transactions hold is theirs.
void closeOpenObjects(AcDbDatabase& database);

} // namespace hostkit

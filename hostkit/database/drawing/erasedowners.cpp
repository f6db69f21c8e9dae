#include "erasedowners.h"

#include "dbaccess.h"

namespace hostkit {

bool isGone(const AcDbObject& object) {
    // Blocks and dictionaries are some five deep; what goes on longer goes in a circle.
    constexpr int deepest = 1000;
    const AcDbObject* each = &object;
    for (int depth = 0; each && depth < deepest; ++depth) {
        if (each->isErased()) return true;
        each = DatabaseAccess::object(each->ownerId());
    }
    return false;
}

} // namespace hostkit

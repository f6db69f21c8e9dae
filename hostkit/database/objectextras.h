// Stand-in for the host's rare parts of objects. Covers extended data, extension dictionary and persistent reactors; leaves out what every object has.
#pragma once

#include "groupblock.h"

#include "dbid.h"

#include <vector>

namespace hostkit {

struct ObjectExtras {
    GroupBlock extendedData;
    AcDbObjectId extensionDictionary;
    std::vector<AcDbObjectId> persistentReactors;
};

} // namespace hostkit

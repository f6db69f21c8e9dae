// Stand-in for the host's rare parts of objects. Covers extended data, extension dictionary and persistent reactors; leaves out what every object has.
#pragma once

#include "groupblock.h"

#include "acarray.h"
#include "dbid.h"

#include <memory>
#include <vector>

namespace hostkit {

/// What AcDbObject::reactors handed out last; a copy of an object has handed out nothing.
struct HandedReactors {
    HandedReactors() = default;
    HandedReactors(const HandedReactors&) {}
    HandedReactors& operator=(const HandedReactors&) { return *this; }
    std::unique_ptr<AcArray<void*>> list{};
};

struct ObjectExtras {
    GroupBlock extendedData;
    AcDbObjectId extensionDictionary;
    std::vector<AcDbObjectId> persistentReactors;
    HandedReactors handedReactors;
};

} // namespace hostkit

// Stand-in for the host's OsnapMode, Planarity and BoolOperType. Covers all values; leaves out nothing.
#pragma once

#include "acarray.h"
#include "adesk.h"

typedef AcArray<int> AcDbIntArray;

namespace AcDb {

enum OsnapMode {
    kOsModeEnd = 1,
    kOsModeMid = 2,
    kOsModeCen = 3,
    kOsModeNode = 4,
    kOsModeQuad = 5,
    kOsModeIns = 7,
    kOsModePerp = 8,
    kOsModeTan = 9,
    kOsModeNear = 10,
    kOsModeCentroid = 11
};
enum Planarity { kNonPlanar = 0, kPlanar = 1, kLinear = 2 };
enum BoolOperType { kBoolUnite = 0, kBoolIntersect = 1, kBoolSubtract = 2 };

} // namespace AcDb

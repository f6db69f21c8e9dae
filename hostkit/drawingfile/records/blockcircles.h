// Check of blocks for containing themselves: nesting as deep as a drawing likes; leaves out external
// references.
#pragma once

class AcDbBlockTableRecord;
class AcDbDatabase;

namespace hostkit {

/// A block that contains itself through block references, erased ones left out; null when there is none.
const AcDbBlockTableRecord* findBlockInItself(const AcDbDatabase& database);

} // namespace hostkit

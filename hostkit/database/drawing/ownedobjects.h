// Look-up of what an object owns: objects that only their owner's id ties to it; leaves out entities of
// blocks and records of tables, which their containers list.
#pragma once

#include "objectscan.h"

#include <unordered_map>
#include <vector>

namespace hostkit {

/// Objects by owner. A dictionary or an entity knows its parts; the record of a kind that has no class here
/// knows nothing, and what it owns would outlive it. The first question walks the drawing once, a later one
/// what is new; the memory is some 24 bytes an object that is neither an entity nor a table's record.
class OwnedObjects {
public:
    /// Erases what the object owns along with it, or restores what was erased that way.
    void eraseWith(const AcDbObject& owner, bool erasing);
    /// The object has another owner than before.
    void ownerChanged(AcDbObject& object) { add(object); }
    ObjectScan& scan() { return m_scan; }

private:
    void add(AcDbObject& object);

    ObjectScan m_scan;
    std::unordered_map<const AcDbStub*, std::vector<AcDbObjectId>> m_byOwner;
};

} // namespace hostkit

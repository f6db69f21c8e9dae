// Reverse look-up of insertions: whether a block is shown by anything else; leaves out who shows it.
#pragma once

#include "objectscan.h"

#include <vector>

namespace hostkit {

/// The dimensions and references of a drawing, for the question who shows a block. The first question walks
/// the drawing once; each one looks at all dimensions and references.
class BlockUsers {
public:
    /// A dimension or a reference other than `user` names the block. Erased ones count, since they may be
    /// restored; what has left the drawing for good does not.
    bool isUsedByOther(AcDbObjectId block, const AcDbObject& user);
    ObjectScan& scan() { return m_scan; }

private:
    ObjectScan m_scan;
    std::vector<const AcDbEntity*> m_users;
};

} // namespace hostkit

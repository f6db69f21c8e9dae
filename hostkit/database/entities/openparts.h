// Changes to all parts of an entity: opening all of them and moving them; leaves out which they are.
#pragma once

#include "dbent.h"
#include "subentitylist.h"

#include <vector>

namespace hostkit {

/// The parts of an entity that are not erased, all open for write or none; closed when it goes.
class OpenParts {
public:
    OpenParts() = default;
    ~OpenParts();
    OpenParts(const OpenParts&) = delete;
    OpenParts& operator=(const OpenParts&) = delete;

    /// Parts of a non-resident entity need no opening. The status of the first one that cannot be opened.
    Acad::ErrorStatus open(const SubentityList& parts);
    /// Likewise of entities of a drawing.
    Acad::ErrorStatus open(const std::vector<AcDbObjectId>& parts);
    /// Moves all, or, where one cannot follow, none.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);

private:
    std::vector<AcDbEntity*> m_parts;
};

} // namespace hostkit

// Stand-in for the host's in-house protocol of bounding blocks. Covers asking an object's class for its block; leaves out blocks of parts.
#pragma once

#include "acadstrc.h"
#include "dbid.h"
#include "rxboiler.h"

class AcGeBoundBlock3d;

/// What an application adds to its entity classes (AcRxClass::addX) so that neighbours can be found.
class VEXOBoundBlockProtocol : public AcRxObject {
    ACRX_DECLARE_MEMBERS(VEXOBoundBlockProtocol)

public:
    ~VEXOBoundBlockProtocol() override;
    /// A block around the object, in the coordinates that it stands in. eOk, or why there is none, with the
    /// block as it was. The object may be open for read.
    virtual Acad::ErrorStatus getBoundBlock(AcDbObjectId object, AcGeBoundBlock3d& block) = 0;
};

// Stand-in for the host's AcDbBody. Covers keeping, moving, drawing and filing it; leaves out its making.
#pragma once

#include "dbmodelergeometry.h"

/// A body that need not be closed: sheets, faces of solids.
class AcDbBody : public AcDbModelerGeometry {
    ACRX_DECLARE_MEMBERS(AcDbBody)

public:
    AcDbBody() = default;
    AcDbBody(const AcDbBody&) = default;
    AcRxObject* clone() const override { return new AcDbBody(*this); }
};

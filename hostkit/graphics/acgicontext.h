// Stand-in for the host's AcGiContext. Covers what a drawing is made for; leaves out its stages.
#pragma once

#include "adesk.h"
#include "rxobject.h"

class AcDbDatabase;

/// Where a drawing is made.
class AcGiContext : public AcRxObject {
public:
    /// A page description for a printer.
    virtual Adesk::Boolean isPsOut() const = 0;
    virtual Adesk::Boolean isPlotGeneration() const = 0;
    /// Null where no drawing stands behind.
    virtual AcDbDatabase* database() const = 0;
    virtual bool isBoundaryClipping() const = 0;
};

// Stand-in for the host's AcGiCommonDraw and AcGiWorldDraw. Covers drawing into a world, with all that this names; leaves out drawing for one viewport.
#pragma once

#include "acgicontext.h"
#include "acgidefs.h"
#include "acgidrawable.h"
#include "acgigeometry.h"
#include "acgitextstyle.h"
#include "acgitraits.h"

/// What a drawable is given to draw itself with.
class AcGiCommonDraw : public AcRxObject {
public:
    virtual AcGiRegenType regenType() const = 0;
    /// True when the user broke off: what draws long looks at it now and then.
    virtual Adesk::Boolean regenAbort() const = 0;
    virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
    virtual AcGiGeometry* rawGeometry() const = 0;
    virtual Adesk::Boolean isDragging() const = 0;
    /// How far strokes may lie off a curve at that point, in drawing units.
    virtual double deviation(const AcGiDeviationType type, const AcGePoint3d& point) const = 0;
    virtual Adesk::UInt32 numberOfIsolines() const = 0;
    virtual AcGiContext* context() = 0;
};

class AcGiWorldDraw : public AcGiCommonDraw {
public:
    virtual AcGiWorldGeometry& geometry() const = 0;
};

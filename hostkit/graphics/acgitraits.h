// Stand-in for the host's AcGiSubEntityTraits. Covers colour, layer, linetype, fill, weight and thickness; leaves out materials, plot styles and shadows.
#pragma once

#include "acgidefs.h"
#include "dbid.h"
#include "rxobject.h"

namespace AcDb {
enum LineWeight : int;
}

/// The look of what is drawn next. What is set holds until it is set again.
class AcGiSubEntityTraits : public AcRxObject {
public:
    /// A palette index; 0 is by block, 256 by layer.
    virtual void setColor(const Adesk::UInt16 color) = 0;
    virtual void setTrueColor(const AcCmEntityColor& color) = 0;
    virtual void setLayer(const AcDbObjectId layerId) = 0;
    virtual void setLineType(const AcDbObjectId linetypeId) = 0;
    /// What a pick of the primitives that follow is told as. Who does not pick needs none.
    virtual void setSelectionMarker(const Adesk::LongPtr marker) = 0;
    virtual void setFillType(const AcGiFillType type) = 0;
    virtual void setLineWeight(const AcDb::LineWeight weight) = 0;
    virtual void setLineTypeScale(double scale = 1.0) = 0;
    virtual void setThickness(double thickness) = 0;

    virtual Adesk::UInt16 color() const = 0;
    virtual AcCmEntityColor trueColor() const = 0;
    virtual AcDbObjectId layerId() const = 0;
    virtual AcDbObjectId lineTypeId() const = 0;
    virtual AcGiFillType fillType() const = 0;
    virtual AcDb::LineWeight lineWeight() const = 0;
    virtual double lineTypeScale() const = 0;
    virtual double thickness() const = 0;
};

/// The same as a drawable sets it before it draws.
class AcGiDrawableTraits : public AcGiSubEntityTraits {};

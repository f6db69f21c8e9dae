// Stand-in for the host's AcGiDrawable. Covers drawing into a world; leaves out drawing for one viewport and the parts of a drawable.
#pragma once

#include "dbid.h"
#include "rxboiler.h"

class AcGiDrawableTraits;
class AcGiWorldDraw;

/// What can draw itself.
class AcGiDrawable : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcGiDrawable)

public:
    enum SetAttributesFlags : Adesk::UInt32 {
        kDrawableNone = 0,
        kDrawableIsAnEntity = 1,
        kDrawableUsesNesting = 2,
        kDrawableIsCompoundObject = 4,
        kDrawableIsInvisible = 16
    };

    /// The look with which the drawing begins; bits of SetAttributesFlags.
    virtual Adesk::UInt32 setAttributes(AcGiDrawableTraits* traits) = 0;
    /// Draws into the geometry of `draw`. True: that is all; false asks for another drawing for each
    /// viewport, which this host does not do.
    virtual Adesk::Boolean worldDraw(AcGiWorldDraw* draw) = 0;
    virtual Adesk::Boolean isPersistent() const = 0;
    /// Null for one that is not persistent.
    virtual AcDbObjectId id() const = 0;

protected:
    AcGiDrawable() = default;
    AcGiDrawable(const AcGiDrawable&) = default;
    AcGiDrawable& operator=(const AcGiDrawable&) = default;
};

#pragma once

#include "acgi.h"
#include "dbmaindefs.h"

class AcDbEntity;

/// The look of what is recorded next, which begins as that of the entity that draws. Layers, true colours and
/// selection markers are not kept.
class VEXOGiSubEntityTraits : public AcGiSubEntityTraits {
public:
    /// The source stays the caller's and is read until the traits go. Null begins with the look of a new
    /// entity.
    explicit VEXOGiSubEntityTraits(AcDbEntity* source);

    void setColor(const Adesk::UInt16 color) override { m_color = color; }
    void setTrueColor(const AcCmEntityColor& /*color*/) override {}
    void setLayer(const AcDbObjectId /*layerId*/) override {}
    void setLineType(const AcDbObjectId linetypeId) override { m_lineType = linetypeId; }
    void setSelectionMarker(const Adesk::LongPtr /*marker*/) override {}
    void setFillType(const AcGiFillType type) override { m_fillType = type; }
    void setLineWeight(const AcDb::LineWeight weight) override { m_lineWeight = weight; }
    void setLineTypeScale(double scale = 1.0) override { m_lineTypeScale = scale; }
    void setThickness(double thickness) override { m_thickness = thickness; }

    Adesk::UInt16 color() const override { return m_color; }
    /// By colour, and black.
    AcCmEntityColor trueColor() const override { return {0, 0, 0}; }
    /// Null.
    AcDbObjectId layerId() const override { return AcDbObjectId(); }
    AcDbObjectId lineTypeId() const override { return m_lineType; }
    AcGiFillType fillType() const override { return m_fillType; }
    AcDb::LineWeight lineWeight() const override { return m_lineWeight; }
    double lineTypeScale() const override { return m_lineTypeScale; }
    double thickness() const override { return m_thickness; }

    /// Gives the entity what the source has, and over that colour, weight, linetype and its scale as they
    /// were set here, with its parts. Thickness and filling are not given. Null changes nothing.
    void setPropToEntity(AcDbEntity* entity) const;
    AcDbEntity* getEntityExploding() const { return m_source; }

private:
    Adesk::UInt16 m_color = AcCmEntityColor::kACIbyLayer;
    AcDbObjectId m_lineType{};
    AcGiFillType m_fillType = kAcGiFillNever;
    AcDb::LineWeight m_lineWeight = AcDb::kLnWtByLayer;
    double m_thickness = 0.0;
    double m_lineTypeScale = 1.0;
    AcDbEntity* m_source;
};

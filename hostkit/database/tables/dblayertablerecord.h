// Stand-in for the host's AcDbLayerTableRecord. Covers visibility, lock, colour, linetype, weight and plotting; leaves out plot styles and viewport overrides.
#pragma once

#include "dbsymboltablerecord.h"

#include "dbcolor.h"

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord)

public:
    AcDbLayerTableRecord() = default;
    AcDbLayerTableRecord(const AcDbLayerTableRecord&) = default;

    bool isOff() const { return m_off; }
    bool isFrozen() const { return m_frozen; }
    bool isLocked() const { return m_locked; }
    bool isPlottable() const { return m_plottable; }
    /// Frozen in viewports that are made from now on.
    bool VPDFLT() const { return m_frozenInNewViewports; }
    Acad::ErrorStatus setIsOff(bool off);
    /// eNotApplicable for the drawing's current layer.
    Acad::ErrorStatus setIsFrozen(bool frozen);
    Acad::ErrorStatus setIsLocked(bool locked);
    Acad::ErrorStatus setIsPlottable(bool plottable);
    Acad::ErrorStatus setVPDFLT(bool frozen);

    AcCmColor color() const { return m_color; }
    /// eInvalidInput for by layer and by block.
    Acad::ErrorStatus setColor(const AcCmColor& color);
    /// Null stands for the continuous one.
    AcDbObjectId linetypeObjectId() const { return m_linetypeId; }
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId id);
    AcDb::LineWeight lineWeight() const { return static_cast<AcDb::LineWeight>(m_lineWeight); }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
    AcRxObject* clone() const override { return new AcDbLayerTableRecord(*this); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// Layer 0 stays, and the current layer too.
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;

private:
    struct Filing;
    static AcCmEntityColor indexColor(Adesk::UInt16 index) {
        AcCmEntityColor color;
        color.setColorIndex(index);
        return color;
    }

    bool m_off = false;
    bool m_frozen = false;
    bool m_locked = false;
    bool m_plottable = true;
    bool m_frozenInNewViewports = false;
    Adesk::Int16 m_lineWeight = AcDb::kLnWtByLwDefault;
    AcCmEntityColor m_color = indexColor(AcCmEntityColor::kACIforeground);
    AcDbObjectId m_linetypeId;
    AcDbObjectId m_plotStyleId;
};

// Stand-in for the host's AcDbLayout. Covers the name, the block and the order of a sheet; paper, its margins, turn and scale; leaves out other plot settings, which are kept as the drawing has them.
#pragma once

#include "dbobject.h"
#include "groupblock.h"

#include <string>

/// A sheet: one for each space. Erased, it takes its block along when it is closed, and restored it brings it
/// back; the sheets of *Model_Space and *Paper_Space cannot be erased.
class AcDbLayout : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbLayout)

public:
    AcDbLayout() = default;
    AcDbLayout(const AcDbLayout&) = default;

    const std::wstring& getLayoutName() const { return m_name; }
    Acad::ErrorStatus setLayoutName(const wchar_t* name);
    AcDbObjectId getBlockTableRecordId() const { return m_blockId; }
    Acad::ErrorStatus setBlockTableRecordId(AcDbObjectId id);
    int getTabOrder() const { return m_tabOrder; }
    Acad::ErrorStatus setTabOrder(int order);

    // Of the paper, as the drawing has it; a layout without plot settings has none of it.

    enum PlotPaperUnits { kInches = 0, kMillimeters = 1, kPixels = 2 };
    enum PlotRotation { k0degrees = 0, k90degrees = 1, k180degrees = 2, k270degrees = 3 };

    /// Millimetres, of the paper before it is turned; 0 where no paper is named.
    void getPlotPaperSize(double& width, double& height) const;
    /// Millimetres, of the paper before it is turned.
    void getPlotPaperMargins(double& left, double& bottom, double& right, double& top) const;
    /// Millimetres from the corner of the printable area.
    void getPlotOrigin(double& x, double& y) const;
    /// Units of the paper for units of the drawing.
    void getCustomPrintScale(double& numerator, double& denominator) const;
    PlotPaperUnits plotPaperUnits() const;
    PlotRotation plotRotation() const;

    AcRxObject* clone() const override { return new AcDbLayout(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subErase(Adesk::Boolean erasing) override;
    Acad::ErrorStatus subClose() override;

private:
    struct Filing;
    double plotSetting(short code, double otherwise) const;
    std::wstring m_name;
    AcDbObjectId m_blockId;
    Adesk::Int16 m_tabOrder = 0;
    hostkit::GroupBlock m_plotSettings; ///< groups of the plot settings, as read
    hostkit::GroupBlock m_rest;         ///< other groups of the layout, as read
};

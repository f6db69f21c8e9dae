// Stand-in for the host's AcDbMText. Covers contents, box, attachment, the layout of lines and what fills the ground behind them; leaves out columns and writing from top to bottom.
#pragma once

#include "dbcolor.h"
#include "dbent.h"

#include <string>

namespace hostkit {
struct ParagraphLayout;
}

/// A paragraph of text in a box. Contents have the format's own codes in them (\\P for a new line). Lines are
/// laid out by the widths of letters that the kit knows (paragraphlayout.h), and broken at the box's width.
class AcDbMText : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbMText)

public:
    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter,
        kTopRight,
        kMiddleLeft,
        kMiddleCenter,
        kMiddleRight,
        kBottomLeft,
        kBottomCenter,
        kBottomRight
    };
    enum FlowDirection { kLtoR = 1, kTtoB = 3, kByStyle = 5 };

    AcDbMText() = default;
    AcDbMText(const AcDbMText&) = default;

    /// Columns, which the 2018 form has in an object of their own with a second copy of the place, follow
    /// motions; setLocation, setDirection, setRotation and setWidth drop them.
    AcGePoint3d location() const { return m_location; }
    Acad::ErrorStatus setLocation(const AcGePoint3d& location);
    AcGeVector3d normal() const { return m_normal; }
    /// The direction is turned into the plane of the new normal; the location stays.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    /// The x direction of the text, a unit vector in the world.
    AcGeVector3d direction() const;
    /// eInvalidInput for a zero one.
    Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
    /// Of the direction from the x axis of the normal's system.
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    /// Of the box; 0 for none.
    double width() const { return m_width; }
    /// eInvalidInput below 0.
    Acad::ErrorStatus setWidth(double width);
    double height() const { return m_boxHeight; }
    double textHeight() const { return m_textHeight; }
    /// eInvalidInput unless above 0.
    Acad::ErrorStatus setTextHeight(double height);
    AttachmentPoint attachment() const { return static_cast<AttachmentPoint>(m_attachment); }
    Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
    FlowDirection flowDirection() const { return static_cast<FlowDirection>(m_flowDirection); }
    Acad::ErrorStatus setFlowDirection(FlowDirection direction);
    /// A copy from acutNewString for the caller.
    wchar_t* contents() const;
    const std::wstring& rawContents() const { return m_contents; }
    /// The lines as they would be seen: format codes taken out, \\P and \\n as line ends, %% codes resolved.
    std::wstring plainText() const;
    Acad::ErrorStatus setContents(const wchar_t* contents);
    AcDbObjectId textStyle() const { return m_styleId; }
    /// Null is the standing style. eNotThatKindOfClass.
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    double lineSpacingFactor() const { return m_lineSpacingFactor; }
    /// eInvalidInput outside 0.25 to 4.
    Acad::ErrorStatus setLineSpacingFactor(double factor);
    /// Something hides what was drawn before it around the letters: the drawing's background or a colour.
    bool backgroundFillOn() const { return (m_ground & (colorGround | drawingGround)) != 0; }
    /// Off, or filled with the colour unless the drawing's background was chosen.
    Acad::ErrorStatus setBackgroundFill(bool isOn);
    bool useBackgroundColorOn() const { return (m_ground & drawingGround) != 0; }
    /// The drawing's background, or the colour. Fills.
    Acad::ErrorStatus setUseBackgroundColor(bool isUsed);
    AcCmColor backgroundFillColor() const;
    Acad::ErrorStatus setBackgroundFillColor(const AcCmColor& color);
    /// What is filled goes beyond the letters by the text's height times the factor less 1.
    double backgroundScaleFactor() const { return m_groundScale; }
    /// eInvalidInput outside 1 to 5.
    Acad::ErrorStatus setBackgroundScaleFactor(double factor);
    /// The corners of what is filled, as those of letterBox; false where nothing is.
    bool groundBox(AcGePoint3d (&corners)[4]) const;
    /// Of what is seen: from the leftmost to the rightmost letter edge, and from the top of the first line to
    /// the lowest tail of the last one. 0 without a letter.
    double actualWidth() const;
    double actualHeight() const;
    /// The lines with their pieces; places along the direction count from the location.
    hostkit::ParagraphLayout layout() const;
    /// How far the top of a layout is above the location.
    double topOf(const hostkit::ParagraphLayout& layout) const;
    /// The corners of the box in the world, around it from the left top one; false for a paragraph of which
    /// nothing is seen.
    bool letterBox(AcGePoint3d (&corners)[4]) const { return boxAround(0.0, corners); }
    /// A text for each run of letters of one look, and a line for the bar of each stack (paragraphparts.h).
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override;

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    /// eInvalidExtents for a paragraph of which nothing is seen.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbMText(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    /// eCannotScaleNonUniformly for a matrix that stretches the text's plane unequally: letters cannot
    /// follow. A mirrored paragraph is the same one seen from behind, so that its letters are where their
    /// images are.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

    bool boxAround(double margin, AcGePoint3d (&corners)[4]) const;

    static constexpr int colorGround = 1;
    static constexpr int drawingGround = 2;
    static constexpr int noRgb = -1;
    static constexpr double usualGroundScale = 1.5;

    struct Filing;
    Adesk::Int32 m_ground = 0; ///< what fills it, with flags that are kept as they came
    Adesk::Int32 m_groundRgb = noRgb;
    Adesk::Int16 m_groundColor = AcCmEntityColor::kACIbyLayer;
    Adesk::Int16 m_attachment = kTopLeft;
    Adesk::Int16 m_flowDirection = kLtoR;
    Adesk::Int16 m_lineSpacingStyle = 1;
    bool m_hasDirection = false; ///< the direction is given; else the rotation
    AcGePoint3d m_location;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcGeVector3d m_direction{1.0, 0.0, 0.0};
    double m_rotation = 0.0;
    double m_textHeight = 0.0;
    double m_width = 0.0;
    double m_boxHeight = 0.0;
    double m_lineSpacingFactor = 1.0;
    double m_groundScale = usualGroundScale;
    AcDbObjectId m_styleId;
    std::wstring m_contents;
};

// Stand-in for the host's AcDbText. Covers one line of text with its alignment; leaves out exact font metrics.
#pragma once

#include "dbent.h"

#include <string>

namespace hostkit {
class FlatMotion;
}

/// One line of text. Angles are in radians.
///
/// The box of a text goes from the base line up by the height, and along it by the advances of its letters
/// (letterface.h), times height and width factor, with %% codes counted as the characters they stand for.
/// Aligned and fitted texts run between their two points.
///
/// Other alignments hang on the alignment point. When a setter changes such a text its position follows, by
/// the same reckoning; a text that is only read keeps the position of its file.
class AcDbText : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbText)

public:
    AcDbText() = default;
    AcDbText(const AcGePoint3d& position, const wchar_t* text, AcDbObjectId style = AcDbObjectId::kNull,
             double height = 0.0, double rotation = 0.0);
    AcDbText(const AcDbText&) = default;

    /// The left end of the base line. Of an aligned text it is kept in step with the alignment point.
    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    /// What the text is aligned at; used unless it is left and on the base line. A text that leaves the
    /// default alignment without having such a point takes its position for one.
    AcGePoint3d alignmentPoint() const;
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    bool isDefaultAlignment() const { return m_horizontalMode == 0 && m_verticalMode == 0; }
    AcGeVector3d normal() const { return m_normal; }
    /// Position and alignment point stay where they are in the world.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double thickness() const { return m_thickness; }
    Acad::ErrorStatus setThickness(double thickness);
    double oblique() const { return m_oblique; }
    /// eInvalidInput beyond 85 degrees either way.
    Acad::ErrorStatus setOblique(double angle);
    double rotation() const { return m_rotation; }
    Acad::ErrorStatus setRotation(double angle);
    double height() const { return m_height; }
    /// eInvalidInput unless above 0.
    Acad::ErrorStatus setHeight(double height);
    double widthFactor() const { return m_widthFactor; }
    /// eInvalidInput unless above 0.
    Acad::ErrorStatus setWidthFactor(double factor);
    /// A copy from acutNewString for the caller.
    wchar_t* textString() const;
    const std::wstring& text() const { return m_text; }
    /// Up to 256 characters in older drawing forms; longer ones are kept. eInvalidInput for null.
    /// An attribute of several lines has the text alone from then on: its paragraph goes.
    Acad::ErrorStatus setTextString(const wchar_t* text);
    AcDbObjectId textStyle() const { return m_styleId; }
    /// Null is the standing style. eNotThatKindOfClass.
    Acad::ErrorStatus setTextStyle(AcDbObjectId style);
    bool isMirroredInX() const { return (m_generationFlags & 2) != 0; }
    bool isMirroredInY() const { return (m_generationFlags & 4) != 0; }
    Acad::ErrorStatus mirrorInX(bool mirrored);
    Acad::ErrorStatus mirrorInY(bool mirrored);
    AcDb::TextHorzMode horizontalMode() const { return static_cast<AcDb::TextHorzMode>(m_horizontalMode); }
    AcDb::TextVertMode verticalMode() const { return static_cast<AcDb::TextVertMode>(m_verticalMode); }
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    /// By the rule of the class.
    double estimatedWidth() const { return estimatedWidth(shownText()); }
    /// The corners of the box in the world, around it from the left end of the base line; false for a text of
    /// which nothing is seen. `wording` stands for the text's own where it is given.
    bool letterBox(AcGePoint3d (&corners)[4], const std::wstring* wording = nullptr) const;

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    /// eInvalidExtents for a text of which nothing is seen.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbText(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    /// Any matrix that is not singular: width factor and oblique angle take what is not uniform, and a mirror
    /// turns isMirroredInX round, so that the letters are where their images are.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    /// The letters that the box is reckoned for.
    virtual const std::wstring& shownText() const { return m_text; }

    struct Filing;
    Adesk::Int16 m_generationFlags = 0;
    Adesk::Int16 m_horizontalMode = 0;
    Adesk::Int16 m_verticalMode = 0;
    AcGePoint3d m_ecsPosition;
    AcGePoint3d m_ecsAlignment;
    bool m_hasAlignment = false; ///< the file had the alignment point, or it was set
    double m_height = 0.0;
    double m_rotation = 0.0;
    double m_widthFactor = 1.0;
    double m_oblique = 0.0;
    double m_thickness = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcDbObjectId m_styleId;
    std::wstring m_text;

private:
    double estimatedWidth(const std::wstring& wording) const;
    bool isBetweenPoints() const {
        return m_horizontalMode == AcDb::kTextAlign || m_horizontalMode == AcDb::kTextFit;
    }
    template <typename Field, typename Value>
    Acad::ErrorStatus setAndAlign(bool isAcceptable, Field& field, const Value& value);
    Acad::ErrorStatus setMode(bool isAcceptable, Adesk::Int16& mode, int value);
    void alignPosition();
    void moveLetters(const hostkit::FlatMotion& motion);
};

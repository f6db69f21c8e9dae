// Stand-in for the host's AcDbDimension. Covers all types by their points, text, variables and layout, and the block that shows one; leaves out associations with what is measured, grips and inspection frames.
#pragma once

#include "dbent.h"
#include "dimensionvariabletable.h"
#include "gemat3d.h"
#include "groupblock.h"

#include <initializer_list>
#include <string>

class AcDbDimStyleTableRecord;
namespace hostkit {
class DimensionCompletion;
struct DimensionPicture;
enum class DimensionKind : unsigned char;
} // namespace hostkit

/// A dimension of any type. What is seen of it stands in the block that the drawing keeps for it, or, where
/// there is none, is laid out by its style, its overrides and its points. A dimension that was made or
/// changed here has its block when the drawing is saved (completedimensions.h).
///
/// The getters of variables tell the overrides' values, else the style's; their setters write overrides into
/// the extended data of the host's own application, and drop the block. A text of more than 255 characters,
/// which extended data cannot hold, is refused with eInvalidInput.
///
/// Moved, turned or scaled, and not mirrored, the dimension takes what is seen of it along. transformBy names
/// no block at first; when the dimension is closed, what the block holds is moved in its place. Where another
/// dimension or a reference, erased or not, shows the block, or somebody has a part of it open, the dimension
/// gets a block of its own instead, "*D" and the next free number, with moved copies. Point 12, where other
/// programs put the block, is then the origin. Several motions of one open are one for the block, and cancel
/// moves nothing. A copy of a moved dimension gets a block likewise when it enters the drawing that the
/// earlier block is in, and none in another drawing. A matrix that moves nothing changes nothing.
///
/// A mirror, a block that holds what cannot be moved (records of unknown kinds), and every setter that gives
/// points, normal, angle, text or style another value leave the dimension without a block until the drawing
/// is saved: the old block would show what is not so any more. Where it was the dimension's own, the save
/// erases it.
class AcDbDimension : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbDimension)

public:
    enum Type {
        kRotated = 0,
        kAligned = 1,
        kTwoLineAngular = 2,
        kDiametric = 3,
        kRadial = 4,
        kThreePointAngular = 5,
        kOrdinate = 6,
        kArcLength = 8
    };

    AcDbDimension() = default;
    explicit AcDbDimension(Type type)
        : m_type(static_cast<Adesk::Int16>(type)) {}
    AcDbDimension(const AcDbDimension&) = default;

    virtual Type dimensionType() const { return static_cast<Type>(m_type & 15); }
    /// Group code 10 to 16 of the point, in world coordinates but for 11, 12 and 16, which are in those of
    /// the normal. By type: 10 the dimension line or the far end, 13 and 14 the measured points, 15 the
    /// centre or a point on the arc, 16 the arc's place. Zero for another code.
    AcGePoint3d pointOf(int code) const;
    /// The same in the coordinates of the normal, whatever the code.
    AcGePoint3d planePointOf(int code) const;
    /// eInvalidInput for another code.
    Acad::ErrorStatus setPointOf(int code, const AcGePoint3d& point);
    AcGePoint3d textPosition() const;
    Acad::ErrorStatus setTextPosition(const AcGePoint3d& position);
    bool isUsingDefaultTextPosition() const { return (m_type & 128) == 0; }
    /// The text instead of the measurement; empty for the measurement, "<>" in it stands for it.
    wchar_t* dimensionText() const;
    Acad::ErrorStatus setDimensionText(const wchar_t* text);
    const std::wstring& userText() const { return m_text; }
    /// Of the text alone, from where horizontal text is read; 0: as the style has it.
    double textRotation() const { return m_textRotation; }
    Acad::ErrorStatus setTextRotation(double angle);
    double rotation() const { return m_rotation; }
    Acad::ErrorStatus setRotation(double angle);
    /// Of the extension lines, from the dimension line; 0 for a right angle.
    double oblique() const { return m_oblique; }
    Acad::ErrorStatus setOblique(double angle);
    /// Minus the angle of the direction in which horizontal text is read.
    double horizontalRotation() const { return m_horizontalRotation; }
    Acad::ErrorStatus setHorizontalRotation(double angle);
    double leaderLength() const { return m_leaderLength; }
    Acad::ErrorStatus setLeaderLength(double length);
    /// Back to the place that the style gives the text.
    Acad::ErrorStatus useDefaultTextPosition();
    bool isFirstArrowFlipped() const { return m_isFirstArrowFlipped; }
    bool isSecondArrowFlipped() const { return m_isSecondArrowFlipped; }
    Acad::ErrorStatus setArrowFirstIsFlipped(bool isFlipped);
    Acad::ErrorStatus setArrowSecondIsFlipped(bool isFlipped);
    /// Of an ordinate dimension: what is measured is the distance along x.
    bool isOrdinateOfX() const { return (m_type & 64) != 0; }
    /// Stands in a block of a sheet.
    bool isInPaperSpace() const;
    hostkit::DimensionKind kindOfLayout() const;
    /// The points that its kind is laid out by are all given.
    bool isComplete() const;
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    AcDbObjectId dimensionStyle() const { return m_styleId; }
    /// The style, or its child for this type of dimension ("NAME$n") where there is one. Overrides stay.
    /// eNotThatKindOfClass.
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style);

    HOSTKIT_DIMENSION_VARIABLES(HOSTKIT_DECLARE_DIMENSION_VARIABLE)
    /// All of them at once: the style's with the overrides.
    hostkit::DimensionVariables variables() const;
    /// They as a style of no drawing, which belongs to the caller.
    Acad::ErrorStatus getDimstyleData(AcDbDimStyleTableRecord*& record) const;
    /// What the record has otherwise than the dimension's style becomes the overrides, in place of the
    /// earlier ones; records of another drawing as in AcDbDatabase::setDimstyleData. eNullObjectPointer,
    /// eNotThatKindOfClass, eKeyNotFound.
    Acad::ErrorStatus setDimstyleData(const AcDbDimStyleTableRecord* record);
    Acad::ErrorStatus setDimstyleData(AcDbObjectId record);
    /// Takes every override away.
    Acad::ErrorStatus removeOverrides();

    /// Reckons the measurement, the text's place where it is not the user's, and the dimension line's point
    /// anew, and drops the block. eInvalidInput where the points give no figure.
    Acad::ErrorStatus generateLayout();
    /// The lines, arrows, paragraph and points that show the dimension, with looks by block replaced by its
    /// own: copies of what its block holds, else of its layout. Appended entities belong to the caller.
    /// eNotApplicable: there is nothing, or the block holds what cannot be copied; nothing is appended then.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& parts) const override;
    /// Null for a dimension that has none, and for a moved one until it is closed.
    AcDbObjectId dimBlockId() const { return m_blockId; }
    /// eNotThatKindOfClass; eCyclicReference: the dimension stands in that block. To be set last: the other
    /// setters drop it.
    Acad::ErrorStatus setDimBlockId(AcDbObjectId block);
    /// Shows the block, or will show moved copies of its contents when it is closed.
    bool needsBlock(AcDbObjectId block) const {
        return !block.isNull() && (m_blockId == block || m_shownBlockId == block);
    }
    /// What the drawing says was measured, or what is reckoned from the points. Lengths in drawing units,
    /// angles in radians. eNotApplicable where neither can be had.
    Acad::ErrorStatus measurement(double& value) const;

    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbDimension(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    struct GivenPoint {
        int code;
        AcGePoint3d point;
    };
    /// For the constructors of the types.
    AcDbDimension(Type type, std::initializer_list<GivenPoint> points, const wchar_t* text,
                  AcDbObjectId style);
    Acad::ErrorStatus setOrdinateOfX(bool isOfX);
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    /// Makes the block of a moved dimension.
    Acad::ErrorStatus subClose() override;
    struct Filing;
    Adesk::Int16 m_type = kRotated; ///< group 70 with its flags
    Adesk::Int16 m_attachment = 5;
    Adesk::Int16 m_lineSpacingStyle = 1;
    bool m_hasMeasurement = false;
    bool m_isFirstArrowFlipped = false;
    bool m_isSecondArrowFlipped = false;
    bool m_wantsBlock = false;   ///< what is seen of it was set here; a save makes a block
    AcGePoint3d m_points[7];     ///< groups 10 to 16
    Adesk::UInt8 m_hasPoint = 0; ///< bit i: group 10 + i was given
    double m_measurement = 0.0;
    double m_leaderLength = 0.0;
    double m_rotation = 0.0;
    double m_textRotation = 0.0;
    double m_oblique = 0.0;
    double m_horizontalRotation = 0.0;
    double m_lineSpacingFactor = 1.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    AcDbObjectId m_styleId;
    AcDbObjectId m_blockId;
    std::wstring m_text;

private:
    friend class hostkit::DimensionCompletion;
    template <typename Field, typename Value>
    Acad::ErrorStatus assignSeen(Field& field, const Value& value);
    Acad::ErrorStatus setSeenReal(double& field, double value);
    Acad::ErrorStatus setDirection(double& field, double angle);
    template <typename Value>
    Acad::ErrorStatus setOverride(short code, const Value& value);
    Acad::ErrorStatus setOverrides(hostkit::GroupBlock&& data);
    hostkit::DimensionVariables styleVariables() const;
    void takeLayout(const hostkit::DimensionPicture& picture);
    void addLayout(AcDbExtents& box) const;
    Acad::ErrorStatus explodeBlock(AcDbVoidPtrArray& parts) const;
    void dropBlock();
    void moveBlock(const AcGeMatrix3d& matrix);

    // Of a dimension that was moved since it was opened: the block that shows it where it was, and the way
    // from there.
    AcDbObjectId m_shownBlockId;
    AcGeMatrix3d m_blockMotion;
    AcDbObjectId m_formerBlockId; ///< showed the dimension before what is seen of it changed
    /// Owns the text that a getter gave.
    mutable std::wstring m_givenText;
};

/// A field that the block shows: with another value the block is not the dimension's any more.
template <typename Field, typename Value>
Acad::ErrorStatus AcDbDimension::assignSeen(Field& field, const Value& value) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk || field == value) return status;
    field = value;
    dropBlock();
    return Acad::eOk;
}

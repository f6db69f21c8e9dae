// Stand-in for the host's dimensions. Covers all types by their points, text and measurement, and the block that shows one when it is moved; leaves out drawing that block anew.
#pragma once

#include "dbent.h"
#include "gemat3d.h"
#include "groupblock.h"

#include <string>

/// A dimension of any type. What is seen of it stands in the block that the drawing keeps for it. The box is
/// that of the points.
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
/// points, normal, angle, text or style another value leave the dimension without a block: other programs
/// draw it anew, and the old block would show what is not so any more.
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

    Type dimensionType() const { return static_cast<Type>(m_type & 15); }
    /// Group code 10 to 16 of the point, in world coordinates but for 11, 12 and 16, which are in those of
    /// the normal. By type: 10 the dimension line or the far end, 13 and 14 the measured points, 15 the
    /// centre or a point on the arc, 16 the arc's place. Zero for another code.
    AcGePoint3d pointOf(int code) const;
    /// eInvalidInput for another code.
    Acad::ErrorStatus setPointOf(int code, const AcGePoint3d& point);
    AcGePoint3d textPosition() const;
    Acad::ErrorStatus setTextPosition(const AcGePoint3d& position);
    bool isUsingDefaultTextPosition() const { return (m_type & 128) == 0; }
    /// The text instead of the measurement; empty for the measurement, "<>" in it stands for it.
    wchar_t* dimensionText() const;
    Acad::ErrorStatus setDimensionText(const wchar_t* text);
    double textRotation() const { return m_textRotation; }
    double rotation() const { return m_rotation; }
    Acad::ErrorStatus setRotation(double angle);
    double oblique() const { return m_oblique; }
    double horizontalRotation() const { return m_horizontalRotation; }
    double leaderLength() const { return m_leaderLength; }
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    AcDbObjectId dimensionStyle() const { return m_styleId; }
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style);
    /// Null for a dimension that has none, and for a moved one until it is closed.
    AcDbObjectId dimBlockId() const { return m_blockId; }
    /// eNotThatKindOfClass; eCyclicReference: the dimension stands in that block. To be set last: the other
    /// setters drop it.
    Acad::ErrorStatus setDimBlockId(AcDbObjectId block);
    /// Shows the block, or will show moved copies of its contents when it is closed.
    bool needsBlock(AcDbObjectId block) const {
        return !block.isNull() && (m_blockId == block || m_shownBlockId == block);
    }
    /// What the drawing says was measured, or the distance reckoned from the points for rotated, aligned,
    /// radial and diametric ones. Lengths in drawing units, angles in radians. eNotApplicable where neither
    /// can be had.
    Acad::ErrorStatus measurement(double& value) const;

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void getEcs(AcGeMatrix3d& matrix) const override;
    bool isPlanar() const override { return true; }
    AcRxObject* clone() const override { return new AcDbDimension(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    /// Makes the block of a moved dimension.
    Acad::ErrorStatus subClose() override;
    struct Filing;
    Adesk::Int16 m_type = kRotated; ///< group 70 with its flags
    Adesk::Int16 m_attachment = 5;
    Adesk::Int16 m_lineSpacingStyle = 1;
    bool m_hasMeasurement = false;
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
    template <typename Field, typename Value>
    Acad::ErrorStatus assignSeen(Field& field, const Value& value);
    void dropBlock();
    void moveBlock(const AcGeMatrix3d& matrix);

    // Of a dimension that was moved since it was opened: the block that shows it where it was, and the way
    // from there.
    AcDbObjectId m_shownBlockId;
    AcGeMatrix3d m_blockMotion;
};

// Stand-in for the host's AcDbArcDimension. Covers its points, text and style, and the record with the leader's points; leaves out drawing the leader, setters of the leader, and associations.
#pragma once

#include "dbdimension.h"

#include <limits>

/// The length of an arc about a centre between two points.
class AcDbArcDimension : public AcDbDimension {
    ACRX_DECLARE_MEMBERS(AcDbArcDimension)

public:
    AcDbArcDimension()
        : AcDbDimension(kThreePointAngular) {}
    /// Points in world coordinates. A null style is the standing one; a null text is that of the measurement.
    AcDbArcDimension(const AcGePoint3d& centerPoint, const AcGePoint3d& xLine1Point,
                     const AcGePoint3d& xLine2Point, const AcGePoint3d& arcPoint,
                     const wchar_t* dimText = nullptr, AcDbObjectId dimStyle = AcDbObjectId::kNull);
    AcDbArcDimension(const AcDbArcDimension&) = default;

    AcGePoint3d centerPoint() const { return pointOf(15); }
    AcGePoint3d xLine1Point() const { return pointOf(13); }
    AcGePoint3d xLine2Point() const { return pointOf(14); }
    AcGePoint3d arcPoint() const { return pointOf(10); }
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& point) { return setPointOf(15, point); }
    Acad::ErrorStatus setXLine1Point(const AcGePoint3d& point) { return setPointOf(13, point); }
    Acad::ErrorStatus setXLine2Point(const AcGePoint3d& point) { return setPointOf(14, point); }
    Acad::ErrorStatus setArcPoint(const AcGePoint3d& point) { return setPointOf(10, point); }

    /// Directions from the centre to the two points, in radians in the plane of the normal, from 0 to 2 pi. A
    /// record's own values are told until the points turn by more than 1e-10.
    double arcStartParam() const { return angleOf(0); }
    double arcEndParam() const { return angleOf(1); }
    /// The two points are not the ends of the arc that is measured.
    bool isPartial() const { return m_isPartial; }
    bool hasLeader() const { return m_hasLeader; }
    /// Of the leader from the text to the arc, in world coordinates.
    AcGePoint3d leader1Point() const { return m_leader1Point; }
    AcGePoint3d leader2Point() const { return m_leader2Point; }

    /// Files tell the type by the record's kind alone.
    Type dimensionType() const override { return kArcLength; }
    AcRxObject* clone() const override { return new AcDbArcDimension(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    struct Filing;
    /// A direction as a record told it.
    struct ReadAngle {
        double told = 0.0;
        double reckoned = std::numeric_limits<double>::quiet_NaN(); ///< of the points beside it
    };

    double reckonedAngle(int side) const;
    double angleOf(int side) const;

    bool m_isPartial = false;
    bool m_hasLeader = false;
    ReadAngle m_angles[2];
    AcGePoint3d m_leader1Point;
    AcGePoint3d m_leader2Point;
};

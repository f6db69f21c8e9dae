#include "dbarcdimension.h"

#include "fielditems.h"
#include "fieldtable.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbArcDimension, AcDbDimension, L"ARC_DIMENSION")

AcDbArcDimension::AcDbArcDimension(const AcGePoint3d& centerPoint, const AcGePoint3d& xLine1Point,
                                   const AcGePoint3d& xLine2Point, const AcGePoint3d& arcPoint,
                                   const wchar_t* dimText, AcDbObjectId dimStyle)
    : AcDbDimension(kThreePointAngular,
                    {{15, centerPoint}, {13, xLine1Point}, {14, xLine2Point}, {10, arcPoint}}, dimText,
                    dimStyle) {}

double AcDbArcDimension::reckonedAngle(int side) const {
    const AcGeVector3d way = planePointOf(13 + side) - planePointOf(15);
    const double angle = std::atan2(way.y, way.x);
    return angle < 0.0 ? angle + 2.0 * std::numbers::pi : angle;
}

double AcDbArcDimension::angleOf(int side) const {
    constexpr double rounding = 1e-10; // of points that were shifted
    const double reckoned = reckonedAngle(side);
    const ReadAngle& read = m_angles[side];
    return std::abs(reckoned - read.reckoned) <= rounding ? read.told : reckoned;
}

Acad::ErrorStatus AcDbArcDimension::subTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = AcDbDimension::subTransformBy(matrix);
    if (status != Acad::eOk) return status;
    for (AcGePoint3d* point : {&m_leader1Point, &m_leader2Point}) *point = matrix * *point;
    return status;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbArcDimension::Filing {
    static constexpr const wchar_t* mark = L"AcDbArcDimension";
    static constexpr short firstPointCode = 10; ///< of the points of all dimensions
    static constexpr short points[] = {13, 14, 15};
    static constexpr short angles[] = {40, 41};
    static constexpr GroupField<AcDbArcDimension> groups[] = {
        integerField<&AcDbArcDimension::m_isPartial>(70),
        integerField<&AcDbArcDimension::m_hasLeader>(71),
        pointField<&AcDbArcDimension::m_leader1Point>(16),
        pointField<&AcDbArcDimension::m_leader2Point>(17),
    };

    static bool readPoint(AcDbArcDimension& dimension, const AcDbDxfGroup& group) {
        if (std::find(std::begin(points), std::end(points), group.code) == std::end(points)) return false;
        const int index = group.code - firstPointCode;
        dimension.m_points[index].set(group.point[0], group.point[1], group.point[2]);
        dimension.m_hasPoint = static_cast<Adesk::UInt8>(dimension.m_hasPoint | 1 << index);
        return true;
    }

    static bool readAngle(AcDbArcDimension& dimension, const AcDbDxfGroup& group) {
        const int side = group.code - angles[0];
        if (side < 0 || side > 1) return false;
        dimension.m_angles[side] = {group.real, 0.0};
        return true;
    }

    static void writeAngle(const AcDbArcDimension& dimension, int side, AcDbDxfFiler& filer) {
        filer.markOptional();
        filer.writeReal(angles[side], dimension.angleOf(side));
    }
};

Acad::ErrorStatus AcDbArcDimension::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbDimension::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(Filing::mark)) return status;
    for (ReadAngle& angle : m_angles) angle = {};
    status = readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        return Filing::readPoint(*this, group) || Filing::readAngle(*this, group);
    });
    for (int side = 0; side < 2; ++side)
        if (!std::isnan(m_angles[side].reckoned)) m_angles[side].reckoned = reckonedAngle(side);
    return status;
}

// An older record may do without all but the points.
Acad::ErrorStatus AcDbArcDimension::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbDimension::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(Filing::mark);
    for (const short code : Filing::points)
        if (m_hasPoint >> (code - Filing::firstPointCode) & 1) filer->writeItem(code, pointOf(code));
    const auto& [partial, leader, leader1, leader2] = Filing::groups;
    filer->markOptional();
    partial.write(*this, partial, *filer);
    for (const int side : {0, 1}) Filing::writeAngle(*this, side, *filer);
    for (const auto* field : {&leader, &leader1, &leader2}) {
        filer->markOptional();
        field->write(*this, *field, *filer);
    }
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbArcDimension)

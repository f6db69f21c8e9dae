#include "dbdimension.h"

#include "blockextents.h"
#include "changelog.h"
#include "dbaccess.h"
#include "dimensionpicture.h"
#include "fieldsetters.h"
#include "flatmotion.h"
#include "movedblock.h"

#include "dbblocktablerecord.h"

#include "adsdef.h"

#include <cmath>
#include <utility>

HOSTKIT_KIT_CLASS(AcDbDimension, AcDbEntity, L"DIMENSION")

namespace {

constexpr int firstPointCode = 10;
constexpr int lastPointCode = 16;
constexpr int textPointCode = 11;
constexpr int clonePointCode = 12;

bool isPointCode(int code) { return code >= firstPointCode && code <= lastPointCode; }

constexpr int arcPointCode = 16;
constexpr int userPosition = 128; ///< of the type: the text stands where its user put it

/// These points are filed in the coordinates of the normal.
bool isOwnCoordinate(int code) {
    return code == textPointCode || code == clonePointCode || code == arcPointCode;
}

} // namespace

AcDbDimension::AcDbDimension(Type type, std::initializer_list<GivenPoint> points, const wchar_t* text,
                             AcDbObjectId style)
    : m_type(static_cast<Adesk::Int16>(type)) {
    for (const GivenPoint& given : points) (void)setPointOf(given.code, given.point);
    if (text) (void)setDimensionText(text);
    if (!style.isNull()) (void)setDimensionStyle(style);
}

AcGePoint3d AcDbDimension::pointOf(int code) const {
    return isPointCode(code) ? m_points[code - firstPointCode] : AcGePoint3d();
}

AcGePoint3d AcDbDimension::planePointOf(int code) const {
    return isOwnCoordinate(code) ? pointOf(code) : hostkit::toEntity(m_normal, pointOf(code));
}

void AcDbDimension::dropBlock() {
    const AcDbObjectId shown = m_blockId.isNull() ? m_shownBlockId : m_blockId;
    if (!shown.isNull()) m_formerBlockId = shown;
    m_blockId.setNull();
    m_shownBlockId.setNull();
    m_wantsBlock = true;
}

Acad::ErrorStatus AcDbDimension::setPointOf(int code, const AcGePoint3d& point) {
    if (!isPointCode(code) || !hostkit::isFinite(point)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    AcGePoint3d& field = m_points[code - firstPointCode];
    if (field.x != point.x || field.y != point.y || field.z != point.z) dropBlock();
    field = point;
    m_hasPoint = static_cast<Adesk::UInt8>(m_hasPoint | 1 << (code - firstPointCode));
    // What was measured before is not the points' any more.
    m_hasMeasurement = m_hasMeasurement && (code == textPointCode || code == clonePointCode);
    return Acad::eOk;
}

AcGePoint3d AcDbDimension::textPosition() const { return hostkit::toWorld(m_normal, pointOf(textPointCode)); }

Acad::ErrorStatus AcDbDimension::setTextPosition(const AcGePoint3d& position) {
    const Acad::ErrorStatus status = setPointOf(textPointCode, hostkit::toEntity(m_normal, position));
    if (status == Acad::eOk) m_type = static_cast<Adesk::Int16>(m_type | userPosition);
    return status;
}

Acad::ErrorStatus AcDbDimension::useDefaultTextPosition() {
    return assignSeen(m_type, static_cast<Adesk::Int16>(m_type & ~userPosition));
}

wchar_t* AcDbDimension::dimensionText() const { return acutNewString(m_text.c_str()); }

Acad::ErrorStatus AcDbDimension::setDimensionText(const wchar_t* text) {
    return text ? assignSeen(m_text, std::wstring(text)) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbDimension::setRotation(double angle) { return setDirection(m_rotation, angle); }
Acad::ErrorStatus AcDbDimension::setOblique(double angle) { return setSeenReal(m_oblique, angle); }
Acad::ErrorStatus AcDbDimension::setTextRotation(double angle) { return setSeenReal(m_textRotation, angle); }
Acad::ErrorStatus AcDbDimension::setHorizontalRotation(double angle) {
    return setDirection(m_horizontalRotation, angle);
}
Acad::ErrorStatus AcDbDimension::setLeaderLength(double length) {
    return setSeenReal(m_leaderLength, length);
}

// What was measured along another direction is forgotten.
Acad::ErrorStatus AcDbDimension::setDirection(double& field, double angle) {
    const bool isOther = field != angle;
    const Acad::ErrorStatus status = setSeenReal(field, angle);
    if (status == Acad::eOk && isOther) m_hasMeasurement = false;
    return status;
}

Acad::ErrorStatus AcDbDimension::setSeenReal(double& field, double value) {
    return hostkit::isFinite(value) ? assignSeen(field, value) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbDimension::setOrdinateOfX(bool isOfX) {
    constexpr int ofX = 64;
    if (isOfX != isOrdinateOfX()) m_hasMeasurement = false;
    return assignSeen(m_type, static_cast<Adesk::Int16>(isOfX ? m_type | ofX : m_type & ~ofX));
}

Acad::ErrorStatus AcDbDimension::setArrowFirstIsFlipped(bool isFlipped) {
    return assignSeen(m_isFirstArrowFlipped, isFlipped);
}
Acad::ErrorStatus AcDbDimension::setArrowSecondIsFlipped(bool isFlipped) {
    return assignSeen(m_isSecondArrowFlipped, isFlipped);
}

Acad::ErrorStatus AcDbDimension::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isDirection(normal)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGeVector3d unit = normal.normal();
    for (int code = firstPointCode; code <= lastPointCode; ++code) {
        AcGePoint3d& point = m_points[code - firstPointCode];
        if (isOwnCoordinate(code)) point = hostkit::toEntity(unit, hostkit::toWorld(m_normal, point));
    }
    if (unit.x != m_normal.x || unit.y != m_normal.y || unit.z != m_normal.z) {
        dropBlock();
        m_hasMeasurement = false;
    }
    m_normal = unit;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::setDimBlockId(AcDbObjectId block) {
    const AcRxClass* kind = block.objectClass();
    if (!block.isNull() && (!kind || !kind->isDerivedFrom(AcDbBlockTableRecord::desc())))
        return Acad::eNotThatKindOfClass;
    if (!block.isNull() && block == ownerId()) return Acad::eCyclicReference;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    dropBlock();
    m_blockId = block;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::measurement(double& value) const {
    if (m_hasMeasurement) {
        value = m_measurement;
        return Acad::eOk;
    }
    const double reckoned = hostkit::dimensionMeasure(hostkit::dimensionShape(*this));
    if (!std::isfinite(reckoned)) return Acad::eNotApplicable;
    value = reckoned;
    return Acad::eOk;
}

// That of what is seen. The points that are measured stand for it where a block was taken away by a motion
// that has not ended, and where there is nothing else.
Acad::ErrorStatus AcDbDimension::getGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    hostkit::BlockExtents().addBlock(box, m_blockId, hostkit::blockPlacement(*this));
    if (!box.isEmpty()) {
        extents = box;
        return Acad::eOk;
    }
    for (int code = firstPointCode; code <= lastPointCode; ++code) {
        if (!(m_hasPoint & 1 << (code - firstPointCode)) || code == clonePointCode) continue;
        box.addPoint(isOwnCoordinate(code) ? hostkit::toWorld(m_normal, pointOf(code)) : pointOf(code));
    }
    if (m_blockId.isNull() && m_shownBlockId.isNull() && isComplete()) addLayout(box);
    if (box.isEmpty()) return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const hostkit::FlatMotion motion(matrix, m_normal);
    if (!motion.keepsShape()) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    moveBlock(matrix);
    for (int code = firstPointCode; code <= lastPointCode; ++code) {
        if (!(m_hasPoint & 1 << (code - firstPointCode))) continue;
        AcGePoint3d& point = m_points[code - firstPointCode];
        // The block's contents move as the dimension does: how far they are displaced only turns and scales.
        if (code != clonePointCode)
            point = isOwnCoordinate(code) ? motion.point(point) : matrix * point;
        else if (!motion.isShift())
            point = AcGePoint3d() + (motion.point(point) - motion.point(AcGePoint3d()));
    }
    if (!motion.isShift()) {
        m_rotation = motion.angle(m_rotation);
        m_horizontalRotation = -motion.angle(-m_horizontalRotation);
    }
    m_leaderLength *= motion.scale();
    m_normal = motion.normal();
    const bool measuresLength = dimensionType() != kTwoLineAngular && dimensionType() != kThreePointAngular;
    if (measuresLength) m_measurement *= motion.scale();
    return Acad::eOk;
}

void AcDbDimension::moveBlock(const AcGeMatrix3d& matrix) {
    if (hostkit::FlatMotion(matrix, m_normal).isStill()) return;
    if (m_shownBlockId.isNull()) {
        m_shownBlockId = m_blockId;
        m_blockMotion.setToIdentity();
    }
    // One that no block showed before the motion does without as it did.
    if (m_shownBlockId.isNull()) return;
    if (matrix.det() < 0.0) return dropBlock();
    m_blockMotion.preMultBy(matrix);
    m_blockId.setNull();
}

Acad::ErrorStatus AcDbDimension::subClose() {
    const Acad::ErrorStatus status = AcDbEntity::subClose();
    if (m_shownBlockId.isNull() || isErased()) return status;
    hostkit::ChangeLog::of(*this).changing(*this);
    const AcDbObjectId earlier = std::exchange(m_shownBlockId, AcDbObjectId());
    m_blockId = hostkit::movedBlock(*this, earlier, m_blockMotion);
    if (m_blockId.isNull()) m_wantsBlock = true;
    return status;
}

void AcDbDimension::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }

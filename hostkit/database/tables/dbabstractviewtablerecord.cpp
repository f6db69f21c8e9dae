#include "dbabstractviewtablerecord.h"

#include "dbviewporttablerecord.h"
#include "dbviewtablerecord.h"

#include "assignfield.h"

#include <cmath>
#include <numbers>

HOSTKIT_KIT_ABSTRACT_CLASS(AcDbAbstractViewTableRecord, AcDbSymbolTableRecord)

namespace {

constexpr double degreesOfRadian = 180.0 / std::numbers::pi;

bool isPositive(double value) { return std::isfinite(value) && value > 0.0; }
bool isFinite(double x, double y, double z) {
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(z);
}

AcDbDxfGroup pointGroup(short code, double x, double y, double z, unsigned char dimension) {
    AcDbDxfGroup group;
    group.code = code;
    group.kind = AcDb::GroupKind::kPoint;
    group.dimension = dimension;
    group.point[0] = x;
    group.point[1] = y;
    group.point[2] = z;
    return group;
}

} // namespace

const AcDbAbstractViewTableRecord::Codes& AcDbViewTableRecord::codes() const {
    static constexpr Codes codes{10, 40, 41, 12, 11, 50, 42, 43, 44, 71, 0, false};
    return codes;
}

const AcDbAbstractViewTableRecord::Codes& AcDbViewportTableRecord::codes() const {
    static constexpr Codes codes{12, 40, 41, 17, 16, 51, 42, 43, 44, 71, 45, true};
    return codes;
}

Acad::ErrorStatus AcDbAbstractViewTableRecord::setGroups(hostkit::GroupBlock groups) {
    return hostkit::assignIf(groups.isFinite(), *this, m_groups, std::move(groups));
}

bool AcDbAbstractViewTableRecord::find(short code, AcDbDxfGroup& group) const {
    hostkit::GroupWalker walker(m_groups);
    short each = 0;
    while (walker.peek(each) && each != code) walker.skip();
    if (!walker.next(group)) return false;
    group.text = {};
    return true;
}

// In its place, or behind the others.
Acad::ErrorStatus AcDbAbstractViewTableRecord::put(const AcDbDxfGroup& group) {
    hostkit::GroupBlock groups;
    bool isPut = false;
    hostkit::GroupWalker walker(m_groups);
    for (AcDbDxfGroup each; walker.next(each);) {
        const bool isIt = each.code == group.code && !isPut;
        groups.append(isIt ? group : each);
        isPut |= isIt;
    }
    if (!isPut) groups.append(group);
    return setGroups(std::move(groups));
}

double AcDbAbstractViewTableRecord::real(short code, double otherwise) const {
    AcDbDxfGroup group;
    return find(code, group) ? group.real : otherwise;
}

Acad::ErrorStatus AcDbAbstractViewTableRecord::setReal(short code, double value) {
    if (!std::isfinite(value)) return Acad::eInvalidInput;
    AcDbDxfGroup group;
    group.code = code;
    group.kind = AcDb::GroupKind::kReal;
    group.real = value;
    return put(group);
}

AcGePoint2d AcDbAbstractViewTableRecord::centerPoint() const {
    AcDbDxfGroup group;
    return find(codes().middle, group) ? AcGePoint2d(group.point[0], group.point[1]) : AcGePoint2d(0.0, 0.0);
}

Acad::ErrorStatus AcDbAbstractViewTableRecord::setCenterPoint(const AcGePoint2d& middle) {
    if (!isFinite(middle.x, middle.y, 0.0)) return Acad::eInvalidInput;
    return put(pointGroup(codes().middle, middle.x, middle.y, 0.0, 2));
}

// The height stands in either of two groups of a viewport; where both are there, in the second.
short AcDbAbstractViewTableRecord::heightCode() const {
    AcDbDxfGroup group;
    const short other = codes().otherHeight;
    return other != 0 && find(other, group) ? other : codes().height;
}

double AcDbAbstractViewTableRecord::height() const { return real(heightCode(), 1.0); }

// The width stays what it is, also where it is kept as a ratio.
Acad::ErrorStatus AcDbAbstractViewTableRecord::setHeight(double height) {
    if (!isPositive(height)) return Acad::eInvalidInput;
    const double earlierWidth = width();
    const Acad::ErrorStatus status = setReal(heightCode(), height);
    if (status != Acad::eOk || !codes().widthIsRatio || !isPositive(earlierWidth)) return status;
    return setWidth(earlierWidth);
}

double AcDbAbstractViewTableRecord::width() const {
    const double value = real(codes().width, 1.0);
    return codes().widthIsRatio ? value * height() : value;
}

Acad::ErrorStatus AcDbAbstractViewTableRecord::setWidth(double width) {
    if (!isPositive(width)) return Acad::eInvalidInput;
    return setReal(codes().width, codes().widthIsRatio ? width / height() : width);
}

AcGePoint3d AcDbAbstractViewTableRecord::target() const {
    AcDbDxfGroup group;
    if (!find(codes().target, group)) return {0.0, 0.0, 0.0};
    return {group.point[0], group.point[1], group.point[2]};
}

Acad::ErrorStatus AcDbAbstractViewTableRecord::setTarget(const AcGePoint3d& target) {
    if (!isFinite(target.x, target.y, target.z)) return Acad::eInvalidInput;
    return put(pointGroup(codes().target, target.x, target.y, target.z, 3));
}

AcGeVector3d AcDbAbstractViewTableRecord::viewDirection() const {
    AcDbDxfGroup group;
    if (!find(codes().direction, group)) return {0.0, 0.0, 1.0};
    return {group.point[0], group.point[1], group.point[2]};
}

Acad::ErrorStatus AcDbAbstractViewTableRecord::setViewDirection(const AcGeVector3d& direction) {
    const bool isDirection = isFinite(direction.x, direction.y, direction.z) && direction.length() > 0.0;
    if (!isDirection) return Acad::eInvalidInput;
    return put(pointGroup(codes().direction, direction.x, direction.y, direction.z, 3));
}

double AcDbAbstractViewTableRecord::viewTwist() const { return real(codes().twist, 0.0) / degreesOfRadian; }

Acad::ErrorStatus AcDbAbstractViewTableRecord::setViewTwist(double angle) {
    return setReal(codes().twist, angle * degreesOfRadian);
}

double AcDbAbstractViewTableRecord::lensLength() const { return real(codes().lensLength, 50.0); }

Acad::ErrorStatus AcDbAbstractViewTableRecord::setLensLength(double length) {
    return isPositive(length) ? setReal(codes().lensLength, length) : Acad::eInvalidInput;
}

double AcDbAbstractViewTableRecord::frontClipDistance() const { return real(codes().frontClip, 0.0); }

Acad::ErrorStatus AcDbAbstractViewTableRecord::setFrontClipDistance(double distance) {
    return setReal(codes().frontClip, distance);
}

double AcDbAbstractViewTableRecord::backClipDistance() const { return real(codes().backClip, 0.0); }

Acad::ErrorStatus AcDbAbstractViewTableRecord::setBackClipDistance(double distance) {
    return setReal(codes().backClip, distance);
}

int AcDbAbstractViewTableRecord::viewMode() const {
    AcDbDxfGroup group;
    return find(codes().mode, group) ? static_cast<int>(group.integer) : 0;
}

Acad::ErrorStatus AcDbAbstractViewTableRecord::setModeBit(int bit, bool isOn) {
    AcDbDxfGroup group;
    group.code = codes().mode;
    group.kind = AcDb::GroupKind::kInt16;
    group.integer = isOn ? viewMode() | bit : viewMode() & ~bit;
    return put(group);
}

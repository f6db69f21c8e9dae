#include "extendeddatamotion.h"

#include "dbobject.h"
#include "entitycoordinates.h"
#include "flatmotion.h"

#include <cmath>

namespace hostkit {

namespace {

enum : short { kPosition = 1011, kDisplacement = 1012, kDirection = 1013, kDistance = 1041, kFactor = 1042 };

bool isMoving(short code) {
    return (code >= kPosition && code <= kDirection) || code == kDistance || code == kFactor;
}

bool hasMoving(const GroupBlock& data) {
    GroupWalker walker(data);
    for (short code = 0; walker.peek(code); walker.skip())
        if (isMoving(code)) return true;
    return false;
}

// What was no number before is left as it is: the motion is not to blame.
bool isSpoilt(const AcDbDxfGroup& before, const AcDbDxfGroup& after) {
    if (before.kind == AcDb::GroupKind::kReal)
        return std::isfinite(before.real) && !std::isfinite(after.real);
    for (int i = 0; i < 3; ++i)
        if (!std::isfinite(before.point[i])) return false;
    for (const double value : after.point)
        if (!std::isfinite(value)) return true;
    return false;
}

} // namespace

ExtendedDataMotion::ExtendedDataMotion(const AcGeMatrix3d& matrix)
    : m_matrix(matrix)
    , m_isShift(isShift(matrix)) {
    if (double scale = 1.0; !m_isShift && isUniform(matrix, scale)) m_scale = scale;
}

AcGeVector3d ExtendedDataMotion::moved(const AcGeVector3d& vector, short code) const {
    AcGeVector3d turned = m_matrix * vector;
    const double length = turned.length();
    if (code == kDirection && length > 0.0) turned *= vector.length() / length;
    return turned;
}

bool ExtendedDataMotion::move(AcDbDxfGroup& group) const {
    if (!isMoving(group.code) || (m_isShift && group.code != kPosition)) return false;
    if (group.kind == AcDb::GroupKind::kReal) {
        group.real *= m_scale;
        return true;
    }
    const AcGePoint3d place(group.point[0], group.point[1], group.point[2]);
    const AcGePoint3d image =
        group.code == kPosition ? m_matrix * place : AcGePoint3d() + moved(place.asVector(), group.code);
    group.point[0] = image.x;
    group.point[1] = image.y;
    group.point[2] = image.z;
    group.dimension = 3;
    return true;
}

Acad::ErrorStatus ExtendedDataMotion::add(AcDbObject& object) {
    const GroupBlock* data = object.extendedData();
    if (!data || !hasMoving(*data)) return Acad::eOk;
    GroupBlock result;
    result.reserve(data->size());
    GroupWalker walker(*data);
    for (std::size_t from = 0; from < data->size(); from = walker.position()) {
        AcDbDxfGroup group;
        walker.next(group);
        const AcDbDxfGroup before = group;
        if (!move(group)) {
            result.appendPart(*data, from, walker.position());
            continue;
        }
        if (isSpoilt(before, group)) return Acad::eInvalidInput;
        result.append(group);
    }
    if (result != *data) m_moved.emplace_back(&object, std::move(result));
    return Acad::eOk;
}

void ExtendedDataMotion::apply() {
    for (auto& [object, data] : m_moved) (void)object->setExtendedData(std::move(data));
    m_moved.clear();
}

} // namespace hostkit

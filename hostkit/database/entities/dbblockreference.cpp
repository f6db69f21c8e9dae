#include "dbblockreference.h"

#include "blockextents.h"
#include "blockholding.h"
#include "dbaccess.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbopen.h"
#include "fieldsetters.h"
#include "flatmotion.h"
#include "handover.h"
#include "openparts.h"

#include <memory>

HOSTKIT_KIT_CLASS(AcDbBlockReference, AcDbEntity, L"INSERT")

using hostkit::DatabaseAccess;

namespace {

/// How far from right angles the axes of a block may come out for scales and a rotation to describe them.
constexpr double kSkewTolerance = 1e-10;

AcGeVector3d columnOf(const AcGeMatrix3d& matrix, unsigned int index) {
    return {matrix(0, index), matrix(1, index), matrix(2, index)};
}

bool isSquare(const AcGeVector3d& a, const AcGeVector3d& b) {
    return std::abs(a.dotProduct(b)) <= kSkewTolerance * a.length() * b.length();
}

} // namespace

/// What a reference says of its place, apart from the position.
struct AcDbBlockReference::Placement {
    AcGeScale3d scale;
    double rotation = 0.0;
    AcGeVector3d normal;

    /// Of the matrix' axes. Signs follow the scales of before where they can: x alone takes up a mirror.
    /// False for axes that are not at right angles.
    bool set(const AcGeMatrix3d& matrix, const AcGeScale3d& before) {
        const AcGeVector3d x = columnOf(matrix, 0), y = columnOf(matrix, 1), z = columnOf(matrix, 2);
        if (!isSquare(x, y) || !isSquare(y, z) || !isSquare(z, x)) return false;
        scale.set(std::copysign(x.length(), before.sx), std::copysign(y.length(), before.sy),
                  std::copysign(z.length(), before.sz));
        normal = z / scale.sz;
        if (normal.crossProduct(x / scale.sx).dotProduct(y) * scale.sy < 0.0) scale.sx = -scale.sx;
        const AcGeVector3d along = hostkit::toEntity(normal, x / scale.sx);
        rotation = AcGeVector2d(along.x, along.y).angle();
        return true;
    }
};

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
    if (block.isNull()) return Acad::eNullObjectId;
    if (!DatabaseAccess::objectOf<AcDbBlockTableRecord>(block)) return Acad::eNotThatKindOfClass;
    if (!ownerId().isNull() && hostkit::holdsBlock(block, ownerId())) return Acad::eCyclicReference;
    return hostkit::setRecordField<AcDbBlockTableRecord>(*this, m_blockId, block);
}

AcGePoint3d AcDbBlockReference::position() const { return hostkit::toWorld(m_normal, m_ecsPosition); }

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
    return hostkit::assignIf(hostkit::isFinite(position), *this, m_ecsPosition,
                             hostkit::toEntity(m_normal, position));
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& factors) {
    const auto isFactor = [](double factor) { return std::isfinite(factor) && factor != 0.0; };
    return hostkit::assignIf(isFactor(factors.sx) && isFactor(factors.sy) && isFactor(factors.sz), *this,
                             m_scale, factors);
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) {
    return hostkit::setFiniteField(*this, m_rotation, angle);
}

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isDirection(normal)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGePoint3d place = position();
    m_normal = normal.normal();
    m_ecsPosition = hostkit::toEntity(m_normal, place);
    return Acad::eOk;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    const double cosine = std::cos(m_rotation), sine = std::sin(m_rotation);
    const AcGeVector3d x = hostkit::toWorld(m_normal, AcGeVector3d(cosine, sine, 0.0)) * m_scale.sx;
    const AcGeVector3d y = hostkit::toWorld(m_normal, AcGeVector3d(-sine, cosine, 0.0)) * m_scale.sy;
    const AcGeVector3d z = m_normal * m_scale.sz;
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(m_blockId);
    const AcGePoint3d base = block ? block->origin() : AcGePoint3d::kOrigin;
    return AcGeMatrix3d().setCoordSystem(position() - (x * base.x + y * base.y + z * base.z), x, y, z);
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    Placement placement;
    if (!placement.set(matrix, m_scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(m_blockId);
    place(placement, matrix * (block ? block->origin() : AcGePoint3d::kOrigin));
    return Acad::eOk;
}

void AcDbBlockReference::place(const Placement& placement, const AcGePoint3d& position) {
    m_scale = placement.scale;
    m_rotation = placement.rotation;
    m_normal = placement.normal;
    m_ecsPosition = hostkit::toEntity(m_normal, position);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
    return m_attributes.append(*this, attribute, id);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
    AcDbObjectId id;
    return appendAttribute(id, attribute);
}

Acad::ErrorStatus AcDbBlockReference::openAttribute(AcDbAttribute*& attribute, AcDbObjectId id,
                                                    AcDb::OpenMode mode, bool openErased) const {
    attribute = nullptr;
    if (id.isNull()) return Acad::eNullObjectId;
    if (m_attributes.find(id) == m_attributes.count()) return Acad::eKeyNotFound;
    return acdbOpenObject(attribute, id, mode, openErased);
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
    return new AcDbObjectIterator(m_attributes);
}

Acad::ErrorStatus AcDbBlockReference::subErase(Adesk::Boolean erasing) {
    m_attributes.eraseAll(erasing);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::getGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    hostkit::BlockExtents().addReference(box, *this, AcGeMatrix3d::kIdentity);
    if (box.isEmpty()) return Acad::eInvalidExtents;
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    Placement placement{m_scale, m_rotation, m_normal};
    if (!hostkit::isShift(matrix) && !placement.set(matrix * blockTransform(), m_scale))
        return Acad::eCannotScaleNonUniformly;
    hostkit::OpenParts attributes;
    Acad::ErrorStatus status = attributes.open(m_attributes);
    if (status == Acad::eOk) status = assertWriteEnabled();
    if (status == Acad::eOk) status = attributes.transformBy(matrix);
    if (status == Acad::eOk) place(placement, matrix * position());
    return status;
}

void AcDbBlockReference::getEcs(AcGeMatrix3d& matrix) const {
    matrix = hostkit::arbitraryAxisSystem(m_normal);
}

namespace {

using OwnedParts = std::vector<std::unique_ptr<AcDbEntity>>;

Acad::ErrorStatus addMovedEntities(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix,
                                   OwnedParts& parts) {
    for (const AcDbObjectId id : block.entities()) {
        const auto* entity = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbEntity>(id);
        if (!entity) continue;
        const auto* definition = AcDbAttributeDefinition::cast(entity);
        if (definition && !definition->isConstant()) continue;
        AcDbEntity* copy = nullptr;
        const Acad::ErrorStatus status = entity->getTransformedCopy(matrix, copy);
        if (status != Acad::eOk) return status;
        std::unique_ptr<AcDbEntity> owned(copy);
        parts.push_back(std::move(owned));
    }
    return Acad::eOk;
}

void addAttributeTexts(const hostkit::SubentityList& attributes, OwnedParts& parts) {
    for (std::size_t i = 0; i < attributes.count(); ++i) {
        const auto* attribute = attributes.isErasedAt(i) ? nullptr : AcDbAttribute::cast(attributes.at(i));
        if (attribute && !attribute->isInvisible()) parts.push_back(std::make_unique<AcDbText>(*attribute));
    }
}

} // namespace

Acad::ErrorStatus AcDbBlockReference::explode(AcDbVoidPtrArray& parts) const {
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(m_blockId);
    if (!block || m_blockId.isErased()) return Acad::eNullObjectId;
    OwnedParts made;
    for (int i = 0; i < copyCount(); ++i) {
        const Acad::ErrorStatus status = addMovedEntities(*block, copyTransform(i), made);
        if (status != Acad::eOk) return status;
    }
    addAttributeTexts(m_attributes, made);
    for (std::unique_ptr<AcDbEntity>& part : made) hostkit::handOver(parts, part);
    return Acad::eOk;
}

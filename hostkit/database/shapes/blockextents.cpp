#include "blockextents.h"

#include "dbaccess.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbdim.h"
#include "dbopaque.h"
#include "movedblock.h"
#include "shapegeometry.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace hostkit {

namespace {

constexpr std::size_t kDeepestNesting = 64;

/// What a quarter turn by sine and cosine leaves where nothing should be.
constexpr double kAxisTolerance = 1e-14;

/// Boxes stay boxes: every axis goes along an axis.
bool keepsAxes(const AcGeMatrix3d& matrix) {
    for (unsigned int row = 0; row < 3; ++row) {
        const double sizes[3] = {std::abs(matrix(row, 0)), std::abs(matrix(row, 1)),
                                 std::abs(matrix(row, 2))};
        const double largest = std::max({sizes[0], sizes[1], sizes[2]});
        if (sizes[0] + sizes[1] + sizes[2] - largest > kAxisTolerance * largest) return false;
    }
    return true;
}

bool isShown(const AcDbEntity& entity) {
    if (const auto* definition = AcDbAttributeDefinition::cast(&entity)) return definition->isConstant();
    if (const auto* attribute = AcDbAttribute::cast(&entity)) return !attribute->isInvisible();
    return true;
}

} // namespace

bool BlockExtents::canEnter(const AcDbBlockTableRecord& block) const {
    return m_path.size() < kDeepestNesting && std::find(m_path.begin(), m_path.end(), &block) == m_path.end();
}

void BlockExtents::addReference(AcDbExtents& box, const AcDbBlockReference& reference,
                                const AcGeMatrix3d& matrix) {
    const AcDbObjectId blockId = reference.blockTableRecord();
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(blockId);
    if (block && !blockId.isErased() && canEnter(*block)) {
        AcDbExtents copies = boxOf(*block, matrix * reference.blockTransform());
        AcGeVector3d columns, rows;
        reference.getCopySpread(columns, rows);
        copies.expandBy(matrix * columns);
        copies.expandBy(matrix * rows);
        box.addExt(copies);
    }
    const SubentityList& attributes = reference.attributes();
    for (std::size_t i = 0; i < attributes.count(); ++i) {
        const AcDbEntity* attribute = attributes.isErasedAt(i) ? nullptr : attributes.at(i);
        if (attribute) addEntity(box, *attribute, matrix);
    }
}

void BlockExtents::addBlock(AcDbExtents& box, AcDbObjectId block, const AcGeMatrix3d& matrix) {
    const auto* record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(block);
    if (record && !block.isErased() && canEnter(*record)) box.addExt(boxOf(*record, matrix));
}

AcDbExtents BlockExtents::boxOf(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix) {
    if (!keepsAxes(matrix) && m_exactPartsLeft > 0) {
        AcDbExtents box;
        addEntities(box, block, matrix);
        return box;
    }
    auto known = m_ownBoxes.find(&block);
    if (known == m_ownBoxes.end()) {
        AcDbExtents own;
        addEntities(own, block, AcGeMatrix3d::kIdentity);
        known = m_ownBoxes.emplace(&block, own).first;
    }
    AcDbExtents box = known->second;
    box.transformBy(matrix);
    return box;
}

void BlockExtents::addEntities(AcDbExtents& box, const AcDbBlockTableRecord& block,
                               const AcGeMatrix3d& matrix) {
    m_path.push_back(&block);
    for (const AcDbObjectId id : block.entities()) {
        const auto* entity = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbEntity>(id);
        if (entity) addEntity(box, *entity, matrix);
    }
    m_path.pop_back();
}

void BlockExtents::addEntity(AcDbExtents& box, const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    if (const auto* reference = AcDbBlockReference::cast(&entity))
        return addReference(box, *reference, matrix);
    const auto* dimension = AcDbDimension::cast(&entity);
    if (dimension && !dimension->dimBlockId().isNull())
        return addBlock(box, dimension->dimBlockId(), matrix * blockPlacement(*dimension));
    if (!isShown(entity)) return;
    --m_exactPartsLeft;
    if (AcDbOpaqueEntity::cast(&entity)) return box.addExt(drawnExtents(entity, matrix).box);
    AcDbExtents own;
    AcDbEntity* moved = nullptr;
    const bool asCopy = !keepsAxes(matrix) && entity.getTransformedCopy(matrix, moved) == Acad::eOk;
    const std::unique_ptr<AcDbEntity> copy(moved);
    if ((asCopy ? *copy : entity).getGeomExtents(own) != Acad::eOk) return;
    if (!asCopy) own.transformBy(matrix);
    box.addExt(own);
}

} // namespace hostkit

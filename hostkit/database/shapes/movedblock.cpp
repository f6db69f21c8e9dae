#include "movedblock.h"

#include "blockusers.h"
#include "dbaccess.h"
#include "dbblocktable.h"
#include "dbdimension.h"
#include "newblock.h"
#include "openparts.h"

#include <memory>
#include <vector>

namespace hostkit {

namespace {

bool moveInPlace(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix) {
    OpenParts parts;
    return parts.open(block.entities()) == Acad::eOk && parts.transformBy(matrix) == Acad::eOk;
}

} // namespace

bool copyMoved(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix, BlockContents& copies) {
    for (const AcDbObjectId id : block.entities()) {
        const auto* entity = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbEntity>(id);
        if (!entity) continue;
        AcDbEntity* copy = nullptr;
        if (entity->getTransformedCopy(matrix, copy) != Acad::eOk) return false;
        std::unique_ptr<AcDbEntity> owned(copy);
        copies.push_back(std::move(owned));
    }
    return true;
}

AcDbObjectId movedBlock(const AcDbDimension& dimension, AcDbObjectId earlier, const AcGeMatrix3d& matrix) {
    AcDbDatabase& database = *dimension.database();
    auto* table = DatabaseAccess::objectOf<AcDbBlockTable>(database.blockTableId());
    const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(earlier);
    // The copies also tell beforehand whether all of it can follow.
    BlockContents copies;
    if (!table || !block || earlier.database() != &database || !copyMoved(*block, matrix, copies)) return {};
    const bool isOwn =
        !earlier.isErased() && !DatabaseAccess::blockUsers(database).isUsedByOther(earlier, dimension);
    if (isOwn && moveInPlace(*block, matrix)) return earlier;
    // Callers walk the table while they move dimensions: it need not be open for this.
    return addBlock(*table, std::make_unique<AcDbBlockTableRecord>(*block), table->freeName(L"*D"),
                    std::move(copies));
}

AcGeMatrix3d blockPlacement(const AcDbDimension& dimension) {
    constexpr int placeOfBlockCode = 12;
    AcGeMatrix3d plane;
    dimension.getEcs(plane);
    return AcGeMatrix3d::translation(plane * dimension.pointOf(placeOfBlockCode).asVector());
}

} // namespace hostkit

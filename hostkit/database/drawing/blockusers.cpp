#include "blockusers.h"

#include "dbblockreference.h"
#include "dbdim.h"

#include <algorithm>

namespace hostkit {

namespace {

bool shows(const AcDbEntity& entity, AcDbObjectId block) {
    if (const auto* dimension = AcDbDimension::cast(&entity)) return dimension->needsBlock(block);
    return static_cast<const AcDbBlockReference&>(entity).blockTableRecord() == block;
}

} // namespace

bool BlockUsers::isUsedByOther(AcDbObjectId block, const AcDbObject& user) {
    m_scan.lookAtNew(*user.database(), [this](const AcDbObject& object) {
        if (object.isKindOf(AcDbDimension::desc()) || object.isKindOf(AcDbBlockReference::desc()))
            m_users.push_back(static_cast<const AcDbEntity*>(&object));
    });
    return std::any_of(m_users.begin(), m_users.end(), [&](const AcDbEntity* each) {
        const bool hasLeft = (each->objectId().stub()->flags & kStubTakenBack) != 0;
        return each != &user && !hasLeft && shows(*each, block);
    });
}

} // namespace hostkit

#include "dblayout.h"

#include "assignfield.h"
#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "ownederasure.h"

HOSTKIT_KIT_CLASS(AcDbLayout, AcDbObject, L"LAYOUT")

Acad::ErrorStatus AcDbLayout::setLayoutName(const wchar_t* name) {
    return hostkit::assignIf(name && *name, *this, m_name, name ? name : L"");
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId id) {
    return hostkit::assignField(*this, m_blockId, id);
}

Acad::ErrorStatus AcDbLayout::setTabOrder(int order) {
    return hostkit::assignIf(order >= 0 && order <= 32767, *this, m_tabOrder,
                             static_cast<Adesk::Int16>(order));
}

namespace {

/// The block whose sheet this is; null where the two do not agree.
AcDbBlockTableRecord* ownBlock(const AcDbLayout& layout) {
    auto* block = hostkit::DatabaseAccess::objectOf<AcDbBlockTableRecord>(layout.getBlockTableRecordId());
    return block && block->getLayoutId() == layout.objectId() ? block : nullptr;
}

} // namespace

Acad::ErrorStatus AcDbLayout::subErase(Adesk::Boolean erasing) {
    const AcDbBlockTableRecord* block = erasing ? ownBlock(*this) : nullptr;
    const bool isStanding = block && (block->objectId() == database()->modelSpaceId() ||
                                      block->objectId() == database()->paperSpaceId());
    return isStanding ? Acad::eCannotBeErasedByCaller : AcDbObject::subErase(erasing);
}

// The block is no part of the layout, so cancel would not bring it back: it goes when cancel is past.
Acad::ErrorStatus AcDbLayout::subClose() {
    const Acad::ErrorStatus status = AcDbObject::subClose();
    if (const AcDbBlockTableRecord* block = ownBlock(*this))
        hostkit::eraseWithOwner(block->objectId(), isErased());
    return status;
}

#include "subentitylist.h"

#include "dbaccess.h"
#include "dbent.h"
#include "ownederasure.h"
#include "ownedlist.h"

#include <algorithm>

namespace hostkit {

SubentityList::~SubentityList() = default;

SubentityList::SubentityList(const SubentityList& other) {
    m_parts.reserve(other.count());
    for (std::size_t i = 0; i < other.count(); ++i) {
        const AcDbEntity* part = other.isErasedAt(i) ? nullptr : other.at(i);
        if (AcDbEntity* copy = part ? AcDbEntity::cast(part->clone()) : nullptr) m_parts.emplace_back(copy);
    }
}

SubentityList& SubentityList::operator=(const SubentityList& other) {
    if (this == &other) return *this;
    SubentityList copy(other.m_isResident ? SubentityList() : other);
    m_parts = std::move(copy.m_parts);
    m_isResident = other.m_isResident;
    m_ids = other.m_ids;
    m_sequenceEnd = other.m_sequenceEnd;
    return *this;
}

std::size_t SubentityList::takeBack(AcDbObjectId id) { return takeFromList(m_ids, id); }
void SubentityList::giveBack(AcDbObjectId id, std::size_t place) { giveToList(m_ids, id, place); }

AcDbEntity* SubentityList::at(std::size_t index) const {
    return m_isResident ? DatabaseAccess::objectOf<AcDbEntity>(m_ids[index]) : m_parts[index].get();
}

std::size_t SubentityList::find(AcDbObjectId id) const {
    const auto found = std::find(m_ids.begin(), m_ids.end(), id);
    return found == m_ids.end() ? count() : static_cast<std::size_t>(found - m_ids.begin());
}

Acad::ErrorStatus SubentityList::insert(AcDbEntity& owner, std::size_t index, AcDbEntity* part,
                                        AcDbObjectId& id) {
    if (!part) return Acad::eNullObjectPointer;
    if (!part->objectId().isNull()) return Acad::eAlreadyInDb;
    if (index > count()) return Acad::eInvalidIndex;
    if (owner.database() && !owner.database()->mayWrite()) return Acad::eLockViolation;
    const Acad::ErrorStatus status = owner.assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const auto place = static_cast<std::ptrdiff_t>(index);
    if (owner.database()) {
        m_isResident = true;
        makeRoom(m_ids);
        id = DatabaseAccess::addOpen(*owner.database(), part, owner.objectId());
        m_ids.insert(m_ids.begin() + place, id);
    } else {
        id.setNull();
        makeRoom(m_parts);
        m_parts.emplace(m_parts.begin() + place, part);
    }
    return Acad::eOk;
}

void SubentityList::clearOwned() { m_parts.clear(); }

void SubentityList::enterDrawing(AcDbEntity& owner) {
    m_isResident = true;
    m_ids.reserve(m_ids.size() + m_parts.size());
    for (const std::unique_ptr<AcDbEntity>& part : m_parts) {
        AcDbEntity* const entering = part.get();
        if (entering->layerId().database() != owner.database())
            DatabaseAccess::setLayer(*entering, owner.layerId());
        // A copy's part without a linetype has that of its layer, as the original's.
        const bool isCopy = !entering->originalSpan().isEmpty() && entering->linetypeId().isNull();
        if (!isCopy && entering->linetypeId().database() != owner.database())
            DatabaseAccess::setLinetype(*entering, owner.linetypeId());
        m_ids.push_back(DatabaseAccess::addOpen(*owner.database(), entering, owner.objectId()));
        entering->close();
    }
    for (std::unique_ptr<AcDbEntity>& part : m_parts) (void)part.release(); // the drawing's from here on
    m_parts.clear();
    m_parts.shrink_to_fit();
}

void SubentityList::leaveDrawing(AcDbDatabase& database) noexcept {
    for (const AcDbObjectId id : m_ids)
        if (AcDbObject* const part = DatabaseAccess::object(id)) DatabaseAccess::withdraw(database, *part);
    m_ids.clear();
    m_isResident = false;
}

void SubentityList::appendResident(AcDbObjectId id) {
    m_isResident = true;
    m_ids.push_back(id);
}

void SubentityList::eraseAll(bool erasing) {
    for (const AcDbObjectId id : m_ids) eraseWithOwner(id, erasing);
    eraseWithOwner(m_sequenceEnd, erasing);
}

} // namespace hostkit

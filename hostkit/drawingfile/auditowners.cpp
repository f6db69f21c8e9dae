// The check of handles and owners.

#include "auditing.h"

#include "dbblocktablerecord.h"
#include "dbopaque.h"
#include "objectwriting.h"

namespace hostkit {

void DrawingAudit::hold(AcDbObjectId held, const AcDbObject& holder, const wchar_t* what) {
    if (held.isNull() || held.isErased()) return;
    if (!held.isResident())
        return fault(AuditCheck::kOwner, &holder,
                     std::wstring(what) + L" " + handleText(held) + L" is missing");
    const auto [place, isFirst] = m_holders.try_emplace(held, &holder);
    if (isFirst || place->second == &holder) return;
    fault(AuditCheck::kOwner, DatabaseAccess::object(held),
          handleText(place->second->objectId()) + L" and " + handleText(holder.objectId()) +
              L" both hold it");
}

void DrawingAudit::gatherHolders(AcDbObject& container) {
    hold(DatabaseAccess::extensionDictionary(container), container, L"its extension dictionary");
    if (const auto* const table = AcDbSymbolTable::cast(&container))
        for (const AcDbObjectId id : table->records()) hold(id, container, L"its record");
    if (const auto* const block = AcDbBlockTableRecord::cast(&container)) {
        for (const AcDbObjectId id : block->entities()) hold(id, container, L"its entity");
        hold(block->blockBeginId(), container, L"its opening record");
        hold(block->blockEndId(), container, L"its closing record");
    }
    auto* const entity = AcDbEntity::cast(&container);
    if (const SubentityList* const parts = entity ? DatabaseAccess::parts(*entity) : nullptr) {
        for (std::size_t i = 0; i < parts->count(); ++i) hold(parts->idAt(i), container, L"its part");
        hold(parts->sequenceEnd(), container, L"its closing record");
    }
    // A dictionary may also name what others own.
    const auto* const dictionary = AcDbDictionary::cast(&container);
    if (!dictionary) return;
    AcDbDictionaryIterator iterator(*dictionary);
    for (bool more = !iterator.done(); more; more = iterator.next()) {
        const AcDbObject* const entry = DatabaseAccess::object(iterator.objectId());
        if (entry && entry->ownerId() == container.objectId()) hold(entry->objectId(), container, L"");
    }
}

void DrawingAudit::gatherHolders() {
    forEachLive([this](AcDbObject& object) { gatherHolders(object); });
}

void DrawingAudit::checkHandle(const AcDbObject& object) {
    const AcDbHandleValue handle = object.handle().value();
    const AcDbHandleValue next = m_database.handseed().value();
    if (handle == 0) return fault(AuditCheck::kHandle, &object, L"it has no handle");
    if (DatabaseAccess::find(m_database, handle) != object.objectId())
        fault(AuditCheck::kHandle, &object, L"its handle leads to another object");
    if (next != 0 && handle >= next)
        fault(AuditCheck::kHandle, &object,
              L"its handle is not below " + handleText(next) + L", the next one that will be given");
}

bool DrawingAudit::mayHaveNoOwner(const AcDbObject& object) const {
    return object.isKindOf(AcDbSymbolTable::desc()) ||
           object.objectId() == m_database.namedObjectsDictionaryId();
}

namespace {

// Owners whose own are known; a record of an unknown kind may own what it likes.
bool listsItsOwn(const AcDbObject& owner, const AcDbObject& owned) {
    if (owner.isKindOf(AcDbSymbolTable::desc()) || owner.isKindOf(AcDbBlockTableRecord::desc()) ||
        owner.isKindOf(AcDbDictionary::desc()))
        return true;
    return owned.isKindOf(AcDbEntity::desc()) && owner.isKindOf(AcDbEntity::desc()) &&
           !owner.isKindOf(AcDbOpaqueEntity::desc());
}

} // namespace

void DrawingAudit::checkOwner(const AcDbObject& object) {
    const AcDbObjectId owner = object.ownerId();
    if (owner.isNull()) {
        if (!mayHaveNoOwner(object)) fault(AuditCheck::kOwner, &object, L"it has no owner");
        return;
    }
    if (!isLive(owner))
        return fault(AuditCheck::kOwner, &object,
                     L"its owner " + handleText(owner) + L" is " + lackOf(owner));
    const auto holder = m_holders.find(object.objectId());
    if (holder == m_holders.end()) {
        if (listsItsOwn(*DatabaseAccess::object(owner), object))
            fault(AuditCheck::kOwner, &object, L"its owner " + handleText(owner) + L" does not hold it");
    } else if (holder->second->objectId() != owner) {
        fault(AuditCheck::kOwner, &object,
              L"its owner is " + handleText(owner) + L", but " + handleText(holder->second->objectId()) +
                  L" holds it");
    }
}

// Follows each chain of owners until it meets one that was followed before.
void DrawingAudit::checkOwnerCircles() {
    std::unordered_map<AcDbObjectId, const AcDbObject*> startedFrom;
    forEachLive([&](AcDbObject& object) {
        for (const AcDbObject* each = &object; each;) {
            const auto [place, isNew] = startedFrom.try_emplace(each->objectId(), &object);
            if (!isNew) {
                if (place->second == &object) fault(AuditCheck::kOwner, each, L"its owners form a circle");
                return;
            }
            each = isLive(each->ownerId()) ? DatabaseAccess::object(each->ownerId()) : nullptr;
        }
    });
}

} // namespace hostkit

#include "displaychanges.h"

#include "dbaccess.h"
#include "dblayertablerecord.h"

#include <algorithm>

namespace hostkit {

StandingEntity standingEntity(const AcDbObject& entity) {
    constexpr int deepest = 4;
    const AcDbObject* main = &entity;
    for (int depth = 0; depth < deepest; ++depth) {
        const AcDbObject* owner = DatabaseAccess::object(main->ownerId());
        if (!owner) break;
        if (const auto* block = AcDbBlockTableRecord::cast(owner)) return {main, block};
        main = owner;
    }
    return {main, nullptr};
}

namespace {

/// False for what is not seen.
bool describe(const AcDbObject& object, ShownChange& change) {
    const AcDbObjectId id = object.objectId();
    if (object.isKindOf(AcDbEntity::desc())) {
        const auto [entity, block] = standingEntity(object);
        if (!block) return false;
        const auto kind = entity->isErased() ? ShownChange::Kind::gone : ShownChange::Kind::entity;
        change = block->isLayout() ? ShownChange{kind, entity->objectId(), id}
                                   : ShownChange{ShownChange::Kind::block, block->objectId(), id};
        return true;
    }
    const bool isLayer = object.isKindOf(AcDbLayerTableRecord::desc());
    const auto* block = isLayer ? nullptr : AcDbBlockTableRecord::cast(&object);
    change = {isLayer ? ShownChange::Kind::layer : ShownChange::Kind::block, id, id};
    return isLayer || (block && !block->isLayout());
}

} // namespace

void DisplayChanges::remove(DisplayObserver& observer) { std::erase(m_observers, &observer); }

void DisplayChanges::tell(const ShownChange& change) const {
    for (DisplayObserver* observer : m_observers) observer->shownAnew(change);
}

void DisplayChanges::tellOfBeginning(const AcDbObject& object) const {
    for (DisplayObserver* observer : m_observers) observer->changeBegins(object);
}

void DisplayChanges::tellOfChange(const AcDbObject& object) const {
    ShownChange change{};
    if (describe(object, change)) tell(change);
}

void DisplayChanges::tellOfRedraw(const AcDbObject& entity) const {
    ShownChange change{};
    if (!describe(entity, change)) return;
    if (change.kind == ShownChange::Kind::entity) change.kind = ShownChange::Kind::redraw;
    tell(change);
}

void DisplayChanges::tellRestored() {
    if (m_restored.empty()) return;
    std::vector<const AcDbStub*> stubs;
    stubs.swap(m_restored);
    std::sort(stubs.begin(), stubs.end());
    stubs.erase(std::unique(stubs.begin(), stubs.end()), stubs.end());
    for (const AcDbStub* stub : stubs) tellOfChange(*stub->object);
}

} // namespace hostkit

#include "selectionpicks.h"

#include "acdocman.h"
#include "currentview.h"
#include "dbaccess.h"
#include "dbblocktable.h"
#include "dbdatabase.h"
#include "dblayertablerecord.h"
#include "documentselection.h"
#include "drawinggroups.h"
#include "entitypicking.h"
#include "fetchahead.h"
#include "host.h"
#include "shownwalk.h"
#include "winuser.h"

#include <algorithm>

namespace hostkit {
namespace {

const AcDbLayerTableRecord* layerOf(const AcDbEntity& entity) {
    return DatabaseAccess::objectOf<AcDbLayerTableRecord>(entity.layerId());
}

bool isLocked(const AcDbEntity& entity) {
    const AcDbLayerTableRecord* layer = layerOf(entity);
    return layer && layer->isLocked();
}

const AcDbEntity* liveEntity(AcDbObjectId id) {
    return id.isErased() ? nullptr : AcDbEntity::cast(DatabaseAccess::object(id));
}

// Of a block's list, in which entities alone stand.
const AcDbEntity* liveEntityOfBlock(AcDbObjectId id) {
    return id.isErased() ? nullptr : static_cast<const AcDbEntity*>(DatabaseAccess::object(id));
}

const std::vector<AcDbObjectId>& entitiesOf(AcDbObjectId block) {
    static const std::vector<AcDbObjectId> none;
    const auto* record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(block);
    return record ? record->entities() : none;
}

double halfPickBox(const CurrentView& view) {
    constexpr int usual = 3;
    Host* const host = Host::current();
    const int pixels = host ? host->variables().integer(L"PICKBOX", usual) : usual;
    return pixels * view.height / std::max(1, GetSystemMetrics(SM_CYSCREEN));
}

} // namespace

AcGePoint3d fromUser(const AcApDocument& document, const ads_real* point) {
    return ucsToWorld(document) * AcGePoint3d(point[0], point[1], point[2]);
}

AcDbObjectId currentSpace(const AcApDocument& document) {
    const AcDbDatabase& database = *document.database();
    return isModelCurrent(document) ? database.modelSpaceId() : database.paperSpaceId();
}

SelectionPicks::SelectionPicks(const AcApDocument& document, const SelectionMode& mode,
                               const SelectionFilter& filter)
    : m_document(document)
    , m_mode(mode)
    , m_filter(filter)
    , m_space(currentSpace(document)) {
    const CurrentView view = currentView(document);
    m_sight.worldToView = displayToWorld(view).inverse();
    m_pickBox = halfPickBox(view);
}

AcGePoint2d SelectionPicks::inView(const AcGePoint3d& point) const {
    const AcGePoint3d seen = m_sight.worldToView * point;
    return {seen.x, seen.y};
}

std::vector<AcGePoint2d> SelectionPicks::inView(const std::vector<AcGePoint3d>& points) const {
    std::vector<AcGePoint2d> seen(points.size());
    std::transform(points.begin(), points.end(), seen.begin(),
                   [this](const AcGePoint3d& point) { return inView(point); });
    return seen;
}

PickRegion SelectionPicks::pickBox(const AcGePoint3d& point) const {
    const AcGePoint2d middle = inView(point);
    return PickRegion::box({middle.x - m_pickBox, middle.y - m_pickBox},
                           {middle.x + m_pickBox, middle.y + m_pickBox});
}

bool SelectionPicks::isTaken(const AcDbEntity& entity, Found& found) const {
    if (m_mode.skipsViewports && std::wstring_view(entity.dxfName()) == L"VIEWPORT") return false;
    if (m_mode.skipsLocked && isLocked(entity)) return ++found.onLockedLayers, false;
    if (!m_filter.accepts(entity)) return ++found.filteredOut, false;
    return true;
}

Found SelectionPicks::taken(std::vector<AcDbObjectId> ids, SelectionWay way) const {
    Found found;
    if (way.method != SelectionWay::other) found.way = std::make_shared<SelectionWay>(std::move(way));
    std::erase_if(ids, [&](AcDbObjectId id) {
        const AcDbEntity* entity = liveEntity(id);
        return !entity || !isTaken(*entity, found);
    });
    found.ids = std::move(ids);
    return found;
}

Found SelectionPicks::nestedAt(const AcGePoint3d& point) const {
    const auto pick = pickedNested(*m_document.database(), m_space, m_sight, pickBox(point));
    if (!pick) return {};
    return taken({pick->entity}, {SelectionWay::pick, point, pick->containers, pick->toWorld});
}

Found SelectionPicks::at(const AcGePoint3d& point) const {
    if (m_mode.isNested) return nestedAt(point);
    AcDbDatabase& database = *m_document.database();
    const PickRegion region = pickBox(point);
    std::vector<AcDbObjectId> ids;
    if (m_mode.takesAllMet)
        ids = pickedEntities(database, m_space, m_sight, region, PickMode::touching);
    else if (const AcDbObjectId id = pickedEntity(database, m_space, m_sight, region); !id.isNull())
        ids.push_back(id);
    return taken(std::move(ids), {SelectionWay::pick, point});
}

Found SelectionPicks::window(const AcGePoint3d& one, const AcGePoint3d& other, PickMode mode) const {
    const PickRegion region = PickRegion::box(inView(one), inView(other));
    return taken(pickedEntities(*m_document.database(), m_space, m_sight, region, mode),
                 {mode == PickMode::inside ? SelectionWay::window : SelectionWay::crossing});
}

Found SelectionPicks::box(const AcGePoint3d& first, const AcGePoint3d& second) const {
    const bool toTheLeft = inView(second).x < inView(first).x;
    return window(first, second, toTheLeft ? PickMode::touching : PickMode::inside);
}

Found SelectionPicks::polygon(const std::vector<AcGePoint3d>& corners, PickMode mode) const {
    constexpr std::size_t fewest = 3;
    if (corners.size() < fewest) return {};
    return taken(
        pickedEntities(*m_document.database(), m_space, m_sight, PickRegion::polygon(inView(corners)), mode),
        {mode == PickMode::inside ? SelectionWay::window : SelectionWay::crossing});
}

Found SelectionPicks::fence(const std::vector<AcGePoint3d>& chain) const {
    constexpr std::size_t fewest = 2;
    if (chain.size() < fewest) return {};
    return taken(pickedEntities(*m_document.database(), m_space, m_sight, PickRegion::fence(inView(chain)),
                                PickMode::touching),
                 {SelectionWay::fence});
}

Found SelectionPicks::last() const {
    const std::vector<AcDbObjectId>& ids = entitiesOf(m_space);
    for (std::size_t i = ids.size(); i > 0; --i) {
        const AcDbEntity* entity = liveEntity(ids[i - 1]);
        if (entity && isSeen(*entity, {})) return taken({ids[i - 1]}, {});
    }
    return {};
}

Found SelectionPicks::currentSpaceWhole() const {
    Found found;
    const std::vector<AcDbObjectId>& ids = entitiesOf(m_space);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        fetchAhead(ids, i);
        const AcDbEntity* entity = liveEntityOfBlock(ids[i]);
        if (!entity || entity->visibility() == AcDb::kInvisible) continue;
        const AcDbLayerTableRecord* layer = layerOf(*entity);
        if (layer && (layer->isFrozen() || layer->isLocked())) continue;
        if (isTaken(*entity, found)) found.ids.push_back(ids[i]);
    }
    return found;
}

Found SelectionPicks::wholeDrawing() const {
    Found found;
    const auto* blocks = DatabaseAccess::objectOf<AcDbBlockTable>(m_document.database()->blockTableId());
    if (!blocks) return found;
    for (const AcDbObjectId block : blocks->records()) {
        const auto* record = DatabaseAccess::objectOf<AcDbBlockTableRecord>(block);
        if (!record || record->isErased() || !record->isLayout()) continue;
        const std::vector<AcDbObjectId>& ids = record->entities();
        for (std::size_t i = 0; i < ids.size(); ++i) {
            fetchAhead(ids, i);
            const AcDbEntity* entity = liveEntityOfBlock(ids[i]);
            if (entity && isTaken(*entity, found)) found.ids.push_back(ids[i]);
        }
    }
    return found;
}

Found SelectionPicks::ofList(const std::vector<AcDbObjectId>& ids, bool inCurrentSpace) const {
    Found found;
    for (const AcDbObjectId id : ids) {
        const AcDbEntity* entity = id.database() == m_document.database() ? liveEntity(id) : nullptr;
        if (!entity) continue;
        if (inCurrentSpace && entity->ownerId() != m_space)
            ++found.inOtherSpaces;
        else if (isTaken(*entity, found))
            found.ids.push_back(id);
    }
    return found;
}

bool SelectionPicks::group(std::wstring_view name, Found& found) const {
    std::vector<AcDbObjectId> members;
    if (!groupMembers(*m_document.database(), name, members)) return false;
    found = ofList(members, true);
    return true;
}

} // namespace hostkit

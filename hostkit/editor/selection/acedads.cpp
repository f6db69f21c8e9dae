#include "acedads.h"

#include "acdocman.h"
#include "dbaccess.h"
#include "documentselection.h"
#include "host.h"
#include "selectionsets.h"

#include <limits>

namespace {

using hostkit::SelectionSet;
using hostkit::SelectionWay;

hostkit::SelectionSets* sets() {
    hostkit::Host* host = hostkit::Host::current();
    return host ? &host->selections() : nullptr;
}

SelectionSet* setOf(const ads_name name) {
    hostkit::SelectionSets* all = sets();
    return all ? all->find(name) : nullptr;
}

hostkit::DocumentSelection* rememberedSelection() {
    AcApDocument* document = hostkit::currentDocument();
    return document ? &document->selection() : nullptr;
}

// Null for what is no entity's name.
AcDbObjectId entityOf(const ads_name name) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != Acad::eOk) return {};
    const AcDbObject* object = hostkit::DatabaseAccess::object(id);
    return object && object->isKindOf(AcDbEntity::desc()) ? id : AcDbObjectId();
}

bool isPlace(const SelectionSet& set, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < set.size();
}

using hostkit::RecordListMaker;

void addCode(RecordListMaker& list, int value) {
    list.append(RTSHORT).resval.rint = static_cast<short>(value);
}
void addPoint(RecordListMaker& list, double x, double y, double z) {
    ads_real* const point = list.append(RT3DPOINT).resval.rpoint;
    point[0] = x;
    point[1] = y;
    point[2] = z;
}

void addPick(RecordListMaker& list, const SelectionWay& way) {
    hostkit::addEntities(list, way.containers);
    for (int column = 0; column < 4 && !way.containers.empty(); ++column)
        addPoint(list, way.toWorld(0, column), way.toWorld(1, column), way.toWorld(2, column));
    list.append(RTLB);
    addCode(list, 0);
    addPoint(list, way.point.x, way.point.y, way.point.z);
    list.append(RTLE);
}

} // namespace

int acedSSLength(const ads_name set, Adesk::Int32* length) {
    const SelectionSet* found = setOf(set);
    if (!found || !length) return RTERROR;
    *length = static_cast<Adesk::Int32>(found->size());
    return RTNORM;
}

int acedSSName(const ads_name set, int index, ads_name entity) {
    const SelectionSet* found = setOf(set);
    if (!found || !entity || !isPlace(*found, index)) return RTERROR;
    return hostkit::nameEntity(found->at(static_cast<std::size_t>(index)), entity) ? RTNORM : RTERROR;
}

int acedSSNameX(resbuf** list, const ads_name set, int index) {
    const SelectionSet* found = setOf(set);
    if (!found || !list || !isPlace(*found, index)) return RTERROR;
    const auto place = static_cast<std::size_t>(index);
    const SelectionWay* way = found->wayAt(place);
    RecordListMaker made;
    addCode(made, way ? way->method : SelectionWay::other);
    hostkit::addEntities(made, {found->at(place)});
    addCode(made, 0);
    if (way && way->method == SelectionWay::pick) addPick(made, *way);
    *list = made.take().release();
    return RTNORM;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
    const AcDbObjectId id = entityOf(entity);
    if (!sets() || !result || (entity && id.isNull()) || (set && !entity)) return RTERROR;
    if (!set) {
        SelectionSet made;
        if (entity) made.add(id);
        sets()->make(std::move(made), result);
        return RTNORM;
    }
    SelectionSet* found = setOf(set);
    if (!found) return RTERROR;
    found->add(id);
    result[0] = set[0];
    result[1] = set[1];
    return RTNORM;
}

int acedSSDel(const ads_name entity, const ads_name set) {
    SelectionSet* found = setOf(set);
    return found && found->remove(entityOf(entity)) ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name entity, const ads_name set) {
    const SelectionSet* found = setOf(set);
    return found && found->contains(entityOf(entity)) ? RTNORM : RTERROR;
}

int acedSSFree(const ads_name set) { return sets() && sets()->free(set) ? RTNORM : RTERROR; }

int acedSSSetFirst(const ads_name gripSet, const ads_name pickSet) {
    hostkit::DocumentSelection* remembered = rememberedSelection();
    if (!remembered) return RTERROR;
    const bool isEmpty = !pickSet && !gripSet;
    const SelectionSet* found = isEmpty ? nullptr : setOf(pickSet ? pickSet : gripSet);
    if (!isEmpty && !found) return RTERROR;
    remembered->implied = found ? found->ids() : std::vector<AcDbObjectId>();
    return RTNORM;
}

int acedSSGetFirst(resbuf** gripSet, resbuf** pickSet) {
    if (!rememberedSelection()) return RTERROR;
    if (gripSet) *gripSet = nullptr;
    if (!pickSet) return RTNORM;
    *pickSet = nullptr;
    ads_name name;
    if (acedSSGet(L"_I", nullptr, nullptr, nullptr, name) != RTNORM) return RTNORM;
    *pickSet = acutNewRb(RTPICKS);
    (*pickSet)->resval.rlname[0] = name[0];
    (*pickSet)->resval.rlname[1] = name[1];
    return RTNORM;
}

bool setAllowDuplicateSelection(AcApDocument* document, bool allow) {
    if (!document) return false;
    return std::exchange(document->selection().allowsDuplicates, allow);
}

Acad::ErrorStatus AcEdInputPointManager::turnOnSubentitySelection() {
    ++m_subentitySelections;
    return Acad::eOk;
}

Acad::ErrorStatus AcEdInputPointManager::turnOffSubentitySelection() {
    if (m_subentitySelections == 0) return Acad::eInvalidInput;
    --m_subentitySelections;
    return Acad::eOk;
}

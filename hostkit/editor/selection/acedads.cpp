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
    hostkit::Host* host = hostkit::Host::current();
    AcApDocument* document = host ? host->documents().curDocument() : nullptr;
    return document ? &document->selection() : nullptr;
}

// Null for what is no entity's name.
AcDbObjectId entityOf(const ads_name name) {
    AcDbObjectId id;
    if (!name || name[1] != 0 || acdbGetObjectId(id, name) != Acad::eOk) return {};
    const AcDbObject* object = hostkit::DatabaseAccess::object(id);
    return object && object->isKindOf(AcDbEntity::desc()) ? id : AcDbObjectId();
}

bool isPlace(const SelectionSet& set, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < set.size();
}

// Appends records to a list.
class ListEnd {
public:
    explicit ListEnd(resbuf** list)
        : m_link(list) {}
    resbuf& add(int type) {
        *m_link = acutNewRb(type);
        resbuf& added = **m_link;
        m_link = &added.rbnext;
        return added;
    }
    void addCode(int value) { add(RTSHORT).resval.rint = static_cast<short>(value); }
    void addEntity(AcDbObjectId id) { (void)acdbGetAdsName(add(RTENAME).resval.rlname, id); }
    void addPoint(double x, double y, double z) {
        resbuf& record = add(RT3DPOINT);
        record.resval.rpoint[0] = x;
        record.resval.rpoint[1] = y;
        record.resval.rpoint[2] = z;
    }

private:
    resbuf** m_link;
};

void addPick(ListEnd& list, const SelectionWay& way) {
    for (const AcDbObjectId container : way.containers) list.addEntity(container);
    for (int column = 0; column < 4 && !way.containers.empty(); ++column)
        list.addPoint(way.toWorld(0, column), way.toWorld(1, column), way.toWorld(2, column));
    list.add(RTLB);
    list.addCode(0);
    list.addPoint(way.point.x, way.point.y, way.point.z);
    list.add(RTLE);
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
    return acdbGetAdsName(*reinterpret_cast<ads_name*>(entity), found->at(static_cast<std::size_t>(index))) ==
                   Acad::eOk
               ? RTNORM
               : RTERROR;
}

int acedSSNameX(resbuf** list, const ads_name set, int index) {
    const SelectionSet* found = setOf(set);
    if (!found || !list || !isPlace(*found, index)) return RTERROR;
    const auto place = static_cast<std::size_t>(index);
    const SelectionWay* way = found->wayAt(place);
    resbuf* made = nullptr;
    ListEnd end(&made);
    end.addCode(way ? way->method : SelectionWay::other);
    end.addEntity(found->at(place));
    end.addCode(0);
    if (way && way->method == SelectionWay::pick) addPick(end, *way);
    *list = made;
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

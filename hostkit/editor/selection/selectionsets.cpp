#include "selectionsets.h"

#include "acdbads.h"
#include "adscodes.h"

namespace hostkit {

void SelectionSets::make(SelectionSet set, ads_name name) {
    m_sets.emplace(++m_last, std::make_unique<SelectionSet>(std::move(set)));
    name[0] = m_last;
    name[1] = mark;
}

SelectionSet* SelectionSets::find(const ads_name name) {
    if (!name || name[1] != mark) return nullptr;
    const auto found = m_sets.find(name[0]);
    return found == m_sets.end() ? nullptr : found->second.get();
}

bool SelectionSets::free(const ads_name name) { return find(name) && m_sets.erase(name[0]) == 1; }

bool nameEntity(AcDbObjectId id, std::intptr_t* name) {
    return acdbGetAdsName(*reinterpret_cast<ads_name*>(name), id) == Acad::eOk;
}

void addEntities(RecordListMaker& list, const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids) nameEntity(id, list.append(RTENAME).resval.rlname);
}

} // namespace hostkit

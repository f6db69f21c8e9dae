#include "selectionsets.h"

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

} // namespace hostkit

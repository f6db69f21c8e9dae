#include "menugroup.h"

#include "casefold.h"

#include <algorithm>

namespace hostkit {

bool MenuGroups::add(std::shared_ptr<MenuGroup> group) {
    if (group->name.empty() || find(group->name)) return false;
    m_groups.push_back(std::move(group));
    return true;
}

bool MenuGroups::remove(std::wstring_view name) {
    return std::erase_if(m_groups, [name](const auto& each) { return equalFolded(each->name, name); }) > 0;
}

const MenuGroup* MenuGroups::find(std::wstring_view name) const {
    const auto found = std::find_if(m_groups.begin(), m_groups.end(),
                                    [name](const auto& each) { return equalFolded(each->name, name); });
    return found == m_groups.end() ? nullptr : found->get();
}

} // namespace hostkit

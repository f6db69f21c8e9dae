// Menu groups: groups with their toolbars and buttons, loaded and unloaded; leaves out pull-down menus,
// shortcuts and pictures.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

struct ToolbarButton {
    std::wstring id;    ///< of its line; may be empty
    std::wstring name;  ///< what a person reads
    std::wstring macro; ///< what it types
};

struct Toolbar {
    std::wstring id; ///< of its line, else of its section
    std::wstring name;
    bool isVisible = false;
    std::vector<ToolbarButton> buttons{};
};

struct MenuGroup {
    std::wstring name;
    std::wstring file{};
    std::vector<std::shared_ptr<Toolbar>> toolbars{};
};

/// The menu groups of one host in the order of loading. Names are compared without regard to case.
class MenuGroups {
public:
    /// False for an empty name, or where one of that name is there.
    bool add(std::shared_ptr<MenuGroup> group);
    /// False where there is none.
    bool remove(std::wstring_view name);
    const MenuGroup* find(std::wstring_view name) const;
    const std::vector<std::shared_ptr<MenuGroup>>& all() const { return m_groups; }

private:
    std::vector<std::shared_ptr<MenuGroup>> m_groups;
};

} // namespace hostkit

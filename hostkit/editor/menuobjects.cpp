#include "menuobjects.h"

#include "host.h"
#include "menugroup.h"
#include "programobject.h"

namespace hostkit {
namespace {

// Each object knows its group or toolbar as long as that is loaded.

class ToolbarObject final : public ProgramObject<IHostToolbar, IID_IHostToolbar> {
public:
    ToolbarObject(std::shared_ptr<ProgramState> state, std::weak_ptr<Toolbar> toolbar)
        : ProgramObject(std::move(state))
        , m_toolbar(std::move(toolbar)) {}

    HRESULT get_Name(BSTR* name) override {
        if (!name) return E_POINTER;
        *name = nullptr;
        const auto toolbar = m_toolbar.lock();
        return toolbar ? handOutText(name, toolbar->name) : E_FAIL;
    }
    HRESULT get_Visible(VARIANT_BOOL* visible) override {
        if (!visible) return E_POINTER;
        const auto toolbar = m_toolbar.lock();
        if (!toolbar) return E_FAIL;
        *visible = toolbar->isVisible ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    HRESULT put_Visible(VARIANT_BOOL visible) override {
        const auto toolbar = m_toolbar.lock();
        if (!toolbar) return E_FAIL;
        toolbar->isVisible = visible != VARIANT_FALSE;
        return S_OK;
    }
    HRESULT get_Count(LONG* count) override {
        if (!count) return E_POINTER;
        const auto toolbar = m_toolbar.lock();
        if (!toolbar) return E_FAIL;
        *count = static_cast<LONG>(toolbar->buttons.size());
        return S_OK;
    }

private:
    ~ToolbarObject() override = default;
    std::weak_ptr<Toolbar> m_toolbar;
};

class ToolbarsObject final : public ProgramObject<IHostToolbars, IID_IHostToolbars> {
public:
    ToolbarsObject(std::shared_ptr<ProgramState> state, std::weak_ptr<MenuGroup> group)
        : ProgramObject(std::move(state))
        , m_group(std::move(group)) {}

    HRESULT get_Count(LONG* count) override {
        if (!count) return E_POINTER;
        const auto group = m_group.lock();
        if (!group) return E_FAIL;
        *count = static_cast<LONG>(group->toolbars.size());
        return S_OK;
    }
    HRESULT Item(LONG index, IHostToolbar** toolbar) override {
        if (!toolbar) return E_POINTER;
        *toolbar = nullptr;
        const auto group = m_group.lock();
        if (!group) return E_FAIL;
        if (index < 0 || static_cast<std::size_t>(index) >= group->toolbars.size()) return E_INVALIDARG;
        return handOut<ToolbarObject>(toolbar, state(), group->toolbars[static_cast<std::size_t>(index)]);
    }

private:
    ~ToolbarsObject() override = default;
    std::weak_ptr<MenuGroup> m_group;
};

class MenuGroupObject final : public ProgramObject<IHostMenuGroup, IID_IHostMenuGroup> {
public:
    MenuGroupObject(std::shared_ptr<ProgramState> state, std::weak_ptr<MenuGroup> group)
        : ProgramObject(std::move(state))
        , m_group(std::move(group)) {}

    HRESULT get_Name(BSTR* name) override {
        if (!name) return E_POINTER;
        *name = nullptr;
        const auto group = m_group.lock();
        return group ? handOutText(name, group->name) : E_FAIL;
    }
    HRESULT get_Toolbars(IHostToolbars** toolbars) override {
        if (!toolbars) return E_POINTER;
        *toolbars = nullptr;
        return m_group.expired() ? E_FAIL : handOut<ToolbarsObject>(toolbars, state(), m_group);
    }

private:
    ~MenuGroupObject() override = default;
    std::weak_ptr<MenuGroup> m_group;
};

class MenuGroupsObject final : public ProgramObject<IHostMenuGroups, IID_IHostMenuGroups> {
public:
    using ProgramObject::ProgramObject;

    HRESULT get_Count(LONG* count) override {
        if (!count) return E_POINTER;
        if (!host()) return E_FAIL;
        *count = static_cast<LONG>(host()->menuGroups().all().size());
        return S_OK;
    }
    HRESULT Item(LONG index, IHostMenuGroup** group) override {
        if (!group) return E_POINTER;
        *group = nullptr;
        if (!host()) return E_FAIL;
        const auto& all = host()->menuGroups().all();
        if (index < 0 || static_cast<std::size_t>(index) >= all.size()) return E_INVALIDARG;
        return handOut<MenuGroupObject>(group, state(), all[static_cast<std::size_t>(index)]);
    }

private:
    ~MenuGroupsObject() override = default;
};

} // namespace

HRESULT handOutMenuGroups(std::shared_ptr<ProgramState> state, IHostMenuGroups** groups) {
    return handOut<MenuGroupsObject>(groups, std::move(state));
}

} // namespace hostkit

#include "vexoacadsystemtools.h"

#include "cvxlogentry.h"
#include "tchar.h"
#include "vexoacadsystemtools_internal.h"
#include "vexoregistrytools.h"
#include "vexotools.h"
#include "vexouitools.h"

using namespace vexo;

namespace {

constexpr unsigned int damagedInstallationPrompt = 14013;

template <typename T>
bool isNamed(T* object, const CString& name) {
    BSTR text = nullptr;
    if (FAILED(object->get_Name(&text))) return false;
    const bool isSame = name.CompareNoCase(text) == 0;
    SysFreeString(text);
    return isSame;
}

// Walks a collection up to the first item of that name.
template <typename Collection, typename T>
bool findNamed(Collection* collection, const CString& name, Held<T>& found) {
    LONG count = 0;
    if (FAILED(collection->get_Count(&count))) return false;
    for (LONG i = 0; i < count; ++i) {
        Held<T> item;
        if (FAILED(collection->Item(i, item.receive())) || !item || !isNamed(item.get(), name)) continue;
        *found.receive() = item.detach();
        return true;
    }
    return false;
}

bool takeMenuGroup(const CString& name, Held<IHostMenuGroup>& group) {
    Held<IHostApplication> application;
    Held<IHostMenuGroups> groups;
    return takeApplication(application) && SUCCEEDED(application->get_MenuGroups(groups.receive())) &&
           groups && findNamed(groups.get(), name, group);
}

// As the host's file functions are given it.
bool supportPath(const CString& fileName, CString& path) {
    if (!VEXORegistryTools::GetOrdaneDataPath(path)) return false;
    path += L"\\Support\\";
    path += fileName;
    path.Replace(L'\\', L'/');
    _wcsupr(path.GetBuffer());
    path.ReleaseBuffer();
    return true;
}

// The second expression answers the prompt that follows the first.
bool queueLoading(const CString& path) {
    CString expression;
    expression.Format(L"(command \"_.CUILOAD\" \"%s\")", path);
    if (!canQueue(expression)) return false;
    ads_queueexpr(expression);
    ads_queueexpr(L"(command \" \n\")");
    return true;
}

bool queueUnloading(const CString& menuGroup) {
    CString expression;
    expression.Format(L"(command \"_.CUIUNLOAD\" \"%s\")", menuGroup);
    if (!canQueue(expression)) return false;
    ads_queueexpr(expression);
    return true;
}

} // namespace

int VEXOAcadSystemTools::loadMenu(CString menuGroup, CString fileName, CString, int load) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::loadMenu");
    const bool isLoaded = acedIsMenuGroupLoaded(menuGroup);
    if (isLoaded == (load != 0)) return 0;
    CString path;
    if (!supportPath(fileName, path)) {
        VEXOUITools::MessageBoxW(damagedInstallationPrompt, getModulePromptsProjectName(), MB_ICONSTOP);
        return 0;
    }
    return (load ? queueLoading(path) : queueUnloading(menuGroup)) ? 1 : 0;
}

bool VEXOAcadSystemTools::getOrdaneMenuGroup(IDispatch** group, const CString& menuGroupName) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getOrdaneMenuGroup");
    Held<IHostMenuGroup> found;
    if (!group || menuGroupName.IsEmpty() || !takeMenuGroup(menuGroupName, found)) return false;
    *group = found.detach();
    return true;
}

bool VEXOAcadSystemTools::ShowToolbar(CString toolbarName, bool visible, CString menuGroupName) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::ShowToolbar");
    if (toolbarName.IsEmpty() || menuGroupName.IsEmpty()) return false;
    Held<IHostMenuGroup> group;
    Held<IHostToolbars> toolbars;
    Held<IHostToolbar> toolbar;
    return takeMenuGroup(menuGroupName, group) && SUCCEEDED(group->get_Toolbars(toolbars.receive())) &&
           toolbars && findNamed(toolbars.get(), toolbarName, toolbar) &&
           SUCCEEDED(toolbar->put_Visible(visible ? VARIANT_TRUE : VARIANT_FALSE));
}

bool VEXOAcadSystemTools::enableStartupDialog(int enable) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::enableStartupDialog");
    Held<IHostApplication> application;
    Held<IHostPreferences> preferences;
    Held<IHostPreferencesSystem> page;
    VARIANT_BOOL earlier = VARIANT_FALSE;
    return takeApplication(application) && SUCCEEDED(application->get_Preferences(preferences.receive())) &&
           preferences && SUCCEEDED(preferences->get_System(page.receive())) && page &&
           SUCCEEDED(page->get_EnableStartupDialog(&earlier)) &&
           SUCCEEDED(page->put_EnableStartupDialog(enable ? VARIANT_TRUE : VARIANT_FALSE)) &&
           earlier != VARIANT_FALSE;
}

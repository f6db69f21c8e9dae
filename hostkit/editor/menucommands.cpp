#include "menucommands.h"

#include "aced.h"
#include "host.h"
#include "menufile.h"
#include "menugroup.h"
#include "modulecommand.h"
#include "outputfiles.h"
#include "systempath.h"

namespace hostkit {
namespace {

void loadMenu() {
    CString file;
    if (acedGetString(0, L"Menu file: ", file) != RTNORM) return;
    if (file.IsEmpty()) return failCommand(Acad::eInvalidInput, L"a menu file is needed");
    auto group = std::make_shared<MenuGroup>();
    std::wstring problem;
    const std::wstring path = pathFromSystem(findPath(file.GetString()));
    const Acad::ErrorStatus status = readMenuFile(path, *group, problem);
    if (status != Acad::eOk) return failCommand(status, problem);
    currentPort()->outputs().protect(path, OutputFiles::Role::input, L"a menu file that was loaded");
    const std::wstring name = group->name;
    const auto toolbars = static_cast<int>(group->toolbars.size());
    if (!Host::current()->menuGroups().add(std::move(group)))
        return failCommand(Acad::eDuplicateKey, L"the menu group " + name + L" is loaded already");
    acutPrintf(L"Menu group %s loaded, %d %s\n", name.c_str(), toolbars,
               toolbars == 1 ? L"toolbar" : L"toolbars");
}

void unloadMenu() {
    CString name;
    if (acedGetString(0, L"Menu group: ", name) != RTNORM) return;
    if (!Host::current()->menuGroups().remove(name.GetString()))
        return failCommand(Acad::eKeyNotFound,
                           L"no menu group " + std::wstring(name.GetString()) + L" is loaded");
    acutPrintf(L"Menu group %s unloaded\n", name.GetString());
}

} // namespace

void registerMenuCommands(AcEdCommandStack& stack) {
    constexpr Adesk::Int32 flags = ACRX_CMD_SESSION | ACRX_CMD_NO_UNDO_MARKER;
    stack.addCommand(L"HOST", L"CUILOAD", nullptr, flags, loadMenu);
    stack.addCommand(L"HOST", L"CUIUNLOAD", nullptr, flags, unloadMenu);
}

} // namespace hostkit

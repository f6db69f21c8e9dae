#include "moduletexts.h"

#include "afxdllx.h"

#include <algorithm>
#include <cwchar>
#include <dlfcn.h>
#include <filesystem>

namespace hostkit {
namespace {

using ProjectFunction = const wchar_t* (*)();
using TableFunction = const StringTable* (*)();

// A handle of null asks whatever the program has linked.
void* symbolOf(HINSTANCE instance, const char* name) {
    return dlsym(instance ? instance : RTLD_DEFAULT, name);
}

const wchar_t* projectOf(HINSTANCE instance) {
    const auto project = reinterpret_cast<ProjectFunction>(symbolOf(instance, "getModulePromptsProjectName"));
    return project ? project() : nullptr;
}

bool hasProject(HINSTANCE instance, const wchar_t* wanted) {
    const wchar_t* project = projectOf(instance);
    return project && std::wcscmp(project, wanted) == 0;
}

bool hasFileName(HINSTANCE instance, const wchar_t* wanted) {
    Dl_info where{};
    const void* symbol = symbolOf(instance, "acrxEntryPoint");
    if (!symbol || !dladdr(symbol, &where) || !where.dli_fname) return false;
    return std::filesystem::path(where.dli_fname).filename().wstring() == wanted;
}

} // namespace

const wchar_t* StringTable::find(unsigned id) const {
    const StringTableEntry* end = entries + count;
    const StringTableEntry* found = std::lower_bound(
        entries, end, id, [](const StringTableEntry& entry, unsigned key) { return entry.id < key; });
    return found != end && found->id == id ? found->text : nullptr;
}

const StringTable* stringTableOfModule(HINSTANCE instance) {
    const auto table = reinterpret_cast<TableFunction>(symbolOf(instance, "getModuleStringTable"));
    return table ? table() : nullptr;
}

const StringTable* stringTableOfProject(const wchar_t* project) {
    for (const CDynLinkLibrary* module = CDynLinkLibrary::first(); module; module = module->next())
        if (hasProject(module->m_hModule, project)) return stringTableOfModule(module->m_hModule);
    return hasProject(nullptr, project) ? stringTableOfModule(nullptr) : nullptr;
}

HINSTANCE inhouseModule() {
    // Loaded already, since this code runs; asking again only counts.
    static const HINSTANCE module = [] {
        Dl_info where{};
        const void* here = reinterpret_cast<const void*>(&inhouseModule);
        void* handle = dladdr(here, &where) ? dlopen(where.dli_fname, RTLD_LAZY | RTLD_NOLOAD) : nullptr;
        return static_cast<HINSTANCE>(handle);
    }();
    return module;
}

HINSTANCE attachedModule(const wchar_t* name) {
    for (const CDynLinkLibrary* module = CDynLinkLibrary::first(); module; module = module->next())
        if (hasProject(module->m_hModule, name) || hasFileName(module->m_hModule, name))
            return module->m_hModule;
    return std::wcscmp(name, L"Skeleton10-9") == 0 ? inhouseModule() : nullptr;
}

} // namespace hostkit

#include "dialogtemplate.h"

#include "afxdllx.h"

#include <dlfcn.h>

namespace {

// The host's one thread sets it and sets it back.
HINSTANCE resourceModule = nullptr;

const hostkit::DialogTemplate* templateIn(HINSTANCE module, unsigned id) {
    using TableFunction = const hostkit::DialogTable* (*)();
    const auto function =
        reinterpret_cast<TableFunction>(hostkit::moduleFunction(module, "getModuleDialogTable"));
    const hostkit::DialogTable* table = function ? function() : nullptr;
    for (std::size_t i = 0; table && i < table->count; ++i)
        if (table->templates[i].id == id) return &table->templates[i];
    return nullptr;
}

} // namespace

namespace hostkit {

void* moduleFunction(HINSTANCE module, const char* name) {
    return dlsym(module ? static_cast<void*>(module) : RTLD_DEFAULT, name);
}

const DialogTemplate* findDialogTemplate(unsigned id) {
    if (const DialogTemplate* found = resourceModule ? templateIn(resourceModule, id) : nullptr) return found;
    for (const CDynLinkLibrary* module = CDynLinkLibrary::first(); module; module = module->next())
        if (const DialogTemplate* found = templateIn(module->m_hResource, id)) return found;
    return templateIn(nullptr, id);
}

} // namespace hostkit

HINSTANCE AfxGetResourceHandle() { return resourceModule; }
void AfxSetResourceHandle(HINSTANCE module) { resourceModule = module; }

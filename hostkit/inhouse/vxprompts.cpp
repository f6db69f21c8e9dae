#include "vxprompts.h"

#include "cvxtoolsresoverride.h"
#include "moduletexts.h"

int VxPrompts::getPrompt(CString& out, unsigned int id, const wchar_t* project, unsigned int /*language*/) {
    const hostkit::StringTable* table = nullptr;
    if (project)
        table = hostkit::stringTableOfProject(project);
    else if (HINSTANCE module = CVxToolsResOverride::current())
        table = hostkit::stringTableOfModule(module);
    const wchar_t* text = table ? table->find(id) : nullptr;
    if (!text) return 0;
    out = text;
    return 1;
}

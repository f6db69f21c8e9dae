#include "vxprompts.h"

#include "afxwin.h"
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

int VxPrompts::setDialogPrompts(CWnd& dialog, unsigned int templateId, const wchar_t* project) {
    const hostkit::DialogTemplate* description = hostkit::findDialogTemplate(templateId);
    if (!description) return 0;
    CString text;
    if (description->prompt && getPrompt(text, description->prompt, project)) dialog.SetWindowTextW(text);
    for (std::size_t i = 0; i < description->count; ++i) {
        const hostkit::DialogItem& item = description->items[i];
        if (item.prompt && getPrompt(text, item.prompt, project)) dialog.SetDlgItemTextW(item.id, text);
    }
    return 1;
}

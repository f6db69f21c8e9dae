// Stand-in for the host's dialog resources. Covers templates that a module exports as tables; leaves out texts within them.
#pragma once

#include "windowstypes.h"

#include <cstddef>

namespace hostkit {

/// A control of a template. Places are in dialog units: a quarter of the font's average width, an eighth of
/// its height. `prompt` is the number of its text in the module's string table, 0 for none.
struct DialogItem {
    const wchar_t* windowClass;
    int id;
    DWORD style; ///< WS_CHILD and WS_VISIBLE are added
    short x;
    short y;
    short width;
    short height;
    unsigned prompt;
};

/// Caption and texts are prompts, which VxPrompts::setDialogPrompts fills in.
struct DialogTemplate {
    unsigned id;
    DWORD style; ///< WS_POPUP, WS_CAPTION and WS_SYSMENU are added, but to a WS_CHILD
    short width;
    short height;
    unsigned prompt;
    const DialogItem* items;
    std::size_t count;
};

/// A module with dialogs exports, undecorated: const hostkit::DialogTable* getModuleDialogTable();
struct DialogTable {
    const DialogTemplate* templates;
    std::size_t count;
};

/// In the module where resources are looked up, then in those of the chain, the newest first, then in what
/// the program links. Null when none has it.
const DialogTemplate* findDialogTemplate(unsigned id);

/// The function of that name in a module, or in what the program has linked for a null module.
void* moduleFunction(HINSTANCE module, const char* name);

} // namespace hostkit

/// The module in which resources are looked up first; null when none was set.
HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE module);

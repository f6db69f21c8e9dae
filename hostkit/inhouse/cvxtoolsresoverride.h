// Stand-in for the host's in-house resource scope. Covers the module in which unnamed look-ups of texts, dialog templates and icons are made; leaves out languages.
#pragma once

#include "afx.h"
#include "windows.h"

/// While it lives, look-ups of texts that name no project, of dialog templates and of icons go to the given
/// module (AfxGetResourceHandle). Scopes nest; the innermost counts.
class CVxToolsResOverride {
public:
    /// A null instance leaves the surrounding scope in force.
    explicit CVxToolsResOverride(HINSTANCE instance);
    /// By prompts project name or by module file name; an unknown name leaves the surrounding scope in force.
    explicit CVxToolsResOverride(const CString& moduleName);
    virtual ~CVxToolsResOverride();
    CVxToolsResOverride(const CVxToolsResOverride&) = delete;
    CVxToolsResOverride& operator=(const CVxToolsResOverride&) = delete;

    /// The module of the innermost scope, or null outside any.
    static HINSTANCE current();

private:
    HINSTANCE m_earlier;
};

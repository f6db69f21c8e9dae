// Stand-in for the host's in-house resource scope. Covers the module in which unnamed look-ups are made; leaves out dialog templates and icons.
#pragma once

#include "afx.h"
#include "windows.h"

/// While it lives, look-ups of texts that name no project go to the given module. Scopes nest; the innermost
/// counts.
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

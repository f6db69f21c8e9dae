// Stand-in for the host's in-house prompt access. Covers texts by number and project; leaves out the other languages.
#pragma once

#include "afx.h"

class CWnd;

class VxPrompts {
public:
    /// The text with that number in the table of the module whose prompts project has that name (compared
    /// exactly). Modules that are attached are asked first, the newest first, then those that the program
    /// itself links. A null project asks the module of the innermost CVxToolsResOverride. `language` is read
    /// by no one yet: each module brings one language. Returns 1, or 0 with `out` as it was.
    static int getPrompt(CString& out, unsigned int id, const wchar_t* project, unsigned int language = 0);
    /// Gives a dialog and its controls the texts that its template names. Returns 1, or 0 when there is no
    /// such template. A text that the project does not have leaves its control as it was.
    static int setDialogPrompts(CWnd& dialog, unsigned int templateId, const wchar_t* project);
};

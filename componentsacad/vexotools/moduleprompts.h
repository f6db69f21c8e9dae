#pragma once

#include "afx.h"
#include "vexotools.h"
#include "vxprompts.h"

namespace vexo {

/// The library's own text of that id; empty for an unknown one.
inline CString promptText(unsigned int id) {
    CString text;
    VxPrompts::getPrompt(text, id, getModulePromptsProjectName(), 0);
    return text;
}

} // namespace vexo

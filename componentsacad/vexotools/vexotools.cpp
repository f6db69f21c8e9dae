#include "vexotools.h"

extern "C" const wchar_t* getModulePromptsProjectName() { return L"VEXOTOOLS"; }

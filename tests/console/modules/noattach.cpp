#include "rxdefs.h"
#include "windows.h"

extern "C" BOOL DllMain(HINSTANCE, DWORD, void*) { return FALSE; }
extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode, void*) { return AcRx::kRetOK; }

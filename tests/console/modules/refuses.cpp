#include "rxdefs.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode, void*) { return AcRx::kRetError; }

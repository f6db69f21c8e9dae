// Would tell that it was here, if any of it ran.
#include "rxdefs.h"

#include <cstdio>

namespace {
struct Herald {
    Herald() { std::puts("code of another version ran"); }
} herald;
} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode, void*) { return AcRx::kRetOK; }

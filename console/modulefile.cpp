#include "modulefile.h"

#include "systempath.h"

#include <dlfcn.h>

std::wstring moduleFileOf(AcRxFunctionPtr function) {
    Dl_info info{};
    const bool isFound = dladdr(reinterpret_cast<void*>(function), &info) != 0 && info.dli_fname;
    return isFound ? hostkit::pathFromSystem(info.dli_fname) : std::wstring();
}

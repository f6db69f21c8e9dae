#include "databasecontents.h"

namespace hostkit {

AcDbHandleValue DatabaseContents::freeHandle() {
    if (nextHandle != 0) return nextHandle;
    AcDbHandleValue candidate = 1;
    while (handles.find(candidate)) ++candidate;
    return candidate;
}

AcDbStub* DatabaseContents::makeStub(AcDbHandleValue handle) {
    if (handle == 0) handle = freeHandle();
    AcDbStub* stub = stubs.make();
    stub->handle = handle;
    handles.insert(stub);
    if (nextHandle != 0 && handle >= nextHandle) nextHandle = handle + 1;
    return stub;
}

} // namespace hostkit

#include "databasecontents.h"

namespace hostkit {

AcDbHandleValue DatabaseContents::freeHandle() {
    if (nextHandle <= highestCounted) return nextHandle;
    while (handles.find(m_lowestFree)) ++m_lowestFree;
    return m_lowestFree;
}

AcDbStub* DatabaseContents::makeStub(AcDbHandleValue handle) {
    if (handle == 0) handle = freeHandle();
    AcDbStub* stub = stubs.make();
    stub->handle = handle;
    handles.insert(stub);
    if (handle >= nextHandle && handle <= highestCounted) nextHandle = handle + 1;
    return stub;
}

} // namespace hostkit

#include "documentselection.h"

#include "acdocman.h"

namespace hostkit {

AcApDocument* currentDocument() {
    const AcApDocManager* documents = acDocManagerPtr();
    return documents ? documents->curDocument() : nullptr;
}

} // namespace hostkit

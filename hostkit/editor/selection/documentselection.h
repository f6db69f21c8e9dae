// What a document remembers of selections: the implied and the previous one, and its switches; leaves out the
// sets that callers hold.
#pragma once

#include "acedinpt.h"
#include "dbid.h"

#include <vector>

class AcApDocument;

namespace hostkit {

struct DocumentSelection {
    std::vector<AcDbObjectId> implied{};
    std::vector<AcDbObjectId> previous{};
    bool allowsDuplicates = false;
    AcEdInputPointManager inputPoints{};
};

/// Of the current host; null where there is none.
AcApDocument* currentDocument();

} // namespace hostkit

// Stand-in for the host's inside of a drawing. Covers stubs, handles, tables, header and source; leaves out the operations on them, which are AcDbDatabase's and DatabaseAccess'.
#pragma once

#include "actrans.h"
#include "changelog.h"
#include "dbaccess.h"
#include "handletable.h"
#include "headervariables.h"
#include "stubpool.h"

#include <array>
#include <memory>
#include <string>

namespace hostkit {

struct DatabaseContents {
    explicit DatabaseContents(AcDbDatabase& database)
        : stubs(&database)
        , changes(database)
        , transactions(database)
        , header(&changes) {}

    StubPool stubs;
    HandleTable handles;
    /// Above every handle in use; 0 once the largest was given, and then free ones are looked for from 1 on.
    Adesk::UInt64 nextHandle = 1;
    std::array<AcDbObjectId, tableCount> tables;
    AcDbObjectId namedObjectsDictionary;
    ChangeLog changes;
    AcTransactionManager transactions; ///< of the document too, where there is one
    HeaderVariables header;
    std::shared_ptr<const DrawingSource> source;
    std::wstring fileName;

    /// A stub for a handle that has none; 0 for the next free one.
    AcDbStub* makeStub(AcDbHandleValue handle);

private:
    AcDbHandleValue freeHandle();
};

} // namespace hostkit

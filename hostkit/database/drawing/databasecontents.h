// Inside of a drawing: stubs, handles, tables, header and source; leaves out the operations on them, which
// are AcDbDatabase's and DatabaseAccess'.
#pragma once

#include "actrans.h"
#include "blockusers.h"
#include "changelog.h"
#include "dbaccess.h"
#include "displaychanges.h"
#include "handletable.h"
#include "headervariables.h"
#include "ownedobjects.h"
#include "pickindex.h"
#include "stubpool.h"

#include <array>
#include <memory>
#include <string>

namespace hostkit {

struct DatabaseContents {
    explicit DatabaseContents(AcDbDatabase& database)
        : stubs(&database)
        , changes(database, display)
        , transactions(database)
        , header(&changes) {}

    StubPool stubs;
    HandleTable handles;
    /// Handles above it do not count: a drawing file that names one would leave no room for new objects.
    static constexpr AcDbHandleValue highestCounted = 0xFFFFFFFEFFFFFFFF;
    /// Above every handle in use that counts, so at most one more than the highest of them.
    AcDbHandleValue nextHandle = 1;
    std::array<AcDbObjectId, tableCount> tables;
    AcDbObjectId namedObjectsDictionary;
    DisplayChanges display; ///< told by the memory of changes
    ChangeLog changes;
    AcTransactionManager transactions; ///< of the document too, where there is one
    HeaderVariables header;
    std::shared_ptr<const DrawingSource> source;
    std::wstring fileName;
    OwnedObjects ownedObjects;
    BlockUsers blockUsers;
    std::unique_ptr<PickIndex> picking; ///< made by the first question

    /// A stub for a handle that has none; 0 for the next free one.
    AcDbStub* makeStub(AcDbHandleValue handle);

private:
    AcDbHandleValue freeHandle();

    /// No handle below is free. Handles are never given back.
    AcDbHandleValue m_lowestFree = 1;
};

} // namespace hostkit

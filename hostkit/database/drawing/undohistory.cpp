#include "undohistory.h"

#include "changelog.h"
#include "dbaccess.h"

namespace hostkit {

void beginUndoGroup(AcDbDatabase& database, std::wstring_view name) {
    DatabaseAccess::changes(database).beginGroup(name);
}

void endUndoGroup(AcDbDatabase& database) { DatabaseAccess::changes(database).endGroup(); }

int undoGroupCount(const AcDbDatabase& database) {
    return static_cast<int>(DatabaseAccess::changes(const_cast<AcDbDatabase&>(database)).groupCount());
}

Acad::ErrorStatus undoLastGroup(AcDbDatabase& database, UndoReport& report) {
    return DatabaseAccess::changes(database).undo(report);
}

} // namespace hostkit

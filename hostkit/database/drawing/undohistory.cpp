#include "undohistory.h"

#include "changelog.h"
#include "dbaccess.h"

namespace hostkit {

void beginUndoGroup(AcDbDatabase& database, std::wstring_view name) {
    DatabaseAccess::changes(database).beginGroup(name);
}

void endUndoGroup(AcDbDatabase& database) { DatabaseAccess::changes(database).endGroup(); }

namespace {
const ChangeLog& changesOf(const AcDbDatabase& database) {
    return DatabaseAccess::changes(const_cast<AcDbDatabase&>(database));
}
} // namespace

int undoGroupCount(const AcDbDatabase& database) {
    return static_cast<int>(changesOf(database).groupCount());
}

Acad::ErrorStatus undoLastGroup(AcDbDatabase& database, UndoReport& report) {
    return DatabaseAccess::changes(database).undo(report);
}

Acad::ErrorStatus redoLastGroup(AcDbDatabase& database, UndoReport& report) {
    return DatabaseAccess::changes(database).redo(report);
}

int redoGroupCount(const AcDbDatabase& database) { return static_cast<int>(changesOf(database).redoCount()); }

void noteSaved(AcDbDatabase& database) { DatabaseAccess::changes(database).noteSaved(); }

bool hasUnsavedChanges(const AcDbDatabase& database) { return changesOf(database).hasUnsavedChanges(); }

} // namespace hostkit

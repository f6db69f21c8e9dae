// Undo of a drawing's last steps: groups, taking back the latest and doing it again; leaves out marks with
// names.
#pragma once

#include "undoreport.h"

#include "acadstrc.h"

#include <string_view>

class AcDbDatabase;

namespace hostkit {

/// What is changed until the end of the group is one step. Groups in a group belong to the outer one. A step
/// in which nothing was changed is none.
void beginUndoGroup(AcDbDatabase& database, std::wstring_view name);
void endUndoGroup(AcDbDatabase& database);
/// Steps that can be taken back, one that is not ended yet included.
int undoGroupCount(const AcDbDatabase& database);

/// Takes back the latest step, whole: values, erasures, what came in, entries of tables and dictionaries,
/// header variables, and whether an object's record in its file still holds. What was done while recording
/// was off stays. eUndoOperationNotAvailable: there is no step, one is not ended yet, or a transaction is
/// active.
Acad::ErrorStatus undoLastGroup(AcDbDatabase& database, UndoReport& report);

/// Does the step again that was taken back last: the drawing is, to its ids, what it was before. Any change
/// forgets such steps, and a step that was not taken back whole is none. eUndoOperationNotAvailable: there is
/// none, a step is not ended yet, or a transaction is active.
Acad::ErrorStatus redoLastGroup(AcDbDatabase& database, UndoReport& report);
/// Steps that can be done again.
int redoGroupCount(const AcDbDatabase& database);

/// What the drawing holds now is saved. A drawing begins so.
void noteSaved(AcDbDatabase& database);
/// The drawing holds something else than when it was saved last. Steps that were taken back whole do not
/// count. A drawing that never recorded undo tells only of changes since noteSaved that it remembers.
bool hasUnsavedChanges(const AcDbDatabase& database);

} // namespace hostkit

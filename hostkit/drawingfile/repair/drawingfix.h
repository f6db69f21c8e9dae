// Repair of an open drawing: what the check finds in its text, put right in its objects; leaves out drawings
// that cannot be opened, which is drawingrecovery.h.
#pragma once

#include "drawingrepair.h"

#include "acadstrc.h"

class AcDbDatabase;

namespace hostkit {

/// Every fault that auditDrawing finds, repaired as repairDrawingText does it: objects keep their ids and get
/// what their repaired records say, those whose records go are erased, new ones (applications, blocks, ends
/// of sequences, what the drawing was given by its reader where that is asked for) come in. From then on the
/// repaired text is what the drawing was read from, so that a save writes it. All of it is told to the memory
/// of changes: undo gives the drawing back that was, to the byte of its text.
///
/// Nothing is changed, and the report is empty, for a drawing without a fault. eWasOpenForRead: an object is
/// open in any way; eLockViolation: nobody holds a lock for writing; eNotApplicable: records have no handles,
/// so that nobody can tell which object a repaired one is (a drawing of the R12 form: saved in a later one it
/// has them); eNotImplementedYet: a binary drawing, which is repaired as the text that it is saved as; the
/// status of the writing where the drawing cannot be saved. Nothing is changed then.
Acad::ErrorStatus fixDrawing(AcDbDatabase& database, RepairReport& report);

} // namespace hostkit

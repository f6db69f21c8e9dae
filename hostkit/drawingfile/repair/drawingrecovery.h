// Recovery of a damaged drawing file: its text repaired, read, and completed with what every drawing has;
// leaves out binary drawings.
#pragma once

#include "drawingrepair.h"

#include "acadstrc.h"

#include <memory>
#include <string>
#include <string_view>

class AcDbDatabase;

namespace hostkit {

struct RecoveryReport {
    RepairReport repairs;
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring message; ///< of a failure: "file: reason"
};

/// What of the bytes of a drawing is a drawing: auditDrawing finds no fault in it, unless a note tells of
/// what is left. Tables, standing records, spaces, layouts and dictionaries that it lacks come into its text.
/// What it was read from is the repaired text, not the damaged one. Null, with status and message, where
/// nothing of a drawing is there (eDwgObjectImproperlyRead), for binary drawings (eNotApplicable) and
/// without memory. `name` stands in the message.
std::unique_ptr<AcDbDatabase> recoverDrawing(std::string_view bytes, std::wstring_view name,
                                             RecoveryReport& report);

} // namespace hostkit

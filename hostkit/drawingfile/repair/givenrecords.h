// What a reader gave a drawing whose file lacked it; leaves out what it gives.
#pragma once

class AcDbDatabase;

namespace hostkit {

/// What the drawing was given comes into its file with the next save: it counts as changed. Nothing for R12,
/// which does without. Gives whether there was anything. No memory of changes is told.
bool takeGiven(AcDbDatabase& database);

} // namespace hostkit

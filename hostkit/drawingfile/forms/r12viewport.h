// Sheet viewports in the R12 form: the view as extended data; leaves out its user system and what later forms
// added.
#pragma once

#include "drawingrecord.h"
#include "groupformat.h"

#include <string>

class AcDbDatabase;

namespace hostkit {

/// R12 keeps what a viewport of a sheet shows as extended data of the application ACAD, in a fixed order;
/// later forms in groups. Appends that data for a record of a later form; nothing where the record has it.
void appendViewOfR12(const DrawingRecord& viewport, const AcDbDatabase& database, const DrawingStyle& style,
                     std::string& bytes);

/// The reverse: the groups of later forms from the data of a record of R12; nothing where it has none. Frozen
/// layers stay in the data.
void appendViewFromR12(const DrawingRecord& viewport, const DrawingStyle& style, std::string& bytes);

} // namespace hostkit

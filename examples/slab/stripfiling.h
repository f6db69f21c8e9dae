#pragma once

#include "acadstrc.h"
#include "dbid.h"

#include <string>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

// What runs leave in the drawing beside their strips, so that a later run, at once or after a save,
// finds and replaces them. Strips carry their number (a long) and their area (a double) as extended data of
// the application, numbers drawn in strips the number alone. The service dictionary "VEXO_SLABSTRIPS" holds a
// record a layer of strips, with references to all that the last run made on it. A drawing that was read in
// the R12 form has no place for the record: there the marked entities of a layer are its run.

/// Makes the working drawing ready to take the marks. A drawing that refuses is told of once, before anything
/// is drawn.
Acad::ErrorStatus registerMarks();

/// Writes the number, and the area unless it is null, on an entity that is open for write. False when the
/// drawing does not take them.
bool markStrip(AcDbEntity& entity, int number, const double* area);

/// The layers that runs have put their strips on.
std::vector<std::wstring> filedStripLayers(AcDbDatabase& database);

/// What the last run made on that layer and is still there with its mark.
std::vector<AcDbObjectId> filedStrips(AcDbDatabase& database, const std::wstring& layer);

/// Takes these in place of what was filed for that layer.
Acad::ErrorStatus fileStrips(AcDbDatabase& database, const std::wstring& layer,
                             const std::vector<AcDbObjectId>& made);

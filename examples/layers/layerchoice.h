// Which layers a command is for, and how it speaks of them.
#pragma once

#include "acadstrc.h"
#include "acarray.h"
#include "cstring.h"
#include "dbid.h"

class AcDbDatabase;

/// The drawing that commands work on; null, and the command has failed, without one.
AcDbDatabase* drawingOrFail();
/// Asks for layers: names or patterns of names ("WALL*") with commas between, in any case. Each must find
/// one. False, and the command has failed with the reason, otherwise.
[[nodiscard]] bool readLayers(AcDbObjectIdArray& layers);

CString nameOf(AcDbObjectId layer);
/// The names in quotation marks, with commas between.
CString namesOf(const AcDbObjectIdArray& layers);
/// "1 layer", "2 layers", "1 entity", "2 entities".
CString countedLayers(int count);
CString countedEntities(long count);

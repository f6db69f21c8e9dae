#pragma once

#include "sketch.h"

#include "acarray.h"
#include "afx.h"
#include "dbid.h"

/// The sketches of the working drawing: a dictionary of their own below the drawing's, by name without regard
/// to case.

struct NamedSketch {
    CString name;
    AcDbObjectId id;
};
/// In the order in which they came. What is not understood, since it was damaged, is left out.
std::vector<NamedSketch> allSketches();
/// Null where there is none of that name, and the command has failed then.
AcDbObjectId findSketch(const CString& name);
/// The sketch of that name, a new one where there is none; null, and the command has failed, where none can
/// be.
AcDbObjectId findOrMakeSketch(const CString& name);

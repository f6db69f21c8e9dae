#pragma once

#include "acarray.h"
#include "cstring.h"
#include "dbid.h"

/// The settings of a repartition: records of the drawing by name, and numbers.
struct Settings {
    CString textStyle;
    CString lineType;
    CString dimensionStyle;
    double cover = 0.03; ///< drawing units
    double width = 2.4;
    int justification = 0;
};

/// What is current in the drawing, with the numbers as they were set last.
Settings currentSettings();
/// Makes the records current in the drawing and keeps the numbers until the module leaves. What the drawing
/// lacks stays as it is, and is told.
void applySettings(const Settings& settings);

/// The records of the table of that name (STYLE, LTYPE, DIMSTYLE), in its order.
AcDbObjectIdArray recordsOf(const wchar_t* table);
/// Empty where it cannot be opened.
CString nameOf(AcDbObjectId record);

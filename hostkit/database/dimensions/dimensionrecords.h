// Variables of dimensions that go from one drawing to another; leaves out those that are no records.
#pragma once

#include "dimensionvariables.h"

#include "acadstrc.h"

class AcDbDatabase;

namespace hostkit {

/// Arrows, text style and linetypes of another drawing become the records of this one that have their names;
/// a standing arrow is made where it is missing. eKeyNotFound: no record has the name, and the variables stay
/// as they were.
Acad::ErrorStatus takeIntoDrawing(AcDbDatabase& drawing, DimensionVariables& variables);

} // namespace hostkit

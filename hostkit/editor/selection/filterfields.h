// Conditions on what every entity has, read off its fields: type, handle, layer, linetype, look, space,
// sheet, extended data; leaves out groups that a class files.
#pragma once

#include "filtercondition.h"
#include "filtervalue.h"

class AcDbDatabase;

namespace hostkit {

/// For the codes 0, 5, 6, 8, 48, 60, 62, 67, 370 and 410 with a test of the code's kind; null for others, and
/// the test is as it was. What the drawing's tables name is looked up now.
ConditionPointer fieldCondition(short code, ValueTest& test, const AcDbDatabase& database);
/// The entity has extended data of an application of such a name.
ConditionPointer applicationCondition(WildcardPattern name);

} // namespace hostkit

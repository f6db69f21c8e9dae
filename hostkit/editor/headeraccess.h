// Way from system variables to a drawing's header: types by the group, and names of records; leaves out
// angles in other units.
#pragma once

#include "systemvariables.h"

class AcDbDatabase;

namespace hostkit {

/// The variable's first group as a value. False where the header has none of that name.
bool readHeader(const AcDbDatabase& database, std::wstring_view name, SystemValue& value);
/// A value of the right type. The code is that of a variable that the header does not have yet.
/// VariableResult::outOfRange for the name of a record that is not there.
VariableResult writeHeader(AcDbDatabase& database, std::wstring_view name, const SystemValue& value,
                           short code);
/// What a variable that names a record names: "layer", "linetype" and so on; null for any other variable.
const wchar_t* namedRecord(std::wstring_view variable);
/// True for one that holds a handle.
bool isHandleVariable(const AcDbDatabase& database, std::wstring_view name);

} // namespace hostkit

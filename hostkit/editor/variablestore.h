// Stored settings: values of system variables as texts, in the user's hive of the registry; leaves out
// profiles.
#pragma once

#include "systemvariables.h"

namespace hostkit {

/// The value that is kept for that variable, in the type that `value` has. False, with the value untouched,
/// where there is none, or none of that type, or the product has no key.
bool loadSetting(const std::wstring& name, SystemValue& value);
/// Below the key "Variables" of the product's key, in the user's hive. False where that cannot be done.
bool storeSetting(const std::wstring& name, const SystemValue& value);

} // namespace hostkit

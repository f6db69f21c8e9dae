#pragma once

#include "windows.h"

namespace vexo {

/// The instance that resource scopes of this library are opened on; null before attach and after detach.
HINSTANCE moduleInstance();

} // namespace vexo

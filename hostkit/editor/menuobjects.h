// Menu groups for programs: making the object that hands them out; leaves out what the interfaces tell.
#pragma once

#include "hostapplication.h"

#include <memory>

namespace hostkit {

struct ProgramState;

/// The object behind IHostMenuGroups.
HRESULT handOutMenuGroups(std::shared_ptr<ProgramState> state, IHostMenuGroups** groups);

} // namespace hostkit

// Threads for work that can be spread: how many it may take; leaves out making them.
#pragma once

namespace hostkit {

/// As many as the machine runs at a time, at least 1. Always 1 once the process works alone.
unsigned workersOfMachine();

/// From now on work stays on its thread, for good: a failing process can trust no other one.
void workAlone();

} // namespace hostkit

// The host's own commands: MSPACE and PSPACE; leaves out drawing and editing.
#pragma once

class AcEdCommandStack;

namespace hostkit {

/// Registers, in the group HOST, the commands that every host has: PSPACE makes the sheet itself current,
/// MSPACE the model as the sheet's viewport shows it. Both fail in model space.
void registerSpaceCommands(AcEdCommandStack& stack);

} // namespace hostkit

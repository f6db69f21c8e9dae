// Menu commands: CUILOAD and CUIUNLOAD; leaves out the dialog that edits menus.
#pragma once

class AcEdCommandStack;

namespace hostkit {

/// Registers, in the group HOST: CUILOAD FILE loads a menu file (menufile.h), looked up by findPath;
/// CUIUNLOAD GROUP takes a group away again. What fails is a failure of the command, and leaves the groups as
/// they were.
void registerMenuCommands(AcEdCommandStack& stack);

} // namespace hostkit

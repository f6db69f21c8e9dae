#pragma once

/// The command HELP.
void helpCommand();

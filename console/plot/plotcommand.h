#pragma once

/// The console's command PLOT FILE.svg [WIDTH HEIGHT].
void plotCommand();

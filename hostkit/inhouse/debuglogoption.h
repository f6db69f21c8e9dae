// Stand-in for the host's in-house tracer. Covers the diagnostic switch; leaves out its output.
#pragma once

/// Bit 0 marks a diagnostic run. Tools read it in their failure branches and act the same either way; a
/// diagnostic build would report there.
extern int DebugLogOption;

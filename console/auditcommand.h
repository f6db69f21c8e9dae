#pragma once

/// The console's command AUDIT [OF DRAWING] [TABLE | JSON [FILE]]. It fails where the drawing has faults.
void auditCommand();

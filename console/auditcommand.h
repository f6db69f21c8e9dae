#pragma once

/// The console's command AUDIT [TABLE | JSON [FILE]]. It fails where the drawing has faults.
void auditCommand();

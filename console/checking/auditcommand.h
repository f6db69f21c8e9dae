#pragma once

/// The console's command AUDIT [OF FILE | FIX] [TABLE | JSON [FILE [OVERWRITE]]]. It fails where the drawing
/// has faults, with FIX where some are left.
void auditCommand();

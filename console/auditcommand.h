#pragma once

/// The console's command AUDIT [OF FILE] [TABLE | JSON [FILE [OVERWRITE]]]. It fails where the drawing has
/// faults.
void auditCommand();

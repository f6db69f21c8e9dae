#pragma once

/// SETVAR: shows a system variable, sets it, or lists all with their types and where they are kept.
void setVariableCommand();
/// VERSION: the host's version, the interface that modules are built against, and the product's key.
void versionCommand();

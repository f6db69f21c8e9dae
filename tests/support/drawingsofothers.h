// Where drawings stand that others made.
#pragma once

#include <cstdlib>
#include <filesystem>

/// Where VEXO_DRAWINGS says, or beside the tree; it need not be there.
inline std::filesystem::path drawingsOfOthers() {
    const char* const given = std::getenv("VEXO_DRAWINGS");
    return given ? given : VEXO_SOURCE_DIR "/../shared/drawings";
}

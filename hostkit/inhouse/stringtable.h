// String resources: a table of texts that a module exports; leaves out other languages.
#pragma once

#include <cstddef>

namespace hostkit {

struct StringTableEntry {
    unsigned id;
    const wchar_t* text;
};

/// A module's table in ascending order of ids.
struct StringTable {
    const StringTableEntry* entries;
    std::size_t count;

    /// The text, which lives as long as its module, or null.
    const wchar_t* find(unsigned id) const;
};

} // namespace hostkit

/// A module with texts exports these two, undecorated:
///   const wchar_t* getModulePromptsProjectName();           the name under which its texts are asked for
///   const hostkit::StringTable* getModuleStringTable();     the texts

#pragma once

#include "groupblock.h"

#include <string>
#include <vector>

/// A key with its value, as the library's typed store files them in the extended data of one application.
struct StoredEntry {
    std::wstring key; ///< empty where values stand without one
    /// "int", "long", "double", "point", "string", "long array", "flag"; "other" for values of other
    /// programs.
    const wchar_t* kind = L"";
    std::vector<resbuf*> values; ///< in the list that was given
};

/// What stands in one application's records, the application's name left out. The records do not say what
/// they mean: a text behind a text is taken as its value where no other value follows it, and a 1071 as a
/// count where just that many 1071 follow. The entries look into the list and are good as long as it is.
std::vector<StoredEntry> storedEntries(resbuf* list);

/// A value as text; a point in parentheses.
std::wstring valueText(const resbuf& record);

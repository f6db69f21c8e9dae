// Knowledge of what each drawing form has: the first forms of records, groups and header variables; leaves
// out their meaning.
#pragma once

#include "drawingversion.h"

#include <string_view>

namespace hostkit {

// A record or group that a file of an older form holds all the same has a place in that form and in all later
// ones, whatever these tables say: who asks compares with the file's own form too.
//
// A group that no table names is taken to be as old as its record, and stays: of unknown meaning it is more
// likely harmless to a reader than idle to its writer. The R12 form is the exception. Its records are few and
// known to the last group, and its readers refuse what they do not know; what it has is told by a list.

/// The first form with records of that name; R12 for names that are not tabled.
DrawingVersion firstFormOfKind(std::string_view name);
/// Of a group in the part of a record that this subclass mark opens (for the record of a class the name
/// "CLASS").
DrawingVersion firstFormOfGroup(std::string_view subclass, int code);
/// Whether a part under that mark has groups that came after that form.
bool hasLaterGroups(std::string_view subclass, DrawingVersion than);
/// Of a header variable by its name without the leading $.
DrawingVersion firstFormOfVariable(std::string_view name);

/// Whether R12 has records of that name in its tables, blocks and entities.
bool isKindOfR12(std::string_view name);
/// Whether the record has that group in R12; extended data is the same in every form.
bool isGroupOfR12(std::string_view kind, int code);
bool isVariableOfR12(std::string_view name);

/// An object that every drawing of the later forms gets, used or not: nobody misses it where it is left out.
bool isStandingKind(std::string_view name);

/// A kind whose body stands in a section of its own from 2013 on, and in the record's groups before.
bool isModelerKind(std::string_view name);

} // namespace hostkit

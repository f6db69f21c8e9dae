// Repair of a record by itself: its groups put where the rules of its kind want them, with values that they
// can have; leaves out what other records say.
#pragma once

#include "salvagedtext.h"

namespace hostkit {

/// What the drawing says that its records are read by.
struct RepairForm {
    bool hasMarks = true; ///< class marks, and a handle for each object
    bool hasOwners = true;
    bool hasHandles = true; ///< new records get one
};

/// Puts the groups of a record right:
/// - the head (handle, application groups, owner) before the class marks, and these as the kind has them;
/// - each group in a part that has a place for it, once where it may stand once; what has no place goes, so
///   do values that are none and points without a coordinate;
/// - what a kind cannot be without has a neutral value where there is one (layer 0, an empty text, 0);
/// - values within their limits: no radius below nought, no colour that is none;
/// - extended data with known codes, balanced braces and texts of a length that they can have.
/// Groups of kinds without rules only have to be groups. False where the record would say something that
/// nobody wrote, or nothing: a point or a size is missing.
bool repairGroups(const SalvagedRecord& record, const RepairForm& form, SalvagedGroups& groups);

} // namespace hostkit

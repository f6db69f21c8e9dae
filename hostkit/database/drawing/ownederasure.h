// Erasure of what an erased object owns: single objects; leaves out finding them.
#pragma once

#include "dbid.h"

class AcDbObject;

namespace hostkit {

/// Erases an object because its owner is, or restores one that was erased that way; one that was erased by
/// itself stays erased. An object that is open somewhere, an erased one and a null id are passed over.
void eraseWithOwner(AcDbObjectId id, bool erasing);

/// Erases or restores along with an object what is its own by the owner's id alone, and its extension
/// dictionary.
void eraseOwned(const AcDbObject& owner, bool erasing);

} // namespace hostkit

// The store of bodies that text drawings of 2013 and later have beside their entities; leaves out its other
// records, pictures of blocks.
#pragma once

#include "byteedits.h"
#include "drawingstructure.h"
#include "groupformat.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

class AcDbDatabase;

namespace hostkit {

inline constexpr std::string_view modelerStoreSection = "ACDSDATA";

/// Gives the solids, regions and bodies of the drawing their data, by handle; the entities count as
/// untouched. `section` are the bytes of the section. Data whose digits or count are damaged are passed over.
void readModelerStore(AcDbDatabase& database, std::string_view section);

/// Makes the store say what the drawing's solids hold: records of bodies that are other than before are
/// written anew, new ones added, those of entities that leave the file taken out; all else stays. Without a
/// section one is made where a body needs it. `leavesFile` tells of an entity that the file will not have.
void editModelerStore(const AcDbDatabase& database, std::string_view source,
                      const DrawingStructure& structure, const DrawingStyle& style,
                      const std::function<bool(std::uint64_t handle)>& leavesFile, ByteEdits& edits);

struct ModelerStoreItem {
    std::uint64_t handle = 0;
    bool isPicture = false; ///< of a block or layout; else a body
    std::string_view data;
};
/// A section with these records; empty without any.
std::string modelerStoreOf(std::span<const ModelerStoreItem> items, const DrawingStyle& style);

/// The whole section of a drawing that is written anew; empty where no body needs one.
std::string newModelerStore(const AcDbDatabase& database, const DrawingStyle& style);

} // namespace hostkit

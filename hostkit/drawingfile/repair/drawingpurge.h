// Purge: records of tables and entries of dictionaries that nothing in a drawing uses; leaves out views,
// coordinate systems, viewports, layouts and shape files.
#pragma once

#include "acadstrc.h"
#include "dbid.h"

#include <string>
#include <vector>

class AcDbDatabase;

namespace hostkit {

enum class PurgeKind : unsigned char {
    kLayer,
    kLinetype,
    kTextStyle,
    kDimStyle,
    kBlock,
    kApplication,
    kGroup, ///< without members
    kMultilineStyle,
    kTableStyle,
    kMultileaderStyle,
    kMaterial,
};
constexpr std::size_t purgeKindCount = 11;
/// In lower case: "layer", "multiline style" and so on.
const wchar_t* purgeKindName(PurgeKind kind);

struct PurgeItem {
    AcDbObjectId id;
    PurgeKind kind;
    std::wstring name;
};

/// What nothing refers to but what would go along, by kind and then in the order of the drawing: a layer that
/// only an unused block's entities have is in the list with the block. What counts as a reference, and what
/// always stays, is told at AcDbDatabase::purge; records from external references stay too.
/// eWasOpenForWrite, and nothing is listed, while an object is open for write; eInvalidInput where an object
/// of the drawing cannot be written and so is not known to refer to nothing.
Acad::ErrorStatus findUnused(const AcDbDatabase& database, std::vector<PurgeItem>& unused);

struct PurgeReport {
    std::vector<PurgeItem> erased;
    /// Could not be erased, as something holds them open or the drawing is locked, or these refer to them.
    std::vector<PurgeItem> kept;
};

/// Erases what findUnused lists; undo takes it back as what the running undo group did. Statuses of
/// findUnused.
Acad::ErrorStatus purgeUnused(AcDbDatabase& database, PurgeReport& report);

} // namespace hostkit

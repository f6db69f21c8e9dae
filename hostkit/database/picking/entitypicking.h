// Picking: which entities a region of the view takes, and what within a block it meets; leaves out prompts,
// filters and highlighting.
#pragma once

#include "dbid.h"
#include "pickregion.h"
#include "picksight.h"

#include <optional>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

namespace hostkit {

// Geometry. Lines, arcs, circles, ellipses, polylines with their bulges, rays and xlines are taken exactly in
// any view; splines by chords that stay within a millionth of the region's longer side, but no closer than
// the allowance below. Widths of light and 2d polylines count where touching is asked, and not for inside.
// Hatches, filled or patterned, are what their loops enclose, islands open by the hatch's style; solids and
// traces are filled, faces too. A text is its box, turned and slanted as it stands, reckoned as
// getGeomExtents says. A reference is what it shows: the block's entities and its visible attributes, in
// every row and column; a dimension likewise, and one without a block its layout. Any other class
// is what it draws (shapegeometry.h), and where it draws nothing the box that getGeomExtents gives. Thickness
// does not count. What has no extent (an empty polyline, a text without letters) is never picked; nothing
// endless is ever inside.
//
// What is seen within blocks: invisible entities and those on layers that are off or frozen are left out;
// layer 0 is there the layer of the reference. A reference on a layer that is off still shows what stands on
// other layers, one on a frozen layer shows nothing. Of definitions of attributes the constant ones that are
// not invisible show their text. A block within itself is left out, and so are blocks more than 64 deep. Of a
// reference that would show more than two million entities the rest is not looked at.
//
// Edges count: what comes within the point test's allowance of the region's edge (AcGe::pointAllowance for
// coordinates as far out as these) touches it, and is no further out than the edge.

/// Whether the region takes the entity, wherever it stands. The entity's own layer, visibility and erasure
/// are not asked. It need not be open.
bool isPicked(const AcDbEntity& entity, const PickSight& sight, const PickRegion& region, PickMode mode);

/// The visible entities of a space or block that the region takes, in drawing order. Visible: not erased, not
/// invisible, on a layer that is neither off nor frozen; a reference on a layer that is off is taken by what
/// it still shows. Empty for an id that is no block of the drawing.
std::vector<AcDbObjectId> pickedEntities(AcDbDatabase& database, AcDbObjectId space, const PickSight& sight,
                                         const PickRegion& region, PickMode mode);

/// The one that a pick box touches: the last drawn, which lies on top; null where nothing is hit.
AcDbObjectId pickedEntity(AcDbDatabase& database, AcDbObjectId space, const PickSight& sight,
                          const PickRegion& region);

/// What a pick within references and dimensions meets.
struct NestedPick {
    AcDbObjectId entity; ///< attributes are met by themselves, with their reference in `containers`
    /// References and dimensions around it, innermost first; empty for an entity of the space itself.
    std::vector<AcDbObjectId> containers;
    /// From the coordinates in which the entity stands to the world: those of the innermost block, for an
    /// attribute those in which its reference stands.
    AcGeMatrix3d toWorld;
};
/// Of what the region touches the last drawn: the last entity of the space, in it the last of the block, and
/// so on down to an entity that is neither a reference nor a dimension with a block. Attributes lie above
/// what the block holds; in rows and columns of copies the last copy is on top.
std::optional<NestedPick> pickedNested(AcDbDatabase& database, AcDbObjectId space, const PickSight& sight,
                                       const PickRegion& region);

} // namespace hostkit

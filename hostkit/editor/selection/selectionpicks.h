// What each way of selecting gives in a document: by place, by order, by space, by group; leaves out prompts
// and sets.
#pragma once

#include "gepnt2d.h"
#include "pickregion.h"
#include "picksight.h"
#include "selectionfilter.h"
#include "selectionmode.h"
#include "selectionset.h"

#include <string_view>
#include <vector>

class AcApDocument;

namespace hostkit {

/// What one way of selecting found: each entity once, in drawing order, and what was left out of it.
struct Found {
    std::vector<AcDbObjectId> ids{};
    SharedWay way{};
    std::size_t filteredOut = 0;
    std::size_t onLockedLayers = 0;
    std::size_t inOtherSpaces = 0;
};

/// A point of the user coordinate system in the world.
AcGePoint3d fromUser(const AcApDocument& document, const ads_real* point);
/// The space that picks are made in: model space, also through a viewport of the sheet, or the sheet.
AcDbObjectId currentSpace(const AcApDocument& document);

/// Selects for one call. Points are in the world; regions lie in the plane of the current view, as it was
/// when the object was made. A pick box has PICKBOX pixels to each side, of the host's screen over the view's
/// height.
class SelectionPicks {
public:
    SelectionPicks(const AcApDocument& document, const SelectionMode& mode, const SelectionFilter& filter);

    Found at(const AcGePoint3d& point) const;
    Found window(const AcGePoint3d& one, const AcGePoint3d& other, PickMode mode) const;
    /// Touches where the second corner lies to the left of the first in the view.
    Found box(const AcGePoint3d& first, const AcGePoint3d& second) const;
    Found polygon(const std::vector<AcGePoint3d>& corners, PickMode mode) const;
    Found fence(const std::vector<AcGePoint3d>& points) const;

    Found last() const;
    Found currentSpaceWhole() const;
    Found wholeDrawing() const;
    /// Those of the list that are there; in the current space alone where picks are meant.
    Found ofList(const std::vector<AcDbObjectId>& ids, bool inCurrentSpace) const;
    /// False where the drawing has no group of that name.
    bool group(std::wstring_view name, Found& found) const;

private:
    AcGePoint2d inView(const AcGePoint3d& point) const;
    std::vector<AcGePoint2d> inView(const std::vector<AcGePoint3d>& points) const;
    PickRegion pickBox(const AcGePoint3d& point) const;
    Found nestedAt(const AcGePoint3d& point) const;
    Found taken(std::vector<AcDbObjectId> ids, SelectionWay way) const;
    bool isTaken(const AcDbEntity& entity, Found& found) const;

    const AcApDocument& m_document;
    const SelectionMode& m_mode;
    const SelectionFilter& m_filter;
    AcDbObjectId m_space;
    PickSight m_sight;
    double m_pickBox; ///< half its width, in the view's units
};

} // namespace hostkit

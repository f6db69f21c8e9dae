// Entities of newer kinds in the R12 form: what stands for each kind that R12 lacks; leaves out most kinds
// without a class here.
#pragma once

#include "dbent.h"
#include "dbextents.h"

#include <memory>
#include <string_view>
#include <vector>

class AcDbDatabase;
class AcDbArcDimension;
class AcDbCurve;
class AcDbEllipse;
class AcDbHatch;
class AcDbMText;
class AcDbPolyline;

namespace hostkit {

struct DrawingRecord;

/// What stands for an entity in a form that lacks its kind. Without entities nothing can.
struct OlderEntities {
    std::wstring_view kind; ///< of the entities
    std::vector<std::unique_ptr<AcDbEntity>> entities;
};

/// Turns entities of a drawing into such as R12 has. The new ones are in no drawing; they have the look of
/// the old one, its place in the space, and the first of them its extended data.
///
/// | kind | becomes |
/// |---|---|
/// | light polyline | POLYLINE with the same vertices, bulges, widths, elevation, thickness and normal |
/// | ellipse, spline | POLYLINE of chords within chordTolerance; flat ones in the world's plane are 2d |
/// | paragraph | a TEXT for each line, codes taken out, broken at the box by reckoned widths; centred and
/// right | | ones keep their anchor | | ray, xline | LINE, the part within the box of model space; left out
/// where that is none | | hatch | LINEs of its pattern; a fill SOLIDs; over 20,000 of either, or without a
/// pattern, closed POLYLINEs of | | its loops | | arc length dimension | INSERT of the block that shows it;
/// without one, what its layout shows, in those kinds |
class R12Entities {
public:
    /// The drawing must outlive it.
    explicit R12Entities(const AcDbDatabase& database);

    /// Whether R12 has the kind of the entity, so that it stands for itself.
    static bool isKept(const AcDbEntity& entity);
    OlderEntities turn(const AcDbEntity& entity) const;
    /// The largest distance of a chord from its curve: 1e-5 of the diagonal of model space, but no more than
    /// 1e-3 of that of the curve.
    double chordTolerance(const AcDbEntity& entity) const;

private:
    OlderEntities turnPolyline(const AcDbPolyline& polyline) const;
    OlderEntities turnCurve(const AcDbCurve& curve) const;
    OlderEntities turnText(const AcDbMText& text) const;
    OlderEntities turnUnbounded(const AcGePoint3d& base, const AcGeVector3d& direction, bool isRay) const;
    OlderEntities turnHatch(const AcDbHatch& hatch) const;
    OlderEntities turnDimension(const AcDbArcDimension& dimension) const;
    OlderEntities turnOpaque(const AcDbEntity& entity) const;
    OlderEntities turnToBlock(const DrawingRecord& record, bool isPlaced) const;

    const AcDbDatabase& m_database;
    AcDbExtents m_extents;
};

} // namespace hostkit

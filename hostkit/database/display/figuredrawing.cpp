// How points, figures of corners, texts and hatches draw themselves.

#include "acgi.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbpoint.h"
#include "dbsolid.h"
#include "dbtext.h"
#include "dbtrace.h"
#include "hatchlines.h"
#include "pathgeometry.h"
#include "pointfigure.h"
#include "textplacing.h"

#include <algorithm>

using hostkit::drawArea;
using hostkit::drawLetters;
using hostkit::drawPath;
using hostkit::HatchArea;
using hostkit::PathGeometry;
using hostkit::PicturePath;

namespace {

// The third and the fourth corner stand crosswise: 0 1 3 2 runs around.
template <typename Figure>
void drawCorners(AcGiWorldDraw& draw, const Figure& figure) {
    PicturePath path;
    for (Adesk::UInt16 i = 0; i < 4; ++i) {
        AcGePoint3d corner;
        figure.getPointAt(i ^ (i >> 1), corner);
        path.lineTo(corner);
    }
    path.close();
    drawArea(draw, path);
}

void drawParagraph(AcGiWorldDraw& draw, const AcDbMText& text) {
    const hostkit::PlacedParagraph paragraph = hostkit::placedParagraph(text);
    const auto* geometry = dynamic_cast<const PathGeometry*>(&draw.geometry());
    if (geometry && !paragraph.ground.empty()) {
        PicturePath ground;
        for (const AcGePoint3d& corner : paragraph.ground) ground.lineTo(corner);
        ground.close();
        paragraph.groundRgb ? geometry->ground(ground, *paragraph.groundRgb) : geometry->area(ground);
    }
    for (const hostkit::PlacedText& line : paragraph.texts)
        drawLetters(draw, line, text.normal(), text.textStyle());
    for (const hostkit::PlacedParagraph::Bar& bar : paragraph.bars) {
        const AcGePoint3d ends[] = {bar.from, bar.to};
        draw.geometry().polyline(2, ends);
    }
}

PicturePath outlineOf(const HatchArea& area, double elevation) {
    PicturePath path;
    const auto inPlane = [&](const AcGePoint2d& point) { return AcGePoint3d(point.x, point.y, elevation); };
    for (const hostkit::HatchContour& contour : area.contours()) {
        PicturePath run;
        for (const hostkit::ContourPiece& piece : contour) {
            if (run.isEmpty()) run.moveTo(inPlane(piece.start));
            if (piece.isArc)
                run.arc(inPlane(piece.center), AcGeVector3d(piece.u.x, piece.u.y, 0.0),
                        AcGeVector3d(piece.v.x, piece.v.y, 0.0), piece.startAngle, piece.sweep);
            else
                run.lineTo(inPlane(piece.end));
        }
        run.close();
        path.append(run);
    }
    return path;
}

double closestSpacing(const std::vector<hostkit::HatchPatternLine>& pattern) {
    double closest = 0.0;
    for (const hostkit::HatchPatternLine& line : pattern) {
        const double spacing = hostkit::spacingOf(line);
        if (spacing > 0.0 && (closest == 0.0 || spacing < closest)) closest = spacing;
    }
    return closest;
}

// The strokes of one hatch, as one path where the device takes that.
class StrokeCollector {
public:
    StrokeCollector(AcGiWorldDraw& draw, const AcGeMatrix3d& plane, double elevation)
        : m_draw(draw)
        , m_plane(plane)
        , m_elevation(elevation)
        , m_paths(dynamic_cast<const PathGeometry*>(&draw.geometry()) != nullptr) {}
    StrokeCollector(const StrokeCollector&) = delete;
    StrokeCollector& operator=(const StrokeCollector&) = delete;

    /// What was collected is drawn.
    void finish() const { drawPath(m_draw, m_path); }

    bool add(const hostkit::HatchStroke& stroke) {
        const AcGePoint3d ends[] = {at(stroke.from), at(stroke.to)};
        if (m_paths) {
            m_path.moveTo(ends[0]);
            m_path.lineTo(ends[1]); // of a dot too, which is as broad as its line
        } else if (stroke.isDot()) {
            m_draw.geometry().rowOfDots(1, ends[0], AcGeVector3d());
        } else {
            m_draw.geometry().polyline(2, ends);
        }
        return (++m_count & 0xFFF) != 0 || !m_draw.regenAbort();
    }

private:
    AcGePoint3d at(const AcGePoint2d& point) const {
        return m_plane * AcGePoint3d(point.x, point.y, m_elevation);
    }

    AcGiWorldDraw& m_draw;
    const AcGeMatrix3d& m_plane;
    double m_elevation;
    bool m_paths;
    PicturePath m_path;
    std::size_t m_count = 0;
};

} // namespace

Adesk::Boolean AcDbPoint::worldDraw(AcGiWorldDraw* draw) {
    const PicturePath figure = hostkit::pointFigure(*this);
    if (figure.isEmpty())
        draw->geometry().rowOfDots(hostkit::isPointShown(*this) ? 1 : 0, position(), AcGeVector3d());
    drawPath(*draw, figure);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbSolid::worldDraw(AcGiWorldDraw* draw) {
    drawCorners(*draw, *this);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbTrace::worldDraw(AcGiWorldDraw* draw) {
    drawCorners(*draw, *this);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbFace::worldDraw(AcGiWorldDraw* draw) {
    PicturePath path;
    bool isRunning = false;
    for (Adesk::UInt16 i = 0; i <= 4; ++i) {
        AcGePoint3d corner;
        Adesk::Boolean isVisible = false;
        (void)getVertexAt(i % 4, corner);
        (void)isEdgeVisibleAt(i % 4, isVisible);
        isRunning ? path.lineTo(corner) : path.moveTo(corner);
        isRunning = isVisible;
    }
    drawPath(*draw, path);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbText::worldDraw(AcGiWorldDraw* draw) {
    drawLetters(*draw, hostkit::placedText(*this), normal(), textStyle());
    return Adesk::kTrue;
}

Adesk::Boolean AcDbAttribute::worldDraw(AcGiWorldDraw* draw) {
    return isInvisible() ? Adesk::kTrue : AcDbText::worldDraw(draw);
}

// In a space the tag; in a block the text of one that is the same in all references, as an attribute stands
// in the place of any other.
Adesk::Boolean AcDbAttributeDefinition::worldDraw(AcGiWorldDraw* draw) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId(), AcDb::kForRead);
    if (!block.object() || block->isLayout())
        drawLetters(*draw, hostkit::placedText(*this, tagName()), normal(), textStyle());
    else if (isConstant() && !isInvisible())
        return AcDbText::worldDraw(draw);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbMText::worldDraw(AcGiWorldDraw* draw) {
    drawParagraph(*draw, *this);
    return Adesk::kTrue;
}

Adesk::Boolean AcDbHatch::worldDraw(AcGiWorldDraw* draw) {
    const HatchArea area(loops(), hatchStyle());
    PicturePath outline = outlineOf(area, elevation());
    AcGeMatrix3d plane;
    getEcs(plane);
    outline.transformBy(plane);
    if (outline.isEmpty()) return Adesk::kTrue;
    if (isSolidFill()) {
        drawArea(*draw, outline);
        return Adesk::kTrue;
    }
    const std::vector<hostkit::HatchPatternLine>& pattern = patternDefinitions();
    if (const auto* geometry = dynamic_cast<const PathGeometry*>(&draw->geometry()))
        if (pattern.empty() || geometry->wantsTone(closestSpacing(pattern)) ||
            hostkit::estimatedStrokes(area, pattern) > hostkit::kMostHatchStrokes) {
            geometry->tone(outline);
            return Adesk::kTrue;
        }
    if (database()) draw->subEntityTraits().setLineType(database()->continuousLinetype());
    StrokeCollector strokes(*draw, plane, elevation());
    (void)hostkit::forEachStroke(area, pattern, hostkit::kMostHatchStrokes,
                                 [&](const hostkit::HatchStroke& stroke) { return strokes.add(stroke); });
    strokes.finish();
    return Adesk::kTrue;
}

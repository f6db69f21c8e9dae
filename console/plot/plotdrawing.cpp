#include "plotdrawing.h"

#include "aced.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbblocktable.h"
#include "dbcurve.h"
#include "dbdatabase.h"
#include "dbdim.h"
#include "dbface.h"
#include "dbhatch.h"
#include "dbminsert.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbpoint.h"
#include "dbpolyline.h"
#include "dbray.h"
#include "dbsolid.h"
#include "dbtrace.h"
#include "dbxline.h"
#include "dimensionpicture.h"
#include "linepattern.h"
#include "markingsink.h"
#include "movedblock.h"
#include "plotcurves.h"
#include "plothatch.h"
#include "plotlook.h"
#include "plottext.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

// Blocks within blocks may stand for any number of entities; a picture ends at these.
constexpr int deepestNesting = 50;
constexpr std::size_t mostEntities = 2'000'000;
constexpr double fillTones[] = {0.22, 0.36, 0.5}; // opacities: what lies on a filled curve stays readable
constexpr std::size_t breakInterval = 256;        // entities between looks for a break of the user

// Where entities are drawn: in a space, or in a block reference that looks like `look`.
struct Surroundings {
    AcGeMatrix3d toWorld;
    const Look* look = nullptr;
    int depth = 0;
};

class DrawingPlotter {
public:
    DrawingPlotter(AcDbDatabase& database, PictureSink& sink)
        : m_sink(sink)
        , m_looks(database) {}

    void drawBlock(AcDbObjectId block, const Surroundings& around);
    void drawThese(AcDbObjectId block, const std::vector<AcDbObjectId>& entities);
    void fillClosedCurves(AcDbObjectId block, const std::vector<AcDbObjectId>& layers);
    PlotReport report;

private:
    void drawEntity(const AcDbEntity& entity, const Surroundings& around);
    void drawVisible(const AcDbEntity& entity, const Look& look, const Surroundings& around);
    bool drawFlat(const AcDbEntity& entity, const Look& look, const Surroundings& around);
    void drawReference(const AcDbBlockReference& reference, const Look& look, const Surroundings& around);
    void drawAttributes(const AcDbBlockReference& reference, const Surroundings& around);
    void drawDimension(const AcDbDimension& dimension, const Look& look, const Surroundings& around);
    void drawText(PlacedText text, const Surroundings& around);
    void drawParagraph(const PlacedParagraph& paragraph, const Surroundings& around);
    void drawPolyline(const AcDbPolyline& polyline, const Look& look, const Surroundings& around);
    void drawCorners(const AcDbEntity& entity, const AcGePoint3d (&corners)[4], const Look& look,
                     const Surroundings& around);
    bool mustStop();

    PictureSink& m_sink;
    LookTable m_looks;
    std::size_t m_visited = 0;
};

// Lengths in a turned and scaled block grow by this; the mean where the scales differ.
double scaleOf(const AcGeMatrix3d& matrix) {
    return std::sqrt(std::abs(std::cbrt(matrix.det() * matrix.det())));
}

StrokeStyle strokeOf(const Look& look, const AcGeMatrix3d& toWorld) {
    StrokeStyle style;
    style.rgb = look.rgb;
    style.lineweight = look.lineweight;
    const DashArray pattern = dashArray(look.dashes, scaleOf(toWorld));
    style.dashes = pattern.dashes;
    style.dashStart = pattern.start;
    return style;
}

bool DrawingPlotter::mustStop() {
    ++m_visited;
    if (m_visited > mostEntities) report.isCut = true;
    return report.isCut || (m_visited % breakInterval == 0 && acedUsrBrk());
}

void DrawingPlotter::drawBlock(AcDbObjectId block, const Surroundings& around) {
    if (around.depth > deepestNesting) {
        report.isCut = true;
        return;
    }
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    if (!record.object()) return;
    for (const AcDbObjectId id : record->entities()) {
        if (id.isErased()) continue;
        if (mustStop()) return;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.object()) drawEntity(*entity.object(), around);
    }
}

void DrawingPlotter::drawThese(AcDbObjectId block, const std::vector<AcDbObjectId>& entities) {
    for (const AcDbObjectId id : entities) {
        if (mustStop()) return;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.object() && entity->ownerId() == block) drawEntity(*entity.object(), Surroundings());
    }
}

void DrawingPlotter::fillClosedCurves(AcDbObjectId block, const std::vector<AcDbObjectId>& layers) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    if (!record.object() || layers.empty()) return;
    std::size_t filled = 0;
    for (const AcDbObjectId id : record->entities()) {
        if (id.isErased()) continue;
        if (mustStop()) return;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        const auto* curve = AcDbCurve::cast(entity.object());
        if (!curve || !curve->isClosed() || curve->visibility() == AcDb::kInvisible) continue;
        if (std::find(layers.begin(), layers.end(), curve->layerId()) == layers.end()) continue;
        const Look look = m_looks.lookOf(*curve, nullptr);
        PicturePath path;
        if (m_looks.isHidden(look.layer) || !appendCurve(path, *curve)) continue;
        m_sink.fill(path, look.rgb, fillTones[filled++ % std::size(fillTones)]);
    }
}

void DrawingPlotter::drawEntity(const AcDbEntity& entity, const Surroundings& around) {
    if (entity.visibility() == AcDb::kInvisible) return;
    const Look look = m_looks.lookOf(entity, around.look);
    const auto* reference = AcDbBlockReference::cast(&entity);
    // A reference on a layer that is only off still shows what stands on other layers.
    if (reference ? m_looks.isFrozen(look.layer) : m_looks.isHidden(look.layer)) return;
    if (reference) return drawReference(*reference, look, around);
    drawVisible(entity, look, around);
}

void DrawingPlotter::drawVisible(const AcDbEntity& entity, const Look& look, const Surroundings& around) {
    ++report.drawn;
    if (const auto* polyline = AcDbPolyline::cast(&entity)) return drawPolyline(*polyline, look, around);
    if (const auto* hatch = AcDbHatch::cast(&entity))
        return drawHatch(m_sink, *hatch, around.toWorld,
                         strokeOf(Look{look.layer, look.rgb, {}, 0.0}, around.toWorld));
    if (const auto* dimension = AcDbDimension::cast(&entity)) return drawDimension(*dimension, look, around);
    if (const auto* definition = AcDbAttributeDefinition::cast(&entity)) {
        // In a reference an attribute stands in its place, but for one that is the same in all of them.
        if (around.depth == 0)
            drawText(placedText(*definition, definition->tagName(), look.rgb), around);
        else if (definition->isConstant() && !definition->isInvisible())
            drawText(placedText(*definition, look.rgb), around);
        return;
    }
    if (const auto* text = AcDbText::cast(&entity)) return drawText(placedText(*text, look.rgb), around);
    if (const auto* paragraph = AcDbMText::cast(&entity))
        return drawParagraph(placedParagraph(*paragraph, look.rgb), around);
    PicturePath path;
    if (appendCurve(path, entity)) {
        path.transformBy(around.toWorld);
        return m_sink.stroke(path, strokeOf(look, around.toWorld));
    }
    if (drawFlat(entity, look, around)) return;
    --report.drawn;
    const wchar_t* name = entity.dxfName();
    ++report.notDrawn[name ? name : L"?"];
}

void DrawingPlotter::drawCorners(const AcDbEntity& entity, const AcGePoint3d (&corners)[4], const Look& look,
                                 const Surroundings& around) {
    PicturePath path;
    for (const AcGePoint3d& corner : corners) path.lineTo(corner);
    path.close();
    path.transformBy(around.toWorld);
    if (AcDbFace::cast(&entity))
        m_sink.stroke(path, strokeOf(look, around.toWorld));
    else
        m_sink.fill(path, look.rgb, 1.0);
}

// Points, endless lines, and what has three or four corners.
bool DrawingPlotter::drawFlat(const AcDbEntity& entity, const Look& look, const Surroundings& around) {
    const AcGeMatrix3d& toWorld = around.toWorld;
    AcGePoint3d corners[4];
    if (const auto* point = AcDbPoint::cast(&entity)) {
        m_sink.dot(toWorld * point->position(), look.rgb);
    } else if (const auto* line = AcDbXline::cast(&entity)) {
        m_sink.endlessLine(toWorld * line->basePoint(), toWorld * line->unitDir(), true,
                           strokeOf(look, toWorld));
    } else if (const auto* ray = AcDbRay::cast(&entity)) {
        m_sink.endlessLine(toWorld * ray->basePoint(), toWorld * ray->unitDir(), false,
                           strokeOf(look, toWorld));
    } else if (const auto* face = AcDbFace::cast(&entity)) {
        for (Adesk::UInt16 i = 0; i < 4; ++i) face->getVertexAt(i, corners[i]);
        drawCorners(entity, corners, look, around);
    } else if (const auto* solid = AcDbSolid::cast(&entity)) {
        for (Adesk::UInt16 i = 0; i < 4; ++i)
            solid->getPointAt(i ^ (i >> 1), corners[i]); // 0 1 3 2 runs around it
        drawCorners(entity, corners, look, around);
    } else if (const auto* trace = AcDbTrace::cast(&entity)) {
        for (Adesk::UInt16 i = 0; i < 4; ++i) trace->getPointAt(i ^ (i >> 1), corners[i]);
        drawCorners(entity, corners, look, around);
    } else {
        return false;
    }
    return true;
}

void DrawingPlotter::drawPolyline(const AcDbPolyline& polyline, const Look& look,
                                  const Surroundings& around) {
    StrokeStyle style = strokeOf(look, around.toWorld);
    const std::vector<WidePiece> pieces = widePieces(polyline);
    if (pieces.empty()) {
        PicturePath path;
        if (!appendCurve(path, polyline)) return;
        path.transformBy(around.toWorld);
        return m_sink.stroke(path, style);
    }
    for (const WidePiece& piece : pieces) {
        PicturePath path = piece.path;
        path.transformBy(around.toWorld);
        style.width = piece.width * scaleOf(around.toWorld);
        if (piece.width > 0.0 || piece.path.steps().back() != PicturePath::Step::close)
            m_sink.stroke(path, style);
        else
            m_sink.fill(path, style.rgb, 1.0);
    }
}

void DrawingPlotter::drawText(PlacedText text, const Surroundings& around) {
    if (text.fitLength > 0.0) {
        const double length = text.along.length();
        if (length > 0.0) text.fitLength *= (around.toWorld * text.along).length() / length;
    }
    text.origin.transformBy(around.toWorld);
    text.along.transformBy(around.toWorld);
    text.up.transformBy(around.toWorld);
    if (!text.runs.empty()) m_sink.text(text);
}

void DrawingPlotter::drawParagraph(const PlacedParagraph& paragraph, const Surroundings& around) {
    for (const PlacedText& text : paragraph.texts) drawText(text, around);
    for (const PlacedParagraph::Bar& bar : paragraph.bars) {
        PicturePath path;
        path.moveTo(bar.from);
        path.lineTo(bar.to);
        path.transformBy(around.toWorld);
        m_sink.stroke(path, {.rgb = bar.rgb});
    }
}

void DrawingPlotter::drawAttributes(const AcDbBlockReference& reference, const Surroundings& around) {
    const std::unique_ptr<AcDbObjectIterator> each(reference.attributeIterator());
    for (; each && !each->done(); each->step()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(each->objectId(), AcDb::kForRead);
        if (!attribute.object() || attribute->isInvisible()) continue;
        const Look look = m_looks.lookOf(*attribute.object(), around.look);
        if (attribute->visibility() == AcDb::kInvisible || m_looks.isHidden(look.layer)) continue;
        ++report.drawn;
        drawText(placedText(*attribute.object(), look.rgb), around);
    }
}

void DrawingPlotter::drawReference(const AcDbBlockReference& reference, const Look& look,
                                   const Surroundings& around) {
    const auto* array = AcDbMInsertBlock::cast(&reference);
    const int rows = array ? array->rows() : 1;
    const int columns = array ? array->columns() : 1;
    // Rows and columns step along the turned axes of the reference, whatever its scales are.
    AcGeMatrix3d axes = AcGeMatrix3d::planeToWorld(reference.normal());
    axes.postMultBy(AcGeMatrix3d::rotation(reference.rotation(), AcGeVector3d::kZAxis));
    Surroundings inside;
    inside.look = &look;
    inside.depth = around.depth + 1;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            if (mustStop()) return;
            AcGeVector3d step;
            if (array)
                step = axes * AcGeVector3d(column * array->columnSpacing(), row * array->rowSpacing(), 0.0);
            inside.toWorld = around.toWorld * AcGeMatrix3d::translation(step) * reference.blockTransform();
            drawBlock(reference.blockTableRecord(), inside);
            Surroundings place = around;
            place.toWorld.postMultBy(AcGeMatrix3d::translation(step));
            drawAttributes(reference, place);
        }
}

// Drawings of other programs may have no block for a dimension: then it is laid out as a save would.
void DrawingPlotter::drawDimension(const AcDbDimension& dimension, const Look& look,
                                   const Surroundings& around) {
    Surroundings inside = around;
    inside.look = &look;
    inside.depth = around.depth + 1;
    if (!dimension.dimBlockId().isNull()) {
        inside.toWorld = around.toWorld * hostkit::blockPlacement(dimension);
        return drawBlock(dimension.dimBlockId(), inside);
    }
    hostkit::DimensionPicture picture;
    if (inside.depth > deepestNesting || !dimension.isComplete() ||
        !hostkit::layOutDimension(dimension, picture)) {
        --report.drawn;
        ++report.notDrawn[L"DIMENSION without a block"];
        return;
    }
    for (const auto& entity : hostkit::entitiesOf(dimension, picture, hostkit::PieceUse::plotted))
        drawEntity(*entity, inside);
}

// Model space, or the first space of another sheet that holds something where model space is empty.
AcDbObjectId spaceToDraw(AcDbDatabase& database) {
    const AcDbObjectId model = database.modelSpaceId();
    const auto holdsSomething = [](AcDbObjectId id) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
        if (!block.object() || !block->isLayout()) return false;
        for (const AcDbObjectId entity : block->entities())
            if (!entity.isErased()) return true;
        return false;
    };
    if (holdsSomething(model)) return model;
    const AcDbSymbolTablePointer<AcDbBlockTable> blocks(&database, AcDb::kForRead);
    if (!blocks.object()) return model;
    for (const AcDbObjectId block : blocks->records())
        if (!block.isErased() && holdsSomething(block)) return block;
    return model;
}

} // namespace

PlotReport plotDrawing(AcDbDatabase& database, PictureSink& sink,
                       const std::vector<AcDbObjectId>& filledLayers,
                       const std::vector<AcDbObjectId>& marked) {
    const AcDbObjectId space = spaceToDraw(database);
    MarkingSink marking(sink);
    DrawingPlotter(database, marking).drawThese(space, marked);
    DrawingPlotter plotter(database, sink);
    plotter.fillClosedCurves(space, filledLayers);
    plotter.drawBlock(space, Surroundings());
    return plotter.report;
}

#include "plotdrawing.h"

#include "aced.h"
#include "curvepaths.h"
#include "dbblocktable.h"
#include "dbblocktablerecord.h"
#include "dbcurve.h"
#include "dbdatabase.h"
#include "dbobjptr.h"
#include "markingsink.h"
#include "viewsink.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr double fillTones[] = {0.22, 0.36, 0.5}; // opacities: what lies on a filled curve stays readable

void fillClosedCurves(AcDbObjectId block, const std::vector<AcDbObjectId>& layers, LookTable& looks,
                      PictureSink& sink) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    if (!record.object() || layers.empty()) return;
    std::size_t filled = 0;
    for (const AcDbObjectId id : record->entities()) {
        if (id.isErased()) continue;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        const auto* curve = AcDbCurve::cast(entity.object());
        if (!curve || !curve->isClosed() || curve->visibility() == AcDb::kInvisible) continue;
        if (std::find(layers.begin(), layers.end(), curve->layerId()) == layers.end()) continue;
        if (acedUsrBrk()) return;
        const Look look = looks.lookOf(*curve, nullptr);
        hostkit::PicturePath path;
        if (looks.isHidden(look.layer) || !hostkit::appendCurve(path, *curve)) continue;
        sink.fill(path, look.rgb, fillTones[filled++ % std::size(fillTones)]);
    }
}

void drawThese(AcDbObjectId block, const std::vector<AcDbObjectId>& entities, PictureDraw& draw) {
    for (const AcDbObjectId id : entities) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.object() && entity->ownerId() == block) draw.geometry().draw(entity.object());
    }
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

PlotReport drawSpace(AcDbDatabase& database, PictureSink& sink, const PlotChoice& choice) {
    const AcDbObjectId space = choice.block.isNull() ? spaceToDraw(database) : choice.block;
    LookTable looks(database, choice.paper);
    if (!choice.layerPattern.empty()) looks.showOnly(choice.layerPattern);
    MarkingSink marking(sink);
    PictureDraw marker(database, looks, marking);
    drawThese(space, choice.marked, marker);
    fillClosedCurves(space, choice.filledLayers, looks, sink);
    PictureDraw draw(database, looks, sink);
    const AcDbObjectPointer<AcDbBlockTableRecord> record(space, AcDb::kForRead);
    if (record.object()) record->worldDraw(&draw);
    return draw.report();
}

} // namespace

PlotReport plotDrawing(AcDbDatabase& database, PictureSink& sink, const PlotChoice& choice) {
    if (!choice.towardsViewer) return drawSpace(database, sink, choice);
    ViewSink view(*choice.towardsViewer, sink);
    const PlotReport report = drawSpace(database, view, choice);
    view.finish();
    return report;
}

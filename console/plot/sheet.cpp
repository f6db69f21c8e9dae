#include "sheet.h"

#include "casefold.h"
#include "currentview.h"
#include "curvepaths.h"
#include "dbdatabase.h"
#include "dbdictionary.h"
#include "dblayout.h"
#include "dbobjptr.h"
#include "dbviewport.h"
#include "sheetviewport.h"

#include <algorithm>
#include <memory>

namespace {

constexpr double millimetresInInch = 25.4;

template <typename Visit>
void visitLayouts(AcDbDatabase& database, Visit visit) {
    const AcDbObjectPointer<AcDbDictionary> layouts(database.layoutDictionaryId(), AcDb::kForRead);
    if (!layouts.object()) return;
    const std::unique_ptr<AcDbDictionaryIterator> each(layouts->newIterator());
    for (; each && !each->done(); each->next()) {
        const AcDbObjectPointer<AcDbLayout> layout(each->objectId(), AcDb::kForRead);
        if (layout.object()) visit(*layout);
    }
}

// Turned paper: its margins turn along, so that the left one is what was the bottom.
Sheet sheetOf(const AcDbLayout& layout) {
    Sheet sheet;
    sheet.block = layout.getBlockTableRecordId();
    sheet.name = layout.getLayoutName();
    double left = 0.0, bottom = 0.0, right = 0.0, top = 0.0, printed = 1.0, drawn = 1.0, x = 0.0, y = 0.0;
    layout.getPlotPaperSize(sheet.width, sheet.height);
    layout.getPlotPaperMargins(left, bottom, right, top);
    layout.getPlotOrigin(x, y);
    layout.getCustomPrintScale(printed, drawn);
    const AcDbLayout::PlotRotation rotation = layout.plotRotation();
    const double margins[] = {left, bottom, right, top};
    const bool isAcross = rotation == AcDbLayout::k90degrees || rotation == AcDbLayout::k270degrees;
    if (isAcross) std::swap(sheet.width, sheet.height);
    sheet.originX = margins[(4 - rotation) % 4] + x;
    sheet.originY = margins[(5 - rotation) % 4] + y;
    sheet.scale = layout.plotPaperUnits() == AcDbLayout::kInches ? millimetresInInch : 1.0;
    if (printed > 0.0 && drawn > 0.0) sheet.scale *= printed / drawn;
    return sheet;
}

bool isShown(const AcDbViewport& viewport) {
    return viewport.number() != 1 && viewport.isOn() && viewport.width() > 0.0 &&
           viewport.customScale() > 0.0 && viewport.viewDirection().length() > 0.0;
}

hostkit::PicturePath outlineOf(const AcDbViewport& viewport) {
    hostkit::PicturePath outline;
    const AcDbObjectPointer<AcDbEntity> clip(viewport.nonRectClipEntityId(), AcDb::kForRead);
    if (clip.object() && hostkit::appendCurve(outline, *clip)) return outline;
    const double across = viewport.width() / 2.0;
    const double upwards = viewport.height() / 2.0;
    for (const auto& [x, y] : {std::pair(-1, -1), std::pair(1, -1), std::pair(1, 1), std::pair(-1, 1)})
        outline.lineTo(viewport.centerPoint() + AcGeVector3d(x * across, y * upwards, 0.0));
    outline.close();
    return outline;
}

} // namespace

std::optional<Sheet> sheetOfName(AcDbDatabase& database, std::wstring_view name) {
    std::optional<Sheet> found;
    visitLayouts(database, [&](const AcDbLayout& layout) {
        if (hostkit::equalFolded(layout.getLayoutName(), name)) found = sheetOf(layout);
    });
    return found;
}

std::vector<std::wstring> sheetNames(AcDbDatabase& database) {
    std::vector<std::pair<int, std::wstring>> ordered;
    visitLayouts(database, [&](const AcDbLayout& layout) {
        ordered.emplace_back(layout.getTabOrder(), layout.getLayoutName());
    });
    std::sort(ordered.begin(), ordered.end());
    std::vector<std::wstring> names;
    for (auto& [order, name] : ordered) names.push_back(std::move(name));
    return names;
}

std::optional<SheetView> sheetViewOf(const AcDbEntity& entity) {
    const auto* viewport = AcDbViewport::cast(&entity);
    if (!viewport || !isShown(*viewport)) return std::nullopt;
    const hostkit::SheetViewport sheet = hostkit::sheetViewportOf(*viewport);
    SheetView shown;
    shown.scale = sheet.scale();
    shown.outline = outlineOf(*viewport);
    const AcGeVector3d middle(sheet.view.middle[0], sheet.view.middle[1], 0.0);
    shown.modelToSheet = AcGeMatrix3d::translation(sheet.place.asVector()) *
                         AcGeMatrix3d::scaling(shown.scale) * AcGeMatrix3d::translation(-middle) *
                         hostkit::displayToWorld(sheet.view).inverse();
    shown.frozen = viewport->frozenLayers();
    return shown;
}

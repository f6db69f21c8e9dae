#include "sheet.h"

#include "casefold.h"
#include "currentview.h"
#include "curvepaths.h"
#include "dbdatabase.h"
#include "dbdictionary.h"
#include "dblayout.h"
#include "dbobjptr.h"
#include "dbopaque.h"
#include "recordcursor.h"

#include <algorithm>
#include <map>
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

// What the record of a viewport says, by group code; points and layers apart.
struct ViewportRecord {
    AcGePoint3d center;
    AcGePoint3d middle;
    AcGePoint3d target;
    AcGeVector3d direction = AcGeVector3d::kZAxis;
    std::map<int, double> numbers;
    std::vector<AcDbObjectId> frozen;
    AcDbObjectId clip;

    double number(int code, double otherwise) const {
        const auto place = numbers.find(code);
        return place == numbers.end() ? otherwise : place->second;
    }
};

ViewportRecord readViewport(const AcDbEntity& entity) {
    ViewportRecord record;
    for (hostkit::RecordCursor group(entity); group.next();) {
        switch (group.code()) {
        case 10:
            record.center = group.point();
            break;
        case 12:
            record.middle = group.point();
            break;
        case 16:
            record.direction = group.vector();
            break;
        case 17:
            record.target = group.point();
            break;
        case 331:
        case 341:
            record.frozen.push_back(group.id());
            break;
        case 340:
            record.clip = group.id();
            break;
        case 51:
            record.numbers[51] = group.radians();
            break;
        default:
            record.numbers[group.code()] = group.real();
        }
    }
    return record;
}

bool isShown(const ViewportRecord& record) {
    constexpr int offBit = 0x20000;
    const bool isSheetItself = record.number(69, 2.0) == 1.0;
    const bool isOff =
        record.number(68, 1.0) == 0.0 || (static_cast<int>(record.number(90, 0.0)) & offBit) != 0;
    return !isSheetItself && !isOff && record.number(40, 0.0) > 0.0 && record.number(41, 0.0) > 0.0 &&
           record.number(45, 0.0) > 0.0 && record.direction.length() > 0.0;
}

hostkit::PicturePath outlineOf(const ViewportRecord& record) {
    hostkit::PicturePath outline;
    const AcDbObjectPointer<AcDbEntity> clip(record.clip, AcDb::kForRead);
    if (clip.object() && hostkit::appendCurve(outline, *clip)) return outline;
    const double across = record.number(40, 0.0) / 2.0;
    const double upwards = record.number(41, 0.0) / 2.0;
    for (const auto& [x, y] : {std::pair(-1, -1), std::pair(1, -1), std::pair(1, 1), std::pair(-1, 1)})
        outline.lineTo(record.center + AcGeVector3d(x * across, y * upwards, 0.0));
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

bool isSheetViewport(const AcDbEntity& entity) {
    return AcDbOpaqueEntity::cast(&entity) && std::wstring_view(entity.dxfName()) == L"VIEWPORT";
}

std::optional<SheetView> sheetViewOf(const AcDbEntity& entity) {
    if (!isSheetViewport(entity)) return std::nullopt;
    ViewportRecord record = readViewport(entity);
    if (!isShown(record)) return std::nullopt;
    hostkit::CurrentView view;
    view.target = record.target;
    view.direction = record.direction;
    view.twist = record.number(51, 0.0);
    SheetView shown;
    shown.scale = record.number(41, 0.0) / record.number(45, 0.0);
    shown.outline = outlineOf(record);
    shown.modelToSheet =
        AcGeMatrix3d::translation(record.center.asVector()) * AcGeMatrix3d::scaling(shown.scale) *
        AcGeMatrix3d::translation(-record.middle.asVector()) * hostkit::displayToWorld(view).inverse();
    shown.frozen = std::move(record.frozen);
    return shown;
}

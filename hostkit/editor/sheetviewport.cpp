#include "sheetviewport.h"

#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbopaque.h"
#include "groupscanner.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace hostkit {
namespace {

struct ViewportRecord {
    Adesk::Int64 number = 0;
    SheetViewport viewport;
};

// One value of the record by its code: a point's y and z come as groups of their own.
double* realOf(SheetViewport& viewport, int code) {
    CurrentView& view = viewport.view;
    const auto part = [](auto& place, int index) {
        return index == 0 ? &place.x : index == 1 ? &place.y : &place.z;
    };
    switch (code) {
    case 10:
    case 20:
    case 30:
        return part(viewport.place, code / 10 - 1);
    case 12:
    case 22:
        return &view.middle[code / 10 - 1];
    case 16:
    case 26:
    case 36:
        return part(view.direction, code / 10 - 1);
    case 17:
    case 27:
    case 37:
        return part(view.target, code / 10 - 1);
    case 41:
        return &viewport.height;
    case 42:
        return &view.lensLength;
    case 43:
        return &view.frontClip;
    case 44:
        return &view.backClip;
    case 45:
        return &view.height;
    case 51:
        return &view.twist;
    default:
        return nullptr;
    }
}

void takeGroup(ViewportRecord& record, const RawGroup& group) {
    constexpr int numberCode = 69, flagsCode = 90, modeBits = 0x1F;
    if (group.code == numberCode || group.code == flagsCode) {
        const Adesk::Int64 value = integerFromText(group.value).value_or(0);
        if (group.code == numberCode) record.number = value;
        if (group.code == flagsCode) record.viewport.view.mode = static_cast<int>(value & modeBits);
        return;
    }
    if (double* const real = realOf(record.viewport, group.code))
        *real = realFromText(group.value).value_or(std::numeric_limits<double>::quiet_NaN());
}

bool isUsable(const SheetViewport& viewport) {
    const CurrentView& view = viewport.view;
    const double sum = viewport.place.x + viewport.place.y + viewport.place.z + view.middle[0] +
                       view.middle[1] + view.target.x + view.target.y + view.target.z + view.twist +
                       view.direction.length() + view.lensLength + view.frontClip + view.backClip;
    return std::isfinite(sum) && viewport.height > 0.0 && view.height > 0.0 &&
           std::isfinite(viewport.scale()) && viewport.scale() > 0.0 && view.direction.length() > 0.0;
}

// Extended data of older drawings is behind the record's own groups and has codes of its own.
bool readViewport(std::string_view bytes, ViewportRecord& record) {
    record.viewport.view.height = 0.0;
    GroupScanner scanner(bytes);
    for (RawGroup group; scanner.next(group) == ScanResult::kGroup;) takeGroup(record, group);
    record.viewport.view.twist *= std::numbers::pi / 180.0;
    return isUsable(record.viewport);
}

} // namespace

bool findSheetViewport(const AcDbDatabase& database, int number, SheetViewport& viewport) {
    const auto source = database.source();
    const auto* sheet = DatabaseAccess::objectOf<AcDbBlockTableRecord>(database.paperSpaceId());
    if (!source || !sheet) return false;
    for (const AcDbObjectId id : sheet->entities()) {
        const auto* entity = DatabaseAccess::objectOf<AcDbOpaqueEntity>(id);
        if (!entity || entity->isErased() || std::wstring_view(entity->dxfName()) != L"VIEWPORT") continue;
        const SourceSpan span = entity->sourceSpan();
        ViewportRecord record;
        const std::string_view bytes = std::string_view(source->bytes).substr(span.offset, span.length);
        if (!readViewport(bytes, record) || record.number != number) continue;
        viewport = record.viewport;
        return true;
    }
    return false;
}

} // namespace hostkit

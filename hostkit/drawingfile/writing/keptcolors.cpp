#include "keptcolors.h"

#include "drawingtext.h"
#include "groupformat.h"
#include "groupscanner.h"

#include "casefold.h"
#include "dbent.h"
#include "dblayertablerecord.h"
#include "extendeddata.h"
#include "groupcodes.h"

namespace hostkit {

namespace {

AcCmEntityColor colorOf(Adesk::UInt32 rgb) {
    return {static_cast<Adesk::UInt8>(rgb >> 16), static_cast<Adesk::UInt8>(rgb >> 8),
            static_cast<Adesk::UInt8>(rgb)};
}

std::optional<Adesk::UInt32> valueKept(const DrawingRecord& record, const DrawingText& text) {
    for (std::size_t place = record.extendedDataBegin; place + 1 < record.groups.size(); ++place) {
        const RecordGroup& group = record.groups[place];
        const RecordGroup& next = record.groups[place + 1];
        if (group.code != applicationCode || next.code != extendedLongCode) continue;
        const std::optional<std::int64_t> value = integerFromText(next.value);
        if (value && *value >= 0 && *value <= 0xFFFFFF &&
            equalFolded(text.decode(group.value), trueColorApplication))
            return static_cast<Adesk::UInt32>(*value);
    }
    return {};
}

GroupBlock without(const GroupBlock& data, const ApplicationSpan& application) {
    GroupBlock rest;
    rest.appendPart(data, 0, application.from);
    rest.appendPart(data, application.to, data.size());
    return rest;
}

template <class T>
bool setTrueColor(AcDbObject& object, const AcCmEntityColor& color) {
    T* const colored = T::cast(&object);
    if (!colored || colored->color().isByColor()) return false;
    if (colored->color().colorIndex() != color.colorIndex()) return false;
    return colored->setColor(color) == Acad::eOk;
}

} // namespace

std::optional<AcCmEntityColor> trueColorOf(const AcDbObject& object) {
    std::optional<AcCmEntityColor> color;
    if (const auto* const entity = AcDbEntity::cast(&object)) color = entity->color();
    if (const auto* const layer = AcDbLayerTableRecord::cast(&object)) color = layer->color();
    return color && color->isByColor() ? color : std::nullopt;
}

void takeKeptColor(const DrawingRecord& record, const DrawingText& text, AcDbObject& object) {
    if (record.extendedDataBegin == record.groups.size()) return;
    const std::optional<Adesk::UInt32> value = valueKept(record, text);
    if (!value) return;
    const AcCmEntityColor color = colorOf(*value);
    if (!setTrueColor<AcDbEntity>(object, color)) (void)setTrueColor<AcDbLayerTableRecord>(object, color);
}

void dropTakenColor(const AcDbObject& object, GroupBlock& data) {
    ApplicationSpan kept;
    if (!trueColorOf(object) || !findApplication(data, trueColorApplication, kept)) return;
    data = without(data, kept);
}

bool keepColor(const AcDbObject& object, const std::optional<AcCmEntityColor>& color, GroupBlock& data) {
    const GroupBlock none;
    const GroupBlock& own = object.extendedData() ? *object.extendedData() : none;
    ApplicationSpan old;
    const bool hadOne = findApplication(own, trueColorApplication, old);
    if (!hadOne && !color) return false;
    data = hadOne ? without(own, old) : own;
    if (!color) return true;
    GroupBlock kept;
    kept.appendText(applicationCode, trueColorApplication);
    kept.appendInteger(extendedLongCode, color->rgb());
    if (data.size() + kept.size() <= GroupBlock::maxExtendedDataSize) data.appendAll(kept);
    return true;
}

bool isColorKeptByItself(const AcDbObject& object, std::string_view sourceBytes) {
    const SourceSpan span = object.sourceSpan().isEmpty() ? object.originalSpan() : object.sourceSpan();
    if (span.isEmpty()) return false;
    GroupScanner scanner(sourceBytes.substr(0, span.offset + span.length), span.offset);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup && group.code < applicationCode)
        if (group.code == trueColorCode) return true;
    return false;
}

} // namespace hostkit

#include "headergathering.h"

#include "recordgathering.h"
#include "transcriptvalues.h"

namespace hostkit {
namespace {

HeaderValue headerValue(const RecordLayout::SlotField& field, const RecordValue& value, bool isPoint) {
    switch (valueKindOf(static_cast<std::uint8_t>(field.code))) {
    case ValueKind::whole:
        return value.whole;
    case ValueKind::text:
        return value.run.bytes ? std::string(value.run.bytes, value.run.count) : std::string();
    case ValueKind::color:
        return HeaderColor{value.color.index, value.color.value, {}, {}};
    case ValueKind::reference:
        return HeaderReference{value.reference.value};
    default:
        if (isPoint) return std::array<double, 3>{value.real[0], value.real[1], value.real[2]};
        return value.real[0];
    }
}

bool isPointCode(FieldCode code) {
    return code == FieldCode::bitPoint3 || code == FieldCode::rawPoint2 || code == FieldCode::bitPoint2 ||
           code == FieldCode::rawPoint3;
}

} // namespace

void gatherHeader(const ExchangeOutline& outline, DrawingVersion version, unsigned codePage,
                  const RecordNames& names, BinaryHeader& header) {
    const RecordLayout& layout = *RecordLayouts::of(version).byName("HEADER-VARS");
    DrawingRecord groups;
    GroupScanner scanner(outline.text.substr(0, outline.headerEnd), outline.headerBegin);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup)
        groups.groups.push_back(
            {group.value, group.start, scanner.position(), static_cast<short>(group.code)});
    groups.extendedDataBegin = groups.groups.size();
    RecordGathering gathering(version, codePage, names);
    RecordScope values;
    gathering.gatherVariables(groups, layout, values);
    for (const auto& [name, slot] : layout.slotNames) {
        const RecordValue* const value = values.find(slot);
        if (!value || slot >= layout.slotFields.size() || !layout.slotFields[slot].isField) continue;
        const RecordLayout::SlotField& field = layout.slotFields[slot];
        header.values[name] = headerValue(field, *value, isPointCode(field.code));
    }
}

} // namespace hostkit

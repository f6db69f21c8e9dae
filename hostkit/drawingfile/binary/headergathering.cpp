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

using HeaderValues = std::map<std::string, HeaderValue, std::less<>>;

HeaderValues valuesIn(const ExchangeOutline& outline, DrawingVersion version, unsigned codePage,
                      const RecordNames& names) {
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
    HeaderValues result;
    for (const auto& [name, slot] : layout.slotNames) {
        const RecordValue* const value = values.find(slot);
        if (!value || slot >= layout.slotFields.size() || !layout.slotFields[slot].isField) continue;
        const RecordLayout::SlotField& field = layout.slotFields[slot];
        result[name] = headerValue(field, *value, isPointCode(field.code));
    }
    return result;
}

} // namespace

void gatherHeader(const ExchangeOutline& outline, DrawingVersion version, unsigned codePage,
                  const RecordNames& names, BinaryHeader& header, const ExchangeOutline* before) {
    const HeaderValues unchanged = before ? valuesIn(*before, version, codePage, names) : HeaderValues();
    for (auto& [name, value] : valuesIn(outline, version, codePage, names)) {
        const auto earlier = unchanged.find(name);
        const auto* const reference =
            std::get_if<HeaderReference>(&value); // one name may be another record now
        const bool isUnchanged = reference ? header.handle(name) == reference->handle
                                           : earlier != unchanged.end() && earlier->second == value;
        if (!isUnchanged) header.values[name] = std::move(value);
    }
}

DrawingProperties gatherProperties(const ExchangeOutline& outline, const BinaryHeader& header) {
    DrawingProperties properties;
    std::string tag, value;
    const std::pair<std::string_view, std::string&> texts[]{{"$TITLE", properties.title},
                                                            {"$SUBJECT", properties.subject},
                                                            {"$AUTHOR", properties.author},
                                                            {"$KEYWORDS", properties.keywords},
                                                            {"$COMMENTS", properties.comments},
                                                            {"$LASTSAVEDBY", properties.lastSavedBy},
                                                            {"$REVISIONNUMBER", properties.revision}};
    std::string* wanted = nullptr;
    GroupScanner scanner(outline.text.substr(0, outline.headerEnd), outline.headerBegin);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (group.code == 9) {
            wanted = group.value == "$CUSTOMPROPERTYTAG" ? &tag
                     : group.value == "$CUSTOMPROPERTY"  ? &value
                                                         : nullptr;
            for (const auto& [name, text] : texts)
                if (group.value == name) wanted = &text;
        } else if (wanted) {
            wanted->clear();
            appendUnescaped(group.value, *wanted);
            if (wanted == &value) properties.custom.emplace_back(std::move(tag), std::move(value));
            wanted = nullptr;
        }
    }
    const auto date = [&](const char* day, const char* milliseconds) {
        return BinaryDate{static_cast<std::uint32_t>(header.whole(day)),
                          static_cast<std::uint32_t>(header.whole(milliseconds))};
    };
    properties.hyperlinkBase = header.text("HYPERLINKBASE");
    properties.editingTime = date("TDINDWG_days", "TDINDWG_ms");
    properties.created = date("TDCREATE_day", "TDCREATE_ms");
    properties.updated = date("TDUPDATE_day", "TDUPDATE_ms");
    return properties;
}

} // namespace hostkit

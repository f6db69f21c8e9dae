#include "referencechanges.h"

#include "groupcodes.h"
#include "groupformat.h"
#include "groupkinds.h"
#include "handlelists.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr short layerOfExtendedData = 1003;
constexpr short handleOfExtendedData = 1005;

/// A group that names a table's record, in records whose class does not read it as such. `mark` is the
/// subclass mark, or empty for any.
struct NamingGroup {
    std::string_view record;
    std::string_view mark;
    short code;
    TableKind kind;
    bool isOwnName = false; ///< a class that reads the record has the new one
};

constexpr NamingGroup namingGroups[] = {
    // Of an entity's look, where a group stands twice.
    {"", "AcDbEntity", 8, TableKind::kLayer},
    {"", "AcDbEntity", 6, TableKind::kLinetype},
    {"TEXT", "AcDbText", 7, TableKind::kTextStyle},
    {"LEADER", "AcDbLeader", 3, TableKind::kDimStyle},
    {"TOLERANCE", "AcDbFcf", 3, TableKind::kDimStyle},
    {"LARGE_RADIAL_DIMENSION", "AcDbDimension", 2, TableKind::kBlock},
    {"LARGE_RADIAL_DIMENSION", "AcDbDimension", 3, TableKind::kDimStyle},
    {"ACAD_TABLE", "AcDbBlockReference", 2, TableKind::kBlock},
    {"ACAD_TABLE", "AcDbTable", 7, TableKind::kTextStyle},
    {"RTEXT", "RText", 7, TableKind::kTextStyle},
    {"ARCALIGNEDTEXT", "AcDbArcAlignedText", 7, TableKind::kTextStyle},
    // Of the paragraph within the record; the record's own style is a field.
    {"ATTRIB", "", 7, TableKind::kTextStyle},
    {"ATTDEF", "", 7, TableKind::kTextStyle},
    {"MTEXT", "", 7, TableKind::kTextStyle},
    // Where the block's beginning is damaged.
    {"BLOCK", "", 2, TableKind::kBlock, true},
    {"BLOCK", "", 3, TableKind::kBlock, true},
    {"MLINESTYLE", "AcDbMlineStyle", 6, TableKind::kLinetype},
    {"TABLESTYLE", "AcDbTableStyle", 7, TableKind::kTextStyle},
    {"LAYER_FILTER", "AcDbLayerFilter", 8, TableKind::kLayer},
    {"LAYER_INDEX", "AcDbLayerIndex", 8, TableKind::kLayer},
    // Names in the R12 form, and from careless programs in later ones; a handle is no record's name.
    {"DIMSTYLE", "", 5, TableKind::kBlock},
    {"DIMSTYLE", "", 6, TableKind::kBlock},
    {"DIMSTYLE", "", 7, TableKind::kBlock},
    {"DIMSTYLE", "", 340, TableKind::kTextStyle},
    {"DIMSTYLE", "", 341, TableKind::kBlock},
    {"DIMSTYLE", "", 342, TableKind::kBlock},
    {"DIMSTYLE", "", 343, TableKind::kBlock},
    {"DIMSTYLE", "", 344, TableKind::kBlock},
};

// The mark of the part, embedded object or application group that the group stands in.
std::string_view markBefore(const DrawingRecord& record, std::size_t place) {
    while (place > 0) {
        const RecordGroup& group = record.groups[--place];
        if (group.code == subclassMarkCode || group.code == embeddedObjectCode ||
            group.code == applicationGroupCode)
            return withoutBlanks(group.value);
    }
    return {};
}

const HandleList* listAt(const DrawingRecord& record, std::size_t place) {
    const HandleList* const list = handleListOf(record.name(), record.groups[place].code);
    return list && markBefore(record, place) == list->mark ? list : nullptr;
}

bool refers(short code) {
    return (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481 ||
           code == handleOfExtendedData;
}

} // namespace

void ReferenceChanges::rename(TableKind kind, std::wstring_view oldName, std::wstring_view newName) {
    m_names[static_cast<std::size_t>(kind)].emplace(oldName, newName);
    m_hasRenamed = true;
}

const std::wstring* ReferenceChanges::newName(TableKind kind, std::wstring_view name) const {
    const Names& names = m_names[static_cast<std::size_t>(kind)];
    const auto found = names.find(name);
    return found == names.end() ? nullptr : &found->second;
}

std::optional<TableKind> ReferenceChanges::namedBy(std::string_view recordName, short code) {
    for (const NamingGroup& naming : namingGroups)
        if (naming.mark.empty() && naming.code == code && naming.record == recordName && !naming.isOwnName)
            return naming.kind;
    return {};
}

ReferenceChanges::Fate ReferenceChanges::fateOf(const DrawingRecord& record, std::size_t place,
                                                const DrawingText& encoding, std::string& value) const {
    if (!m_gone.empty()) {
        const Fate fate = fateOfHandle(record, place, value);
        if (fate != Fate::kStays) return fate;
    }
    return m_hasRenamed ? fateOfName(record, place, encoding, value) : Fate::kStays;
}

ReferenceChanges::Fate ReferenceChanges::fateOfHandle(const DrawingRecord& record, std::size_t place,
                                                      std::string& value) const {
    const RecordGroup& group = record.groups[place];
    const auto goneAt = [&](std::size_t where) {
        return isGone(handleFromText(record.groups[where].value).value_or(0));
    };
    if (refers(group.code) && goneAt(place)) {
        if (listAt(record, place)) return Fate::kGoes;
        value.assign(1, '0');
        return Fate::kHasNewValue;
    }
    const auto goesWith = [&](std::size_t where, short HandleList::*code) {
        const HandleList* const list = where < record.groups.size() ? listAt(record, where) : nullptr;
        return list && list->*code == group.code && goneAt(where);
    };
    if (goesWith(place - 1, &HandleList::behindCode) || goesWith(place + 1, &HandleList::beforeCode))
        return Fate::kGoes;
    return fateOfCount(record, place, value);
}

ReferenceChanges::Fate ReferenceChanges::fateOfCount(const DrawingRecord& record, std::size_t place,
                                                     std::string& value) const {
    const HandleList* const list = countedListOf(record.name(), record.groups[place].code);
    if (!list || markBefore(record, place) != list->mark) return Fate::kStays;
    std::int64_t left = 0;
    bool isShorter = false;
    for (std::size_t next = place + 1; next < record.extendedDataBegin; ++next) {
        const RecordGroup& group = record.groups[next];
        if (group.code == subclassMarkCode) break;
        if (group.code != list->code) continue;
        const bool goes = isGone(handleFromText(group.value).value_or(0));
        isShorter = isShorter || goes;
        left += goes ? 0 : 1;
    }
    if (!isShorter) return Fate::kStays;
    value = std::to_string(left);
    return Fate::kHasNewValue;
}

ReferenceChanges::Fate ReferenceChanges::fateOfName(const DrawingRecord& record, std::size_t place,
                                                    const DrawingText& encoding, std::string& value) const {
    const RecordGroup& group = record.groups[place];
    const std::wstring* found = nullptr;
    if (group.code == layerOfExtendedData && place >= record.extendedDataBegin) {
        found = newName(TableKind::kLayer, encoding.decode(withoutBlanks(group.value)));
    } else if (place < record.extendedDataBegin) {
        for (const NamingGroup& naming : namingGroups)
            if (naming.code == group.code && (naming.record.empty() || naming.record == record.name()) &&
                (naming.mark.empty() || markBefore(record, place) == naming.mark))
                found = newName(naming.kind, encoding.decode(withoutBlanks(group.value)));
    }
    if (!found) return Fate::kStays;
    value.clear();
    encoding.encode(*found, value);
    return Fate::kHasNewValue;
}

bool ReferenceChanges::concern(const DrawingRecord& record, const DrawingText& encoding) const {
    std::string value;
    for (std::size_t place = 1; place < record.groups.size(); ++place)
        if (fateOf(record, place, encoding, value) != Fate::kStays) return true;
    return false;
}

} // namespace hostkit

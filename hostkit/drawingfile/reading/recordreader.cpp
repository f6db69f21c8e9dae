#include "recordreader.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbopaque.h"
#include "fieldtable.h"
#include "groupcodes.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr short layerCode = 8;

// A dimension style names its blocks and its text style by name in R12, and some programs do so in later
// forms where handles belong.
bool mayBeName(const DrawingRecord* record, short code) {
    constexpr short arrowCode = 5;
    constexpr short textStyleCode = 340;
    constexpr short lastArrowCode = 344;
    return code == arrowCode ||
           (code >= textStyleCode && code <= lastArrowCode && record && record->name() == "DIMSTYLE");
}

bool equalsAscii(std::string_view bytes, const wchar_t* text) {
    std::size_t place = 0;
    for (; place < bytes.size(); ++place)
        if (text[place] == 0 || static_cast<wchar_t>(static_cast<unsigned char>(bytes[place])) != text[place])
            return false;
    return text[place] == 0;
}

} // namespace

AcDb::AcDbDwgVersion filerVersion(DrawingVersion version) {
    switch (version) {
    case DrawingVersion::kR12:
        return AcDb::kDHL_1009;
    case DrawingVersion::kR13:
        return AcDb::kDHL_1012;
    case DrawingVersion::kR14:
        return AcDb::kDHL_1014;
    case DrawingVersion::k2000:
        return AcDb::kDHL_1015;
    case DrawingVersion::k2004:
        return AcDb::kDHL_1018;
    case DrawingVersion::k2007:
        return AcDb::kDHL_1021;
    case DrawingVersion::k2010:
        return AcDb::kDHL_1024;
    case DrawingVersion::k2013:
        return AcDb::kDHL_1027;
    case DrawingVersion::k2018:
        return AcDb::kDHL_1032;
    }
    return AcDb::kDHL_Unknown;
}

DrawingVersion versionOfFiler(AcDb::AcDbDwgVersion version) {
    for (const DrawingVersion candidate :
         {DrawingVersion::kR12, DrawingVersion::kR13, DrawingVersion::kR14, DrawingVersion::k2000,
          DrawingVersion::k2004, DrawingVersion::k2007, DrawingVersion::k2010, DrawingVersion::k2013,
          DrawingVersion::k2018})
        if (filerVersion(candidate) == version) return candidate;
    return DrawingVersion::k2013;
}

RecordReader::RecordReader(AcDbDatabase* database, const DrawingText& text, DrawingVersion version)
    : m_database(database)
    , m_text(text)
    , m_version(filerVersion(version)) {}

void RecordReader::setForm(const DrawingText& text, DrawingVersion version) {
    m_text = text;
    m_version = filerVersion(version);
}

void RecordReader::begin(DrawingRecord& record) {
    resetFilerStatus();
    m_record = &record;
    m_parts.clear();
    m_part = headPart;
    m_regionBegin = m_lastBegin = m_lastEnd = 0;
    // Before the first mark no class has been asked for its groups: they are left over for the first one
    // without mark.
    m_next = m_end = 1;
    if (record.hasMarks)
        while (m_end < record.extendedDataBegin && record.groups[m_end].code != subclassMarkCode) ++m_end;
    m_regionBegin = 1;
    m_faulty = nullptr;
}

std::size_t RecordReader::skipTaken(std::size_t place) const {
    while (place < m_end && m_record->groups[place].part != nobodysPart) ++place;
    return place;
}

// The index of the next mark of that name that no class was given yet, or that of the extended data. Classes
// that an object's writer left out, or that only it knows, may stand before the one asked for.
std::size_t RecordReader::findMark(const wchar_t* name) const {
    const auto isIt = [name](const RecordGroup& group) {
        return group.code == subclassMarkCode && group.part == nobodysPart &&
               equalsAscii(withoutBlanks(group.value), name);
    };
    const auto begin = m_record->groups.begin();
    const auto end = begin + static_cast<std::ptrdiff_t>(m_record->extendedDataBegin);
    const auto here = begin + static_cast<std::ptrdiff_t>(m_parts.count() == 0 ? 1 : m_next);
    const auto next = std::find_if(here, end, isIt);
    if (next != end) return static_cast<std::size_t>(next - begin);
    const auto before = std::find_if(begin, here, isIt);
    return before == here ? m_record->extendedDataBegin : static_cast<std::size_t>(before - begin);
}

bool RecordReader::hasMark(const wchar_t* name) const {
    return std::any_of(m_record->groups.begin(),
                       m_record->groups.begin() + static_cast<std::ptrdiff_t>(m_record->extendedDataBegin),
                       [name](const RecordGroup& group) {
                           return group.code == subclassMarkCode &&
                                  equalsAscii(withoutBlanks(group.value), name);
                       });
}

bool RecordReader::beginMarked(std::size_t mark, const wchar_t* name) {
    std::vector<RecordGroup>& groups = m_record->groups;
    m_part = m_parts.add(name);
    groups[mark].part = m_part;
    m_regionBegin = m_end = mark + 1;
    while (m_end < m_record->extendedDataBegin && groups[m_end].code != subclassMarkCode) ++m_end;
    m_next = skipTaken(m_regionBegin);
    return true;
}

bool RecordReader::beginLeftovers(const wchar_t* name) {
    m_part = m_parts.add(name);
    if (!m_record->hasMarks) {
        m_regionBegin = 1;
        m_end = m_record->extendedDataBegin;
    }
    m_next = skipTaken(m_regionBegin);
    return true;
}

bool RecordReader::atSubclassData(const wchar_t* name) {
    m_lastBegin = m_lastEnd = 0;
    if (!m_record->hasMarks) return beginLeftovers(name);
    const std::size_t mark = findMark(name);
    if (mark != m_record->extendedDataBegin) return beginMarked(mark, name);
    // A second part of a name is there or is not; any other is left over where its mark was forgotten.
    return !hasMark(name) && beginLeftovers(name);
}

bool RecordReader::atEitherSubclass(const wchar_t* name, const wchar_t* other) {
    if (!m_record->hasMarks || findMark(name) != m_record->extendedDataBegin) return atSubclassData(name);
    const std::size_t mark = findMark(other);
    return mark != m_record->extendedDataBegin ? beginMarked(mark, name) : atSubclassData(name);
}

// Behind the mark of an embedded object the codes are another object's. Of a kind that no class reads, only
// the layer is told by its code.
void RecordReader::readLooseLook(AcDbEntity& entity) {
    const bool isOpaque = entity.isKindOf(AcDbOpaqueEntity::desc());
    RecordPart part = firstClassPart;
    while (part < m_parts.limit() && m_parts.nameOf(part) != L"AcDbEntity") ++part;
    if (part == m_parts.limit()) return;
    std::vector<RecordGroup>& groups = m_record->groups;
    Adesk::UInt32 own = 0; // of the look's codes, those that the entity's part has
    for (const RecordGroup& group : groups)
        if (group.part == part) own |= DatabaseAccess::lookBit(group.code);
    for (std::size_t place = 1; place < m_record->extendedDataBegin; ++place) {
        RecordGroup& group = groups[place];
        if (group.code == embeddedObjectCode) return;
        const Adesk::UInt32 bit = DatabaseAccess::lookBit(group.code);
        if (bit == 0 || (own & bit) != 0 || group.part != nobodysPart) continue;
        // Some classes have true colours of their own; the entity's stands behind its index.
        const bool mayBeLook = group.code == layerCode ||
                               (!isOpaque && (group.code != trueColorCode || groups[place - 1].part == part));
        if (mayBeLook && readLoose(entity, place)) group.part = part;
    }
}

bool RecordReader::readLoose(AcDbEntity& entity, std::size_t place) {
    AcDbDxfGroup item;
    std::size_t used = 1;
    const RecordGroup* const group = m_record->groups.data() + place;
    return valueOf(group, group + 1, item, used) == Acad::eOk &&
           DatabaseAccess::readLook(entity, item, *this);
}

bool RecordReader::recordOf(const AcDbDxfGroup&, AcDbObjectId& record) const {
    if (m_looksUp) return false;
    record = AcDbObjectId();
    return true;
}

bool RecordReader::atEndOfObject() { return m_next >= m_end; }
bool RecordReader::atExtendedData() { return m_next >= m_record->extendedDataBegin; }

Acad::ErrorStatus RecordReader::readItem(AcDbDxfGroup& item) {
    if (m_status != Acad::eOk) return m_status;
    if (m_next >= m_end) return Acad::eEndOfObject;
    const RecordGroup* const groups = m_record->groups.data();
    std::size_t used = 1;
    const Acad::ErrorStatus status = valueOf(groups + m_next, groups + m_end, item, used);
    if (status != Acad::eOk) {
        m_faulty = groups + m_next;
        setError(status);
        return status;
    }
    m_lastBegin = m_next;
    m_lastEnd = m_next + used;
    setPart(m_lastBegin, m_lastEnd, m_part);
    m_next = skipTaken(m_lastEnd);
    return Acad::eOk;
}

void RecordReader::pushBackItem() {
    if (m_lastBegin == m_lastEnd) return;
    setPart(m_lastBegin, m_lastEnd, nobodysPart);
    m_next = m_lastBegin;
    m_lastEnd = m_lastBegin;
}

void RecordReader::rejectItem() { setPart(m_lastBegin, m_lastEnd, nobodysPart); }

void RecordReader::setPart(std::size_t from, std::size_t to, RecordPart part) {
    for (std::size_t place = from; place < to; ++place) m_record->groups[place].part = part;
}

Acad::ErrorStatus RecordReader::valueOf(const RecordGroup* group, const RecordGroup* end, AcDbDxfGroup& item,
                                        std::size_t& used) {
    item.code = group->code;
    item.kind = AcDb::groupKind(group->code);
    item.dimension = 0;
    item.text = {};
    used = 1;
    switch (item.kind) {
    case AcDb::GroupKind::kPoint:
        return readPoint(group, end, item, used);
    case AcDb::GroupKind::kReal: {
        const std::optional<double> value = realFromText(group->value);
        if (!value) return Acad::eInvalidDxfCode;
        item.real = *value;
        return Acad::eOk;
    }
    case AcDb::GroupKind::kInt16:
    case AcDb::GroupKind::kInt32:
    case AcDb::GroupKind::kInt64:
    case AcDb::GroupKind::kBool:
        return readInteger(*group, item);
    case AcDb::GroupKind::kHandle: {
        // Some writers leave the value of a null handle empty.
        constexpr short arrowCode = 5;
        const bool isEmpty = withoutBlanks(group->value).empty() && group->code != arrowCode;
        const std::optional<std::uint64_t> handle = isEmpty ? 0 : handleFromText(group->value);
        if (!handle && mayBeName(m_record, group->code)) {
            item.kind = AcDb::GroupKind::kText;
            m_text.decode(group->value, m_value);
            item.text = m_value;
            return Acad::eOk;
        }
        if (!handle) return Acad::eInvalidDxfCode;
        m_text.decode(withoutBlanks(group->value), m_value);
        item.integer = static_cast<Adesk::Int64>(*handle);
        item.text = m_value;
        return Acad::eOk;
    }
    case AcDb::GroupKind::kBinary:
    case AcDb::GroupKind::kText:
        m_text.decode(group->value, m_value);
        item.text = m_value;
        return Acad::eOk;
    }
    return Acad::eInvalidDxfCode;
}

Acad::ErrorStatus RecordReader::readPoint(const RecordGroup* group, const RecordGroup* end,
                                          AcDbDxfGroup& item, std::size_t& used) {
    item.point[0] = item.point[1] = item.point[2] = 0.0;
    const short code = group->code;
    for (used = 0;
         used < 3 && group + used != end && group[used].code == code + static_cast<short>(used) * 10;
         ++used) {
        const std::optional<double> value = realFromText(group[used].value);
        if (!value) return Acad::eInvalidDxfCode;
        item.point[used] = *value;
    }
    item.dimension = static_cast<unsigned char>(used);
    return Acad::eOk;
}

Acad::ErrorStatus RecordReader::readInteger(const RecordGroup& group, AcDbDxfGroup& item) {
    const std::optional<std::int64_t> value = integerFromText(group.value);
    if (!value) return Acad::eInvalidDxfCode;
    item.integer = *value;
    return Acad::eOk;
}

AcDbObjectId RecordReader::objectIdOf(const AcDbDxfGroup& group) {
    AcDbObjectId id;
    if (m_looksUp && m_database && group.handle() != 0)
        (void)m_database->getAcDbObjectId(id, true, AcDbHandle(group.handle()));
    return id;
}

bool readExtendedData(DrawingRecord& record, RecordReader& filer, GroupBlock* data) {
    const RecordGroup* const end = record.groups.data() + record.groups.size();
    AcDbDxfGroup item;
    std::size_t used = 0;
    for (std::size_t place = record.extendedDataBegin; place < record.groups.size(); place += used) {
        used = 1;
        if (record.groups[place].code == commentCode) continue;
        if (filer.valueOf(record.groups.data() + place, end, item, used) != Acad::eOk) return false;
        if (item.code < 1000 || !isStorable(item)) return false;
        if (data) data->append(item);
    }
    for (std::size_t place = record.extendedDataBegin; place < record.groups.size(); ++place)
        record.groups[place].part = record.groups[place].code == commentCode ? nobodysPart : extendedPart;
    return true;
}

} // namespace hostkit

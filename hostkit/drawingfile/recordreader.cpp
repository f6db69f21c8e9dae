#include "recordreader.h"

#include "dbdatabase.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr short subclassMarkCode = 100;
constexpr short dimStyleTextCode = 5; // R12 has the name of a block there

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
    m_next = m_end = m_lastBegin = m_lastEnd = 0;
    m_faulty = nullptr;
}

std::size_t RecordReader::skipTaken(std::size_t place) const {
    while (place < m_end && m_record->groups[place].isTaken) ++place;
    return place;
}

bool RecordReader::atSubclassData(const wchar_t* name) {
    m_lastBegin = m_lastEnd = 0;
    if (!m_record->hasMarks) {
        m_end = m_record->extendedDataBegin;
        m_next = skipTaken(1);
        return true;
    }
    // Classes that an object's writer left out, or that only it knows, may stand before the one asked for.
    const std::vector<RecordGroup>& groups = m_record->groups;
    std::size_t mark = std::max<std::size_t>(m_next, 1);
    while (mark < m_record->extendedDataBegin &&
           (groups[mark].code != subclassMarkCode || !equalsAscii(withoutBlanks(groups[mark].value), name)))
        ++mark;
    if (mark == m_record->extendedDataBegin) return false;
    m_record->groups[mark].isTaken = true;
    m_next = mark + 1;
    m_end = m_next;
    while (m_end < m_record->extendedDataBegin && groups[m_end].code != subclassMarkCode) ++m_end;
    m_next = skipTaken(m_next);
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
    setTaken(m_lastBegin, m_lastEnd, true);
    m_next = skipTaken(m_lastEnd);
    return Acad::eOk;
}

void RecordReader::pushBackItem() {
    if (m_lastBegin == m_lastEnd) return;
    setTaken(m_lastBegin, m_lastEnd, false);
    m_next = m_lastBegin;
    m_lastEnd = m_lastBegin;
}

void RecordReader::rejectItem() { setTaken(m_lastBegin, m_lastEnd, false); }

void RecordReader::setTaken(std::size_t from, std::size_t to, bool isTaken) {
    for (std::size_t place = from; place < to; ++place) m_record->groups[place].isTaken = isTaken;
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
        const bool isEmpty = withoutBlanks(group->value).empty() && group->code != dimStyleTextCode;
        const std::optional<std::uint64_t> handle = isEmpty ? 0 : handleFromText(group->value);
        if (!handle && group->code == dimStyleTextCode) {
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
    if (m_database && group.handle() != 0)
        (void)m_database->getAcDbObjectId(id, true, AcDbHandle(group.handle()));
    return id;
}

} // namespace hostkit

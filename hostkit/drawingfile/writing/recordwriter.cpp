#include "recordwriter.h"

#include "groupcodes.h"
#include "groupkinds.h"
#include "recordreader.h"
#include "referencechanges.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace hostkit {

AcDb::AcDbDwgVersion RecordWriter::dwgVersion() const { return filerVersion(m_style.version); }

void RecordWriter::begin() {
    resetFilerStatus();
    m_groups.clear();
    m_arena.clear();
    m_parts.clear();
    m_part = headPart;
    m_presence = FieldGroup::Presence::kAlways;
}

void RecordWriter::markAsRead(const RecordWriter& asRead) {
    const auto partOf = [](const std::vector<FieldGroup>& groups, RecordPart part) {
        const auto begin = std::find_if(groups.begin(), groups.end(),
                                        [part](const FieldGroup& group) { return group.part == part; });
        const auto end =
            std::find_if(begin, groups.end(), [part](const FieldGroup& group) { return group.part != part; });
        return std::pair(begin - groups.begin(), end - groups.begin());
    };
    for (RecordPart part = firstClassPart; part < m_parts.limit(); ++part) {
        const RecordPart other = m_parts.counterpart(part, asRead.m_parts);
        const auto [begin, end] = partOf(m_groups, part);
        const auto [oldBegin, oldEnd] = partOf(asRead.m_groups, other);
        auto place = begin;
        auto oldPlace = oldBegin;
        for (;;) {
            // Names are the drawing's, which the old record is read without.
            while (place < end && group(place).role == FieldGroup::Role::kRecordName) ++place;
            while (oldPlace < oldEnd && asRead.group(oldPlace).role == FieldGroup::Role::kRecordName)
                ++oldPlace;
            if (place == end || oldPlace == oldEnd) break;
            FieldGroup& own = group(place++);
            const FieldGroup& old = asRead.group(oldPlace++);
            if (old.code != own.code) break;
            own.isAsRead =
                std::memcmp(old.point, own.point, sizeof old.point) == 0 && asRead.textOf(old) == textOf(own);
            // An index beside a true colour is only the nearest one, of many colours.
            if (own.code == trueColorCode && !own.isAsRead && place - begin > 1)
                group(place - 2).isAsRead = false;
        }
    }
}

void RecordWriter::renameTexts(std::string_view recordName) {
    if (!m_changes) return;
    for (FieldGroup& group : m_groups) {
        if (group.kind != AcDb::GroupKind::kText || group.role != FieldGroup::Role::kValue) continue;
        const std::optional<TableKind> kind = ReferenceChanges::namedBy(recordName, group.code);
        const std::wstring* const newName =
            kind ? m_changes->newName(*kind, m_style.text.decode(textOf(group))) : nullptr;
        if (!newName) continue;
        group.textBegin = m_arena.size();
        m_style.text.encode(*newName, m_arena);
        group.textEnd = m_arena.size();
    }
}

FieldGroup& RecordWriter::add(short code, AcDb::GroupKind kind) {
    if (code < 0 || code > lastGroupCode)
        setError(Acad::eInvalidDxfCode, L"%d is no group code", static_cast<int>(code));
    FieldGroup& group = m_groups.emplace_back();
    group.code = code;
    group.kind = kind;
    group.presence = m_presence;
    group.part = m_part;
    m_presence = FieldGroup::Presence::kAlways;
    return group;
}

void RecordWriter::writeText(short code, std::wstring_view text) {
    FieldGroup& group = add(code, AcDb::GroupKind::kText);
    group.textBegin = m_arena.size();
    m_style.text.encode(text, m_arena);
    group.textEnd = m_arena.size();
}

void RecordWriter::writeReal(short code, double value) {
    if (!std::isfinite(value)) setError(Acad::eInvalidInput, L"the value of group %d is no number", code);
    add(code, AcDb::GroupKind::kReal).real = value;
}

void RecordWriter::writePoint(short code, const double* coordinates, int dimension) {
    if (!std::all_of(coordinates, coordinates + dimension, [](double value) { return std::isfinite(value); }))
        setError(Acad::eInvalidInput, L"a coordinate of group %d is no number", code);
    FieldGroup& group = add(code, AcDb::GroupKind::kPoint);
    group.dimension = static_cast<unsigned char>(dimension);
    std::copy_n(coordinates, dimension, group.point);
}

void RecordWriter::writeInteger(short code, Adesk::Int64 value) {
    add(code, AcDb::groupKind(code)).integer = value;
}

void RecordWriter::writeHandle(short code, Adesk::UInt64 handle) {
    if (m_changes && m_changes->isGone(handle)) handle = 0;
    add(code, AcDb::GroupKind::kHandle).integer = static_cast<Adesk::Int64>(handle);
}

void RecordWriter::writeBinary(short code, const void* bytes, std::size_t size) {
    constexpr char digits[] = "0123456789ABCDEF";
    FieldGroup& group = add(code, AcDb::GroupKind::kBinary);
    group.textBegin = m_arena.size();
    for (const auto* byte = static_cast<const unsigned char*>(bytes); size > 0; --size, ++byte) {
        m_arena += digits[*byte >> 4];
        m_arena += digits[*byte & 15];
    }
    group.textEnd = m_arena.size();
}

void RecordWriter::writeRecordName(short code, AcDbObjectId, std::wstring_view name) {
    if (name.empty()) return;
    writeText(code, name);
    m_groups.back().role = FieldGroup::Role::kRecordName;
}

void RecordWriter::writeSubclassMark(const wchar_t* name) {
    m_part = m_parts.add(name);
    writeText(subclassMarkCode, name);
    m_groups.back().role = FieldGroup::Role::kMark;
}

void RecordWriter::format(const FieldGroup& group, std::string& bytes) const {
    switch (group.kind) {
    case AcDb::GroupKind::kPoint:
        for (int axis = 0; axis < group.dimension; ++axis)
            appendReal(group.code + axis * 10, group.point[axis], m_style, bytes);
        return;
    case AcDb::GroupKind::kReal:
        return appendReal(group.code, group.real, m_style, bytes);
    case AcDb::GroupKind::kHandle:
        return appendHandle(group.code, static_cast<std::uint64_t>(group.integer), m_style, bytes);
    case AcDb::GroupKind::kText:
    case AcDb::GroupKind::kBinary:
        return appendGroup(group.code, textOf(group), m_style, bytes);
    default:
        return appendInteger(group.code, group.integer, m_style, bytes);
    }
}

void RecordWriter::finish(std::string& bytes) {
    const bool hasMarks = m_givesMarks || hasSubclassMarkers(m_style.version);
    for (const FieldGroup& group : m_groups) {
        if (group.presence == FieldGroup::Presence::kOnlyIfItWasThere) continue;
        if (group.role == FieldGroup::Role::kMark && !hasMarks) continue;
        format(group, bytes);
        ++m_groupsFromFields;
    }
}

} // namespace hostkit
